#pragma once

// File: UDDObjectManager.hpp
// The registries' listeners that tie units and prefixes to their host objects: a
// registered unit or prefix gets a host object of the class "Unit" or "UnitPrefix"
// (unless it already has one), and an unregistered one has its host object released.

namespace TwUnits {

class UnitPrefixApi;
class UnitRepresentationApi;

class UDDObjectManager {
 public:
  static void unitRegisteredListener(const UnitRepresentationApi* unit);
  static void unitUnregisteredListener(const UnitRepresentationApi* unit);
  static void prefixRegisteredListener(const UnitPrefixApi* prefix);
  static void prefixUnregisteredListener(const UnitPrefixApi* prefix);
};

}  // namespace TwUnits
