// The host class "UnitSystem", driven through the host's dispatch.

#include <gtest/gtest.h>

#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"
#include "tests/support/Pristine.hpp"
#include "units/UnitSystemManager.hpp"
#include "units/udd/UnitSystemUDC.hpp"

namespace TwUnits {
namespace {

using UnitSystemClass = ModuleFixture;

const char* kUnitProperties[] = {"MassUnit", "AmountUnit",  "LengthUnit",           "TimeUnit",
                                 "TempUnit", "CurrentUnit", "LuminousIntensityUnit"};

PRISTINE_TEST_F(UnitSystemClass, UnsetUnitsAreReportedInOrder) {
  const char* errors[] = {"Unit:SystemMassTypeNotSet",
                          "Unit:SystemAmountTypeNotSet",
                          "Unit:SystemLengthTypeNotSet",
                          "Unit:SystemTimeTypeNotSet",
                          "Unit:SystemTemperatureTypeNotSet",
                          "Unit:SystemCurrentTypeNotSet",
                          "Unit:SystemLuminousIntensityTypeNotSet"};
  UDInterface* form = construct("UnitSystem");
  set(form, "Name", text("cgs"));
  for (int missing = 0; missing < 7; ++missing) {
    SCOPED_TRACE(kUnitProperties[missing]);
    for (int p = 0; p < 7; ++p) set(form, kUnitProperties[p], text(p < missing ? "gram" : ""));
    EXPECT_UNIT_ERROR_ID(call(form, "register", 0), errors[missing]);
  }
  // mass is tested before time, whichever else is missing
  for (int p = 0; p < 7; ++p) set(form, kUnitProperties[p], text(p == 0 || p == 3 ? "" : "x"));
  EXPECT_UNIT_ERROR(call(form, "register", 0), "Unit:SystemMassTypeNotSet",
                    "The mass in the UnitSystem must be set before registering the UnitSystem.");
}

PRISTINE_TEST_F(UnitSystemClass, RegistersACopyAndUnregistersByTheGivenName) {
  UDInterface* form = construct("UnitSystem");
  set(form, "Name", text("cgs"));
  const char* units[] = {"gram", "mole", "centimeter", "second", "kelvin", "ampere", "candela"};
  for (int p = 0; p < 7; ++p) set(form, kUnitProperties[p], text(units[p]));
  call(form, "register", 0);
  EXPECT_UNIT_ERROR(
      call(form, "register", 0), "Unit:SystemDuplicateName",
      "Unable to register UnitSystem 'cgs' because it already exists. Try removing the other "
      "instance with 'unregisterunitsystem' first or renaming this instance.");
  set(form, "MassUnit", text("kilogram"));
  EXPECT_EQ(UnitSystemManager::Instance()->getUnitSystemApi("cgs")->getMassType(), "gram");
  EXPECT_EQ(getText(form, "MassUnit"), "kilogram");

  std::vector<HostArrayPtr> args;
  args.push_back(text("MKS"));  // the argument counts, not the form's Name
  call(form, "unregister", 0, std::move(args));
  EXPECT_EQ(UnitSystemManager::Instance()->getUnitSystems().size(), 1u);
  args.clear();
  args.push_back(text("MKS"));
  EXPECT_UNIT_ERROR(call(form, "unregister", 0, std::move(args)), "Unit:SystemNotRegistered",
                    "Cannot unregister UnitSystem because it is not registered.");
  set(form, "Name", HostArrayPtr(HostArray::createDoubleMatrix(0, 0)));
  EXPECT_EQ(getText(form, "Name"), "");
}

}  // namespace
}  // namespace TwUnits
