#include "units/UnitSystemManager.hpp"

#include "host/StringUtils.hpp"
#include "units/Announcement.hpp"
#include "units/QuantityDimension.hpp"
#include "units/RegistryLock.hpp"
#include "units/UnitManager.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

UnitSystemManager* UnitSystemManager::_instance = nullptr;

UnitSystemManager* UnitSystemManager::Instance() {
  if (_instance == nullptr) _instance = new UnitSystemManager();
  return _instance;
}

UnitSystemManager::UnitSystemManager()
    : systems_(std::make_unique<std::vector<std::unique_ptr<UnitSystem>>>()) {
  registerBuiltinUnitSystems();
}

UnitSystemManager::~UnitSystemManager() = default;

void UnitSystemManager::registerBuiltinUnitSystems() {
  auto mks = std::make_unique<UnitSystem>("MKS");
  mks->setMassType("kilogram");
  mks->setAmountType("mole");
  mks->setLengthType("meter");
  mks->setTimeType("second");
  mks->setTempType("kelvin");
  mks->setCurrentType("ampere");
  mks->setLuminousIntensityType("candela");
  // Built-in units, which may not exist yet: the unit registry sets up the system registry
  // first.
  systems_->push_back(std::move(mks));
}

UnitSystemApi* UnitSystemManager::createUnitSystemApi() const {
  auto* system = new UnitSystem();
  system->init();
  return system;
}

const UnitSystem* UnitSystemManager::getNamedUnitSystem(const std::string& name) const {
  for (const auto& system : *systems_) {
    if (system->getUnitSystemName() == name) return system.get();
  }
  raiseError(errors::SystemNotFound, name);
}

const UnitSystemApi* UnitSystemManager::getUnitSystemApi(const std::string& name) const {
  return getNamedUnitSystem(name);
}

void UnitSystemManager::registerUnitSystem(UnitSystem* system) {
  Announcement::refuseInsideListener();
  RegistryLock::Change change;
  const std::string& name = system->getUnitSystemName();
  if (!isValidCALVEXIdentifier(name)) raiseError(errors::SystemNameInvalid);
  for (const auto& registered : *systems_) {
    if (registered->getUnitSystemName() == name) raiseError(errors::SystemDuplicateName, name);
  }
  UnitManager* units = UnitManager::Instance();
  for (unsigned b = 0; b < kBaseDimensionCount; ++b)
    units->getSystemUnit(getBaseUnitOf(*system, b), static_cast<int>(b));
  systems_->emplace_back(system);
}

void UnitSystemManager::unregisterUnitSystem(const std::string& name) {
  Announcement::refuseInsideListener();
  RegistryLock::Change change;
  auto kept = std::make_unique<std::vector<std::unique_ptr<UnitSystem>>>();
  bool removed = false;
  for (auto& system : *systems_) {
    if (system->getUnitSystemName() == name) {
      removed = true;
    } else {
      kept->push_back(std::move(system));
    }
  }
  if (!removed) {
    // Nothing matched: the kept list holds every system, in order.
    systems_ = std::move(kept);
    raiseError(errors::SystemNotRegistered);
  }
  systems_ = std::move(kept);  // deletes the removed ones
}

}  // namespace TwUnits
