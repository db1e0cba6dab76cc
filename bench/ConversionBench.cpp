// Conversions between two composition texts: ours through the converter calculator
// with both texts already in the composition cache, beside UDUNITS-2 parsing both
// texts and converting, UDUNITS-2 converting between units it parsed before, and
// both sides converting with a converter made before the timed loop.
//
// Both sides read the same texts. "fahrenheit" is a deprecated unit of ours: each
// use warns "Unit:Deprecation" through the host's warning channel, so a handler that
// does nothing replaces the console printing while the benchmarks run (the host still
// formats the warning, which is part of our figure). Every built-in temperature but
// kelvin is deprecated, so the temperature path without a warning is measured with
// "degree_rankine", a unit the benchmark registers and UDUNITS-2 knows by that name.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "bench/support/ChildProcess.hpp"
#include "bench/support/Udunits.hpp"
#include "host/Warning.hpp"
#include "units/UnitConverter.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"

namespace {

using TwUnits::UnitConverter;
using TwUnits::UnitConverterManager;

// Swallows host warnings for its lifetime, without reading (so formatting) their texts.
class QuietWarnings {
 public:
  QuietWarnings() : previous_(utSetWarningHandler([](const std::string&, const WarningText&) {})) {}
  ~QuietWarnings() { utSetWarningHandler(previous_); }
  QuietWarnings(const QuietWarnings&) = delete;
  QuietWarnings& operator=(const QuietWarnings&) = delete;

 private:
  WarningHandler previous_;
};

// 1 degree Rankine is 5/9 kelvin.
void registerDegreeRankine() {
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  if (units->isUnitRegistered("degree_rankine")) return;
  units->registerUnit(
      new TwUnits::UnitRepresentation("degree_rankine", "kelvin", 5.0 / 9.0, 0.0, true));
}

// The cached path: both texts were verified before, so the registry finds their
// compositions in its cache and the calculator folds table entries.
void BM_CachedConversion(benchmark::State& state, const char* fromText, const char* toText) {
  QuietWarnings quiet;
  const std::string from = fromText, to = toText;
  registerDegreeRankine();
  UnitConverterManager* converters = UnitConverterManager::Instance();
  delete converters->getQuantityUnitConverter(from, to);  // first sight, not timed
  double value = 1.0;
  for (auto _ : state) {
    std::unique_ptr<UnitConverter> converter(converters->getQuantityUnitConverter(from, to));
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(converter->doConversion(value));
  }
}

// The allocation-free path: UnitManager::convert between the same two texts, whose
// converter the calculator remembers for this thread.
void BM_AllocationFreeConversion(benchmark::State& state, const char* fromText,
                                 const char* toText) {
  QuietWarnings quiet;
  const std::string from = fromText, to = toText;
  registerDegreeRankine();
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  units->convert(1.0, from, to);  // first sight, not timed
  double value = 1.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(units->convert(value, from, to));
  }
}

void BM_PreparedConversion(benchmark::State& state, const char* from, const char* to) {
  QuietWarnings quiet;
  registerDegreeRankine();
  std::unique_ptr<UnitConverter> converter(
      UnitConverterManager::Instance()->getQuantityUnitConverter(from, to));
  double value = 1.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(converter->doConversion(value));
  }
}

// Parses both texts; on failure frees what it parsed and skips the benchmark.
bool parseBoth(benchmark::State& state, const char* from, const char* to, ut_unit*& fromUnit,
               ut_unit*& toUnit) {
  ut_system* system = twbench::udunitsSystem();
  fromUnit = ut_parse(system, from, UT_ASCII);
  toUnit = ut_parse(system, to, UT_ASCII);
  if (fromUnit != nullptr && toUnit != nullptr) return true;
  ut_free(fromUnit);
  ut_free(toUnit);
  state.SkipWithError(system == nullptr ? "UDUNITS-2 cannot read its database"
                                        : "UDUNITS-2 cannot parse the texts");
  return false;
}

void BM_Udunits_ParseAndConvert(benchmark::State& state, const char* from, const char* to) {
  ut_unit* fromUnit = nullptr;
  ut_unit* toUnit = nullptr;
  if (!parseBoth(state, from, to, fromUnit, toUnit)) return;
  ut_free(toUnit);
  ut_free(fromUnit);
  ut_system* system = twbench::udunitsSystem();
  double value = 1.0;
  for (auto _ : state) {
    fromUnit = ut_parse(system, from, UT_ASCII);
    toUnit = ut_parse(system, to, UT_ASCII);
    cv_converter* converter = ut_get_converter(fromUnit, toUnit);
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(cv_convert_double(converter, value));
    cv_free(converter);
    ut_free(toUnit);
    ut_free(fromUnit);
  }
}

