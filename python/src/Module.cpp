// The extension module twzo_units._native: the units library's registries, conversions
// and events for the package twzo_units, which adds the exception and warning classes.

#include <pybind11/pybind11.h>

#include "python/src/Bindings.hpp"
#include "python/src/Border.hpp"
#include "units/UnitManager.hpp"
#include "units/messages/UnitErrors.hpp"

namespace py = pybind11;

PYBIND11_MODULE(_native, module) {
  module.doc() = "The units library's registries, conversions and events (see twzo_units).";
  TwUnits::UnitManager::Instance();  // the built-in library, set up before anyone listens
  twzo_python::installBorder();
  twzo_python::bindConversion(module);
  twzo_python::bindRegistries(module);
  twzo_python::bindEvents(module);

  module.def("error_identifiers", [] {
    py::list identifiers;
    for (const TwUnits::UnitError& error : TwUnits::kAllErrors)
      identifiers.append(error.identifier);
    return identifiers;
  });
  module.def("warning_identifiers", [] {
    py::list identifiers;
    for (const TwUnits::UnitError& warning : TwUnits::kAllWarnings)
      identifiers.append(warning.identifier);
    return identifiers;
  });
  module.def("_set_issue_classes", &twzo_python::setIssueClasses, py::arg("errors"),
             py::arg("error_base"), py::arg("warnings"), py::arg("warning_base"));
}
