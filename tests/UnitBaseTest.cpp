#include <gtest/gtest.h>

#include <set>

#include "units/UnitBase.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

TEST(UnitBase, OrderIgnoresPrefixesAndKeepsInsertionOrderOfEquals) {
  std::multiset<UnitBase> units;
  units.insert(UnitBase(2, 0, 3));   // kilometer
  units.insert(UnitBase(1, 0, -1));  // gram
  units.insert(UnitBase(2, 0, -1));  // meter, equivalent to kilometer
  units.insert(UnitBase(2, 1, -1));  // inch
  std::vector<std::int32_t> prefixes;
  for (const UnitBase& unit : units) prefixes.push_back(unit.getPrefixIdx());
  EXPECT_EQ(prefixes, (std::vector<std::int32_t>{-1, 3, -1, -1}));
  // quantity indexes compare unsigned
  EXPECT_TRUE(UnitBase(2, 0, -1) < UnitBase(0xFFFFFFFFu, 0, -1));
  EXPECT_TRUE(UnitBase(1, 9, -1).lessThanPQOnly(UnitBase(2, 0, -1)));
  EXPECT_FALSE(UnitBase(2, 0, -1).lessThanPQOnly(UnitBase(2, 5, -1)));
}

TEST(UnitBase, DivisionGivesTheFactorBetweenUnits) {
  UnitManager::Instance();
  EXPECT_EQ(UnitBase(2, 0, -1) / UnitBase(2, 0, -1), 1.0);
  EXPECT_DOUBLE_EQ(UnitBase(2, 2, -1) / UnitBase(2, 1, -1), 1.0 / 12.0);  // foot / inch
  EXPECT_DOUBLE_EQ(UnitBase(2, 0, 3) / UnitBase(2, 0, -1), 1000.0);       // kilometer / meter
  EXPECT_DOUBLE_EQ(UnitBase(2, 0, 8) / UnitBase(2, 0, 3), 0.0);  // milli / kilo rounds to 0
}

}  // namespace
}  // namespace TwUnits
