// The built-in unit library that the unit registry sets up.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "tests/support/ErrorCapture.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitComposition.hpp"
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
      {"gallon", "liter", 1, 231.0 * inch * inch * inch / 1e-3},
      {"quart", "pint", 1, 2.0},
      {"calorie", "joule", 1, 4.1868},
      {"pound_force", "newton", 1, 32.17404855643045 * pound / 1000 * foot},
      {"acre", "meter^2", 1, 43560.0 * foot * foot},
      {"ares", "acre", 1, 100.0 / (43560.0 * foot * foot)},
      {"kelvin", "celsius", 0, -273.15},
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

TEST_F(BuiltinLibrary, NamesAndVisibility) {
  EXPECT_EQ(units->getUnitIndex(8, "litre"), 1);
  EXPECT_TRUE(units->isUnitBuiltin("dimensionless"));
  EXPECT_FALSE(units->isBaseUnit("acre"));
  EXPECT_TRUE(units->isBaseUnit("candle"));
  EXPECT_EQ(*units->getUnitComposition(36, 0), UnitComposition());
  EXPECT_EQ(units->getUnitCompositionAsString(17, "newton"), "(kilogram*meter)/second^2");

  // Of the built-in units only the deprecated temperature units are hidden, and warn when used.
  WarningCapture warnings;
  std::vector<std::string> warned, hidden;
  for (int q = 0; q < units->getNumQuantityLists(); ++q) {
    for (const std::string& name : units->getQuantityUnitStrings2(q)) {
      const std::size_t before = warnings.identifiers().size();
      units->verifyUnitCompositionString(name);
      if (warnings.identifiers().size() > before) warned.push_back(name);
      if (!units->getUnitRepresentation(name)->getLibraryVisible()) hidden.push_back(name);
    }
  }
  EXPECT_EQ(warned, (std::vector<std::string>{"fahrenheit", "celsius", "Celsius"}));
  EXPECT_EQ(hidden, warned);
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
