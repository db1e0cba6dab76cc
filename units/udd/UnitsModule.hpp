#pragma once

// File: UnitsModule.hpp
// The module's entry points, as the host loads it: loading the library creates the
// host classes "PhysicalQuantity", "UnitPrefix", "UnitSystem" and "Unit" under the
// application "UnitApp"; CVInitialize_zo_units then creates "UnitManager" and its one
// host object, which sets up every registry and the built-in library.
//
// Example (what the host does):
//   void* module = dlopen("libtwzo_units.so", RTLD_NOW);
//   reinterpret_cast<void (*)()>(dlsym(module, "CVInitialize_zo_units"))();

class UDApplication;
struct CVFcnTable;

extern "C" {
void CVInitialize_zo_units();
// The module's table of host-callable functions; it has no entries.
const CVFcnTable* QueryCVFcnTable_zo_units();
// The application "UnitApp", made on the first call.
UDApplication* GetUnitApplication();
extern const char libtwzo_units_version[];
extern const char libtwzo_units_build_date[];
}

namespace TwUnits {

// Creates the five host classes in order; the last one sets up the unit registry.
void units_initialize();

// Adds the class to "UnitApp" and returns it.
template <typename Class>
Class* addToUnitApplication(Class* cls);

}  // namespace TwUnits

#include "host/UDApplication.hpp"

template <typename Class>
Class* TwUnits::addToUnitApplication(Class* cls) {
  GetUnitApplication()->addClass(cls);
  return cls;
}
