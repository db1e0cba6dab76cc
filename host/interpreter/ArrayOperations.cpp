#include "host/interpreter/ArrayOperations.hpp"

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/Format.hpp"
#include "host/UDClass.hpp"
#include "host/UDInterface.hpp"
#include "host/interpreter/InterpreterError.hpp"

namespace {

using ClassId = HostArray::ClassId;

// Positions past 2^53 cannot be told apart as doubles; no array comes near them.
constexpr double kLargestPosition = 9007199254740992.0;

bool isNumeric(ClassId id) {
  return id == ClassId::Double || id == ClassId::Int32 || id == ClassId::Logical;
}

double numberAt(const HostArray& value, std::size_t i) {
  switch (value.getClassId()) {
    case ClassId::Double:
      return value.getPr()[i];
    case ClassId::Int32:
      return value.getInt32s()[i];
    default:
      return value.getLogicals()[i] ? 1.0 : 0.0;
  }
}

// The 0-based positions a subscript selects along a dimension of `bound` elements.
std::vector<std::size_t> resolve(const ArrayOperations::Subscript& subscript, std::size_t bound,
                                 const std::string& pastTheEnd) {
  std::vector<std::size_t> positions;
  if (subscript.all) {
    positions.reserve(bound);
    for (std::size_t p = 0; p < bound; ++p) positions.push_back(p);
    return positions;
  }
  positions.reserve(subscript.positions.size());
  for (std::size_t position : subscript.positions) {
    if (position > bound) raiseInterpreterError(kBadIndex, pastTheEnd);
    positions.push_back(position - 1);
  }
  return positions;
}

// A rows-by-cols array of the value's class; element k (column-major) is the value's
// element indices[k].
HostArrayPtr gather(const HostArray& value, const std::vector<std::size_t>& indices,
                    std::size_t rows, std::size_t cols) {
  std::size_t count = indices.size();
  switch (value.getClassId()) {
    case ClassId::Double: {
      HostArrayPtr result(HostArray::createDoubleMatrix(rows, cols));
      for (std::size_t k = 0; k < count; ++k) result->getPr()[k] = value.getPr()[indices[k]];
      return result;
    }
    case ClassId::Int32: {
      HostArrayPtr result(HostArray::createInt32Matrix(rows, cols));
      for (std::size_t k = 0; k < count; ++k)
        result->getInt32s()[k] = value.getInt32s()[indices[k]];
      return result;
    }
    case ClassId::Logical: {
      std::size_t dims[2] = {rows, cols};
      HostArrayPtr result(HostArray::createLogicalArray(2, dims));
      for (std::size_t k = 0; k < count; ++k)
        result->getLogicals()[k] = value.getLogicals()[indices[k]];
      return result;
    }
    case ClassId::Char: {
      std::vector<std::string> source(value.getM());
      for (std::size_t r = 0; r < source.size(); ++r) source[r] = value.getStringRow(r);
      std::vector<std::string> texts(rows, std::string(cols, ' '));
      for (std::size_t k = 0; k < count; ++k) {
        std::size_t from = indices[k];
        texts[k % rows][k / rows] = source[from % value.getM()][from / value.getM()];
      }
      std::vector<const char*> pointers;
      for (const std::string& text : texts) pointers.push_back(text.c_str());
      return HostArrayPtr(HostArray::createCharMatrixFromStrings(rows, pointers.data()));
    }
    case ClassId::Cell: {
      HostArrayPtr result(HostArray::createCellMatrix(rows, cols));
      for (std::size_t k = 0; k < count; ++k) {
        const HostArray* element = value.getCell(indices[k]);
        if (element != nullptr) result->setCell(k, element->duplicate());
      }
      return result;
    }
    case ClassId::Handle: {
      std::vector<UDInterface*> objects;
      for (std::size_t index : indices) objects.push_back(value.getHandle(index));
      return HostArrayPtr(HostArray::createHandleArray(objects));
    }
  }
  return nullptr;
}

// The kind of row that a set of values joins into.
ClassId joinedClass(const std::vector<HostArrayPtr>& values) {
  ClassId joined = values.front()->getClassId();
  const char* joinedName = values.front()->getClassName();
  for (const HostArrayPtr& value : values) {
    ClassId id = value->getClassId();
    if (isNumeric(id) && isNumeric(joined)) {
      if (id != ClassId::Logical || joined != ClassId::Logical) joined = ClassId::Double;
    } else if (id != joined) {
      raiseInterpreterError(
          kConcatenation, utFormat("Values of classes '%s' and '%s' cannot be joined.", joinedName,
                                   value->getClassName()));
    }
  }
  return joined;
}

HostArrayPtr signed_(const HostArray& value, double sign, const char* what) {
  ClassId id = value.getClassId();
  if (!isNumeric(id)) {
    raiseInterpreterError(
        kInvalidArgument,
        utFormat("Unary %s is not defined for values of class '%s'.", what, value.getClassName()));
  }
  if (id == ClassId::Int32) {
    HostArrayPtr result(value.duplicate());
    for (std::size_t i = 0; i < value.getNumberOfElements(); ++i) {
      std::int32_t v = result->getInt32s()[i];
      // -INT32_MIN saturates, as the host's integer arithmetic does.
      result->getInt32s()[i] = sign < 0 ? (v == INT32_MIN ? INT32_MAX : -v) : v;
    }
    return result;
  }
  HostArrayPtr result(HostArray::createDoubleMatrix(value.getM(), value.getN()));
  for (std::size_t i = 0; i < value.getNumberOfElements(); ++i)
    result->getPr()[i] = sign * numberAt(value, i);
  return result;
}

}  // namespace

