// The built-in unit library that the unit registry sets up.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "tests/support/ErrorCapture.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverter.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

class BuiltinLibrary : public testing::Test {
 protected:
  double convert(const char* from, const char* to, double value = 1.0) {
    WarningCapture quiet;  // the deprecated temperature units warn
    return units->convert(value, from, to);
  }

  UnitManager* units = UnitManager::Instance();
};

TEST_F(BuiltinLibrary, ConversionsAgainstHandComputedValues) {
  const double inch = 0.0254, foot = 12 * inch, pound = 16 * 28.34952312;
  struct Case {
    const char* from;
    const char* to;
    double value, expected;
  } cases[] = {
      {"mile", "meter", 1, 5280.0 * 12.0 * 0.0254},
      {"year", "second", 1, 365.25 * 86400.0},
      {"gallon", "liter", 1, 231.0 * inch * inch * inch / 1e-3},
      {"quart", "pint", 1, 2.0},
      {"calorie", "joule", 1, 4.1868},
      {"pound_force", "newton", 1, 32.17404855643045 * pound / 1000 * foot},
      {"acre", "meter^2", 1, 43560.0 * foot * foot},
      {"ares", "acre", 1, 100.0 / (43560.0 * foot * foot)},
      {"celsius", "fahrenheit", 0, 32.0},
      {"celsius", "fahrenheit", 100, 212.0},
      {"kelvin", "celsius", 0, -273.15},
      {"fahrenheit", "kelvin", 32, 273.15},
      {"Celsius", "celsius", 12.5, 12.5},
      {"metre", "meter", 1, 1.0},
      {"ton", "kilogram", 1, 2000 * pound / 1000},
      {"mole", "item", 1, 6.02214199e+23},
      {"ampere", "biot", 1, 0.1},
      {"candle", "candela", 1, 1.01937},
      {"dyne", "newton", 1, 1e-5},
      {"molarity", "millimole/liter", 1, 1000.0},
      {"watt", "joule/second", 1, 1.0},
      {"volt", "watt/ampere", 1, 1.0},
      {"farad", "coulomb/volt", 1, 1.0},
      {"tesla", "weber/meter^2", 1, 1.0},
      {"katal", "mole/second", 1, 1.0},
      {"hertz", "becquerel", 1, 1.0},
      {"gray", "sievert", 1, 1.0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.from) + " -> " + c.to);
    double result = convert(c.from, c.to, c.value);
    EXPECT_NEAR(result, c.expected, 1e-12 * std::max(1.0, std::fabs(c.expected)));
  }
}

TEST_F(BuiltinLibrary, EveryPairOfABaseQuantityRoundTripsThroughItsReverse) {
  UnitConverterManager* converters = UnitConverterManager::Instance();
  for (int q = 0; q <= 6; ++q) {
    int n = static_cast<int>(units->getNumUnits(q));
    for (int from = 0; from < n; ++from) {
      for (int to = 0; to < n; ++to) {
        SCOPED_TRACE(testing::Message() << "quantity " << q << ": " << from << " -> " << to);
        std::unique_ptr<UnitConverter> forward(converters->getQuantityUnitConverter(q, from, to));
        std::unique_ptr<UnitConverter> back(converters->getReverseUnitConverter(forward.get()));
        for (double x : {0.0, 1.0, -40.0, 273.15}) {
          EXPECT_NEAR(back->doConversion(forward->doConversion(x)), x,
                      1e-9 * std::max(1.0, std::fabs(x)));
        }
        // every direct entry agrees with the chain through unit 0
        std::unique_ptr<UnitConverter> toFirst(converters->getQuantityUnitConverter(q, from, 0));
        std::unique_ptr<UnitConverter> fromFirst(converters->getQuantityUnitConverter(q, 0, to));
        double viaFirst = fromFirst->doConversion(toFirst->doConversion(1.0));
        EXPECT_NEAR(forward->doConversion(1.0), viaFirst,
                    1e-9 * std::max(1.0, std::fabs(viaFirst)));
        EXPECT_EQ(forward->isIdentity(), from == to);
      }
    }
  }
}

TEST_F(BuiltinLibrary, NamesIndexesAndVisibility) {
  EXPECT_EQ(units->getUnitIndex(2, "metre"), 5);
  EXPECT_EQ(units->getUnitIndex(8, "liter"), 0);
  EXPECT_EQ(units->getUnitIndex(8, "litre"), 1);
  EXPECT_EQ(units->getUnitIndexAndPhysQuantIndex("katal"), UnitManager::UnitAddress(27, 0));
  EXPECT_TRUE(units->isUnitBuiltin("katal"));
  EXPECT_TRUE(units->isUnitBuiltin("item"));
  EXPECT_TRUE(units->isUnitBuiltin("dimensionless"));
  EXPECT_FALSE(units->isBaseUnit("acre"));
  EXPECT_TRUE(units->isBaseUnit("candle"));
  EXPECT_EQ(*units->getUnitComposition(0, 1), UnitComposition(UnitBase(0, 1, -1)));
  EXPECT_EQ(*units->getUnitComposition(36, 0), UnitComposition());
  EXPECT_FALSE(units->getUnitRepresentation("celsius")->getLibraryVisible());
  EXPECT_TRUE(units->getUnitRepresentation("kelvin")->getLibraryVisible());
  EXPECT_EQ(units->getUnitRepresentation("pound_force")->getMultiplier(), 32.17404855643045);
  EXPECT_EQ(units->getUnitCompositionAsString(17, "newton"), "(kilogram*meter)/second^2");
  EXPECT_EQ(units->getUnitCompositionAsString(2, "inch"), "inch");

  // Of the built-in units only the hidden temperature units warn when used.
  WarningCapture warnings;
  std::vector<std::string> warned;
  for (int q = 0; q < units->getNumQuantityLists(); ++q) {
    for (const std::string& name : units->getQuantityUnitStrings2(q)) {
      const std::size_t before = warnings.identifiers().size();
      units->verifyUnitCompositionString(name);
      if (warnings.identifiers().size() > before) warned.push_back(name);
    }
  }
  EXPECT_EQ(warned, (std::vector<std::string>{"fahrenheit", "celsius", "Celsius"}));
}

TEST_F(BuiltinLibrary, BuiltinUnitsStayAsTheyAre) {
  EXPECT_UNIT_ERROR_ID(units->unregisterUnit("dimensionless"), "Unit:CannotUnregisterBuiltin");
  // "dimensionless" is not guarded by a change listener, but stays unregistrable
  UnitRepresentation* dimensionless = units->getUnitRepresentation("dimensionless");
  dimensionless->setAlias("none");
  EXPECT_EQ(dimensionless->getAlias(), "none");
}

}  // namespace
}  // namespace TwUnits
