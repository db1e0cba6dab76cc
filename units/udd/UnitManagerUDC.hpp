#pragma once

// File: UnitManagerUDC.hpp
// The host class "UnitManager": the host language's door to the registries. It has
// exactly one host object, which wraps the unit registry; constructing a
// "UnitManager" always yields it. Its methods list, verify, register and remove
// units, prefixes and quantities, parse compositions and convert values; its
// "CreatedQuantities" are the "PhysicalQuantity" host objects made through it.
//
// Example (host language):
//   um = UnitManager;
//   um.calculateconversion('kilometer/hour', 'meter/second', 36)   % 10

#include "units/udd/UnitsHostClass.hpp"

class Vector;

namespace TwUnits {

class UnitManagerUDC : public UnitsHostClass {
 public:
  UnitManagerUDC();
  // The one manager host object, with a new reference for the caller.
  using UnitsHostClass::createClassSpecificObject;
  UDInterface* createClassSpecificObject(UDInterface* parent, void** args, int nargs) override;
  // Frees the host objects of the created quantities and their list; the registry
  // itself stays.
  void destroyObject(UDInterface* object) override;

  UDInterface* getManagerObject() const { return manager_; }
  void setManagerObject(UDInterface* manager) { manager_ = manager; }

 private:
  UDInterface* manager_ = nullptr;
};

// The class, made on the first call together with the manager host object, which
// sets up every registry and the built-in library.
UnitManagerUDC* GetUnitManagerUDC();

// The "PhysicalQuantity" host objects made through the manager (the attachment
// "quantityattach" of its host object).
Vector* getCreatedQuantities(UDInterface* manager);

}  // namespace TwUnits
