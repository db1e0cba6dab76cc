// The host class "UnitPrefix", driven through the host's dispatch.

#include <gtest/gtest.h>

#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"
#include "tests/support/Pristine.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/udd/UnitPrefixUDC.hpp"

namespace TwUnits {
namespace {

class PrefixClass : public ModuleFixture {
 protected:
  UDInterface* prefix(const char* name, double exponent) {
    UDInterface* object = construct("UnitPrefix");
    set(object, "name", text(name));
    set(object, "exponent", num(exponent));
    return object;
  }
  UDInterface* builtin(const char* name) {
    return UnitPrefixManager::Instance()->getUnitPrefixApi(name)->getUDI();
  }
};

const char* kBanner = "\n   Unit Prefix Object Array\n\n   Index:  Name:       Exponent:\n\n";

PRISTINE_TEST_F(PrefixClass, DisplayLinesByteForByte) {
  struct Case {
    UDInterface* object;
    const char* line;
  } cases[] = {
      {builtin("kilo"), "   1       kilo         3\n"},
      {builtin("milli"), "   1       milli       -3\n"},
      {prefix("abcdefghijk", 4), "   1       abcdefghijk  4\n"},
      {prefix("abcdefghijkl", 4), "   1       abcdefgh...  4\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    ConsoleCapture console;
    call(c.object, "display", 0);
    EXPECT_EQ(console.text(), std::string(kBanner) + c.line);
  }
  ConsoleCapture console;
  std::vector<HostArrayPtr> args;
  args.push_back(handles({builtin("tera"), builtin("femto")}));
  call("display", 0, std::move(args));
  EXPECT_EQ(console.text(),
            std::string(kBanner) + "   1       tera         12\n   2       femto       -15\n");
}

PRISTINE_TEST_F(PrefixClass, PropertiesAndNulls) {
  UDInterface* myria = prefix("myria", 4);
  EXPECT_EQ(getNumber(myria, "exponent"), 4.0);
  EXPECT_EQ(getNumber(myria, "multiplier"), 1e4);
  set(myria, "name", HostArrayPtr(HostArray::createDoubleMatrix(0, 0)));  // null: unchanged
  EXPECT_EQ(getText(myria, "name"), "myria");
  EXPECT_UNIT_ERROR_ID(set(myria, "exponent", num(2.5)), "Unit:UnitPrefixMustBeMultTen");
  EXPECT_UNIT_ERROR_ID(set(myria, "exponent", num(60)), "Units:PrefixExponentTooLarge");
  EXPECT_UNIT_ERROR_ID(set(myria, "multiplier", num(0)), "Unit:PrefixZeroMultNotAllowed");
  EXPECT_EQ(getNumber(myria, "exponent"), 4.0);
  set(myria, "builtin", flag(true));
  EXPECT_FALSE(get(myria, "builtin")->getLogicals()[0]);
  EXPECT_TRUE(get(builtin("deka"), "builtin")->getLogicals()[0]);
}

PRISTINE_TEST_F(PrefixClass, RegisterRefusesChangesAndDelete) {
  UDInterface* myria = prefix("myria", 4);
  call(myria, "register", 0);
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  EXPECT_EQ(prefixes->getUnitPrefixApi("myria")->getUDI(), myria);
  EXPECT_UNIT_ERROR(set(myria, "exponent", num(5)), "Unit:RegisteredPrefixCannotChange",
                    "A registered prefix cannot have its name or exponent changed.");
  set(myria, "multiplier", num(3.0));
  EXPECT_EQ(getNumber(myria, "multiplier"), 3.0);
  EXPECT_UNIT_ERROR_ID(set(builtin("kilo"), "name", text("kilo2")),
                       "Unit:PrefixCannotUnregisterBuiltin");

  call(myria, "delete", 0);
  EXPECT_FALSE(prefixes->isPrefixRegistered("myria"));
  EXPECT_EQ(myria->getLifecycleState(), UDInterface::kDestroyed);
  EXPECT_UNIT_ERROR_ID(call(builtin("kilo"), "delete", 0), "Unit:PrefixCannotUnregisterBuiltin");
}

PRISTINE_TEST_F(PrefixClass, CompareUsesEveryPropertyButSkipsNone) {
  UDInterface* a = prefix("p", 4);
  UDInterface* b = prefix("p", 4);
  std::vector<HostArrayPtr> args;
  args.push_back(handles({b}));
  EXPECT_TRUE(call(a, "compare", 1, std::move(args)).logical(0));
  set(b, "multiplier", num(7));  // invisible, but compared all the same
  args.clear();
  args.push_back(handles({b}));
  EXPECT_FALSE(call(a, "compare", 1, std::move(args)).logical(0));
}

}  // namespace
}  // namespace TwUnits
