#include <gtest/gtest.h>

#include <memory>

#include "tests/support/ErrorCapture.hpp"
#include "tests/support/Pristine.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitSystemManager.hpp"

namespace TwUnits {
namespace {

class UnitSystems : public testing::Test {
 protected:
  void SetUp() override { UnitManager::Instance(); }

  UnitSystemManager* systems = UnitSystemManager::Instance();
};

PRISTINE_TEST_F(UnitSystems, BuiltinMKS) {
  ASSERT_EQ(systems->getUnitSystems().size(), 1u);
  const UnitSystemApi* mks = systems->getUnitSystemApi("MKS");
  EXPECT_EQ(mks->getMassType(), "kilogram");
  EXPECT_EQ(mks->getAmountType(), "mole");
  EXPECT_EQ(mks->getLuminousIntensityType(), "candela");
  EXPECT_UNIT_ERROR(
      systems->getUnitSystemApi("mks"), "Unit:SystemNotFound",
      "UnitSystem 'mks' does not exist. Type 'showunitsystems' to see available list.");
}

PRISTINE_TEST_F(UnitSystems, RegistrationChecksNameThenDuplicates) {
  UnitSystem invalid("2MKS"), duplicate("MKS");
  EXPECT_UNIT_ERROR(systems->registerUnitSystem(&invalid), "Unit:SystemNameInvalid",
                    "Error registering unit system. See help for valid names.");
  EXPECT_UNIT_ERROR(systems->registerUnitSystem(&duplicate), "Unit:SystemDuplicateName",
                    "Unable to register UnitSystem 'MKS' because it already exists. Try removing "
                    "the other instance "
                    "with 'unregisterunitsystem' first or renaming this instance.");
  EXPECT_EQ(systems->getUnitSystems().size(), 1u);
  systems->registerUnitSystem(new UnitSystem("empty"));  // unit names are not checked here
  EXPECT_EQ(systems->getUnitSystemApi("empty")->getMassType(), "");
}

PRISTINE_TEST_F(UnitSystems, RemovalIsByNameAndNothingProtectsMKS) {
  systems->registerUnitSystem(new UnitSystem("cgs"));
  systems->unregisterUnitSystem("MKS");
  EXPECT_UNIT_ERROR(systems->unregisterUnitSystem("MKS"), "Unit:SystemNotRegistered",
                    "Cannot unregister UnitSystem because it is not registered.");
  ASSERT_EQ(systems->getUnitSystems().size(), 1u);
  EXPECT_EQ(systems->getUnitSystems()[0]->getUnitSystemName(), "cgs");
}

PRISTINE_TEST_F(UnitSystems, CreatedSystemsAreEmptyAndCopiesIndependent) {
  std::unique_ptr<UnitSystemApi> created(systems->createUnitSystemApi());
  for (const std::string* field :
       {&created->getUnitSystemName(), &created->getMassType(), &created->getAmountType(),
        &created->getLengthType(), &created->getTimeType(), &created->getTempType(),
        &created->getCurrentType(), &created->getLuminousIntensityType()}) {
    EXPECT_EQ(*field, "");
  }
  created->setTimeType(" hour ");
  std::unique_ptr<UnitSystemApi> copy(created->clone());
  created->setTimeType("day");
  EXPECT_EQ(copy->getTimeType(), " hour ") << "setters store the text untouched";
}

PRISTINE_TEST_F(UnitSystems, CompositionsWrittenInASystem) {
  UnitManager* units = UnitManager::Instance();
  std::pair<double, double> factor{0, 0};
  std::unique_ptr<UnitComposition> newton(
      units->createUnitCompApiForUnitSystem("newton", systems->getUnitSystemApi("MKS"), factor));
  EXPECT_EQ(newton->getCompositionString(), "kilogram*meter/second^2");
  EXPECT_EQ(factor, (std::pair<double, double>{1.0, 0.0}));

  auto* cgh = new UnitSystem("cgh");
  cgh->setMassType("gram");
  cgh->setLengthType("centimeter");
  cgh->setTimeType("hour");
  systems->registerUnitSystem(cgh);
  std::unique_ptr<UnitComposition> pressure(
      units->createUnitCompApiForUnitSystem("pascal", cgh, factor));
  EXPECT_EQ(pressure->getCompositionString(), "gram/(centimeter*hour^2)");
  EXPECT_DOUBLE_EQ(factor.first, 1000.0 / 100.0 * 3600.0 * 3600.0);

  std::unique_ptr<UnitComposition> temperature(units->createUnitCompApiForUnitSystem(
      "fahrenheit", systems->getUnitSystemApi("MKS"), factor));
  EXPECT_EQ(temperature->getCompositionString(), "kelvin");
  EXPECT_NEAR(factor.second, 273.15 - 32.0 / 1.8, 1e-9);

  factor = {7, 7};
  EXPECT_UNIT_ERROR_ID(units->createUnitCompApiForUnitSystem("furlongs", cgh, factor),
                       "Unit:NotFound");
  EXPECT_EQ(factor, (std::pair<double, double>{7, 7}));
}

}  // namespace
}  // namespace TwUnits
