#include "octave/gateway/OctaveValues.hpp"

#include <octave/ov-classdef.h>
#include <octave/parse.h>

#include <cstring>
#include <string>
#include <vector>

#include "host/ErrorIdException.hpp"
#include "host/Format.hpp"
#include "host/UDApplicationManager.hpp"
#include "host/UDClass.hpp"
#include "host/UDInterface.hpp"
#include "octave/gateway/HostObjectValue.hpp"

namespace {

// The hidden property of the Octave classes that keeps their HostObjectValue.
constexpr const char* kHostProperty = "Host_";

[[noreturn]] void refuse(const std::string& message) {
  throw new ErrorIdException("CALVEX:invalidArgument", message);
}

[[noreturn]] void refuseClass(const octave_value& value) {
  refuse(utFormat("A value of class '%s' cannot be passed to the units module.",
                  value.class_name().c_str()));
}

void requireTwoDimensions(const octave_value& value) {
  if (value.ndims() > 2) {
    refuse(utFormat("A %s array of more than two dimensions cannot be passed to the units module.",
                    value.class_name().c_str()));
  }
}

HostArrayPtr handlesOf(const octave_value& value) {
  if (UDApplicationManager::findClass(value.class_name().c_str()) == nullptr) refuseClass(value);
  const octave_classdef* objects = value.classdef_object_value();
  std::vector<UDInterface*> handles;
  for (octave_idx_type i = 0; i < value.numel(); ++i) {
    UDInterface* object = HostObjectValue::objectOf(objects->get_property(i, kHostProperty));
    if (object == nullptr) refuse("An object without a host object cannot be passed on.");
    handles.push_back(object);
  }
  return HostArrayPtr(HostArray::createHandleArray(handles));
}

HostArrayPtr charsOf(const octave_value& value) {
  requireTwoDimensions(value);
  charMatrix chars = value.char_matrix_value();
  std::size_t rows = static_cast<std::size_t>(chars.rows());
  if (rows == 0) return HostArrayPtr(HostArray::createString(nullptr));
  std::vector<std::string> texts(rows);
  std::vector<const char*> pointers(rows);
  for (std::size_t r = 0; r < rows; ++r) {
    texts[r] = chars.row_as_string(static_cast<octave_idx_type>(r), false);
    if (std::strlen(texts[r].c_str()) != texts[r].size())
      refuse("A text holding a NUL character cannot be passed to the units module.");
    pointers[r] = texts[r].c_str();
  }
  return HostArrayPtr(HostArray::createCharMatrixFromStrings(rows, pointers.data()));
}

HostArrayPtr logicalsOf(const octave_value& value) {
  boolNDArray logicals = value.bool_array_value();
  dim_vector dims = logicals.dims();
  std::vector<std::size_t> sizes;
  for (int d = 0; d < dims.ndims(); ++d) sizes.push_back(static_cast<std::size_t>(dims(d)));
  HostArrayPtr array(HostArray::createLogicalArray(sizes.size(), sizes.data()));
  std::copy(logicals.data(), logicals.data() + logicals.numel(), array->getLogicals());
  return array;
}

HostArrayPtr numbersOf(const octave_value& value) {
  requireTwoDimensions(value);
  NDArray numbers = value.array_value();
  HostArrayPtr array(HostArray::createDoubleMatrix(static_cast<std::size_t>(numbers.rows()),
                                                   static_cast<std::size_t>(numbers.cols())));
  std::copy(numbers.data(), numbers.data() + numbers.numel(), array->getPr());
  return array;
}

HostArrayPtr cellsOf(const octave_value& value) {
  requireTwoDimensions(value);
  Cell cells = value.cell_value();
  HostArrayPtr array(HostArray::createCellMatrix(static_cast<std::size_t>(cells.rows()),
                                                 static_cast<std::size_t>(cells.cols())));
  for (octave_idx_type i = 0; i < cells.numel(); ++i)
    array->setCell(static_cast<std::size_t>(i), OctaveValues::toHost(cells(i)).release());
  return array;
}

// An object of the Octave class named after the host object's class.
octave_value objectFor(UDInterface* object) {
  octave_value handle(new HostObjectValue(object->getReference()));
  return octave::feval(object->getClass()->getName(), octave_value_list(handle), 1)(0);
}

octave_value objectsFor(const HostArray& handles) {
  octave_value objects;
  octave_idx_type count = 0;
  for (std::size_t i = 0; i < handles.getNumberOfElements(); ++i) {
    UDInterface* object = handles.getHandle(i);
    if (object == nullptr) continue;
    octave_value next = objectFor(object);
    objects = count == 0
                  ? next
                  : objects.subsasgn("(", {octave_value_list(octave_value(count + 1))}, next);
    ++count;
  }
  return count == 0 ? octave_value(Matrix()) : objects;
}

}  // namespace

HostArrayPtr OctaveValues::toHost(const octave_value& value) {
  if (value.is_classdef_object()) return handlesOf(value);
  if (value.iscomplex()) refuse("Complex numbers cannot be passed to the units module.");
  if (value.is_string()) return charsOf(value);
  if (value.islogical()) return logicalsOf(value);
  if (value.isnumeric()) return numbersOf(value);
  if (value.iscell()) return cellsOf(value);
  refuseClass(value);
}

octave_value OctaveValues::toOctave(const HostArray& value) {
  std::size_t m = value.getM(), n = value.getN();
  auto rows = static_cast<octave_idx_type>(m), columns = static_cast<octave_idx_type>(n);
  switch (value.getClassId()) {
    case HostArray::ClassId::Double: {
      Matrix numbers(rows, columns);
      std::copy(value.getPr(), value.getPr() + m * n, numbers.fortran_vec());
      return numbers;
    }
    case HostArray::ClassId::Char: {
      if (m * n == 0) return octave_value("");  // Octave's empty text is 0x0
      charMatrix chars(rows, columns);
      for (std::size_t r = 0; r < m; ++r) {
        std::string row = value.getStringRow(r);
        for (std::size_t c = 0; c < n; ++c)
          chars(static_cast<octave_idx_type>(r), static_cast<octave_idx_type>(c)) = row[c];
      }
      return octave_value(chars, '\'');
    }
    case HostArray::ClassId::Logical: {
      dim_vector dims;
      dims.resize(static_cast<int>(value.getNumberOfDimensions()));
      for (std::size_t d = 0; d < value.getNumberOfDimensions(); ++d)
        dims(static_cast<int>(d)) = static_cast<octave_idx_type>(value.getDimensions()[d]);
      boolNDArray logicals(dims);
      std::copy(value.getLogicals(), value.getLogicals() + value.getNumberOfElements(),
                logicals.fortran_vec());
      return logicals;
    }
    case HostArray::ClassId::Int32: {
      int32NDArray integers(dim_vector(rows, columns));
      for (std::size_t i = 0; i < m * n; ++i)
        integers(static_cast<octave_idx_type>(i)) = value.getInt32s()[i];
      return integers;
    }
    case HostArray::ClassId::Cell: {
      Cell cells(rows, columns);
      for (std::size_t i = 0; i < m * n; ++i) {
        const HostArray* element = value.getCell(i);
        cells(static_cast<octave_idx_type>(i)) =
            element != nullptr ? toOctave(*element) : octave_value(Matrix());
      }
      return cells;
    }
    case HostArray::ClassId::Handle:
      return objectsFor(value);
  }
  return octave_value();
}