ArrayOperations::Subscript ArrayOperations::subscriptOf(const HostArray& value) {
  ClassId id = value.getClassId();
  if (id != ClassId::Double && id != ClassId::Int32) {
    raiseInterpreterError(kBadIndex, utFormat("Array indices must be positive integers, not %s.",
                                              value.getClassName()));
  }
  Subscript subscript;
  for (std::size_t i = 0; i < value.getNumberOfElements(); ++i) {
    double position = numberAt(value, i);
    if (!(position >= 1 && position <= kLargestPosition) || std::trunc(position) != position)
      raiseInterpreterError(kBadIndex, "Array indices must be positive integers.");
    subscript.positions.push_back(static_cast<std::size_t>(position));
  }
  return subscript;
}

HostArrayPtr ArrayOperations::index(const HostArray& value,
                                    const std::vector<Subscript>& subscripts) {
  std::size_t m = value.getM(), n = value.getN();
  if (subscripts.empty()) return HostArrayPtr(value.duplicate());
  if (subscripts.size() == 1) {
    std::size_t total = value.getNumberOfElements();
    std::vector<std::size_t> indices = resolve(
        subscripts[0], total, utFormat("Index exceeds the number of array elements (%zu).", total));
    bool column = value.getClassId() != ClassId::Handle &&
                  (subscripts[0].all || (n == 1 && m != 1 && value.getNumberOfDimensions() == 2));
    std::size_t count = indices.size();
    return gather(value, indices, column ? count : 1, column ? 1 : count);
  }
  if (subscripts.size() > 2)
    raiseInterpreterError(kBadIndex, "Only one or two subscripts are supported.");
  std::vector<std::size_t> rows =
      resolve(subscripts[0], m, utFormat("Index in position 1 exceeds the array bounds (%zu).", m));
  std::vector<std::size_t> cols =
      resolve(subscripts[1], n, utFormat("Index in position 2 exceeds the array bounds (%zu).", n));
  std::vector<std::size_t> indices;
  indices.reserve(rows.size() * cols.size());
  for (std::size_t c : cols) {
    for (std::size_t r : rows) indices.push_back(c * m + r);
  }
  if (value.getClassId() == ClassId::Handle) return gather(value, indices, 1, indices.size());
  return gather(value, indices, rows.size(), cols.size());
}

