#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/support/ErrorCapture.hpp"
#include "units/messages/UnitErrors.hpp"
#include "units/messages/UnitsMessageCatalog.hpp"

namespace TwUnits {
namespace {

std::string textOf(int id) {
  const char* text = utLookupMessage(static_cast<std::uint32_t>(id));
  return text ? text : "<missing>";
}

TEST(MessageCatalog, RecordLayout) {
  const ut_message_table& catalog = unitsMessageCatalog();
  EXPECT_EQ(catalog.count, 66u);
  EXPECT_EQ(catalog.facility, 71u);
  EXPECT_STREQ(catalog.component, "");
  std::set<std::string> keys;
  for (unsigned row = 1; row <= 66; ++row) {
    EXPECT_EQ(catalog.ids[row - 1], (71u << 16) + row);
    keys.insert(catalog.keys[row - 1]);
  }
  EXPECT_EQ(keys.size(), 66u);
  EXPECT_STREQ(catalog.keys[0], "UNIT_EMPTY_TIME_UNITS");
  EXPECT_STREQ(catalog.keys[65], "UNIT_DEPRECATION");
  EXPECT_EQ(UNIT_DEPRECATION, 0x470042);
  for (const void* reserved : catalog.reserved) EXPECT_EQ(reserved, nullptr);
}

TEST(MessageCatalog, RegisteredOnceAndResolvedById) {
  EXPECT_FALSE(isUnitsMessageCatalogRegistered());
  EXPECT_EQ(textOf(UNIT_NOT_FOUND), "<missing>");
  registerUnitsMessageCatalog();
  registerUnitsMessageCatalog();
  EXPECT_TRUE(isUnitsMessageCatalogRegistered());
  EXPECT_EQ(textOf(UNIT_NOT_FOUND), "Referenced unit '%s' does not exist.");
}

TEST(MessageCatalog, RowsWithSharedOrUnusualTexts) {
  registerUnitsMessageCatalog();
  EXPECT_EQ(textOf(0x47000E), textOf(0x47000F));
  EXPECT_EQ(textOf(0x47000E), "A unit exponent must be an integer value.");
  EXPECT_EQ(textOf(0x470012), textOf(0x470013));
  EXPECT_EQ(textOf(0x470004),
            "Warning: A unit with the name '%s' already exists.\n It will be re-registered with "
            "the new definition.");
  EXPECT_EQ(textOf(0x470040),
            "The \"current\" in this UnitSystem must be set before registering the UnitSystem.");
  // Rows that nothing raises are still in the catalog.
  EXPECT_EQ(textOf(0x470003), "Memory allocation error.");
  EXPECT_EQ(textOf(0x470005), "When parsing a composition, 100 units is the current limit.");
  EXPECT_EQ(textOf(0x470008).substr(0, 37), "Unable to register user-defined unit ");
  EXPECT_EQ(textOf(0x470027).substr(0, 33), "Unable to convert between units. ");
}

TEST(MessageCatalog, RaisingWorksBeforeAnyRegistryRegisteredTheCatalog) {
  EXPECT_UNIT_ERROR(raiseError(errors::NotFound, std::string("furlongs")), "Unit:NotFound",
                    "Referenced unit 'furlongs' does not exist.");
}

TEST(MessageCatalog, OneTextUnderTwoIdentifiers) {
  EXPECT_UNIT_ERROR(raiseError(errors::InternalParseError), "Units:InternalParseError",
                    "An error occurred parsing the unit composition.");
  EXPECT_UNIT_ERROR(raiseError(errors::BadUnitCompositionParse), "Unit:BadUnitCompositionParse",
                    "An error occurred parsing the unit composition.");
  EXPECT_UNIT_ERROR(raiseError(errors::PrefixMustBeMultTen), "Unit:PrefixMustBeMultTen",
                    "A prefix exponent must be an integer.");
  EXPECT_UNIT_ERROR(raiseError(errors::UnitPrefixMustBeMultTen), "Unit:UnitPrefixMustBeMultTen",
                    "A prefix exponent must be an integer.");
}

TEST(MessageCatalog, FillsNumbersAndTwoNames) {
  EXPECT_UNIT_ERROR(raiseError(errors::PrefixExponentTooLarge, 51), "Units:PrefixExponentTooLarge",
                    "Exponent too large for unit prefix. The maximum allowable exponent on this "
                    "platform is 51.");
  EXPECT_UNIT_ERROR(raiseError(errors::PrefixExponentTooSmall, -51), "Units:PrefixExponentTooSmall",
                    "Exponent too small for unit prefix. The minimum allowable exponent on this "
                    "platform is -51.");
  EXPECT_UNIT_ERROR(raiseError(errors::QuantityDuplicateDimensions, std::string("velocity2"),
                               std::string("velocity")),
                    "Unit:QuantityDuplicateDimensions",
                    "Unable to register physical quantity 'velocity2' because physical quantity "
                    "'velocity' has matching dimensions.");
}

TEST(MessageCatalog, WarningsGoOnAfterIssuing) {
  WarningCapture warnings;
  issueWarning(errors::Redefining, std::string("furlong"));
  issueWarning(errors::FractionalExponentsFixed);
  EXPECT_EQ(warnings.identifiers(),
            (std::vector<std::string>{"Unit:Redefining", "Quantity:FractionalExponentsFixed"}));
  EXPECT_EQ(warnings.texts()[0],
            "Warning: A unit with the name 'furlong' already exists.\n It will be re-registered "
            "with the new definition.");
}

}  // namespace
}  // namespace TwUnits
