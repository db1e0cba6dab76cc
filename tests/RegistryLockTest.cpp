// Threads that convert, verify and parse while another registers and removes units,
// prefixes and unit systems. Every answer must be one that the registries gave before or
// after some change, and under ThreadSanitizer (scripts/test.sh --tsan) no access may
// race. TW_STRESS_SECONDS sets how long the threads run (a fraction of a second
// otherwise).

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "host/ErrorIdException.hpp"
#include "host/Warning.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefix.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/UnitSystem.hpp"
#include "units/UnitSystemManager.hpp"

namespace TwUnits {
namespace {

class RegistryThreads : public testing::Test {
 protected:
  // Runs the work on a thread of its own until the test stops the threads; what it
  // reports wrong is kept.
  void start(const std::function<std::string(long)>& work) {
    threads.emplace_back([this, work] {
      for (long round = 0; !stop.load(); ++round) {
        std::string wrong;
        try {
          wrong = work(round);
        } catch (ErrorIdException* raised) {
          wrong = std::string("unexpected ") + raised->getIdentifier();
          delete raised;
        }
        if (!wrong.empty()) {
          std::lock_guard<std::mutex> guard(reportsMutex);
          if (reports.size() < 10) reports.push_back(wrong);
        }
      }
    });
  }

  void runFor(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    stop = true;
    for (std::thread& thread : threads) thread.join();
  }

  // The identifier that the call raises, or the empty text.
  static std::string raisedBy(const std::function<void()>& call) {
    try {
      call();
    } catch (ErrorIdException* raised) {
      std::string identifier = raised->getIdentifier();
      delete raised;
      return identifier;
    }
    return {};
  }

  // A spelling of the text that no round wrote before: blanks after it.
  static std::string fresh(const std::string& text, long round, int thread) {
    std::string spelled = text;
    for (long digits = round * 8 + thread; digits > 0; digits /= 2)
      spelled += digits % 2 ? "\t" : " ";
    return spelled + " ";
  }

  UnitManager* units = UnitManager::Instance();
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  std::mutex reportsMutex;
  std::vector<std::string> reports;
};

bool near(double actual, double expected) {
  return std::fabs(actual - expected) <= 1e-12 * std::fabs(expected);
}

TEST_F(RegistryThreads, ConvertVerifyAndParseWhileAnotherThreadChangesTheRegistries) {
  const char* seconds = std::getenv("TW_STRESS_SECONDS");
  std::atomic<long> warnings{0};
  WarningHandler previous =
      utSetWarningHandler([&](const std::string&, const WarningText&) { ++warnings; });

  // Built-in units, a deprecated one among them, and a user unit and prefix that come
  // and go with two definitions.
  auto convertEverything = [this](long) -> std::string {
    if (!near(units->convert(1.0, "mile", "meter"), 1609.344)) return "mile";
    if (!near(units->convert(36.0, "kilometer/hour", "meter/second"), 10.0)) return "speed";
    if (!near(units->convert(0.0, "kelvin", "fahrenheit"), -459.67)) return "temperature";
    double furlong = 0.0;
    std::string raised = raisedBy([&] { furlong = units->convert(1.0, "tsfurlong", "meter"); });
    if (raised.empty() ? furlong != 201.168 && furlong != 200.0 : raised != "Unit:NotFound")
      return "tsfurlong: " + std::to_string(furlong) + raised;
    double prefixed = 0.0;
    raised = raisedBy([&] { prefixed = units->convert(1.0, "tsqmeter", "meter"); });
    if (raised.empty() ? prefixed != 1e5 : raised != "Unit:NotFound")
      return "tsqmeter: " + std::to_string(prefixed) + raised;
    return {};
  };
  start(convertEverything);
  start([this](long) -> std::string {
    std::unique_ptr<UnitConverter> converter(
        UnitConverterManager::Instance()->getQuantityUnitConverter("kilometer/hour",
                                                                   "meter/second"));
    return near(converter->doConversion(36.0), 10.0) ? "" : "converter";
  });
  // First sights, each on a new text, and a text naming the user unit.
  start([this](long round) -> std::string {
    if (units->getQuantityIdxFromCompositionString(fresh("meter/second", round, 2)) != 10)
      return "velocity";
    std::string raised = raisedBy([&] { units->errForInvalidUnitComposition("tsfurlong/hour"); });
    return raised.empty() || raised == "Unit:NotFound" ? "" : "tsfurlong/hour: " + raised;
  });
  start([this](long round) -> std::string {
    QuantityStringParser* parser = QuantityStringParser::Instance();
    std::unique_ptr<UnitComposition> parsed(
        parser->createUnitCompFromString(fresh("kilogram*meter/second^2", round, 3)));
    auto makeup = parser->getUnitMakeupAndExponentsFromString("meter^2/second");
    return parsed->getCombinedUnitsQuantityType() == 17 && makeup.second.size() == 2 ? "" : "parse";
  });

  // The changes, undone by the end of each round.
  start([this](long round) -> std::string {
    units->registerUnit(new UnitRepresentation("tsfurlong", "meter", 201.168, 0.0, true));
    UnitPrefixManager::Instance()->registerPrefix(new UnitPrefix("tsq", 5, ""));
    if (round % 2 == 0)
      units->registerUnit(new UnitRepresentation("tsfurlong", "meter", 200.0, 0.0, true));
    auto* system = new UnitSystem("tssystem");
    system->setAmountType("mole");
    system->setMassType("gram");
    system->setLengthType("tsfurlong");
    system->setTimeType("second");
    system->setTempType("kelvin");
    system->setCurrentType("ampere");
    system->setLuminousIntensityType("candela");
    UnitSystemManager::Instance()->registerUnitSystem(system);
    UnitSystemManager::Instance()->unregisterUnitSystem("tssystem");
    UnitPrefixManager::Instance()->unregisterPrefix("tsq");
    units->unregisterUnit("tsfurlong");
    return {};
  });

  runFor(seconds != nullptr ? std::atof(seconds) : 0.3);
  utSetWarningHandler(previous);
  EXPECT_EQ(reports, std::vector<std::string>{});
  EXPECT_GT(warnings.load(), 0);
  EXPECT_FALSE(units->isUnitRegistered("tsfurlong"));
}

}  // namespace
}  // namespace TwUnits
