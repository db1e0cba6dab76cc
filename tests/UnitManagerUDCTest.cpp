// The host class "UnitManager", for what the shell cannot reach (tests/transcripts/classes.cvx
// has the rest): texts with a NUL byte, a quantity removed behind the manager's back, the
// composition limit.

#include <gtest/gtest.h>

#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"
#include "tests/support/Pristine.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

class ManagerClass : public ModuleFixture {
 protected:
  template <typename... Args>
  Results run(const char* method, int nargout, Args... args) {
    std::vector<HostArrayPtr> list;
    (list.push_back(std::move(args)), ...);
    return call(manager(), method, nargout, std::move(list));
  }
  std::vector<std::string> createdQuantities() {
    std::vector<std::string> names;
    HostArrayPtr created = get(manager(), "CreatedQuantities");
    for (std::size_t i = 0; i < created->getNumberOfElements(); ++i)
      names.push_back(getText(created->getHandle(i), "name"));
    return names;
  }
};

PRISTINE_TEST_F(ManagerClass, TextsWithANulByteAreRefusedNotCut) {
  auto withNul = [](const char* before, const char* after) {
    return HostArrayPtr(HostArray::createString(std::string(before) + '\0' + after));
  };
  EXPECT_UNIT_ERROR(run("registerunit", 1, withNul("ab", "cd"), text("meter"), num(3)),
                    "CALVEX:badArgument", "The text must not hold a NUL byte.");
  EXPECT_FALSE(UnitManager::Instance()->isUnitRegistered("ab"));
  EXPECT_UNIT_ERROR_ID(
      run("calculateconversion", 1, withNul("meter", "junk"), text("meter"), num(1)),
      "CALVEX:badArgument");
}

PRISTINE_TEST_F(ManagerClass, AQuantityRemovedBehindItsBackStaysListedUntilANamesakeComes) {
  run("registerphysicalquantity", 0, text("hyper"), text("length^5"));
  run("registerphysicalquantity", 0, text("odd"), text("length^6"));
  PhysicalQuantityManager::Instance()->unregisterPhysicalQuantity("hyper");
  EXPECT_EQ(createdQuantities(), (std::vector<std::string>{"hyper", "odd"}));
  run("registerphysicalquantity", 0, text("hyper"), row({0, 0, 7, 0, 0, 0, 0}));
  EXPECT_EQ(createdQuantities(), (std::vector<std::string>{"odd", "hyper"}));
  EXPECT_EQ(getNumber(get(manager(), "CreatedQuantities")->getHandle(1), "Length"), 7);
}

PRISTINE_TEST_F(ManagerClass, CompositionsAreLimitedToAHundredParts) {
  std::string many = "meter";
  for (int i = 1; i <= 100; ++i) {
    run("registerunit", 1, text(("u" + std::to_string(i)).c_str()), text("meter"), num(i + 1));
    many += "*u" + std::to_string(i);
  }
  EXPECT_UNIT_ERROR(run("parsecomposition", 1, text(many.c_str())), "Unit:CompositionLimit",
                    "Compositions are limited to 100 parts.");
  many = many.substr(0, many.rfind('*'));
  EXPECT_EQ(run("parsecomposition", 1, text(many.c_str())).texts(0).size(), 100u);
}

}  // namespace
}  // namespace TwUnits
