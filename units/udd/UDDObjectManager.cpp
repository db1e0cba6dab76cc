#include "units/udd/UDDObjectManager.hpp"

namespace TwUnits {

void UDDObjectManager::unitRegisteredListener(const UnitRepresentationApi*) {}
void UDDObjectManager::unitUnregisteredListener(const UnitRepresentationApi*) {}
void UDDObjectManager::prefixRegisteredListener(const UnitPrefixApi*) {}
void UDDObjectManager::prefixUnregisteredListener(const UnitPrefixApi*) {}

}  // namespace TwUnits
