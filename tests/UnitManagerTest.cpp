#include <gtest/gtest.h>

#include <memory>

#include "host/ErrorIdException.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/Pristine.hpp"
#include "tests/support/RegistrySnapshot.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverter.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"

namespace TwUnits {
namespace {

class UnitRegistry : public testing::Test {
 protected:
  // Registers a new definition; the registry owns it when it keeps it.
  UnitRepresentation* add(const std::string& name, const std::string& composition,
                          double multiplier = 1.0, double offset = 0.0) {
    auto definition = std::make_unique<UnitRepresentation>();
    definition->setName(name);
    definition->setCompositionString(composition);
    definition->setMultiplier(multiplier);
    definition->setOffset(offset);
    units->registerUnit(definition.get());
    return units->getUnitRepresentation(name) == definition.get() ? definition.release() : nullptr;
  }
  int codeOf(const std::string& name, const std::string& composition, double multiplier = 1.0) {
    UnitRepresentation definition(name, composition, multiplier, 0.0, true);
    return units->verifyUnitForRegistration(&definition);
  }
  // Records every registered and unregistered announcement.
  void listen() {
    units->addUnitRegisteredListener(
        [this](const UnitRepresentationApi* u) { calls.push_back("+" + u->getName()); });
    units->addUnitUnregisteredListener(
        [this](const UnitRepresentationApi* u) { calls.push_back("-" + u->getName()); });
  }
  double convert(const std::string& from, const std::string& to, double value = 1.0) {
    return units->convert(value, from, to);
  }

