#pragma once

// File: UnitPrefixUDC.hpp
// The host class "UnitPrefix": one unit prefix shown to the host language, with its
// name, exponent and multiplier as properties, whether it is built in, and the
// methods "register", "compare", "display" and "delete". Every registered prefix has
// one host object of this class; users may construct more, fill them in and register
// them.
//
// Example (host language):
//   p = UnitPrefix; p.name = 'myria'; p.exponent = 4; p.register

#include "units/udd/UnitsHostClass.hpp"

namespace TwUnits {

class UnitPrefixUDC : public UnitsHostClass {
 public:
  UnitPrefixUDC();
  // A new host object wrapping a new prefix with the defaults.
  using UnitsHostClass::createClassSpecificObject;
  UDInterface* createClassSpecificObject(UDInterface* parent, void** args, int nargs) override;
  // Frees the wrapped prefix unless a registry owns it.
  void destroyObject(UDInterface* object) override;
};

// The class, made on the first call (the module creates it when it is loaded).
UnitPrefixUDC* GetUnitPrefixUDC();
extern UnitPrefixUDC* SINGLETON_UnitPrefixUDC;

}  // namespace TwUnits