HostArrayPtr ArrayOperations::cellContent(const HostArray& value,
                                          const std::vector<Subscript>& subscripts) {
  if (value.getClassId() != ClassId::Cell) {
    raiseInterpreterError(
        kBadIndex, utFormat("Brace indexing is only for cells, not for %s.", value.getClassName()));
  }
  HostArrayPtr selected = index(value, subscripts);
  if (selected->getNumberOfElements() != 1)
    raiseInterpreterError(kBadIndex, "Brace indexing must select exactly one element.");
  const HostArray* element = selected->getCell(0);
  return HostArrayPtr(element != nullptr ? element->duplicate()
                                         : HostArray::createDoubleMatrix(0, 0));
}

HostArrayPtr ArrayOperations::concatenate(std::vector<HostArrayPtr> values) {
  std::vector<HostArrayPtr> parts;
  for (HostArrayPtr& value : values) {
    if (value->isEmpty()) continue;
    if (value->getNumberOfDimensions() != 2 || value->getM() != 1) {
      raiseInterpreterError(kConcatenation,
                            "Brackets join rows; a value with more than one row cannot join.");
    }
    parts.push_back(std::move(value));
  }
  if (parts.empty()) return HostArrayPtr(HostArray::createDoubleMatrix(0, 0));
  if (parts.size() == 1 && parts[0]->getClassId() != ClassId::Int32) return std::move(parts[0]);
  ClassId joined = joinedClass(parts);
  std::size_t total = 0;
  for (const HostArrayPtr& part : parts) total += part->getNumberOfElements();
  switch (joined) {
    case ClassId::Char: {
      std::string text;
      for (const HostArrayPtr& part : parts) text += part->getString();
      return HostArrayPtr(HostArray::createString(text));
    }
    case ClassId::Cell: {
      HostArrayPtr result(HostArray::createCellMatrix(1, total));
      std::size_t k = 0;
      for (const HostArrayPtr& part : parts) {
        for (std::size_t i = 0; i < part->getNumberOfElements(); ++i, ++k) {
          if (const HostArray* element = part->getCell(i)) result->setCell(k, element->duplicate());
        }
      }
      return result;
    }
    case ClassId::Handle: {
      // An array of objects is of one class: its display and methods are that class's.
      std::vector<UDInterface*> objects;
      const UDClass* objectClass = nullptr;
      for (const HostArrayPtr& part : parts) {
        for (std::size_t i = 0; i < part->getNumberOfElements(); ++i) {
          UDInterface* object = part->getHandle(i);
          if (object != nullptr && objectClass == nullptr) objectClass = object->getClass();
          if (object != nullptr && object->getClass() != objectClass) {
            raiseInterpreterError(kConcatenation,
                                  utFormat("Objects of classes '%s' and '%s' cannot be joined.",
                                           objectClass->getName(), object->getClass()->getName()));
          }
          objects.push_back(object);
        }
      }
      return HostArrayPtr(HostArray::createHandleArray(objects));
    }
    case ClassId::Logical: {
      std::size_t dims[2] = {1, total};
      HostArrayPtr result(HostArray::createLogicalArray(2, dims));
      std::size_t k = 0;
      for (const HostArrayPtr& part : parts) {
        for (std::size_t i = 0; i < part->getNumberOfElements(); ++i)
          result->getLogicals()[k++] = part->getLogicals()[i];
      }
      return result;
    }
    default: {
      HostArrayPtr result(HostArray::createDoubleMatrix(1, total));
      std::size_t k = 0;
      for (const HostArrayPtr& part : parts) {
        for (std::size_t i = 0; i < part->getNumberOfElements(); ++i)
          result->getPr()[k++] = numberAt(*part, i);
      }
      return result;
    }
  }
}

HostArrayPtr ArrayOperations::negate(const HostArray& value) { return signed_(value, -1, "minus"); }

HostArrayPtr ArrayOperations::plus(const HostArray& value) { return signed_(value, 1, "plus"); }
