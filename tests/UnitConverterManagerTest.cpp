#include <gtest/gtest.h>

// GCC 12 at -O3 takes a zero that boost::rational builds for uninitialized.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <boost/multiprecision/cpp_int.hpp>
#pragma GCC diagnostic pop
#include <cmath>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include "host/Warning.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/Pristine.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitSystemManager.hpp"

// Counts this thread's heap allocations while counting is on (not in the sanitizer
// builds, whose allocators stay their own).
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
namespace {
thread_local long allocations = -1;  // -1: not counting
}  // namespace

void* operator new(std::size_t size) {
  if (allocations >= 0) ++allocations;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
// GCC takes the replaced pair for a mismatch once it inlines them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
#pragma GCC diagnostic pop
#define TW_COUNTS_ALLOCATIONS 1
#endif

namespace TwUnits {
namespace {

class Converters : public testing::Test {
 protected:
  std::unique_ptr<UnitConverter> between(const std::string& from, const std::string& to) {
    WarningCapture quiet;
    return std::unique_ptr<UnitConverter>(converters->getQuantityUnitConverter(from, to));
  }

  UnitManager* units = UnitManager::Instance();
  UnitConverterManager* converters = UnitConverterManager::Instance();
};

PRISTINE_TEST_F(Converters, ConverterValues) {
  struct Case {
    const char* from;
    const char* to;
    double multiplier, offset;
  } cases[] = {
      {"meter", "meter", 1.0, 0.0},
      {"kilometer/hour", "meter/second", 1000.0 / 3600.0, 0.0},
      {"celsius", "kelvin", 1.0, 273.15},
      {"kelvin", "fahrenheit", 1.8, 32.0 - 1.8 * 273.15},
      {"millimeter^2", "meter^2", 1e-6, 0.0},
      {"1/millisecond", "hertz", 1000.0, 0.0},
      {"kelvin/second", "kelvin/minute", 60.0, 0.0},
      {"kilometer/meter", "dimensionless", 1000.0, 0.0},
      // a temperature not alone (in a denominator, raised to a power) is a difference
      {"1/celsius", "1/kelvin", 1.0, 0.0},
      {"1/kelvin", "1/fahrenheit", 1.0 / 1.8, 0.0},
      {"celsius^2", "kelvin^2", 1.0, 0.0},
      {"celsius*kelvin/millikelvin", "kelvin", 1000.0, 0.0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.from) + " -> " + c.to);
    auto converter = between(c.from, c.to);
    EXPECT_NEAR(converter->getMultiplier(), c.multiplier, 1e-12 * c.multiplier);
    EXPECT_NEAR(converter->getOffset(), c.offset, 1e-9);
  }
}

PRISTINE_TEST_F(Converters, ReverseConverters) {
  UnitConverter celsiusToFahrenheit(1.8, 32.0);
  std::unique_ptr<UnitConverter> reverse(converters->getReverseUnitConverter(&celsiusToFahrenheit));
  EXPECT_NEAR(reverse->doConversion(212.0), 100.0, 1e-12);
  UnitConverter plain(4.0, 0.0);
  std::unique_ptr<UnitConverter> plainReverse(converters->getReverseUnitConverter(&plain));
  EXPECT_EQ(plainReverse->getOffset(), 0.0);
  EXPECT_FALSE(std::signbit(plainReverse->getOffset()));
  std::unique_ptr<UnitConverterApi> made(converters->createUnitConverterApi(2.0, 1.0));
  EXPECT_EQ(made->doConversion(3.0), 7.0);
}

PRISTINE_TEST_F(Converters, TablesGrowAndShrinkWithBaseUnits) {
  EXPECT_EQ(converters->getQuantityUnitConverter(7, 0, 1), nullptr);
  EXPECT_NE(std::unique_ptr<UnitConverter>(converters->getQuantityUnitConverter(6, 0, 1)), nullptr);
  EXPECT_THROW(converters->getQuantityUnitConverter(2, 0, 6), std::out_of_range);
  EXPECT_THROW(converters->getQuantityUnitConverter(2, 6, 0), std::out_of_range);
  EXPECT_EQ(converters->getTableSize(2), 36u);
  units->registerUnit(new UnitRepresentation("furlong", "meter", 201.168, 0.0, true));
  units->registerUnit(new UnitRepresentation("chain", "furlong", 0.1, 0.0, true));
  EXPECT_EQ(converters->getTableSize(2), 64u);
  std::unique_ptr<UnitConverter> diagonal(converters->getQuantityUnitConverter(2, 6, 6));
  EXPECT_TRUE(diagonal->isIdentity());
  std::unique_ptr<UnitConverter> chainToInch(converters->getQuantityUnitConverter(2, 7, 1));
  EXPECT_DOUBLE_EQ(chainToInch->getMultiplier(), 20.1168 / 0.0254);
  EXPECT_EQ(chainToInch->getFromUnit(), 7);
  EXPECT_EQ(chainToInch->getToUnit(), 1);
  EXPECT_FALSE(
      std::unique_ptr<UnitConverter>(converters->getQuantityUnitConverter(2, 0, 5))->isIdentity())
      << "meter to metre multiplies by one, but is not the diagonal";

  units->unregisterUnit("furlong");
  EXPECT_EQ(converters->getTableSize(2), 49u);
  std::unique_ptr<UnitConverter> moved(converters->getQuantityUnitConverter(2, 6, 1));
  EXPECT_DOUBLE_EQ(moved->getMultiplier(), 20.1168 / 0.0254);
  EXPECT_EQ(moved->getFromUnit(), 6);
  std::unique_ptr<UnitConverter> back(converters->getQuantityUnitConverter(2, 4, 6));
  EXPECT_EQ(back->getToUnit(), 6);
}

TEST_F(Converters, ConnectedMeansAConverterIntoTheUnitThatIsNotTheIdentity) {
  UnitConverterManager::ConverterList list;
  for (auto [to, identity] : {std::pair{1, false}, std::pair{2, true}}) {
    list.push_back(std::make_unique<UnitConverter>(2.0, 0.0));
    list.back()->setToUnit(to);
    list.back()->setIdentity(identity);
  }
  EXPECT_TRUE(converters->checkForConnectivity(&list, 1));
  EXPECT_FALSE(converters->checkForConnectivity(&list, 2));
  EXPECT_FALSE(converters->checkForConnectivity(&list, 3));
}

// Each built-in unit's value in its quantity's first unit, as the product of the library's
// decimal factors (a factor after "/" divides), and for temperatures the offset.
struct BuiltinValue {
  int quantity;
  const char* unit;
  std::vector<const char*> factors;
  const char* offset;
};

using Fraction = boost::multiprecision::cpp_rational;

Fraction exactly(std::string decimal) {
  bool divides = decimal[0] == '/';
  if (divides) decimal.erase(0, 1);
  boost::multiprecision::cpp_int digits = 0, scale = 1;
  int exponent = 0;
  std::size_t point = decimal.find('.'), e = decimal.find('e');
  if (e != std::string::npos) exponent = std::stoi(decimal.substr(e + 1));
  for (std::size_t i = 0; i < std::min(e, decimal.size()); ++i) {
    if (decimal[i] == '-' || decimal[i] == '.') continue;
    digits = digits * 10 + (decimal[i] - '0');
    if (point != std::string::npos && i > point) --exponent;
  }
  for (int i = 0; i < std::abs(exponent); ++i) scale *= 10;
  Fraction value = exponent >= 0 ? Fraction(digits * scale) : Fraction(digits, scale);
  if (decimal[0] == '-') value = -value;
  return divides ? Fraction(1 / value) : value;
}

// Whether no double lies nearer to the exact value than `rounded`.
bool isNearest(double rounded, const Fraction& exact) {
  Fraction distance = abs(Fraction(rounded) - exact);
  for (double neighbour : {std::nextafter(rounded, -INFINITY), std::nextafter(rounded, INFINITY)}) {
    if (abs(Fraction(neighbour) - exact) < distance) return false;
  }
  return true;
}

PRISTINE_TEST_F(Converters, BuiltinPairsAreExactProductsRoundedOnce) {
  const BuiltinValue values[] = {
      {0, "item", {}, "0"},
      {0, "molecule", {"1"}, "0"},
      {0, "mole", {"6.02214199e+23", "1"}, "0"},
      {1, "gram", {}, "0"},
      {1, "ounce", {"28.34952312"}, "0"},
      {1, "pound", {"16", "28.34952312"}, "0"},
      {1, "ton", {"2000", "16", "28.34952312"}, "0"},
      {2, "meter", {}, "0"},
      {2, "inch", {"0.0254"}, "0"},
      {2, "foot", {"12", "0.0254"}, "0"},
      {2, "yard", {"36", "0.0254"}, "0"},
      {2, "mile", {"5280", "12", "0.0254"}, "0"},
      {2, "metre", {"1"}, "0"},
      {3, "second", {}, "0"},
      {3, "minute", {"60"}, "0"},
      {3, "hour", {"3600"}, "0"},
      {3, "day", {"86400"}, "0"},
      {3, "year", {"365.25", "86400"}, "0"},
      {4, "fahrenheit", {}, "0"},
      {4, "celsius", {"1.8"}, "32"},
      {4, "kelvin", {"1", "1.8"}, "-459.67"},  // 1.8 * -273.15 + 32
      {4, "Celsius", {"1", "1.8"}, "32"},
      {5, "ampere", {}, "0"},
      {5, "biot", {"/0.1"}, "0"},
      {6, "candela", {}, "0"},
      {6, "candle", {"1.01937"}, "0"},
  };
  for (const BuiltinValue& from : values) {
    for (const BuiltinValue& to : values) {
      if (from.quantity != to.quantity) continue;
      SCOPED_TRACE(std::string(from.unit) + " -> " + to.unit);
      Fraction fromScale = 1, toScale = 1;
      for (const char* factor : from.factors) fromScale *= exactly(factor);
      for (const char* factor : to.factors) toScale *= exactly(factor);
      UnitConverter entry =
          converters->tableEntry(from.quantity, units->getUnitIndex(from.quantity, from.unit),
                                 units->getUnitIndex(to.quantity, to.unit));
      EXPECT_TRUE(isNearest(entry.getMultiplier(), fromScale / toScale)) << entry.getMultiplier();
      EXPECT_TRUE(
          isNearest(entry.getOffset(), (exactly(from.offset) - exactly(to.offset)) / toScale))
          << entry.getOffset();
    }
  }
}

PRISTINE_TEST_F(Converters, TextsConvertedBeforeWarnAndRaiseAsOnFirstSight) {
  WarningCapture warnings;
  for (int use = 0; use < 2; ++use) {
    EXPECT_NEAR(units->convert(0.0, "kelvin", "fahrenheit"), -459.67, 1e-9);
    EXPECT_UNIT_ERROR_ID(units->convert(1.0, "meter", "second"), "Unit:ConversionDifferentQuants");
    EXPECT_UNIT_ERROR_ID(units->convert(1.0, "meter", "furlongs"), "Unit:NotFound");
  }
  EXPECT_EQ(warnings.identifiers(), std::vector<std::string>(2, "Unit:Deprecation"))
      << "a warning on every use";
}

#ifdef TW_COUNTS_ALLOCATIONS
PRISTINE_TEST_F(Converters, ConvertingBetweenTextsConvertedBeforeAllocatesNothing) {
  WarningHandler previous = utSetWarningHandler([](const std::string&, const WarningText&) {});
  const UnitComposition& hour = *units->verifyUnitCompositionString("hour");
  const UnitComposition& minute = *units->verifyUnitCompositionString("minute");
  units->convert(1.0, "kilometer/hour", "meter/second");
  units->convert(1.0, "kelvin", "fahrenheit");
  allocations = 0;
  double speed = units->convert(36.0, "kilometer/hour", "meter/second");
  double temperature = units->convert(0.0, "kelvin", "fahrenheit");
  double minutes = converters->getConverter(hour, minute).doConversion(2.0);
  long counted = allocations;
  allocations = -1;
  utSetWarningHandler(previous);
  EXPECT_EQ(counted, 0);
  EXPECT_DOUBLE_EQ(speed, 10.0);
  EXPECT_NEAR(temperature, -459.67, 1e-9);
  EXPECT_DOUBLE_EQ(minutes, 120.0);
}
#endif

PRISTINE_TEST_F(Converters, IntoAUnitSystem) {
  const UnitSystemApi* mks = UnitSystemManager::Instance()->getUnitSystemApi("MKS");
  std::unique_ptr<UnitConverterApi> newton(converters->getQuantityUnitConverterApi("dyne", mks));
  EXPECT_DOUBLE_EQ(newton->getMultiplier(), 1e-5);
  std::unique_ptr<UnitConverterApi> speed(
      converters->getQuantityUnitConverterApi("mile/hour", mks));
  EXPECT_DOUBLE_EQ(speed->getMultiplier(), 1609.344 / 3600);
}

PRISTINE_TEST_F(Converters, ATemperatureWrittenAsACompositionConvertsLikeItsUnit) {
  EXPECT_DOUBLE_EQ(between("kelvin*meter/meter", "kelvin")->doConversion(5.0), 5.0);
  EXPECT_DOUBLE_EQ(between("celsius*meter/meter", "kelvin")->doConversion(0.0), 273.15);
  EXPECT_DOUBLE_EQ(between("kelvin", "millikelvin*meter/meter")->doConversion(1.0), 1000.0)
      << "the prefix is looked for only on the first unit of the written order";
}

}  // namespace
}  // namespace TwUnits
