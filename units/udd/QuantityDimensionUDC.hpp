#pragma once

// File: QuantityDimensionUDC.hpp
// The host class "PhysicalQuantity": a physical quantity shown to the host language,
// its name and seven integer exponents as properties. "register" hands them to the
// host-language function "zophregisterquantity", which completes the registration.
//
// Example (host language):
//   q = PhysicalQuantity; q.name = 'speed2'; q.Length = 1; q.Time = -1; q.register

#include "units/udd/UnitsHostClass.hpp"

namespace TwUnits {

class QuantityDimensionUDC : public UnitsHostClass {
 public:
  QuantityDimensionUDC();
  // A new host object wrapping a new quantity with no name and all exponents 0.
  using UnitsHostClass::createClassSpecificObject;
  UDInterface* createClassSpecificObject(UDInterface* parent, void** args, int nargs) override;
  void destroyObject(UDInterface* object) override;
};

// The class, made on the first call (the module creates it when it is loaded).
QuantityDimensionUDC* GetQuantityDimensionUDC();
extern QuantityDimensionUDC* SINGLETON_QuantityDimensionUDC;

}  // namespace TwUnits
