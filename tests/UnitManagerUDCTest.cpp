// The host class "UnitManager": every method through the host's dispatch (signature
// matching, argument and result slots, the number of results asked for).

#include <gtest/gtest.h>

#include <cmath>

#include "host/Vector.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"
#include "tests/support/Pristine.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/udd/UnitManagerUDC.hpp"

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
  std::vector<std::string> namesOf(const HostArray* objects) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < objects->getNumberOfElements(); ++i)
      names.push_back(getText(objects->getHandle(i), "name"));
    return names;
  }
  std::vector<std::string> createdQuantities() {
    std::vector<std::string> names;
    HostArrayPtr created = get(manager(), "CreatedQuantities");
    for (std::size_t i = 0; i < created->getNumberOfElements(); ++i)
      names.push_back(getText(created->getHandle(i), "name"));
    return names;
  }
  UnitManager* units = UnitManager::Instance();
};

// The lists of units, prefixes and quantities; the shell transcripts show their values.
PRISTINE_TEST_F(ManagerClass, ListsAskedForAll) {
  EXPECT_EQ(run("getpqtypes", 1).texts(0).size(), 37u);
  Results three = run("showphysicalquantities", 3);
  EXPECT_EQ(three.texts(1)[36], "") << "dimensionless has no makeup";
  EXPECT_EQ(three.at(2)->getM(), 1u);
  EXPECT_EQ(run("showphysicalquantities", 0).texts(0).size(), 37u)
      << "one result even when none is asked for";
  std::vector<std::string> all = namesOf(run("showunits", 1, flag(true)).at(0));
  EXPECT_EQ(all.size(), 26u + 28u) << "every unit but dimensionless, which has no host object";
  EXPECT_EQ(all.front(), "item");
  EXPECT_TRUE(run("showunits", 1, text("dimensionless")).at(0)->isEmpty());
  EXPECT_EQ(run("showprefixes", 1, flag(true)).at(0)->getNumberOfElements(), 13u);
}

PRISTINE_TEST_F(ManagerClass, RegisterPrefix) {
  EXPECT_UNIT_ERROR_ID(run("registerprefix", 1, text("p"), num(99)),
                       "Units:PrefixExponentTooLarge");
  EXPECT_UNIT_ERROR_ID(run("registerprefix", 1, text("p"), num(1e300)),
                       "Units:PrefixExponentTooLarge");
  UDInterface* myria = run("registerprefix", 1, text("myria"), num(4 + 1e-15)).handle(0);
  ASSERT_NE(myria, nullptr);
  EXPECT_EQ(getNumber(myria, "exponent"), 4.0);

  UDInterface* form = construct("UnitPrefix");
  set(form, "name", text("zz"));
  set(form, "exponent", num(5));
  EXPECT_EQ(run("registerprefix", 1, handles({form})).handle(0), form);
  EXPECT_EQ(UnitPrefixManager::Instance()->getUnitPrefixApi("zz")->getUDI(), form);
  EXPECT_UNIT_ERROR_ID(run("registerprefix", 1, handles({manager()})), "CALVEX:badArgumentClass");
}

PRISTINE_TEST_F(ManagerClass, RegisterUnit) {
  EXPECT_UNIT_ERROR_ID(run("registerunit", 1, text("bad"), text("meter"), num(1), num(5)),
                       "Unit:OffsetUnitsTemperatureOnly");
  EXPECT_FALSE(units->isUnitRegistered("bad"));
  // null strings read as empty
  EXPECT_UNIT_ERROR_ID(run("registerunit", 1, HostArrayPtr(HostArray::createDoubleMatrix(0, 0)),
                           text("meter"), num(1)),
                       "Unit:NameInvalid");
  UDInterface* form = construct("Unit");
  set(form, "name", text("chain"));
  set(form, "composition", text("meter"));
  set(form, "conversionfactor", num(20.1168));
  EXPECT_EQ(run("registerunit", 1, handles({form})).handle(0), form);
  EXPECT_EQ(units->getUnitRepresentation("chain")->getUDI(), form);
}

