// convert, Converter and express: converters come from the library; values, numbers or
// numpy arrays, are converted here, an array in one loop with the interpreter lock
// released.

#include <pybind11/numpy.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "python/src/Bindings.hpp"
#include "python/src/Border.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverter.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitConverterManagerApi.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitSystemManagerApi.hpp"

namespace twzo_python {

namespace {

using TwUnits::UnitConverter;
using TwUnits::UnitConverterApi;
using TwUnits::UnitManager;

// A value to convert: a number, or an array of numbers. (A default py::array would be a
// new empty array: too dear for the path of a number.)
struct Value {
  bool isNumber = false;
  double number = 0.0;
  py::object array;
};

[[noreturn]] void refuseValue(py::handle value, const py::array& asArray) {
  std::string what = py::str(py::type::handle_of(value).attr("__name__"));
  if (asArray && asArray.ndim() > 0) what = "an array of " + std::string(py::str(asArray.dtype()));
  throw py::type_error("a value to convert is a number or an array of numbers, not " + what);
}

bool isNumericKind(const py::array& array) {
  char kind = array.dtype().kind();
  return kind == 'b' || kind == 'i' || kind == 'u' || kind == 'f';
}

Value readValue(py::handle value) {
  PyObject* object = value.ptr();
  if (PyFloat_Check(object)) return {true, PyFloat_AS_DOUBLE(object), {}};
  if (PyLong_Check(object)) {
    double number = PyLong_AsDouble(object);
    if (number == -1.0 && PyErr_Occurred()) throw py::error_already_set();
    return {true, number, {}};
  }
  // Anything numpy reads as an array: arrays, numpy's scalars, lists, tuples.
  py::array array = py::array::ensure(value);
  if (!array || !isNumericKind(array)) refuseValue(value, array);
  return {false, 0.0, std::move(array)};
}

template <class T>
py::array convertArray(const py::array& values, UnitConverter converter) {
  auto in = py::array_t<T, py::array::c_style | py::array::forcecast>::ensure(values);
  if (!in) throw py::error_already_set();
  py::array_t<T> out(std::vector<py::ssize_t>(in.shape(), in.shape() + in.ndim()));
  const T* from = in.data();
  T* to = out.mutable_data();
  const py::ssize_t count = in.size();
  {
    py::gil_scoped_release unlocked;
    for (py::ssize_t i = 0; i < count; ++i) to[i] = static_cast<T>(converter.doConversion(from[i]));
  }
  return out;
}

// A number gives a float; an array gives an array of the same shape, float32 for
// float32 and float64 for every other kind of number.
py::object apply(const Value& value, const UnitConverter& converter) {
  if (value.isNumber) return py::float_(converter.doConversion(value.number));
  const auto array = py::reinterpret_borrow<py::array>(value.array);
  const py::dtype dtype = array.dtype();
  if (dtype.kind() == 'f' && dtype.itemsize() == 4) return convertArray<float>(array, converter);
  return convertArray<double>(array, converter);
}

// By value, and without heap allocation once the two texts have been converted before.
UnitConverter converterBetween(const std::string& from, const std::string& to) {
  return TwUnits::UnitConverterManager::Instance()->getConverter(from, to);
}

// A prepared conversion between two texts: the factors are taken once, when it is made.
class Converter {
 public:
  Converter(const UnitConverter& factors, std::string from, std::string to)
      : factors_(factors), from_(std::move(from)), to_(std::move(to)) {}

  const UnitConverter& factors() const { return factors_; }
  const std::string& from() const { return from_; }
  const std::string& to() const { return to_; }

  Converter inverse() const {
    UnitConverter forward = factors_;
    std::unique_ptr<UnitConverterApi> reverse(callLibrary([&] {
      return UnitManager::Instance()->getUnitConverterManagerApi()->getReverseUnitConverterApi(
          &forward);
    }));
    return Converter(UnitConverter(reverse->getMultiplier(), reverse->getOffset()), to_, from_);
  }

 private:
  UnitConverter factors_;
  std::string from_;
  std::string to_;
};

Converter express(const std::string& text, const std::string& system) {
  return callLibrary([&] {
    UnitManager* units = UnitManager::Instance();
    std::pair<double, double> factors;
    std::unique_ptr<TwUnits::UnitComposition> inSystem(units->createUnitCompApiForUnitSystem(
        text, units->getUnitSystemManagerApi()->getUnitSystemApi(system), factors));
    return Converter(UnitConverter(factors.first, factors.second), text,
                     inSystem->getCompositionString());
  });
}

}  // namespace

void bindConversion(py::module_& module) {
  module.def(
      "convert",
      [](const py::object& value, const std::string& from, const std::string& to) -> py::object {
        Value read = readValue(value);
        if (read.isNumber) {
          return py::float_(
              callLibrary([&] { return UnitManager::Instance()->convert(read.number, from, to); }));
        }
        return apply(read, callLibrary([&] { return converterBetween(from, to); }));
      },
      py::arg("value"), py::arg("from_text"), py::arg("to_text"),
      R"(Converts a value from one unit or composition to another.

value is a number (the result is a float) or an array of numbers of any shape, or anything
numpy reads as one (the result is a numpy array of the same shape: float32 for float32,
float64 otherwise). Texts are unit names or compositions such as 'kilogram/(meter*second^2)';
prefixes apply ('millimole/liter').

>>> convert(1, 'mile', 'meter')
1609.344
Raises UnitNotFoundError, UnitConversionDifferentQuantsError, ... (all UnitsError).)");

  py::class_<Converter>(module, "Converter", R"(A conversion prepared once and applied many times.

Converter(from_text, to_text) takes the factors of y = multiplier * x + offset when it is
made; a later change of the registries does not change it. Calling it converts a number or
an array as convert() does.

>>> c = Converter('celsius', 'fahrenheit'); c(100.0)
212.0)")
      .def(py::init([](const std::string& from, const std::string& to) {
             return Converter(callLibrary([&] { return converterBetween(from, to); }), from, to);
           }),
           py::arg("from_text"), py::arg("to_text"))
      .def(
          "__call__",
          [](const Converter& converter, const py::object& value) {
            return apply(readValue(value), converter.factors());
          },
          py::arg("value"), "Converts a number or an array of numbers.")
      .def_property_readonly(
          "multiplier", [](const Converter& c) { return c.factors().getMultiplier(); },
          "The factor of y = multiplier * x + offset.")
      .def_property_readonly(
          "offset", [](const Converter& c) { return c.factors().getOffset(); },
          "The offset of y = multiplier * x + offset (non-zero for temperatures only).")
      .def_property_readonly("from_text", &Converter::from, "The text converted from.")
      .def_property_readonly("to_text", &Converter::to, "The text converted to.")
      .def("inverse", &Converter::inverse, "The converter back, from to_text to from_text.")
      .def("__repr__", [](const Converter& c) {
        return "Converter(" + std::string(py::repr(py::str(c.from()))) + ", " +
               std::string(py::repr(py::str(c.to()))) + ")";
      });

  module.def("express", &express, py::arg("text"), py::arg("system") = "MKS",
             R"(Writes a composition in a unit system's units.

Returns the Converter from text to the same quantity written in the system's units, whose
to_text is that composition.

>>> express('newton').to_text
'kilogram*meter/second^2'
Raises UnitSystemNotFoundError for an unknown system.)");
}

}  // namespace twzo_python
