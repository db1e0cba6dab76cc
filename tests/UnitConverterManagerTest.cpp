#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "tests/support/ErrorCapture.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitSystemManager.hpp"

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

TEST_F(Converters, ConverterValues) {
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
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.from) + " -> " + c.to);
    auto converter = between(c.from, c.to);
    EXPECT_NEAR(converter->getMultiplier(), c.multiplier, 1e-12 * c.multiplier);
    EXPECT_NEAR(converter->getOffset(), c.offset, 1e-9);
  }
}

TEST_F(Converters, ConversionErrors) {
  struct Case {
    const char* from;
    const char* to;
    const char* identifier;
  } cases[] = {
      {"meter", "second", "Unit:ConversionDifferentQuants"},
      {"meter^5", "second^5", "Unit:ConversionDifferentQuants"},
      {"millikelvin", "kelvin", "Unit:OffsetConversionWithPrefixNotAllowed"},
      {"kelvin", "millikelvin", "Unit:OffsetConversionWithPrefixNotAllowed"},
      {"celsius/second", "kelvin/second", "Unit:ConversionMixedOffset"},
      {"meter*millicelsius/meter", "fahrenheit", "Unit:OffsetConversionWithPrefixNotAllowed"},
      {"celsius*second/second", "kelvin/second", "Unit:ConversionDifferentQuants"},
      {"meter*", "meter", "Unit:BadUnitCompositionParse"},
      {"meter", "furlongs", "Unit:NotFound"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.from) + " -> " + c.to);
    EXPECT_UNIT_ERROR_ID(between(c.from, c.to), c.identifier);
  }
}

TEST_F(Converters, ReverseConverters) {
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

TEST_F(Converters, TablesGrowAndShrinkWithBaseUnits) {
  EXPECT_EQ(converters->getQuantityUnitConverter(7, 0, 1), nullptr);
  EXPECT_THROW(converters->getQuantityUnitConverter(2, 0, 6), std::out_of_range);
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

  units->unregisterUnit("furlong");
  EXPECT_EQ(converters->getTableSize(2), 49u);
  std::unique_ptr<UnitConverter> moved(converters->getQuantityUnitConverter(2, 6, 1));
  EXPECT_DOUBLE_EQ(moved->getMultiplier(), 20.1168 / 0.0254);
  EXPECT_EQ(moved->getFromUnit(), 6);
  std::unique_ptr<UnitConverter> back(converters->getQuantityUnitConverter(2, 4, 6));
  EXPECT_EQ(back->getToUnit(), 6);
}

TEST_F(Converters, IntoAUnitSystem) {
  const UnitSystemApi* mks = UnitSystemManager::Instance()->getUnitSystemApi("MKS");
  std::unique_ptr<UnitConverterApi> newton(converters->getQuantityUnitConverterApi("dyne", mks));
  EXPECT_DOUBLE_EQ(newton->getMultiplier(), 1e-5);
  std::unique_ptr<UnitConverterApi> speed(
      converters->getQuantityUnitConverterApi("mile/hour", mks));
  EXPECT_DOUBLE_EQ(speed->getMultiplier(), 1609.344 / 3600);
}

TEST_F(Converters, ATemperatureWrittenAsACompositionConvertsLikeItsUnit) {
  EXPECT_DOUBLE_EQ(between("kelvin*meter/meter", "kelvin")->doConversion(5.0), 5.0);
  EXPECT_DOUBLE_EQ(between("celsius*meter/meter", "kelvin")->doConversion(0.0), 273.15);
  EXPECT_DOUBLE_EQ(between("kelvin", "millikelvin*meter/meter")->doConversion(1.0), 1000.0)
      << "the prefix is looked for only on the first unit of the written order";
}

}  // namespace
}  // namespace TwUnits