PRISTINE_TEST_F(ManagerClass, TextsWithANulByteAreRefusedNotCut) {
  auto withNul = [](const char* before, const char* after) {
    return HostArrayPtr(HostArray::createString(std::string(before) + '\0' + after));
  };
  EXPECT_UNIT_ERROR(run("registerunit", 1, withNul("ab", "cd"), text("meter"), num(3)),
                    "CALVEX:badArgument", "The text must not hold a NUL byte.");
  EXPECT_FALSE(units->isUnitRegistered("ab"));
  EXPECT_UNIT_ERROR_ID(
      run("calculateconversion", 1, withNul("meter", "junk"), text("meter"), num(1)),
      "CALVEX:badArgument");
}

PRISTINE_TEST_F(ManagerClass, UnregisterPrefix) {
  EXPECT_UNIT_ERROR(
      run("unregisterunitprefix", 0, HostArrayPtr(HostArray::createDoubleMatrix(0, 0))),
      "Unit:PrefixNotFound", "Referenced prefix '' does not exist.");
  EXPECT_UNIT_ERROR_ID(run("unregisterunitprefix", 0, text("kilo")),
                       "Unit:PrefixCannotUnregisterBuiltin");
}

PRISTINE_TEST_F(ManagerClass, RegisterAndUnregisterQuantities) {
  run("registerphysicalquantity", 0, text("hyper"), text("length^5"));
  EXPECT_EQ(PhysicalQuantityManager::Instance()->getQuantityIdx(std::string("hyper")), 37);
  {
    WarningCapture warnings;
    run("registerphysicalquantity", 0, text("odd"), row({0, 1, 1.5, -3, 0, 0, 0.25}));
    EXPECT_EQ(warnings.identifiers(),
              (std::vector<std::string>{"Quantity:FractionalExponentsFixed",
                                        "Quantity:FractionalExponentsFixed"}));
    EXPECT_EQ(
        warnings.texts()[0],
        "Fractional exponents on physical quantities are not supported. Value will be fixed.");
  }
  int expected[7] = {0, 1, 1, -3, 0, 0, 0};
  EXPECT_TRUE(
      PhysicalQuantityManager::Instance()->getQuantityDimension(38)->matchesSignature(expected));
  const char* message =
      "The composition used to register a physical quantity must be a vector of size 1x7.";
  EXPECT_UNIT_ERROR(run("registerphysicalquantity", 0, text("x"), row({0, 0, 9, 0, 0, 0})),
                    "Unit:BadQuantArgs", message);
  EXPECT_UNIT_ERROR(
      run("registerphysicalquantity", 0, text("x"), row(std::vector<double>(14, 1), 2)),
      "Unit:BadQuantArgs", message);
  EXPECT_EQ(createdQuantities(), (std::vector<std::string>{"hyper", "odd"}));

  // removed behind the manager's back: the stale host object stays until a namesake comes
  PhysicalQuantityManager::Instance()->unregisterPhysicalQuantity("hyper");
  EXPECT_EQ(createdQuantities(), (std::vector<std::string>{"hyper", "odd"}));
  run("registerphysicalquantity", 0, text("hyper"), row({0, 0, 6, 0, 0, 0, 0}));
  EXPECT_EQ(createdQuantities(), (std::vector<std::string>{"odd", "hyper"}));
  EXPECT_EQ(getNumber(get(manager(), "CreatedQuantities")->getHandle(1), "Length"), 6);

  run("unregisterpq", 0, text("odd"));
  EXPECT_EQ(createdQuantities(), (std::vector<std::string>{"hyper"}));
  EXPECT_UNIT_ERROR_ID(run("unregisterpq", 0, text("odd")), "Unit:QuantityNotFound");
  EXPECT_UNIT_ERROR_ID(run("unregisterpq", 0, text("time")),
                       "Unit:CannotUnregisterBuiltinQuantity");
}

