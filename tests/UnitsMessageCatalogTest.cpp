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
  // Every row is raised under an identifier but the five that nothing raises; two rows are
  // raised under two identifiers each.
  EXPECT_EQ(identifiers.size() + 5u - 2u, unitsMessageCatalog().count);
}

}  // namespace
}  // namespace TwUnits
