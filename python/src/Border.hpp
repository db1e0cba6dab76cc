#pragma once

// File: Border.hpp
// The border between Python and the units library. Every call into the library goes
// through `callLibrary`, which hands the warnings that the library issued during the call
// to Python's `warnings` module once the library has returned, so that no Python code runs
// inside the library on their account (a filter that turns one into an error raises it
// then). The library's errors (`ErrorIdException*`) become the package's exception
// classes through the translator that `installBorder` registers.
//
// Example:
//   double metres = callLibrary([&] { return units->convert(1.0, "mile", "meter"); });

#include <pybind11/pybind11.h>

#include <type_traits>

namespace twzo_python {

namespace py = pybind11;

// Installs the error translator and the warning handler; once per process.
void installBorder();
// The package's exception and warning classes, keyed by identifier, and the bases used
// for identifiers without a class of their own.
void setIssueClasses(py::dict errors, py::object errorBase, py::dict warnings,
                     py::object warningBase);

void enterLibrary();
// Issues the warnings collected since the outermost call began. After a failed call,
// a warning that a filter turns into an error gives way to the library's error.
void leaveLibrary(bool succeeded);

template <class Call>
decltype(auto) callLibrary(Call&& call) {
  enterLibrary();
  if constexpr (std::is_void_v<decltype(call())>) {
    try {
      call();
    } catch (...) {
      leaveLibrary(false);
      throw;
    }
    leaveLibrary(true);
  } else {
    auto result = [&] {
      try {
        return call();
      } catch (...) {
        leaveLibrary(false);
        throw;
      }
    }();
    leaveLibrary(true);
    return result;
  }
}

}  // namespace twzo_python
