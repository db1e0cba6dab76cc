// The host class "Unit", driven through the host's dispatch.

#include <gtest/gtest.h>

#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"
#include "tests/support/Pristine.hpp"
#include "units/UnitManager.hpp"
#include "units/udd/UnitsUDC.hpp"

namespace TwUnits {
namespace {

class UnitClass : public ModuleFixture {
 protected:
  UDInterface* unit(const char* name, const char* composition, double factor, double offset = 0.0) {
    UDInterface* object = construct("Unit");
    set(object, "name", text(name));
    set(object, "composition", text(composition));
    set(object, "conversionfactor", num(factor));
    set(object, "conversionoffset", num(offset));
    return object;
  }
  std::string displayed(UDInterface* object) {
    ConsoleCapture console;
    call(object, "display", 0);
    return console.text();
  }
};

const char* kBanner =
    "\n   Unit Object Array\n\n   Index:  Name:             Composition:        Multiplier: "
    "Offset:\n\n";

PRISTINE_TEST_F(UnitClass, DisplayLinesByteForByte) {
  struct Case {
    const char* name;
    const char* composition;
    double factor, offset;
    const char* line;
  } cases[] = {
      {"minute", "second", 60, 0,
       "   1       minute            second              60          0\n"},
      // 17 characters are printed whole; 18 are cut to 14 and "... "
      {"abcdefghijklmnopq", "second", 1, 0,
       "   1       abcdefghijklmnopq second              1           0\n"},
      {"abcdefghijklmnopqr", "second", 1, 0,
       "   1       abcdefghijklmn... second              1           0\n"},
      {"x", "meter*second/second", 1, 0,
       "   1       x                 meter*second/second 1           0\n"},
      {"x", "meter*second/second^2", 1, 0,
       "   1       x                 meter*second/sec... 1           0\n"},
      // a multiplier text of 12 characters or more runs straight into the offset
      {"x", "meter", -1.23456789e-10, 0.5,
       "   1       x                 meter               -1.23457e-100.5\n"},
      {"x", "meter", 1000, 0, "   1       x                 meter               1000        0\n"},
      {"x", "meter", 1e-6, 0, "   1       x                 meter               1e-06       0\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(displayed(unit(c.name, c.composition, c.factor, c.offset)),
              std::string(kBanner) + c.line);
  }
}

PRISTINE_TEST_F(UnitClass, Compare) {
  UDInterface* a = unit("a", "meter", 2);
  UDInterface* same = unit("a", "meter", 2);
  UDInterface* otherOffset = unit("a", "meter", 2, 1);
  UDInterface* prefix = construct("UnitPrefix");
  auto compare = [&](UDInterface* x, UDInterface* y) {
    std::vector<HostArrayPtr> args;
    args.push_back(handles({y}));
    return call(x, "compare", 1, std::move(args)).logical(0);
  };
  EXPECT_TRUE(compare(a, a));
  EXPECT_TRUE(compare(a, same));
  EXPECT_FALSE(compare(a, otherOffset));
  EXPECT_FALSE(compare(a, prefix));
}

PRISTINE_TEST_F(UnitClass, PropertiesAndNulls) {
  UDInterface* object = unit("  furlong ", "meter", 201.168);
  EXPECT_EQ(getText(object, "name"), "furlong");
  EXPECT_EQ(getNumber(object, "conversionfactor"), 201.168);
  EXPECT_FALSE(get(object, "builtin")->getLogicals()[0]);
  set(object, "builtin", flag(true));  // read-only: ignored
  EXPECT_FALSE(get(object, "builtin")->getLogicals()[0]);
  set(object, "name", HostArrayPtr(HostArray::createDoubleMatrix(0, 0)));  // null
  EXPECT_EQ(getText(object, "name"), "");
  UDInterface* meter = UnitManager::Instance()->getUnitRepresentation("meter")->getUDI();
  EXPECT_TRUE(get(meter, "builtin")->getLogicals()[0]);
}

PRISTINE_TEST_F(UnitClass, RegisteredUnitsRefuseChangesWithTheRegistrysErrors) {
  UDInterface* furlong = unit("furlong", "meter", 201.168);
  call(furlong, "register", 0);
  EXPECT_UNIT_ERROR(
      set(furlong, "conversionfactor", num(2)), "Unit:RegisteredUnitCannotChange",
      "A registered unit cannot have its name, composition, multiplier or offset changed.");
  EXPECT_UNIT_ERROR_ID(set(furlong, "name", text("x")), "Unit:RegisteredUnitCannotChange");
  EXPECT_EQ(getNumber(furlong, "conversionfactor"), 201.168);
  UDInterface* meter = UnitManager::Instance()->getUnitRepresentation("meter")->getUDI();
  EXPECT_UNIT_ERROR_ID(set(meter, "composition", text("foot")), "Unit:CannotUnregisterBuiltin");
  EXPECT_EQ(getText(meter, "composition"), "meter");
}

PRISTINE_TEST_F(UnitClass, DeleteUnregistersAndDestroysOnce) {
  UDInterface* furlong = unit("furlong", "meter", 201.168);
  call(furlong, "register", 0);
  call(furlong, "delete", 0);
  EXPECT_FALSE(UnitManager::Instance()->isUnitRegistered("furlong"));
  EXPECT_EQ(furlong->getLifecycleState(), UDInterface::kDestroyed);
  EXPECT_UNIT_ERROR_ID(call(furlong, "delete", 0), "CALVEX:InvalidObject");
  UDInterface* meter = UnitManager::Instance()->getUnitRepresentation("meter")->getUDI();
  EXPECT_UNIT_ERROR_ID(call(meter, "delete", 0), "Unit:CannotUnregisterBuiltin");
  EXPECT_TRUE(meter->isValid());
}

}  // namespace
}  // namespace TwUnits
