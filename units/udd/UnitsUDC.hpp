#pragma once

// File: UnitsUDC.hpp
// The host class "Unit": one unit definition shown to the host language, with its
// name, composition, multiplier and offset as properties, whether it is built in, and
// the methods "register", "compare", "display" and "delete". Every registered unit but
// "dimensionless" has one host object of this class; users may construct more, fill
// them in and register them.
//
// Example (host language):
//   u = Unit; u.name = 'furlong'; u.composition = 'meter'; u.conversionfactor = 201.168;
//   u.register

#include "units/udd/UnitsHostClass.hpp"

namespace TwUnits {

class UnitsUDC : public UnitsHostClass {
 public:
  UnitsUDC();
  // A new host object wrapping a new default unit definition.
  using UnitsHostClass::createClassSpecificObject;
  UDInterface* createClassSpecificObject(UDInterface* parent, void** args, int nargs) override;
  // Frees the wrapped definition unless a registry owns it.
  void destroyObject(UDInterface* object) override;
};

// The class, made on the first call (the module creates it when it is loaded).
UnitsUDC* GetUnitsUDC();
extern UnitsUDC* SINGLETON_UnitsUDC;

}  // namespace TwUnits
