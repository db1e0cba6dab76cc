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

TEST_F(UnitSystems, NamesAreCaseSensitive) {
  EXPECT_UNIT_ERROR(
      systems->getUnitSystemApi("mks"), "Unit:SystemNotFound",
      "UnitSystem 'mks' does not exist. Type 'showunitsystems' to see available list.");
}

// A copy of "MKS" under another name, one unit changed.
std::unique_ptr<UnitSystem> mksWith(const char* name, void (UnitSystem::*set)(const std::string&),
                                    const char* unit) {
  auto system = std::make_unique<UnitSystem>(
      *static_cast<const UnitSystem*>(UnitSystemManager::Instance()->getUnitSystemApi("MKS")));
  system->setUnitSystemName(name);
  (system.get()->*set)(unit);
  return system;
}

PRISTINE_TEST_F(UnitSystems, RegistrationChecksNameThenDuplicatesThenEveryUnit) {
  struct Case {
    std::unique_ptr<UnitSystem> system;
    const char* identifier;
    const char* message;
  } cases[] = {
      {std::make_unique<UnitSystem>("2MKS"), "Unit:SystemNameInvalid",
       "Error registering unit system. See help for valid names."},
      {std::make_unique<UnitSystem>("MKS"), "Unit:SystemDuplicateName",
       "Unable to register UnitSystem 'MKS' because it already exists. Try removing the other "
       "instance with 'unregisterunitsystem' first or renaming this instance."},
      {std::make_unique<UnitSystem>("empty"), "Unit:NotFound",
       "Referenced unit '' does not exist."},
      {mksWith("typo", &UnitSystem::setMassType, "kilogramm"), "Unit:NotFound",
       "Referenced unit 'kilogramm' does not exist."},
      {mksWith("wrong", &UnitSystem::setMassType, "meter"), "CALVEX:badArgument",
       "The mass unit must be a unit of mass, not 'meter'."},
  };
  for (Case& c : cases) {
    SCOPED_TRACE(c.system->getUnitSystemName());
    EXPECT_UNIT_ERROR(systems->registerUnitSystem(c.system.get()), c.identifier, c.message);
  }
  EXPECT_EQ(systems->getUnitSystems().size(), 1u);
  std::unique_ptr<UnitSystem> cgs = mksWith("cgs", &UnitSystem::setLengthType, "centimeter");
  systems->registerUnitSystem(cgs.release());
  EXPECT_EQ(systems->getUnitSystemApi("cgs")->getLengthType(), "centimeter");
}

TEST_F(UnitSystems, CreatedSystemsAreEmptyAndCopiesIndependent) {
  std::unique_ptr<UnitSystemApi> created(systems->createUnitSystemApi());
  EXPECT_EQ(created->getUnitSystemName() + created->getMassType() + created->getTempType(), "");
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

  std::unique_ptr<UnitSystem> owned = mksWith("cgh", &UnitSystem::setMassType, "gram");
  owned->setLengthType("centimeter");
  owned->setTimeType("hour");
  UnitSystem* cgh = owned.get();
  systems->registerUnitSystem(owned.release());
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
