#include "units/udd/UDDObjectManager.hpp"

#include "host/UDInterface.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/udd/UnitPrefixUDC.hpp"
#include "units/udd/UnitsUDC.hpp"

namespace TwUnits {

namespace {

// Gives a registered unit or prefix a host object of the class, which holds the
// registry's reference, unless it has one.
template <typename Library>
void giveHostObject(Library* registered, UDClass* cls) {
  if (registered->getUDI() != nullptr) return;
  UDInterface* object = cls->createObject(nullptr, nullptr);
  // The class made a fresh library object of its own; this one wraps the registered one.
  delete static_cast<Library*>(object->getObject());
  object->setObject(registered);
  registered->setUDI(object);
  object->internalToExternal();
}

template <typename Library>
void releaseHostObject(Library* unregistered) {
  UDInterface* object = unregistered->getUDI();
  if (object == nullptr) return;
  object->setObject(nullptr);
  unregistered->setUDI(nullptr);
  object->externalToInternal();
  object->release();
}

// Registers with the host object recorded as the library object's own; undoes that
// when the registry does not keep the object.
template <typename Library, typename Register, typename IsKept>
void registerWithHostObject(UDInterface* object, Register registerIt, IsKept isKept) {
  auto* library = static_cast<Library*>(object->getObject());
  bool recorded = library->getUDI() == nullptr;
  if (recorded) library->setUDI(object->getReference());
  auto undo = [&] {
    if (!recorded) return;
    library->setUDI(nullptr);
    object->release();
  };
  try {
    registerIt(library);
  } catch (...) {
    // A listener's error comes after the registration: a kept object stays registered.
    if (!isKept(library)) undo();
    throw;
  }
  if (!isKept(library)) undo();
}

}  // namespace

void UDDObjectManager::unitRegisteredListener(const UnitRepresentationApi* unit) {
  giveHostObject(const_cast<UnitRepresentation*>(static_cast<const UnitRepresentation*>(unit)),
                 GetUnitsUDC());
}

void UDDObjectManager::unitUnregisteredListener(const UnitRepresentationApi* unit) {
  releaseHostObject(const_cast<UnitRepresentation*>(static_cast<const UnitRepresentation*>(unit)));
}

void UDDObjectManager::prefixRegisteredListener(const UnitPrefixApi* prefix) {
  giveHostObject(const_cast<UnitPrefix*>(static_cast<const UnitPrefix*>(prefix)),
                 GetUnitPrefixUDC());
}

void UDDObjectManager::prefixUnregisteredListener(const UnitPrefixApi* prefix) {
  releaseHostObject(const_cast<UnitPrefix*>(static_cast<const UnitPrefix*>(prefix)));
}

void UDDObjectManager::registerUnitOfHostObject(UDInterface* object) {
  UnitManager* units = UnitManager::Instance();
  registerWithHostObject<UnitRepresentation>(
      object, [&](UnitRepresentation* unit) { units->registerUnit(unit); },
      [&](UnitRepresentation* unit) {
        return units->getUnitRepresentation(unit->getName()) == unit;
      });
}

void UDDObjectManager::registerPrefixOfHostObject(UDInterface* object) {
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  registerWithHostObject<UnitPrefix>(
      object, [&](UnitPrefix* prefix) { prefixes->registerPrefix(prefix); },
      [&](UnitPrefix* prefix) { return prefixes->getUnitPrefixApi(prefix->getName()) == prefix; });
}

}  // namespace TwUnits
