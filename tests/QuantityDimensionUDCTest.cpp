// The host class "PhysicalQuantity", driven through the host's dispatch.

#include <gtest/gtest.h>

#include "host/HostFunctions.hpp"
#include "host/ToolboxFunctions.hpp"
#include "host/UserException.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"
#include "tests/support/Pristine.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/udd/QuantityDimensionUDC.hpp"

namespace TwUnits {
namespace {

using QuantityClass = ModuleFixture;

const char* kExponents[] = {"Amount", "Mass",    "Length",           "Time",
                            "Temp",   "Current", "LuminousIntensity"};

PRISTINE_TEST_F(QuantityClass, EachExponentPropertyChangesOnlyItsOwn) {
  for (int e = 0; e < 7; ++e) {
    SCOPED_TRACE(kExponents[e]);
    UDInterface* quantity = construct("PhysicalQuantity");
    set(quantity, kExponents[e], num(2));
    for (int other = 0; other < 7; ++other)
      EXPECT_EQ(getNumber(quantity, kExponents[other]), other == e ? 2 : 0);
  }
  UDInterface* quantity = construct("PhysicalQuantity");
  EXPECT_UNIT_ERROR_ID(set(quantity, "Mass", num(1.5)), "CALVEX:expectedInteger");
  set(quantity, "name", text("speed2"));
  EXPECT_EQ(getText(quantity, "name"), "speed2");
}

PRISTINE_TEST_F(QuantityClass, RegisterPassesNameAndExponentsAsA1By7Row) {
  std::string name;
  std::vector<double> exponents;
  std::size_t rows = 0;
  hostRegisterFunction("zophregisterquantity", [&](int, HostArray**, int nrhs, HostArray** prhs) {
    ASSERT_EQ(nrhs, 2);
    name = prhs[0]->getString();
    rows = prhs[1]->getM();
    exponents.assign(prhs[1]->getPr(), prhs[1]->getPr() + prhs[1]->getNumberOfElements());
  });
  UDInterface* quantity = construct("PhysicalQuantity");
  set(quantity, "name", text("speed2"));
  set(quantity, "Length", num(1));
  set(quantity, "Time", num(-1));
  call(quantity, "register", 0);
  EXPECT_EQ(name, "speed2");
  EXPECT_EQ(rows, 1u);
  EXPECT_EQ(exponents, (std::vector<double>{0, 0, 1, -1, 0, 0, 0}));
}

PRISTINE_TEST_F(QuantityClass, TheToolboxFunctionRegistersAndRaisesTheRegistrysErrors) {
  hostRegisterToolboxFunctions();
  UDInterface* quantity = construct("PhysicalQuantity");
  set(quantity, "name", text("hyper"));
  set(quantity, "Length", num(5));
  call(quantity, "register", 0);
  EXPECT_EQ(PhysicalQuantityManager::Instance()->getQuantityIdx(std::string("hyper")), 37);
  EXPECT_UNIT_ERROR(
      call(quantity, "register", 0), "Unit:QuantityDuplicateName",
      "Unable to register physical quantity 'hyper' because a physical quantity with that name "
      "already exists.");
  hostRegisterFunction("zophregisterquantity", [](int, HostArray**, int, HostArray**) {
    throw fl::except::UserException("Toolbox:Refused", "refused by the toolbox");
  });
  EXPECT_UNIT_ERROR(call(quantity, "register", 0), "Toolbox:Refused", "refused by the toolbox");
}

}  // namespace
}  // namespace TwUnits
