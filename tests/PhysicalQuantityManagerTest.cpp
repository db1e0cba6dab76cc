#include <gtest/gtest.h>

#include <memory>

#include "host/ErrorIdException.hpp"
#include "host/JavaBridge.hpp"
#include "host/StringVector.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/Pristine.hpp"
#include "tests/support/RegistrySnapshot.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

class PhysicalQuantityRegistry : public testing::Test {
 protected:
  void SetUp() override { UnitManager::Instance(); }

  // Registers a new quantity; the registry owns it on success.
  void add(const char* name, std::array<int, 7> exponents) {
    auto quantity = std::make_unique<QuantityDimension>(exponents.data(), name);
    registry->registerPhysicalQuantity(quantity.get());
    quantity.release();
  }

  PhysicalQuantityManager* registry = PhysicalQuantityManager::Instance();
};

PRISTINE_TEST_F(PhysicalQuantityRegistry, BuiltinQuantities) {
  EXPECT_EQ(registry->getNumQuantities(), 37);
  EXPECT_EQ(registry->getBuiltinCount(), 37);
  EXPECT_EQ(registry->getQuantityIdx(std::string("dimensionless")), 36);
  EXPECT_EQ(registry->getQuantityIdx(std::string("Dimensionless")), -1);
  EXPECT_EQ(registry->getQuantityIdx(std::string("luminous_intensity")), 6);
  EXPECT_EQ(registry->getQuantityDimension(37), nullptr);
  EXPECT_EQ(registry->getQuantityDimension(-1), nullptr);
  int pressure[7] = {0, 1, -1, -2, 0, 0, 0};
  EXPECT_EQ(registry->getQuantityIdx(pressure), 12);
  std::unique_ptr<StringVector> names(registry->getAllQuantityTypeStrings());
  ASSERT_EQ(names->size(), 37);
  EXPECT_STREQ(names->elementAt(28), "one_over_amount_time");
  std::unique_ptr<QuantityDimension> canceling(
      registry->getCancelingDimensions(registry->getQuantityDimension(9)));
  EXPECT_EQ(canceling->getBaseQuantityMakeup(), "mass^-1*length^-2*time^2");
}

