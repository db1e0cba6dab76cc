#pragma once

// File: RegistryHooks.hpp
// What a layer above the registries attaches to them. The module's binding gives every
// registered unit and prefix a host object and releases it on removal; the registries
// know these hooks only, never the binding, which attaches them when the library loads,
// before any registry is set up.
//
// Example:
//   attachRegistryHooks({&unitRegistered, &unitRemoved, &prefixRegistered, &prefixRemoved});

namespace TwUnits {

class UnitPrefixApi;
class UnitRepresentationApi;

struct RegistryHooks {
  // Called before every listener for each unit or prefix registered, the built-in ones
  // included (which post no change events).
  void (*unitRegistered)(const UnitRepresentationApi*) = nullptr;
  // Called after every listener, as the last step of a removal.
  void (*unitRemoved)(const UnitRepresentationApi*) = nullptr;
  void (*prefixRegistered)(const UnitPrefixApi*) = nullptr;
  void (*prefixRemoved)(const UnitPrefixApi*) = nullptr;
};

// The registries set up afterwards call these hooks; null ones are not called.
void attachRegistryHooks(const RegistryHooks& hooks);
const RegistryHooks& registryHooks();

}  // namespace TwUnits
