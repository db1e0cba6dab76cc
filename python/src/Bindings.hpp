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

}  // namespace twzo_python