PRISTINE_TEST_F(PhysicalQuantityRegistry, ChecksRunInOrderAndFirstConflictDecides) {
  RegistrySnapshot before = RegistrySnapshot::take();
  int calls = 0;
  registry->addPhysicalQuantityRegisteredListener([&](const QuantityDimensionApi*) { ++calls; });
  struct Case {
    const char* name;
    std::array<int, 7> exponents;
    const char* identifier;
    const char* message;
  } cases[] = {
      // the name test comes before any duplicate test, even with taken dimensions
      {"2speed",
       {0, 0, 1, -1, 0, 0, 0},
       "Unit:QuantityNameInvalid",
       "Error registering physical quantity. See help for valid names."},
      {"",
       {0, 0, 5, 0, 0, 0, 0},
       "Unit:QuantityNameInvalid",
       "Error registering physical quantity. See help for valid names."},
      // an identifier, but a number in a quantity composition
      {"NaN",
       {0, 0, 5, 0, 0, 0, 0},
       "Unit:QuantityNameInvalid",
       "Error registering physical quantity. See help for valid names."},
      {"velocity2",
       {0, 0, 1, -1, 0, 0, 0},
       "Unit:QuantityDuplicateDimensions",
       "Unable to register physical quantity 'velocity2' because physical quantity 'velocity' has "
       "matching "
       "dimensions."},
      {"nothing",
       {0, 0, 0, 0, 0, 0, 0},
       "Unit:QuantityDuplicateDimensions",
       "Unable to register physical quantity 'nothing' because physical quantity 'dimensionless' "
       "has matching "
       "dimensions."},
      // dimensions of entry 3 ("time") and the name of entry 20: entry 3 decides
      {"capacitance",
       {0, 0, 0, 1, 0, 0, 0},
       "Unit:QuantityDuplicateDimensions",
       "Unable to register physical quantity 'capacitance' because physical quantity 'time' has "
       "matching "
       "dimensions."},
      {"mass",
       {0, 0, 9, 0, 0, 0, 0},
       "Unit:QuantityDuplicateName",
       "Unable to register physical quantity 'mass' because a physical quantity with that name "
       "already exists."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QuantityDimension refused(c.exponents.data(), c.name);
    EXPECT_UNIT_ERROR(registry->registerPhysicalQuantity(&refused), c.identifier, c.message);
  }
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(RegistrySnapshot::take(), before);
}

PRISTINE_TEST_F(PhysicalQuantityRegistry, RemovalShiftsLaterIndexesAndTellsListenersFirst) {
  add("x", {0, 0, 7, 0, 0, 0, 0});
  add("y", {0, 0, 8, 0, 0, 0, 0});
  ASSERT_EQ(registry->getQuantityIdx(std::string("y")), 38);
  std::vector<std::pair<std::string, unsigned long>> seen;
  registry->addPhysicalQuantityUnregisteredListener(
      [&](const QuantityDimensionApi* q, unsigned long index) {
        // still in place while the listeners run
        EXPECT_EQ(registry->getQuantityIdx(std::string(q->getName())), static_cast<int>(index));
        seen.emplace_back(q->getName(), index);
      });
  registry->unregisterPhysicalQuantity("x");
  EXPECT_EQ(seen, (std::vector<std::pair<std::string, unsigned long>>{{"x", 37}}));
  EXPECT_EQ(registry->getQuantityIdx(std::string("y")), 37);
  EXPECT_EQ(registry->getQuantityDimension(38), nullptr);
  EXPECT_EQ(registry->getQuantityTypeNames().at(37), "y");
}

PRISTINE_TEST_F(PhysicalQuantityRegistry, RefusedRemovalChangesNothingAndCallsNoListener) {
  int calls = 0;
  registry->addPhysicalQuantityUnregisteredListener(
      [&](const QuantityDimensionApi*, unsigned long) { ++calls; });
  RegistrySnapshot before = RegistrySnapshot::take();
  EXPECT_UNIT_ERROR(registry->unregisterPhysicalQuantity("time"),
                    "Unit:CannotUnregisterBuiltinQuantity",
                    "Removal of built-in physical quantities is not allowed.");
  EXPECT_UNIT_ERROR(registry->unregisterPhysicalQuantity("speed"), "Unit:QuantityNotFound",
                    "Referenced physical quantity 'speed' does not exist.");
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(RegistrySnapshot::take(), before);
}

PRISTINE_TEST(PhysicalQuantityRemoval, AUnitElsewhereRefusesBeforeAnythingChangesOrIsAnnounced) {
  // A removal that a unit elsewhere refuses posts no change event and removes no unit.
  hostSetUsingJava(true);  // before the registries create the change-event sender
  UnitManager* units = UnitManager::Instance();
  PhysicalQuantityManager* registry = PhysicalQuantityManager::Instance();
  int x[7] = {0, 0, 7, 0, 0, 0, 0};
  registry->registerPhysicalQuantity(new QuantityDimension(x, "x"));
  units->registerUnit(new UnitRepresentation("xa", "meter^7", 1.0, 0.0, true));
  units->registerUnit(new UnitRepresentation("xb", "meter^7", 2.0, 0.0, true));
  units->registerUnit(new UnitRepresentation("xa_rate", "xa/second", 1.0, 0.0, true));
  std::vector<std::string> heard;
  units->addUnitUnregisteredListener(
      [&](const UnitRepresentationApi* unit) { heard.push_back(unit->getName()); });
  hostClearJavaEventQueue();
  RegistrySnapshot before = RegistrySnapshot::take();
  EXPECT_UNIT_ERROR(registry->unregisterPhysicalQuantity("x"), "Unit:BeingUsed",
                    "Cannot unregister unit because it is being used by unit 'xa_rate'.");
  EXPECT_EQ(RegistrySnapshot::take(), before);
  EXPECT_TRUE(heard.empty());
  EXPECT_TRUE(hostJavaEventQueue().empty());
  units->unregisterUnit("xa_rate");
  registry->unregisterPhysicalQuantity("x");
  EXPECT_EQ(heard, (std::vector<std::string>{"xa_rate", "xb", "xa"}));
}

PRISTINE_TEST_F(PhysicalQuantityRegistry, ListenersAfterTheUnitRegistryCannotRefuseARemoval) {
  add("x", {0, 0, 7, 0, 0, 0, 0});
  registry->addPhysicalQuantityUnregisteredListener([](const QuantityDimensionApi*, unsigned long) {
    throw new ErrorIdException("Test:Refused", "no");
  });
  EXPECT_UNIT_ERROR_ID(registry->unregisterPhysicalQuantity("x"), "Test:Refused");
  EXPECT_EQ(registry->getQuantityIdx(std::string("x")), -1);
  EXPECT_EQ(UnitManager::Instance()->getNumQuantityLists(), registry->getNumQuantities());
}

PRISTINE_TEST_F(PhysicalQuantityRegistry, AnonymousQuantitiesAreNumberedEvenWhenRegistrationFails) {
  UnitComposition meterTo7(UnitBase(2, 0, -1));
  meterTo7 ^= 7;
  registry->registerAnonymousPQ(&meterTo7);
  EXPECT_EQ(registry->getQuantityIdx(std::string("Unnamed_Quant_1")), 37);
  UnitComposition meterTo9(UnitBase(2, 0, -1));
  meterTo9 ^= 9;
  registry->registerAnonymousPQ(&meterTo9);
  EXPECT_EQ(registry->getQuantityIdx(std::string("Unnamed_Quant_2")), 38);
  EXPECT_UNIT_ERROR_ID(registry->registerAnonymousPQ(&meterTo9),
                       "Unit:QuantityDuplicateDimensions");
  UnitComposition meterTo11(UnitBase(2, 0, -1));
  meterTo11 ^= 11;
  registry->registerAnonymousPQ(&meterTo11);
  EXPECT_EQ(registry->getQuantityIdx(std::string("Unnamed_Quant_4")), 39);
  // a name that a user quantity took is passed over
  add("Unnamed_Quant_5", {0, 0, 13, 0, 0, 0, 0});
  UnitComposition meterTo15(UnitBase(2, 0, -1));
  meterTo15 ^= 15;
  registry->registerAnonymousPQ(&meterTo15);
  EXPECT_EQ(registry->getQuantityIdx(std::string("Unnamed_Quant_6")), 41);
}

PRISTINE_TEST_F(PhysicalQuantityRegistry, ListenersRunInOrderOfAddition) {
  std::vector<int> order;
  registry->addPhysicalQuantityRegisteredListener(
      [&](const QuantityDimensionApi*) { order.push_back(1); });
  registry->addPhysicalQuantityRegisteredListener(
      [&](const QuantityDimensionApi*) { order.push_back(2); });
  add("x", {0, 0, 7, 0, 0, 0, 0});
  EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

PRISTINE_TEST_F(PhysicalQuantityRegistry, CreatedQuantitiesBelongToTheCaller) {
  std::unique_ptr<QuantityDimensionApi> empty(registry->createQuantityDimensionApi());
  EXPECT_TRUE(empty->isDimensionless());
  std::unique_ptr<QuantityDimensionApi> copy(
      registry->createQuantityDimensionApi(registry->getQuantityDimensionApi(9)));
  EXPECT_STREQ(copy->getName(), "energy");
  EXPECT_EQ(registry->getQuantityIdx(copy.get()), 9);
}

}  // namespace
}  // namespace TwUnits