  UnitManager* units = UnitManager::Instance();
  std::vector<std::string> calls;
};

PRISTINE_TEST_F(UnitRegistry, RegistrationCodes) {
  EXPECT_EQ(codeOf("furlong", "meter", 201.168), UnitManager::NEW_UNIT);
  EXPECT_EQ(codeOf("hyper", "meter^5"), UnitManager::NEW_UNIT_NEW_QUANTITY);
  EXPECT_EQ(codeOf("kilometer", "meter", 1000.0), UnitManager::NOTHING_TO_REGISTER);
  add("furlong", "meter", 201.168);
  EXPECT_EQ(codeOf("furlong", "meter", 201.168), UnitManager::NOTHING_TO_REGISTER);
  WarningCapture warnings;
  EXPECT_EQ(codeOf("furlong", "meter", 200.0), UnitManager::REDEFINITION);
  EXPECT_EQ(warnings.identifiers(), std::vector<std::string>{"Unit:Redefining"});
}

PRISTINE_TEST_F(UnitRegistry, PrefixedNameOrTheSameDefinitionAgainStoresAndAnnouncesNothing) {
  add("furlong", "meter", 201.168);
  listen();
  RegistrySnapshot before = RegistrySnapshot::take();
  WarningCapture warnings;
  EXPECT_EQ(add("kilometer", "meter", 1000.0), nullptr);
  EXPECT_EQ(add("furlong", "meter", 201.168), nullptr);
  EXPECT_TRUE(warnings.identifiers().empty());
  EXPECT_TRUE(calls.empty());
  EXPECT_EQ(RegistrySnapshot::take(), before);
  EXPECT_FALSE(units->isUnitRegistered("kilometer"));
  EXPECT_DOUBLE_EQ(convert("kilometer", "meter"), 1000.0);
}

PRISTINE_TEST_F(UnitRegistry, ARegistrationRefusedAtItsLastCheckLeavesNoTrace) {
  // The definition's own listener refuses the rewrite of a base-quantity unit in base units,
  // the last step before anything is stored.
  RegistrySnapshot before = RegistrySnapshot::take();
  UnitRepresentation definition("zzt", "kelvin*meter/meter", 1.0, 0.0, true);
  definition.addChangeListener(
      [](const UnitRepresentationApi*, UnitRepresentationApi::UNIT_REP_PROPERTY) {
        throw new ErrorIdException("Test:Refused", "no");
      });
  EXPECT_UNIT_ERROR_ID(units->registerUnit(&definition), "Test:Refused");
  EXPECT_EQ(RegistrySnapshot::take(), before);
  EXPECT_UNIT_ERROR_ID(convert("zzt", "kelvin"), "Unit:NotFound");
}

PRISTINE_TEST_F(UnitRegistry, ACompositionHeldAcrossAPrefixRemovalIsRefusedNotMisread) {
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  prefixes->registerPrefix(new UnitPrefix("wza", 4, ""));
  prefixes->registerPrefix(new UnitPrefix("wzb", 5, ""));
  QuantityStringParser* parser = QuantityStringParser::Instance();
  std::unique_ptr<UnitComposition> held(parser->createUnitCompFromString("wzbmeter/kilosecond"));
  std::unique_ptr<UnitComposition> kept(parser->createUnitCompFromString("kilometer"));
  UnitComposition meter(UnitBase(2, 0, -1));
  prefixes->unregisterPrefix("wza");  // "wzb" moves down to the index "wza" had
  EXPECT_UNIT_ERROR(
      delete UnitConverterManager::Instance()->getQuantityUnitConverter(0, held.get(), &meter),
      "CALVEX:badArgument",
      "The composition holds the indexes of prefixes from before a prefix was removed; make it "
      "again from its text.");
  EXPECT_UNIT_ERROR_ID(held->getCompositionString(), "CALVEX:badArgument");
  // Prefixes below the removed one keep their indexes.
  std::unique_ptr<UnitConverter> converter(
      UnitConverterManager::Instance()->getQuantityUnitConverter(0, kept.get(), &meter));
  EXPECT_DOUBLE_EQ(converter->getMultiplier(), 1000.0);
  EXPECT_DOUBLE_EQ(convert("wzbmeter", "meter"), 1e5);
  // A composition without prefixes, however old, leaves a new one current.
  std::unique_ptr<UnitComposition> fresh(parser->createUnitCompFromString("wzbmeter/second"));
  *fresh *= meter;
  EXPECT_EQ(fresh->getCompositionString(), "meter*wzbmeter/second");
  // One made since, without prefixes, takes the older numbering of what it joins, whose
  // prefix index now names another prefix.
  prefixes->registerPrefix(new UnitPrefix("wzc", 6, ""));
  UnitComposition second(UnitBase(3, 0, -1));
  second *= *held;
  EXPECT_UNIT_ERROR_ID(second.getCompositionString(), "CALVEX:badArgument");
}

PRISTINE_TEST_F(UnitRegistry, RegisteredUnitsRefuseEveryChange) {
  UnitRepresentation* furlong = add("furlong", "meter", 201.168);
  UnitRepresentation* free = add("chain", "meter", 20.1168);
  add("fph", "furlong/hour");
  struct Case {
    UnitRepresentation* unit;
    const char* identifier;
  } cases[] = {
      {units->getUnitRepresentation("meter"), "Unit:CannotUnregisterBuiltin"},
      {units->getUnitRepresentation("pascal"), "Unit:CannotUnregisterBuiltin"},
      {furlong, "Unit:BeingUsed"},
      {free, "Unit:RegisteredUnitCannotChange"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.unit->getName());
    std::string name = c.unit->getName(), composition = c.unit->getCompositionString();
    double multiplier = c.unit->getMultiplier();
    EXPECT_UNIT_ERROR_ID(c.unit->setName("other"), c.identifier);
    EXPECT_UNIT_ERROR_ID(c.unit->setCompositionString("foot"), c.identifier);
    EXPECT_UNIT_ERROR_ID(c.unit->setMultiplier(3.0), c.identifier);
    EXPECT_UNIT_ERROR_ID(c.unit->setOffset(3.0), c.identifier);
    EXPECT_UNIT_ERROR_ID(c.unit->setAlias("x"), c.identifier);
    EXPECT_EQ(c.unit->getName(), name);
    EXPECT_EQ(c.unit->getCompositionString(), composition);
    EXPECT_EQ(c.unit->getMultiplier(), multiplier);
  }
  EXPECT_UNIT_ERROR(furlong->setMultiplier(1.0), "Unit:BeingUsed",
                    "Cannot unregister unit because it is being used by unit 'fph'.");
}

PRISTINE_TEST_F(UnitRegistry, BaseQuantityUnitsAreStoredInBaseUnitsWithTheirTrueValue) {
  add("chain", "meter", 20.1168);
  struct Case {
    const char* name;
    const char* composition;
    double multiplier;
    const char* storedComposition;
    double metersPerUnit;
  } cases[] = {
      {"link", "chain", 0.01, "meter", 0.201168},
      {"kft", "kilofoot", 1.0, "kilofoot", 304.8},
      {"cmish", "centimeter*second/second", 1.0, "centimeter", 0.01},
      {"chainish", "chain*hour/minute", 1.0, "meter", 20.1168 * 60},
  };
  UnitConverterManager* converters = UnitConverterManager::Instance();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    add(c.name, c.composition, c.multiplier);
    const UnitRepresentation* unit = units->getUnitRepresentation(c.name);
    EXPECT_EQ(unit->getCompositionString(), c.storedComposition);
    EXPECT_DOUBLE_EQ(convert(c.name, "meter"), c.metersPerUnit);
    std::unique_ptr<UnitConverter> table(
        converters->getQuantityUnitConverter(2, units->getUnitIndex(2, c.name), 0));
    EXPECT_DOUBLE_EQ(table->getMultiplier(), c.metersPerUnit);
  }
}

PRISTINE_TEST_F(UnitRegistry, TimeUnits) {
  for (const char* text : {"second", "hour", "day", "millisecond", "minute*meter/meter"}) {
    EXPECT_NO_THROW(units->validateTimeUnits(text)) << text;
  }
  EXPECT_UNIT_ERROR(units->validateTimeUnits(""), "Unit:EmptyTimeUnits",
                    "The empty string is not a valid time unit.");
  EXPECT_UNIT_ERROR(units->validateTimeUnits("meter"), "Unit:InvalidTimeUnits",
                    "'meter' is not a valid time unit.");
  EXPECT_UNIT_ERROR(units->validateTimeUnits("fortnight"), "Unit:InvalidTimeUnits",
                    "'fortnight' is not a valid time unit.");
  EXPECT_UNIT_ERROR_ID(units->validateTimeUnits("second+"), "Unit:BadUnitCompositionParse");
}

PRISTINE_TEST_F(UnitRegistry, Queries) {
  EXPECT_FALSE(units->isUnitRegistered(2, "hour")) << "looked for in the quantity given";
  EXPECT_EQ(units->getNumUnits(99), 0u);
  EXPECT_THROW(units->getUnitRepresentation(2, 99), std::out_of_range);
  EXPECT_TRUE(units->isPrefixStringOnUnit("millimole"));
  EXPECT_FALSE(units->isPrefixStringOnUnit("mole"));
  std::string name;
  units->createUnitStringFromUnitBase(UnitBase(1, 0, 3), name);
  EXPECT_EQ(name, "kilogram");
  EXPECT_EQ(units->getQuantityDimensionFromComposition("newton"),
            PhysicalQuantityManager::Instance()->getQuantityDimensionApi(17));
  EXPECT_EQ(units->getQuantityDimensionFromComposition("furlongs"), nullptr);
  EXPECT_EQ(units->getQuantityIdxFromCompositionString("mole/liter"), 14);
}

PRISTINE_TEST_F(UnitRegistry, ErrorPathsLeakNothing) {
  // Run under LeakSanitizer: every raised error and every temporary is freed.
  const char* bad[] = {"meter*2",     "furlongs", "(meter",       "2/second",
                       "meter^meter", "5",        "meter+second", ""};
  for (int round = 0; round < 3; ++round) {
    for (const char* text : bad) {
      EXPECT_NE(captureError([&] { units->verifyUnitCompositionString(text); }), std::nullopt);
      UnitRepresentation definition("leaky", text, 1.0, 0.0, true);
      EXPECT_NE(captureError([&] { units->registerUnit(&definition); }), std::nullopt);
      EXPECT_NE(captureError([&] {
                  delete units->getUnitConverterManagerApi()->getQuantityUnitConverterApi(text,
                                                                                          "meter");
                }),
                std::nullopt);
    }
  }
}

}  // namespace
}  // namespace TwUnits
