#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/support/ErrorCapture.hpp"
#include "tests/support/Pristine.hpp"
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
  for (const void* reserved : catalog.reserved) EXPECT_EQ(reserved, nullptr);
}

PRISTINE_TEST(MessageCatalog, RegisteredOnceAndResolvedById) {
  EXPECT_FALSE(isUnitsMessageCatalogRegistered());
  EXPECT_EQ(textOf(UNIT_NOT_FOUND), "<missing>");
  registerUnitsMessageCatalog();
  registerUnitsMessageCatalog();
  EXPECT_TRUE(isUnitsMessageCatalogRegistered());
  EXPECT_EQ(textOf(UNIT_NOT_FOUND), "Referenced unit '%s' does not exist.");
}

PRISTINE_TEST(MessageCatalog, RaisingWorksBeforeAnyRegistryRegisteredTheCatalog) {
  EXPECT_UNIT_ERROR(raiseError(errors::NotFound, std::string("furlongs")), "Unit:NotFound",
                    "Referenced unit 'furlongs' does not exist.");
}

TEST(MessageCatalog, EveryIdentifierListedOnceWithItsText) {
  registerUnitsMessageCatalog();
  std::set<std::string> identifiers;
  for (const UnitError& error : kAllErrors) identifiers.insert(error.identifier);
  for (const UnitError& warning : kAllWarnings) identifiers.insert(warning.identifier);
  for (const UnitError& warning : kAllWarnings) EXPECT_NE(textOf(warning.message), "<missing>");
  for (const UnitError& error : kAllErrors) EXPECT_NE(textOf(error.message), "<missing>");
  // Every row but the five that nothing raises, and two rows under two identifiers each.
  EXPECT_EQ(identifiers.size(), 66u - 5u + 2u);
}

}  // namespace
}  // namespace TwUnits
