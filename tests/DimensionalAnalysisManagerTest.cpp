#include <gtest/gtest.h>

#include <memory>

#include "tests/support/Pristine.hpp"
#include "units/DimensionalAnalysisManager.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

PRISTINE_TEST(DimensionalAnalysis, TwoCompositions) {
  const DimensionalAnalysisManagerApi* checker =
      UnitManager::Instance()->getDimensionalAnalysisManagerApi();
  struct Case {
    const char* first;
    const char* second;
    int code;
  } cases[] = {
      {"mole/liter", "molarity", 0},
      {"kilogram/(meter*second^2)", "pascal", 0},
      {"meter^5", "(meter*meter)^2*millimeter", 0},  // an anonymous quantity matches itself
      {"mole/liter", "mole", 1},
      {"furlongs", "meter", 2},
      {"meter", "furlongs", 3},
      {"furlongs", "parsecs", 2},
      {"meter*", "meter", 2},
      {"meter", "2*meter", 3},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.first) + " vs " + c.second);
    EXPECT_EQ(checker->checkDimensionsMatch(c.first, c.second), c.code);
  }
}

TEST(DimensionalAnalysis, CompositionAgainstAQuantityOrAComposition) {
  UnitManager* units = UnitManager::Instance();
  DimensionalAnalysisManager* checker = DimensionalAnalysisManager::Instance();
  EXPECT_EQ(checker->checkDimensionsMatch("newton", 17), 0);
  EXPECT_EQ(checker->checkDimensionsMatch("newton", 9), 1);
  EXPECT_EQ(checker->checkDimensionsMatch("furlongs", 9), 2);
  EXPECT_EQ(checker->checkDimensionsMatch("joule", units->verifyUnitCompositionString("calorie")),
            0);
  EXPECT_EQ(checker->checkDimensionsMatch("joule", units->verifyUnitCompositionString("watt")), 1);
  UnitRepresentation unit("x", "meter", 1.0, 0.0, true);
  EXPECT_EQ(checker->checkDimensionsMatch("second", &unit), 0);
  EXPECT_EQ(checker->checkDimensionsMatch(&unit, &unit), 0);
  EXPECT_EQ(checker->checkDimensionsMatch(&unit, 3), 0);
}

}  // namespace
}  // namespace TwUnits
