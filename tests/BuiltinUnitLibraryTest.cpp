// The built-in unit library that the unit registry sets up.

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/ErrorCapture.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

class BuiltinLibrary : public testing::Test {
 protected:
  UnitManager* units = UnitManager::Instance();
};

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
