#include "python/src/Border.hpp"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/ErrorIdException.hpp"
#include "host/Warning.hpp"

namespace twzo_python {

namespace {

struct Issued {
  std::string identifier;
  std::string text;
};

// References held for the rest of the process.
struct IssueClasses {
  py::handle errors, errorBase, warnings, warningBase;
};
IssueClasses classes;

std::vector<Issued> collectedWarnings;
int libraryDepth = 0;

py::handle classFor(py::handle byIdentifier, py::handle base, const char* identifier) {
  if (!byIdentifier) return base;
  PyObject* found = PyDict_GetItemString(byIdentifier.ptr(), identifier);
  return found ? py::handle(found) : base;
}

// Sets the Python error for a library error: the identifier's class, or the base class.
void setPythonError(const char* identifier, const char* message) {
  py::handle errorClass = classFor(classes.errors, classes.errorBase, identifier);
  if (!errorClass) {
    PyErr_Format(PyExc_RuntimeError, "%s: %s", identifier, message);
    return;
  }
  try {
    py::object error = py::reinterpret_borrow<py::object>(errorClass)(message, identifier);
    PyErr_SetObject(errorClass.ptr(), error.ptr());
  } catch (py::error_already_set& failed) {
    failed.restore();
  }
}

void issueCollectedWarnings(bool raiseFiltered) {
  std::vector<Issued> issued;
  issued.swap(collectedWarnings);
  for (const Issued& warning : issued) {
    py::handle category =
        classFor(classes.warnings, classes.warningBase, warning.identifier.c_str());
    if (!category) category = PyExc_UserWarning;
    if (PyErr_WarnEx(category.ptr(), warning.text.c_str(), 1) < 0) {
      if (raiseFiltered) throw py::error_already_set();
      PyErr_Clear();
    }
  }
}

}  // namespace

void installBorder() {
  static bool installed = false;
  if (installed) return;
  installed = true;
  // The library's errors are heap objects thrown by pointer; whoever handles one deletes it.
  py::register_exception_translator([](std::exception_ptr raised) {
    try {
      if (raised) std::rethrow_exception(raised);
    } catch (ErrorIdException* error) {
      std::unique_ptr<ErrorIdException> owned(error);
      setPythonError(owned->getIdentifier(), owned->getMessage());
    } catch (Exception* error) {
      std::unique_ptr<Exception> owned(error);
      setPythonError("", owned->getMessage());
    }
  });
  utSetWarningHandler([](const std::string& identifier, const std::string& text) {
    collectedWarnings.push_back({identifier, text});
  });
}

void setIssueClasses(py::dict errors, py::object errorBase, py::dict warnings,
                     py::object warningBase) {
  classes = {errors.release(), errorBase.release(), warnings.release(), warningBase.release()};
}

void enterLibrary() { ++libraryDepth; }

void leaveLibrary(bool succeeded) {
  if (--libraryDepth > 0 || collectedWarnings.empty()) return;
  issueCollectedWarnings(succeeded);
}

}  // namespace twzo_python
