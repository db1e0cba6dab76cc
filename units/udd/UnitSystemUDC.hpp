#pragma once

// File: UnitSystemUDC.hpp
// The host class "UnitSystem": a form for a unit system, with its name and one unit
// name per base dimension as properties, that "register" copies into the unit-system
// registry and "unregister" removes from it by name. Registered systems get no host
// object of their own.
//
// Example (host language):
//   s = UnitSystem; s.Name = 'cgs'; s.MassUnit = 'gram'; ... s.register

#include "units/udd/UnitsHostClass.hpp"

namespace TwUnits {

class UnitSystemUDC : public UnitsHostClass {
 public:
  UnitSystemUDC();
  // A new host object wrapping a new unit system with eight empty names.
  using UnitsHostClass::createClassSpecificObject;
  UDInterface* createClassSpecificObject(UDInterface* parent, void** args, int nargs) override;
  void destroyObject(UDInterface* object) override;
};

// The class, made on the first call (the module creates it when it is loaded).
UnitSystemUDC* GetUnitSystemUDC();
extern UnitSystemUDC* SINGLETON_UnitSystemUDC;

}  // namespace TwUnits
