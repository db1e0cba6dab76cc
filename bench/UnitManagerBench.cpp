// The unit registry's set-up and growth, each measured in a fresh process (the
// registry is a process-wide singleton that is never destroyed; see
// bench/support/ChildProcess.hpp):
//  - set-up of the built-in library by the first UnitManager::Instance(), beside
//    UDUNITS-2 reading its default database;
//  - registering n user units of a derived quantity ("d<i>", pressure) or of a base
//    quantity ("b<i>", length) and then unregistering the first of them, the one
//    whose removal moves every later unit down an index; with the resident set size
//    before and after registration;
//  - converting texts of new dimensions, each of which registers an anonymous quantity,
//    once there are thousands of them.
// Timings are taken inside the child, so process start and library loading are not
// in them; they are the benchmarks' (manual) times and also counters.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/support/ChildProcess.hpp"
#include "bench/support/SideBySide.hpp"
#include "bench/support/Udunits.hpp"
#include "host/Exception.hpp"
#include "host/Warning.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/UnitRepresentation.hpp"
#include "units/UnitSystem.hpp"
#include "units/UnitSystemManager.hpp"

namespace {

using twbench::ChildReport;
using twbench::figure;
using twbench::runInChild;
using twbench::timeIt;

constexpr double kMiB = 1024.0;

TW_CHILD_TASK(setup) {
  report["setup_s"] = timeIt([] { TwUnits::UnitManager::Instance(); });
  report["rss_KiB"] = twbench::residentKiB();
}

TW_CHILD_TASK(udunits_setup) {
  ut_system* system = nullptr;
  report["setup_s"] = timeIt([&system] { system = twbench::readUdunitsSystem(); });
  report["rss_KiB"] = twbench::residentKiB();
  if (system == nullptr) throw std::runtime_error("UDUNITS-2 cannot read its database");
  ut_free_system(system);
}

// Arguments: "derived" or "base", then n.
TW_CHILD_TASK(register_units) {
  const bool derived = arguments.at(0) == "derived";
  const int count = std::stoi(arguments.at(1));
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  report["rss_before_KiB"] = twbench::residentKiB();

  // The definitions are made before the clock starts; the registry owns them once
  // registered.
  std::vector<std::unique_ptr<TwUnits::UnitRepresentation>> definitions;
  for (int i = 0; i < count; ++i) {
    definitions.push_back(std::make_unique<TwUnits::UnitRepresentation>(
        (derived ? "d" : "b") + std::to_string(i), derived ? "kilogram/(meter*second^2)" : "meter",
        1.0 + i, 0.0, true));
  }
  report["register_s"] = timeIt([&] {
    for (auto& definition : definitions) {
      units->registerUnit(definition.get());
      definition.release();
    }
  });
  report["rss_after_KiB"] = twbench::residentKiB();
  const std::string first = derived ? "d0" : "b0";
  report["unregister_s"] = timeIt([&] { units->unregisterUnit(first); });
  if (units->isUnitRegistered(first)) throw std::runtime_error(first + " is still registered");
}

// Arguments: n. Converts n texts of dimensions that no quantity has, each of which
// registers an anonymous quantity, and times the last thousand of them.
TW_CHILD_TASK(new_dimensions) {
  const std::size_t count = std::stoul(arguments.at(0));
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  std::vector<std::string> texts;
  for (std::size_t i = 0; texts.size() < count; ++i) {
    texts.push_back("meter^" + std::to_string(i % 14 + 1) + "*second^" +
                    std::to_string(i / 14 % 14 + 1) + "*gram^" + std::to_string(i / 196 % 14 + 1) +
                    "*ampere^" + std::to_string(i / 2744 + 1));
  }
  const std::size_t timed = std::min<std::size_t>(count, 1000);
  for (std::size_t i = 0; i < count - timed; ++i) units->convert(1.0, texts[i], texts[i]);
  report["last_thousand_s"] = timeIt([&] {
    for (std::size_t i = count - timed; i < count; ++i) units->convert(1.0, texts[i], texts[i]);
  });
  report["rss_KiB"] = twbench::residentKiB();
}

// The operations of the registry operations table, in the summary's order; the names
// are the child's report keys (seconds per operation).
const char* const kRegistryOperations[] = {
    "register_base_unit",  "register_derived_unit", "unregister_first_unit",  "redefine_unit",
    "refuse_unit_change",  "register_prefix",       "unregister_prefix",      "register_quantity",
    "unregister_quantity", "register_unit_system",  "unregister_unit_system", "first_sight",
    "convert_seen_texts"};

double medianOf(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// Arguments: n. Registers n user units (half of length, "b<i>", half of pressure,
// "d<i>") and caches a text naming each derived unit ("d<i>/second"), then times every
// registry operation on that registry: the median of a few repetitions, each undone
// outside the clock so that the registry stays at n.
TW_CHILD_TASK(registry_operations) {
  const int count = std::stoi(arguments.at(0));
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  TwUnits::UnitPrefixManager* prefixes = TwUnits::UnitPrefixManager::Instance();
  TwUnits::PhysicalQuantityManager* quantities = TwUnits::PhysicalQuantityManager::Instance();
  TwUnits::UnitSystemManager* systems = TwUnits::UnitSystemManager::Instance();
  WarningHandler quiet = utSetWarningHandler([](const std::string&, const WarningText&) {});
  auto unit = [](const std::string& name, const char* composition, double multiplier) {
    return new TwUnits::UnitRepresentation(name, composition, multiplier, 0.0, true);
  };
  const double before = twbench::residentKiB();
  for (int i = 0; i < count / 2; ++i) {
    units->registerUnit(unit("b" + std::to_string(i), "meter", 1.0 + i));
    units->registerUnit(unit("d" + std::to_string(i), "kilogram/(meter*second^2)", 1.0 + i));
    units->verifyUnitCompositionString("d" + std::to_string(i) + "/second");
  }
  report["bytes_per_unit"] = (twbench::residentKiB() - before) * 1024.0 / count;

  constexpr int kRepeats = 15;
  auto measure = [&](const char* name, const std::function<void(int)>& operation,
                     const std::function<void(int)>& undo) {
    std::vector<double> seconds;
    for (int r = 0; r < kRepeats; ++r) {
      seconds.push_back(twbench::timeIt([&] { operation(r); }));
      undo(r);
    }
    report[name] = medianOf(seconds);
  };
  auto nothing = [](int) {};
  const std::string extra = "extra";
  measure(
      "register_base_unit", [&](int) { units->registerUnit(unit(extra, "meter", 3.0)); },
      [&](int) { units->unregisterUnit(extra); });
  measure(
      "register_derived_unit",
      [&](int) { units->registerUnit(unit(extra, "kilogram/(meter*second^2)", 3.0)); },
      [&](int) { units->unregisterUnit(extra); });
  // The first user unit of a quantity: every later one moves down an index.
  measure(
      "unregister_first_unit", [&](int r) { units->unregisterUnit("b" + std::to_string(r)); },
      [&](int r) { units->registerUnit(unit("b" + std::to_string(r), "meter", 1.0 + r)); });
  const std::string last = "d" + std::to_string(count / 2 - 1);
  measure(
      "redefine_unit",
      [&](int r) { units->registerUnit(unit(last, "kilogram/(meter*second^2)", 0.5 + r)); },
      nothing);
  measure(
      "refuse_unit_change",
      [&](int) {
        try {
          units->getUnitRepresentation(last)->setMultiplier(2.0);
        } catch (Exception* refused) {
          delete refused;
        }
      },
      nothing);
  measure(
      "register_prefix",
      [&](int) { prefixes->registerPrefix(new TwUnits::UnitPrefix("zyx", 4, "")); },
      [&](int) { prefixes->unregisterPrefix("zyx"); });
  prefixes->registerPrefix(new TwUnits::UnitPrefix("zyx", 4, ""));
  measure(
      "unregister_prefix", [&](int) { prefixes->unregisterPrefix("zyx"); },
      [&](int) { prefixes->registerPrefix(new TwUnits::UnitPrefix("zyx", 4, "")); });
  prefixes->unregisterPrefix("zyx");
  const int exponents[7] = {0, 0, 7, 0, 0, 0, 3};
  measure(
      "register_quantity",
      [&](int) {
        quantities->registerPhysicalQuantity(new TwUnits::QuantityDimension(exponents, "qx"));
      },
      [&](int) { quantities->unregisterPhysicalQuantity("qx"); });
  quantities->registerPhysicalQuantity(new TwUnits::QuantityDimension(exponents, "qx"));
  measure(
      "unregister_quantity", [&](int) { quantities->unregisterPhysicalQuantity("qx"); },
      [&](int) {
        quantities->registerPhysicalQuantity(new TwUnits::QuantityDimension(exponents, "qx"));
      });
  quantities->unregisterPhysicalQuantity("qx");
  auto system = [] {
    auto* made = new TwUnits::UnitSystem("sx");
    made->setAmountType("mole");
    made->setMassType("gram");
    made->setLengthType("meter");
    made->setTimeType("second");
    made->setTempType("kelvin");
    made->setCurrentType("ampere");
    made->setLuminousIntensityType("candela");
    return made;
  };
  measure(
      "register_unit_system", [&](int) { systems->registerUnitSystem(system()); },
      [&](int) { systems->unregisterUnitSystem("sx"); });
  systems->registerUnitSystem(system());
  measure(
      "unregister_unit_system", [&](int) { systems->unregisterUnitSystem("sx"); },
      [&](int) { systems->registerUnitSystem(system()); });
  systems->unregisterUnitSystem("sx");
  measure(
      "first_sight",
      [&](int r) { units->verifyUnitCompositionString("d1/minute^" + std::to_string(r + 2)); },
      nothing);
  // Per conversion: many of them, so that the clock resolves them.
  units->convert(1.0, "d1/second", "pascal/second");
  measure(
      "convert_seen_texts",
      [&](int) {
        double sum = 0.0;
        for (int i = 0; i < 1000; ++i) sum += units->convert(1.0, "d1/second", "pascal/second");
        if (sum <= 0.0) throw std::runtime_error("conversion went wrong");
      },
      nothing);
  report["convert_seen_texts"] /= 1000;
  utSetWarningHandler(quiet);
}

// Runs the child task once per iteration; its `setup_s` is the iteration's time.
void BM_SetupInChild(benchmark::State& state, const char* task) {
  double setupMs = 0.0, rssMiB = 0.0;
  for (auto _ : state) {
    ChildReport report;
    try {
      report = runInChild(task, {});
      state.SetIterationTime(figure(report, "setup_s"));
    } catch (const std::exception& error) {
      state.SkipWithError(error.what());
      break;
    }
    setupMs += figure(report, "setup_s") * 1e3;
    rssMiB += figure(report, "rss_KiB") / kMiB;
  }
  using benchmark::Counter;
  state.counters["setup_ms"] = Counter(setupMs, Counter::kAvgIterations);
  state.counters["rss_MiB"] = Counter(rssMiB, Counter::kAvgIterations);
}

void BM_UnitManagerSetup(benchmark::State& state) { BM_SetupInChild(state, "setup"); }
void BM_Udunits_ReadXml(benchmark::State& state) { BM_SetupInChild(state, "udunits_setup"); }

// The registration's time is the iteration's time. A single removal, timed once in each
// fresh process, is reported as the median over the processes: one cold operation of a
// fraction of a millisecond is at the mercy of the neighbours' page faults.
void BM_RegisterUserUnits(benchmark::State& state, const char* kind) {
  const std::string count = std::to_string(state.range(0));
  double registerMs = 0.0, beforeMiB = 0.0, afterMiB = 0.0;
  std::vector<double> unregisterMs;
  for (auto _ : state) {
    ChildReport report;
    try {
      report = runInChild("register_units", {kind, count});
      state.SetIterationTime(figure(report, "register_s"));
    } catch (const std::exception& error) {
      state.SkipWithError(error.what());
      break;
    }
    registerMs += figure(report, "register_s") * 1e3;
    unregisterMs.push_back(figure(report, "unregister_s") * 1e3);
    beforeMiB += figure(report, "rss_before_KiB") / kMiB;
    afterMiB += figure(report, "rss_after_KiB") / kMiB;
  }
  using benchmark::Counter;
  state.counters["register_ms"] = Counter(registerMs, Counter::kAvgIterations);
  if (!unregisterMs.empty()) {
    auto middle = unregisterMs.begin() + static_cast<std::ptrdiff_t>(unregisterMs.size() / 2);
    std::nth_element(unregisterMs.begin(), middle, unregisterMs.end());
    state.counters["unregister_ms"] = *middle;
    state.counters["unregister_max_ms"] =
        *std::max_element(unregisterMs.begin(), unregisterMs.end());
  }
  state.counters["rss_before_MiB"] = Counter(beforeMiB, Counter::kAvgIterations);
  state.counters["rss_after_MiB"] = Counter(afterMiB, Counter::kAvgIterations);
}

// A conversion of a new dimension once there are n anonymous quantities; the time is
// one such conversion's, averaged over the last thousand.
void BM_NewDimensions(benchmark::State& state) {
  double perConversionUs = 0.0, rssMiB = 0.0;
  for (auto _ : state) {
    ChildReport report;
    try {
      report = runInChild("new_dimensions", {std::to_string(state.range(0))});
      state.SetIterationTime(figure(report, "last_thousand_s") / 1000.0);
    } catch (const std::exception& error) {
      state.SkipWithError(error.what());
      break;
    }
    perConversionUs += figure(report, "last_thousand_s") * 1e3;
    rssMiB += figure(report, "rss_KiB") / kMiB;
  }
  using benchmark::Counter;
  state.counters["per_conversion_us"] = Counter(perConversionUs, Counter::kAvgIterations);
  state.counters["rss_MiB"] = Counter(rssMiB, Counter::kAvgIterations);
}

// Every registry operation at n user units; the figures are counters (seconds).
void BM_RegistryOperations(benchmark::State& state) {
  ChildReport report;
  for (auto _ : state) {
    try {
      report = runInChild("registry_operations", {std::to_string(state.range(0))});
    } catch (const std::exception& error) {
      state.SkipWithError(error.what());
      break;
    }
    state.SetIterationTime(figure(report, "register_derived_unit"));
  }
  for (const char* operation : kRegistryOperations)
    state.counters[operation] = figure(report, operation);
  state.counters["bytes_per_unit"] = figure(report, "bytes_per_unit");
}

BENCHMARK(BM_UnitManagerSetup)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_Udunits_ReadXml)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
// The argument names are the summary's row keys (bench/support/SideBySide.cpp).
void userUnitCounts(benchmark::internal::Benchmark* benchmark) {
  for (int n : twbench::kUserUnitCounts) benchmark->Arg(n);
}

BENCHMARK_CAPTURE(BM_RegisterUserUnits, derived, "derived")
    ->Apply(userUnitCounts)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK_CAPTURE(BM_RegisterUserUnits, base, "base")
    ->Apply(userUnitCounts)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK(BM_RegistryOperations)
    ->Apply(userUnitCounts)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(1);

BENCHMARK(BM_NewDimensions)
    ->Arg(1000)
    ->Arg(30000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(1);

}  // namespace
