#include <gtest/gtest.h>

#include <set>

#include "tests/support/ErrorCapture.hpp"
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
  EXPECT_TRUE(UnitBase(2, 0, -1) < UnitBase(UnitBase::kIndexLimit - 1, 0, -1));
  const UnitBase largest(UnitBase::kIndexLimit - 1, UnitBase::kIndexLimit - 2,
                         UnitBase::kPrefixLimit - 1);
  EXPECT_EQ(largest.getPQIdx(), UnitBase::kIndexLimit - 1);
  EXPECT_EQ(largest.getUnitIdx(), UnitBase::kIndexLimit - 2);
  EXPECT_EQ(largest.getPrefixIdx(), UnitBase::kPrefixLimit - 1);
  // Indexes that the packed unit cannot hold are refused, never cut.
  struct Indexes {
    std::uint32_t quantity, unit;
    std::int32_t prefix;
  };
  for (Indexes bad : {Indexes{UnitBase::kIndexLimit, 0, -1}, Indexes{0, UnitBase::kIndexLimit, -1},
                      Indexes{0, 0, UnitBase::kPrefixLimit}, Indexes{0, 0, -2}}) {
    EXPECT_EQ(captureError([&] { UnitBase(bad.quantity, bad.unit, bad.prefix); })->identifier,
              "CALVEX:badArgument");
  }
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
