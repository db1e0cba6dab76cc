#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/ErrorCapture.hpp"
#include "tests/support/Pristine.hpp"
#include "tests/support/RegistrySnapshot.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"

namespace TwUnits {
namespace {

class PrefixRegistry : public testing::Test {
 protected:
  void SetUp() override { UnitManager::Instance(); }

  // Registers a new prefix; the registry owns it when it stores it.
  UnitPrefix* add(const std::string& name, int exponent) {
    auto prefix = std::make_unique<UnitPrefix>(name, exponent, "");
    prefixes->registerPrefix(prefix.get());
    return prefix.release();
  }

  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
};

TEST_F(PrefixRegistry, Lookups) {
  EXPECT_EQ(prefixes->getPrefixIndex("Kilo"), -1);
  EXPECT_FALSE(prefixes->isPrefixBuiltin("yotta"));
  EXPECT_TRUE(std::isnan(prefixes->getPrefixMultiplier2("")));
  EXPECT_TRUE(std::isnan(prefixes->getPrefixMultiplier2("yotta")));
  EXPECT_EQ(prefixes->getPrefixMultiplier2("hecto"), 100.0);
  EXPECT_EQ(prefixes->getPrefixStringFromMultiplier(1e-3), "milli");
  EXPECT_EQ(prefixes->getPrefixStringFromMultiplier(5.0), "");
  EXPECT_EQ(prefixes->getUnitPrefixApi("none"), nullptr);
}

PRISTINE_TEST_F(PrefixRegistry, RegisteredPrefixesRefuseNameAndExponentChanges) {
  UnitPrefix* zz = add("zz", 4);
  EXPECT_UNIT_ERROR(zz->setExponent(5), "Unit:RegisteredPrefixCannotChange",
                    "A registered prefix cannot have its name or exponent changed.");
  EXPECT_UNIT_ERROR_ID(zz->setName("yy"), "Unit:RegisteredPrefixCannotChange");
  EXPECT_EQ(zz->getExponent(), 4);
  EXPECT_EQ(zz->getMult(), 1e4);
  zz->setMult(3.0);
  EXPECT_EQ(zz->getMult(), 3.0);
  EXPECT_UNIT_ERROR_ID(prefixes->getPrefix(3)->setExponent(2),
                       "Unit:PrefixCannotUnregisterBuiltin");
}

PRISTINE_TEST_F(PrefixRegistry, StrippingTakesTheFirstPrefixInNameOrderThatLeavesAUnit) {
  struct Case {
    const char* name;
    const char* rest;
    const char* prefix;
    double multiplier;  // NaN: no prefix
  } cases[] = {
      {"millimole", "mole", "milli", 1e-3},
      {"kilomilligram", "milligram", "kilo", 1e3},
      {"meter", "meter", "", NAN},
      {"", "", "", NAN},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::string unit = c.name, prefix;
    double multiplier = prefixes->stripPrefixAndGetMultiplier(unit, prefix);
    EXPECT_EQ(unit, c.rest);
    EXPECT_EQ(prefix, c.prefix);
    if (std::isnan(c.multiplier)) {
      EXPECT_TRUE(std::isnan(multiplier));
    } else {
      EXPECT_EQ(multiplier, c.multiplier);
    }
    EXPECT_EQ(prefixes->stripPrefixFromSingleUnit(c.name), c.rest);
  }
  // a user prefix that begins another prefix's name sorts first, and takes what it leaves
  // a unit of; with no unit left either way, the longer prefix is stripped
  add("ki", 7);
  EXPECT_EQ(prefixes->stripPrefixFromSingleUnit("kilometer"), "meter");
  EXPECT_EQ(prefixes->stripPrefixFromSingleUnit("kimeter"), "meter");
  EXPECT_EQ(prefixes->stripPrefixFromSingleUnit("kilofurlong"), "furlong");
}

PRISTINE_TEST_F(PrefixRegistry, ANewPrefixNeverChangesWhatATextMeans) {
  // Every text of a built-in prefix and a built-in unit, before and after every beginning of
  // a built-in prefix's name that may be registered is.
  UnitManager* units = UnitManager::Instance();
  QuantityStringParser* parser = QuantityStringParser::Instance();
  auto meaning = [&](const std::string& text) {
    std::string read;
    auto error = captureError([&] {
      std::unique_ptr<UnitComposition> composition(parser->createUnitCompFromString(text));
      read =
          composition->getCompositionString() + " " + std::to_string(composition->getMultiplier());
    });
    return error ? error->identifier : read;
  };
  std::map<std::string, std::string> texts;
  for (int p = 0; p < UnitPrefixManager::kBuiltinPrefixCount; ++p) {
    for (int q = 0; q < units->getNumQuantityLists(); ++q) {
      for (const std::string& unit : units->getQuantityUnitStrings2(q))
        texts[prefixes->getUnitPrefixAsString(p) + unit] = "";
    }
  }
  for (auto& [text, read] : texts) read = meaning(text);
  std::vector<std::string> added;
  for (int p = 0; p < UnitPrefixManager::kBuiltinPrefixCount; ++p) {
    const std::string name = prefixes->getUnitPrefixAsString(p);
    for (std::size_t length = 1; length < name.size(); ++length) {
      UnitPrefix beginning(name.substr(0, length), 4, "");
      if (captureError([&] { prefixes->verifyUnitPrefix(&beginning); })) continue;
      if (!prefixes->isPrefixRegistered(beginning.getName())) {
        add(beginning.getName(), 4);
        added.push_back(beginning.getName());
      }
    }
  }
  EXPECT_GE(added.size(), 10u);
  for (const auto& [text, read] : texts) EXPECT_EQ(meaning(text), read) << text;
  for (const std::string& name : added) prefixes->unregisterPrefix(name);
}

}  // namespace
}  // namespace TwUnits
