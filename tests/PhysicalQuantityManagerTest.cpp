#include <gtest/gtest.h>

#include <memory>

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

TEST_F(PhysicalQuantityRegistry, Lookups) {
  EXPECT_EQ(registry->getQuantityIdx(std::string("Dimensionless")), -1);
  EXPECT_EQ(registry->getQuantityDimension(registry->getNumQuantities()), nullptr);
  EXPECT_EQ(registry->getQuantityDimension(-1), nullptr);
  int pressure[7] = {0, 1, -1, -2, 0, 0, 0};
  EXPECT_STREQ(registry->getQuantityDimension(registry->getQuantityIdx(pressure))->getName(),
               "pressure");
  std::unique_ptr<QuantityDimension> canceling(
      registry->getCancelingDimensions(registry->getQuantityDimension(9)));
  EXPECT_EQ(canceling->getBaseQuantityMakeup(), "mass^-1*length^-2*time^2");
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

PRISTINE_TEST_F(PhysicalQuantityRegistry, AnonymousQuantitiesAreNumberedEvenWhenRegistrationFails) {
  auto meterTo = [&](int power) {
    UnitComposition composition(UnitBase(2, 0, -1));
    composition ^= power;
    registry->registerAnonymousPQ(&composition);
  };
  meterTo(7);
  meterTo(9);
  EXPECT_EQ(registry->getQuantityIdx(std::string("Unnamed_Quant_2")), 38);
  EXPECT_UNIT_ERROR_ID(meterTo(9), "Unit:QuantityDuplicateDimensions");
  meterTo(11);
  EXPECT_EQ(registry->getQuantityIdx(std::string("Unnamed_Quant_4")), 39);
  add("Unnamed_Quant_5",
      {0, 0, 13, 0, 0, 0, 0});  // a name that a user quantity took is passed over
  meterTo(15);
  EXPECT_EQ(registry->getQuantityIdx(std::string("Unnamed_Quant_6")), 41);
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
