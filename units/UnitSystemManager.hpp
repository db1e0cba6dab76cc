#pragma once

// File: UnitSystemManager.hpp
// The process-wide registry of unit systems: the built-in "MKS" and user systems.
// Registering or removing a system tells no listener.
//
// Threads: registering and removing a system hold the registries' lock, so they may run
// while other threads convert, verify and parse; the queries read without it
// (units/RegistryLock.hpp).
//
// Example:
//   auto* cgs = new UnitSystem("cgs");   // units set with the setters
//   UnitSystemManager::Instance()->registerUnitSystem(cgs);   // the registry owns it

#include <memory>
#include <string>
#include <vector>

#include "units/UnitSystem.hpp"
#include "units/UnitSystemManagerApi.hpp"

namespace TwUnits {

class UnitSystemManager : public UnitSystemManagerApi {
 public:
  // The singleton; whoever needs it first creates it.
  static UnitSystemManager* _instance;
  static UnitSystemManager* Instance();

  UnitSystemApi* createUnitSystemApi() const override;
  const UnitSystemApi* getUnitSystemApi(const std::string& name) const override;
  ~UnitSystemManager() override;

  // The first system of that exact name; raises "Unit:SystemNotFound".
  const UnitSystem* getNamedUnitSystem(const std::string& name) const;
  // Raises "Unit:SystemNameInvalid" or "Unit:SystemDuplicateName", then, for the first unit
  // name in base order that names no unit of its base quantity, what
  // UnitManager::getSystemUnit raises; on success the registry owns the system, otherwise
  // the caller keeps it. A unit or prefix that a registered system names cannot be removed.
  void registerUnitSystem(UnitSystem* system);
  // Raises "Unit:SystemNotRegistered". "MKS" can be removed like any other.
  void unregisterUnitSystem(const std::string& name);
  void registerBuiltinUnitSystems();
  const std::vector<std::unique_ptr<UnitSystem>>& getUnitSystems() const { return *systems_; }

 private:
  UnitSystemManager();

  std::unique_ptr<std::vector<std::unique_ptr<UnitSystem>>> systems_;
};

}  // namespace TwUnits
