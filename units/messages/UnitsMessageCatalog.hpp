#pragma once

// File: UnitsMessageCatalog.hpp
// The units library's message catalog: 66 messages under the facility 71, each with
// its id (0x470000 + row), key and text, all made from UnitsMessages.def. Code raises
// messages by id through UnitErrors.hpp; the key only names the row.
//
// Example:
//   registerUnitsMessageCatalog();
//   utLookupMessage(UNIT_NOT_FOUND);   // "Referenced unit '%s' does not exist."

#include "host/MessageTable.hpp"

namespace TwUnits {

enum MessageId : int {
  kMessageIdBeforeFirst = 0x470000,
#define TW_MESSAGE(key, fillIns, text) key,
#include "units/messages/UnitsMessages.def"
  kMessageIdEnd
};

inline constexpr unsigned kUnitsMessageCount = kMessageIdEnd - kMessageIdBeforeFirst - 1;
inline constexpr unsigned kUnitsFacility = 71;

// The constant catalog record handed to the host.
const ut_message_table& unitsMessageCatalog();

// Registers the catalog with the host once per process; later calls do nothing.
void registerUnitsMessageCatalog();
bool isUnitsMessageCatalogRegistered();

}  // namespace TwUnits
