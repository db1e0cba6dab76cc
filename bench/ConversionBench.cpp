// Conversions between two composition texts: ours through the converter calculator
// with both texts already in the composition cache, beside UDUNITS-2 parsing both
// texts and converting, UDUNITS-2 converting between units it parsed before, and
// both sides converting with a converter made before the timed loop.
//
// Both sides read the same texts. "fahrenheit" is a deprecated unit of ours: each
// use warns "Unit:Deprecation" through the host's warning channel, so a handler that
// does nothing replaces the console printing while the benchmarks run (the warning
// is still formatted, which is part of our figure).

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "bench/support/Udunits.hpp"
#include "host/Warning.hpp"
#include "units/UnitConverter.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"

namespace {

using TwUnits::UnitConverter;
using TwUnits::UnitConverterManager;

// Swallows host warnings for its lifetime.
class QuietWarnings {
 public:
  QuietWarnings() : previous_(utSetWarningHandler([](const std::string&, const std::string&) {})) {}
  ~QuietWarnings() { utSetWarningHandler(previous_); }
  QuietWarnings(const QuietWarnings&) = delete;
  QuietWarnings& operator=(const QuietWarnings&) = delete;

 private:
  WarningHandler previous_;
};

// The cached path: both texts were verified before, so the registry finds their
// compositions in its cache and the calculator folds table entries.
void BM_CachedConversion(benchmark::State& state, const char* fromText, const char* toText) {
  QuietWarnings quiet;
  const std::string from = fromText, to = toText;
  UnitConverterManager* converters = UnitConverterManager::Instance();
  TwUnits::UnitManager::Instance();
  delete converters->getQuantityUnitConverter(from, to);  // first sight, not timed
  double value = 1.0;
  for (auto _ : state) {
    std::unique_ptr<UnitConverter> converter(converters->getQuantityUnitConverter(from, to));
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(converter->doConversion(value));
  }
}

void BM_PreparedConversion(benchmark::State& state, const char* from, const char* to) {
  QuietWarnings quiet;
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

void BM_Udunits_PreparedConverter(benchmark::State& state, const char* from, const char* to) {
  ut_unit* fromUnit = nullptr;
  ut_unit* toUnit = nullptr;
  if (!parseBoth(state, from, to, fromUnit, toUnit)) return;
  cv_converter* converter = ut_get_converter(fromUnit, toUnit);
  double value = 1.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(cv_convert_double(converter, value));
  }
  cv_free(converter);
  ut_free(toUnit);
  ut_free(fromUnit);
}

// The argument names are the summary's row keys (bench/support/SideBySide.cpp).
#define TW_CONVERSION_PAIRS(function)                                                   \
  BENCHMARK_CAPTURE(function, mile_to_meter, "mile", "meter");                          \
  BENCHMARK_CAPTURE(function, kilometer_per_hour_to_meter_per_second, "kilometer/hour", \
                    "meter/second");                                                    \
  BENCHMARK_CAPTURE(function, kelvin_to_fahrenheit, "kelvin", "fahrenheit")

TW_CONVERSION_PAIRS(BM_CachedConversion);
TW_CONVERSION_PAIRS(BM_PreparedConversion);
TW_CONVERSION_PAIRS(BM_Udunits_ParseAndConvert);
TW_CONVERSION_PAIRS(BM_Udunits_ConvertParsedUnits);
TW_CONVERSION_PAIRS(BM_Udunits_PreparedConverter);

}  // namespace
