#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "host/ErrorIdException.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "units/UnitRepresentation.hpp"

namespace TwUnits {
namespace {

using Property = UnitRepresentationApi::UNIT_REP_PROPERTY;

TEST(UnitRepresentation, OnlyTheNameIsTrimmed) {
  UnitRepresentation unit;
  unit.setName("  furlong \t");
  unit.setAlias("  fur ");
  EXPECT_EQ(unit.getName(), "furlong");
  EXPECT_EQ(unit.getAlias(), "  fur ");
  UnitRepresentation direct(" a ", "meter", 2.0, 0.5, false);
  EXPECT_EQ(direct.getName(), " a ") << "the five-value constructor stores names untrimmed";
}

TEST(UnitRepresentation, ListenersHearEveryChangeBeforeItAndMayRefuseIt) {
  UnitRepresentation unit("a", "meter", 1.0, 0.0, true);
  std::vector<std::string> seen;
  unit.addChangeListener([&](const UnitRepresentationApi* u, Property property) {
    seen.push_back(std::to_string(property) + ":" + u->getName() + ":" +
                   std::to_string(u->getMultiplier()));
  });
  unit.setName("b");
  unit.setCompositionString("foot");
  unit.setAlias("x");
  unit.setMultiplier(2.0);
  unit.setOffset(1.0);
  EXPECT_EQ(seen, (std::vector<std::string>{"0:a:1.000000", "1:b:1.000000", "2:b:1.000000",
                                            "3:b:1.000000", "4:b:2.000000"}));
  unit.addChangeListener([](const UnitRepresentationApi*, Property) {
    throw new ErrorIdException("Test:Veto", "no");
  });
  std::function<void()> setters[] = {
      [&] { unit.setName("c"); },   [&] { unit.setCompositionString("inch"); },
      [&] { unit.setAlias("y"); },  [&] { unit.setMultiplier(3.0); },
      [&] { unit.setOffset(3.0); },
  };
  for (auto& setter : setters) EXPECT_UNIT_ERROR_ID(setter(), "Test:Veto");
  EXPECT_EQ(unit.getName() + unit.getCompositionString() + unit.getAlias(), "bfootx");
  EXPECT_EQ(unit.getMultiplier() + unit.getOffset(), 3.0);
}

TEST(UnitRepresentation, CloneCopiesTheDefinitionButNotAliasHostObjectOrListeners) {
  UnitRepresentation unit(" a ", "meter", 2.0, 0.5, false);
  unit.setAlias("x");
  int calls = 0;
  unit.addChangeListener([&](const UnitRepresentationApi*, Property) { ++calls; });
  std::unique_ptr<UnitRepresentation> clone(unit.clone());
  EXPECT_EQ(clone->getName(), "a");
  EXPECT_EQ(clone->getCompositionString(), "meter");
  EXPECT_EQ(clone->getMultiplier(), 2.0);
  EXPECT_EQ(clone->getOffset(), 0.5);
  EXPECT_FALSE(clone->getLibraryVisible());
  EXPECT_EQ(clone->getAlias(), "");
  clone->setMultiplier(9.0);
  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace TwUnits
