#pragma once

// File: Bindings.hpp
// The parts of the extension module `twzo_units._native`, each adding its functions
// and classes to the module.

#include <pybind11/pybind11.h>

namespace twzo_python {

namespace py = pybind11;

// convert, Converter, express.
void bindConversion(py::module_& module);
// Registration, removal, listing and checks of units, prefixes, quantities and systems.
void bindRegistries(py::module_& module);
// subscribe and Subscription; adds the library listeners that call the subscribers.
void bindEvents(py::module_& module);

// While one lives, a subscriber that raises on "UNIT_REMOVED" refuses the removal: the
// unit registry calls those listeners before it changes anything. Outside one (a unit
// removed with its quantity, whose removal is already under way) the error is reported
// as unraisable instead.
class RefusableUnitRemoval {
 public:
  RefusableUnitRemoval();
  ~RefusableUnitRemoval();
  RefusableUnitRemoval(const RefusableUnitRemoval&) = delete;
  RefusableUnitRemoval& operator=(const RefusableUnitRemoval&) = delete;

 private:
  bool previous_;
};

}  // namespace twzo_python