void BM_Udunits_ConvertParsedUnits(benchmark::State& state, const char* from, const char* to) {
  ut_unit* fromUnit = nullptr;
  ut_unit* toUnit = nullptr;
  if (!parseBoth(state, from, to, fromUnit, toUnit)) return;
  double value = 1.0;
  for (auto _ : state) {
    cv_converter* converter = ut_get_converter(fromUnit, toUnit);
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(cv_convert_double(converter, value));
    cv_free(converter);
  }
  ut_free(toUnit);
  ut_free(fromUnit);
}

// Also checks that both libraries read the texts alike: 1 in `from` converts to the
// same value on both sides.
void BM_Udunits_PreparedConverter(benchmark::State& state, const char* from, const char* to) {
  ut_unit* fromUnit = nullptr;
  ut_unit* toUnit = nullptr;
  if (!parseBoth(state, from, to, fromUnit, toUnit)) return;
  cv_converter* converter = ut_get_converter(fromUnit, toUnit);
  {
    QuietWarnings quiet;
    registerDegreeRankine();
    double ours = TwUnits::UnitManager::Instance()->convert(1.0, from, to);
    double theirs = cv_convert_double(converter, 1.0);
    if (std::fabs(ours - theirs) > 1e-9 * std::max(1.0, std::fabs(theirs)))
      state.SkipWithError("the two libraries convert these texts differently");
  }
  double value = 1.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(cv_convert_double(converter, value));
  }
  cv_free(converter);
  ut_free(toUnit);
  ut_free(fromUnit);
}

// For bench/instruction_counts.sh: `repeat_conversion ours|converter|udunits|udunits_parsed
// <from> <to> <n>` does the timed work of BM_AllocationFreeConversion, BM_CachedConversion,
// BM_Udunits_ParseAndConvert or BM_Udunits_ConvertParsedUnits n times.
TW_CHILD_TASK(repeat_conversion) {
  const std::string side = arguments.at(0), from = arguments.at(1), to = arguments.at(2);
  const long count = std::stol(arguments.at(3));
  double sum = 0.0;
  if (side == "ours" || side == "converter") {
    QuietWarnings quiet;
    registerDegreeRankine();
    TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
    UnitConverterManager* converters = UnitConverterManager::Instance();
    sum += units->convert(1.0, from, to);
    if (side == "ours") {
      for (long i = 0; i < count; ++i) sum += units->convert(1.0, from, to);
    } else {
      for (long i = 0; i < count; ++i) {
        std::unique_ptr<UnitConverter> converter(converters->getQuantityUnitConverter(from, to));
        sum += converter->doConversion(1.0);
      }
    }
  } else {
    ut_system* system = twbench::udunitsSystem();
    ut_unit* fromParsed = ut_parse(system, from.c_str(), UT_ASCII);
    ut_unit* toParsed = ut_parse(system, to.c_str(), UT_ASCII);
    const bool parsed = side == "udunits_parsed";
    for (long i = 0; i < count; ++i) {
      if (parsed) {
        cv_converter* converter = ut_get_converter(fromParsed, toParsed);
        sum += cv_convert_double(converter, 1.0);
        cv_free(converter);
        continue;
      }
      ut_unit* fromUnit = ut_parse(system, from.c_str(), UT_ASCII);
      ut_unit* toUnit = ut_parse(system, to.c_str(), UT_ASCII);
      cv_converter* converter = ut_get_converter(fromUnit, toUnit);
      sum += cv_convert_double(converter, 1.0);
      cv_free(converter);
      ut_free(toUnit);
      ut_free(fromUnit);
    }
    ut_free(toParsed);
    ut_free(fromParsed);
  }
  report["sum"] = sum;
}

// The argument names are the summary's row keys (bench/support/SideBySide.cpp).
#define TW_CONVERSION_PAIRS(function)                                                   \
  BENCHMARK_CAPTURE(function, mile_to_meter, "mile", "meter");                          \
  BENCHMARK_CAPTURE(function, kilometer_per_hour_to_meter_per_second, "kilometer/hour", \
                    "meter/second");                                                    \
  BENCHMARK_CAPTURE(function, kelvin_to_fahrenheit, "kelvin", "fahrenheit");            \
  BENCHMARK_CAPTURE(function, kelvin_to_degree_rankine, "kelvin", "degree_rankine")

TW_CONVERSION_PAIRS(BM_AllocationFreeConversion);
TW_CONVERSION_PAIRS(BM_CachedConversion);
TW_CONVERSION_PAIRS(BM_PreparedConversion);
TW_CONVERSION_PAIRS(BM_Udunits_ParseAndConvert);
TW_CONVERSION_PAIRS(BM_Udunits_ConvertParsedUnits);
TW_CONVERSION_PAIRS(BM_Udunits_PreparedConverter);

}  // namespace
