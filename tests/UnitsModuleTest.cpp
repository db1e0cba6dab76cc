// The module's frame: the manager's one object, the lifetimes of the host objects of units
// that are constructed and registered, and the protected call into host-language code. That
// every registered unit and prefix has a host object shows in the transcripts' lists.

#include <gtest/gtest.h>

#include "host/HostFunctions.hpp"
#include "host/UDDatabaseClient.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UserException.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"
#include "tests/support/Pristine.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

using UnitsModule = ModuleFixture;

PRISTINE_TEST_F(UnitsModule, ConstructingTheManagerTwiceYieldsTheSameObject) {
  UDInterfacePtr first(hostConstruct("UnitManager")), second(hostConstruct("UnitManager"));
  EXPECT_EQ(first.get(), second.get());
  EXPECT_EQ(first.get(), manager());
}

PRISTINE_TEST_F(UnitsModule, UnregisteringReleasesTheHostObjectOnce) {
  std::vector<HostArrayPtr> args;
  args.push_back(text("furlong"));
  args.push_back(text("meter"));
  args.push_back(num(201.168));
  Results made = call(manager(), "registerunit", 1, std::move(args));
  UDInterfacePtr held(made.handle(0)->getReference());
  made.values.clear();
  UnitManager::Instance()->unregisterUnit("furlong");
  EXPECT_FALSE(held->isValid());
  EXPECT_EQ(held->getLifecycleState(), UDInterface::kCreated);
  EXPECT_UNIT_ERROR_ID(getText(held.get(), "name"), "CALVEX:InvalidObject");
  // releasing our reference frees it; a double release would show under the sanitizer
}

PRISTINE_TEST_F(UnitsModule, AConstructedAndRegisteredObjectNeverDeletesTheRegisteredUnit) {
  UDInterface* unit = construct("Unit");
  set(unit, "name", text("furlong"));
  set(unit, "composition", text("meter"));
  set(unit, "conversionfactor", num(201.168));
  call(unit, "register", 0);
  EXPECT_EQ(UnitManager::Instance()->getUnitRepresentation("furlong")->getUDI(), unit);
  unit->destroy(UDDatabaseClient::getInternalClient());
  unit->destroy(UDDatabaseClient::getInternalClient());  // harmless
  EXPECT_DOUBLE_EQ(UnitManager::Instance()->convert(1.0, "furlong", "meter"), 201.168);
  UnitManager::Instance()->unregisterUnit("furlong");
}

PRISTINE_TEST_F(UnitsModule, AnUnregisteredConstructedObjectFreesItsOwnUnit) {
  UDInterface* unit = construct("Unit");
  set(unit, "name", text("2bad"));
  EXPECT_UNIT_ERROR_ID(call(unit, "register", 0), "Unit:NameInvalid");
  EXPECT_EQ(static_cast<UnitRepresentation*>(unit->getObject())->getUDI(), nullptr);
  UDInterface* same = construct("Unit");
  set(same, "name", text("kilometer"));
  set(same, "composition", text("meter"));
  set(same, "conversionfactor", num(1000));
  call(same, "register", 0);  // nothing to register: the object keeps its unit
  EXPECT_FALSE(UnitManager::Instance()->isUnitRegistered("kilometer"));
  EXPECT_EQ(getText(same, "name"), "kilometer");
}

// A host function's user error reaches the module's callers as an error of the host's. What
// the other kinds of failure become is in the interpreter's test.
PRISTINE_TEST_F(UnitsModule, AProtectedCallTurnsAUserErrorIntoAnError) {
  hostRegisterFunction("zophregisterquantity", [](int, HostArray**, int, HostArray**) {
    throw fl::except::UserException("User:Error", "user text");
  });
  EXPECT_UNIT_ERROR(call(construct("PhysicalQuantity"), "register", 0), "User:Error", "user text");
}

}  // namespace
}  // namespace TwUnits