PRISTINE_TEST_F(ManagerClass, VerifyUnitAndPrefix) {
  EXPECT_FALSE(run("verifyunit", 1, text("furlong"), text("meter"), num(201.168)).logical(0));
  run("registerunit", 1, text("furlong"), text("meter"), num(201.168));
  EXPECT_TRUE(run("verifyunit", 1, text("furlong"), text("meter"), num(201.168)).logical(0));
  EXPECT_TRUE(run("verifyunit", 1, text("kilometer"), text("meter"), num(1000), num(0)).logical(0));
  {
    WarningCapture warnings;
    EXPECT_FALSE(run("verifyunit", 1, text("furlong"), text("meter"), num(200)).logical(0));
    EXPECT_EQ(warnings.identifiers(), std::vector<std::string>{"Unit:Redefining"});
  }
  EXPECT_UNIT_ERROR_ID(run("verifyunit", 1, text("x"), text("meter*2"), num(1)),
                       "Unit:InvalidCompositionMathMult");
  EXPECT_EQ(units->getNumUnits(2), 7u) << "verifying registers nothing";

  EXPECT_UNIT_ERROR(run("verifyunitprefix", 1, text("p"), num(2.5)), "Unit:PrefixMustBeMultTen",
                    "A prefix exponent must be an integer.");
  EXPECT_UNIT_ERROR_ID(run("verifyunitprefix", 1, text("p"), num(0)),
                       "Unit:PrefixZeroMultNotAllowed");
  EXPECT_FALSE(run("verifyunitprefix", 1, text("myria"), num(4)).logical(0));
  run("registerprefix", 1, text("myria"), num(4));
  EXPECT_TRUE(run("verifyunitprefix", 1, text("myria"), num(4)).logical(0));
  EXPECT_UNIT_ERROR_ID(run("verifyunitprefix", 1, text("kilo"), num(3)),
                       "Unit:PrefixCannotUnregisterBuiltin");
  EXPECT_EQ(UnitPrefixManager::Instance()->getNumPrefixes(), 14);
}

PRISTINE_TEST_F(ManagerClass, VerifyAndParseCompositions) {
  EXPECT_TRUE(run("verifycomposition", 0, text("mole/liter")).values.empty());
  EXPECT_UNIT_ERROR_ID(run("verifycomposition", 0, text("meter^meter")),
                       "Unit:CompositionExponentMustBeInteger");

  EXPECT_TRUE(run("parsecomposition", 0, text("meter*(")).values[0] == nullptr)
      << "nothing asked, nothing parsed";
  Results one = run("parsecomposition", 1, text("mole/liter"));
  EXPECT_EQ(one.texts(0), (std::vector<std::string>{"mole ", "liter"}));
  EXPECT_EQ(one.values[1], nullptr);
  Results two = run("parsecomposition", 2, text("mole/liter"));
  ASSERT_EQ(two.at(1)->getNumberOfElements(), 2u);
  EXPECT_EQ(two.at(1)->getPr()[0], 1);
  EXPECT_EQ(two.at(1)->getPr()[1], -1);

  std::string many = "meter";
  for (int i = 1; i <= 100; ++i) {
    run("registerunit", 1, text(("u" + std::to_string(i)).c_str()), text("meter"), num(i + 1));
    many += "*u" + std::to_string(i);
  }
  EXPECT_UNIT_ERROR(run("parsecomposition", 1, text(many.c_str())), "Unit:CompositionLimit",
                    "Compositions are limited to 100 parts.");
  many = many.substr(0, many.rfind('*'));
  EXPECT_EQ(run("parsecomposition", 1, text(many.c_str())).texts(0).size(), 100u);
  for (const char* bad : {"meter*", "furlongs", "meter+second", "2"}) {
    SCOPED_TRACE(bad);
    EXPECT_UNIT_ERROR(run("parsecomposition", 1, text(bad)), "Units:InternalParseError",
                      "An error occurred parsing the unit composition.");
  }
}

PRISTINE_TEST_F(ManagerClass, PhysicalQuantityOfAComposition) {
  Results pressure = run("getphysqtyforcomposition", 2, text("kilogram/(meter*second^2)"));
  EXPECT_TRUE(pressure.logical(0));
  UDInterface* quantity = pressure.handle(1);
  EXPECT_EQ(getText(quantity, "name"), "");
  EXPECT_EQ(getNumber(quantity, "Mass"), 1);
  EXPECT_EQ(getNumber(quantity, "Time"), -2);
  EXPECT_TRUE(createdQuantities().empty());

  Results unknown = run("getphysqtyforcomposition", 2, text("furlongs"));
  EXPECT_FALSE(unknown.logical(0));
  EXPECT_EQ(getNumber(unknown.handle(1), "Length"), 0);
  Results none = run("getphysqtyforcomposition", 0, text("meter"));
  ASSERT_NE(none.values[0], nullptr);
  EXPECT_TRUE(none.logical(0));
  EXPECT_EQ(none.values[1], nullptr);
}

}  // namespace
}  // namespace TwUnits
