#pragma once

// File: UDDObjectManager.hpp
// Ties registered units and prefixes to their host objects. The registries call the
// four listeners: a registered unit or prefix gets a host object of the class "Unit"
// or "UnitPrefix" unless it already has one, and an unregistered one has its host
// object emptied and released.
//
// A unit or prefix whose host object is set belongs to its registry; the host object
// holds one reference for the registry, which the unregistration listener drops.
//
// Example:
//   UDDObjectManager::registerUnitOfHostObject(u);  // u wraps a unit made by "Unit"
//   // u is now the registered unit's own host object

class UDInterface;

namespace TwUnits {

class UnitPrefixApi;
class UnitRepresentationApi;

class UDDObjectManager {
 public:
  // Attaches the four listeners to the registries as their hooks: called when the library
  // loads, before any registry is set up.
  static void attachToRegistries();

  static void unitRegisteredListener(const UnitRepresentationApi* unit);
  static void unitUnregisteredListener(const UnitRepresentationApi* unit);
  static void prefixRegisteredListener(const UnitPrefixApi* prefix);
  static void prefixUnregisteredListener(const UnitPrefixApi* prefix);

  // Registers the unit (or prefix) that the host object wraps, with the host object
  // as its own, so that the registration listener makes no second one. When the
  // registry does not keep it (an error, or nothing to register), the host object
  // keeps it as before.
  static void registerUnitOfHostObject(UDInterface* object);
  static void registerPrefixOfHostObject(UDInterface* object);
};

}  // namespace TwUnits
