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
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/support/ChildProcess.hpp"
#include "bench/support/Udunits.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitRepresentation.hpp"

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
  const int count = std::stoi(arguments.at(0));
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  std::vector<std::string> texts;
  for (int i = 0; static_cast<int>(texts.size()) < count; ++i) {
    texts.push_back("meter^" + std::to_string(i % 14 + 1) + "*second^" +
                    std::to_string(i / 14 % 14 + 1) + "*gram^" + std::to_string(i / 196 % 14 + 1) +
                    "*ampere^" + std::to_string(i / 2744 + 1));
  }
  const int timed = std::min(count, 1000);
  for (int i = 0; i < count - timed; ++i) units->convert(1.0, texts[i], texts[i]);
  report["last_thousand_s"] = timeIt([&] {
    for (int i = count - timed; i < count; ++i) units->convert(1.0, texts[i], texts[i]);
  });
  report["rss_KiB"] = twbench::residentKiB();
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

// The registration's time is the iteration's time.
void BM_RegisterUserUnits(benchmark::State& state, const char* kind) {
  const std::string count = std::to_string(state.range(0));
  double registerMs = 0.0, unregisterMs = 0.0, beforeMiB = 0.0, afterMiB = 0.0;
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
    unregisterMs += figure(report, "unregister_s") * 1e3;
    beforeMiB += figure(report, "rss_before_KiB") / kMiB;
    afterMiB += figure(report, "rss_after_KiB") / kMiB;
  }
  using benchmark::Counter;
  state.counters["register_ms"] = Counter(registerMs, Counter::kAvgIterations);
  state.counters["unregister_ms"] = Counter(unregisterMs, Counter::kAvgIterations);
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

BENCHMARK(BM_UnitManagerSetup)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_Udunits_ReadXml)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
// The argument names are the summary's row keys (bench/support/SideBySide.cpp).
BENCHMARK_CAPTURE(BM_RegisterUserUnits, derived, "derived")
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_CAPTURE(BM_RegisterUserUnits, base, "base")
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

BENCHMARK(BM_NewDimensions)
    ->Arg(1000)
    ->Arg(30000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(1);

}  // namespace
