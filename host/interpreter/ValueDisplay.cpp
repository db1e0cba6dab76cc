#include "host/interpreter/ValueDisplay.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "host/Console.hpp"
#include "host/Exception.hpp"
#include "host/HostArray.hpp"
#include "host/UDClass.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"
#include "host/UDPropInfo.hpp"

namespace {

// The shortest of %.1g ... %.<digits>g that reads back as the value, else the last.
std::string numberText(double value, int digits) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value > 0 ? "Inf" : "-Inf";
  if (value == 0) return "0";  // -0 too
  char buffer[40];
  // Whole numbers print in full while every digit is exact.
  if (std::fabs(value) < 1e15 && std::trunc(value) == value) {
    std::snprintf(buffer, sizeof buffer, "%.0f", value);
    return buffer;
  }
  for (int precision = 1; precision <= digits; ++precision) {
    std::snprintf(buffer, sizeof buffer, "%.*g", precision, value);
    if (std::strtod(buffer, nullptr) == value) break;
  }
  return buffer;
}

// As the host language shows texts: in quotes, quotes inside left as they are.
std::string quoted(const std::string& text) { return "'" + text + "'"; }

// Element i (column-major) of a double, int32 or logical array.
std::string elementText(const HostArray& value, std::size_t i) {
  switch (value.getClassId()) {
    case HostArray::ClassId::Double:
      return ValueDisplay::formatNumber(value.getPr()[i]);
    case HostArray::ClassId::Int32:
      return std::to_string(value.getInt32s()[i]);
    default:
      return value.getLogicals()[i] ? "true" : "false";
  }
}

// Row r of a numeric or logical matrix, elements separated by `separator`.
std::string rowText(const HostArray& value, std::size_t r, const char* separator) {
  std::string text;
  for (std::size_t c = 0; c < value.getN(); ++c) {
    if (c > 0) text += separator;
    text += elementText(value, c * value.getM() + r);
  }
  return text;
}

std::string sizeText(const HostArray& value) {
  std::string text;
  for (std::size_t d = 0; d < value.getNumberOfDimensions(); ++d) {
    if (d > 0) text += "x";
    text += std::to_string(value.getDimensions()[d]);
  }
  return text;
}

const char* classOfHandles(const HostArray& value) {
  UDInterface* first = value.isEmpty() ? nullptr : value.getHandle(0);
  return first != nullptr ? first->getClass()->getName() : "handle";
}

std::string numericInline(const HostArray& value) {
  if (value.getNumberOfDimensions() > 2)
    return "[" + sizeText(value) + " " + value.getClassName() + "]";
  if (value.isEmpty()) return "[]";
  if (value.getNumberOfElements() == 1) return elementText(value, 0);
  std::string text = "[";
  for (std::size_t r = 0; r < value.getM(); ++r) {
    if (r > 0) text += "; ";
    text += rowText(value, r, " ");
  }
  return text + "]";
}

std::string charInline(const HostArray& value) {
  if (value.getM() <= 1) return quoted(value.getString());
  std::string text = "[";
  for (std::size_t r = 0; r < value.getM(); ++r) {
    if (r > 0) text += "; ";
    text += quoted(value.getStringRow(r));
  }
  return text + "]";
}

std::string cellElementInline(const HostArray& cell, std::size_t i) {
  const HostArray* element = cell.getCell(i);
  return element != nullptr ? ValueDisplay::formatInline(*element) : "[]";
}

// The objects of a non-empty handle array: through their class's "display" method
// when every one of them can take the call, otherwise described here.
void showObjects(const HostArray& value) {
  bool allValid = true;
  for (std::size_t i = 0; i < value.getNumberOfElements(); ++i) {
    UDInterface* object = value.getHandle(i);
    allValid = allValid && object != nullptr && object->isValid();
  }
  UDInterface* first = value.getHandle(0);
  const char* className = classOfHandles(value);
  if (allValid && first->getClass()->findMethod("display") != nullptr) {
    for (HostArray* result : hostInvokeMethod("display", 0, {&value})) HostArray::destroy(result);
    return;
  }
  if (value.getNumberOfElements() > 1) {
    utPrintf("  %s %s array\n", sizeText(value).c_str(), className);
  } else if (!allValid) {
    utPrintf("  handle to a deleted %s object\n", className);
  } else {
    std::string properties = ValueDisplay::describeProperties(first);
    if (properties.empty()) {
      utPrintf("  %s with no visible properties\n", className);
    } else {
      utPrintf("  %s with properties:\n%s", className, properties.c_str());
    }
  }
}

}  // namespace

std::string ValueDisplay::formatNumber(double value) { return numberText(value, 15); }

std::string ValueDisplay::formatNumberExact(double value) { return numberText(value, 17); }

std::string ValueDisplay::formatInline(const HostArray& value) {
  switch (value.getClassId()) {
    case HostArray::ClassId::Char:
      return charInline(value);
    case HostArray::ClassId::Cell: {
      if (value.isEmpty()) return "{}";
      std::string text = "{";
      for (std::size_t i = 0; i < value.getNumberOfElements(); ++i) {
        if (i > 0) text += ", ";
        text += cellElementInline(value, i);
      }
      return text + "}";
    }
    case HostArray::ClassId::Handle:
      if (value.isEmpty()) return "[] (empty handle)";
      return "[" + sizeText(value) + " " + classOfHandles(value) + "]";
    default:
      return numericInline(value);
  }
}

void ValueDisplay::display(const std::string& name, const HostArray& value) {
  switch (value.getClassId()) {
    case HostArray::ClassId::Handle:
      if (value.isEmpty()) break;
      utPrintf("%s =\n", name.c_str());
      showObjects(value);
      return;
    case HostArray::ClassId::Char:
      if (value.getM() <= 1) break;
      utPrintf("%s =\n", name.c_str());
      for (std::size_t r = 0; r < value.getM(); ++r)
        utPrintf("    %s\n", quoted(value.getStringRow(r)).c_str());
      return;
    case HostArray::ClassId::Cell:
      if (value.isEmpty()) break;
      utPrintf("%s =\n", name.c_str());
      for (std::size_t i = 0; i < value.getNumberOfElements(); ++i)
        utPrintf("    %s\n", cellElementInline(value, i).c_str());
      return;
    default:
      break;
  }
  utPrintf("%s = %s\n", name.c_str(), formatInline(value).c_str());
}

void ValueDisplay::disp(const HostArray& value) {
  if (value.isEmpty()) return;
  switch (value.getClassId()) {
    case HostArray::ClassId::Handle:
      showObjects(value);
      return;
    case HostArray::ClassId::Char:
      for (std::size_t r = 0; r < value.getM(); ++r)
        utPrintf("%s\n", value.getStringRow(r).c_str());
      return;
    case HostArray::ClassId::Cell:
      for (std::size_t i = 0; i < value.getNumberOfElements(); ++i)
        utPrintf("%s\n", cellElementInline(value, i).c_str());
      return;
    default:
      if (value.getNumberOfDimensions() > 2) {
        utPrintf("%s\n", numericInline(value).c_str());
        return;
      }
      for (std::size_t r = 0; r < value.getM(); ++r)
        utPrintf("%s\n", rowText(value, r, " ").c_str());
  }
}

std::string ValueDisplay::describeProperties(UDInterface* object) {
  const UDClass* cls = object->getClass();
  std::vector<const UDPropInfo*> visible;
  std::size_t width = 0;
  for (const UDClass* c = cls; c != nullptr; c = c->getSuperClass()) {
    for (const UDPropInfo* property : c->getProperties()) {
      // A subclass's property of the same name hides the superclass's.
      if (!property->getVisible() || cls->findProperty(property->getName()) != property) continue;
      visible.push_back(property);
      width = std::max(width, std::string(property->getName()).size());
    }
  }
  std::string text;
  for (const UDPropInfo* property : visible) {
    std::string shown;
    try {
      HostArrayPtr value(hostGetProperty(object, property->getName()));
      shown = formatInline(*value);
    } catch (Exception* raised) {
      auto owned = adoptError(raised);
      shown = std::string("<") + raised->getMessage() + ">";
    }
    std::string name = property->getName();
    text.append(4 + width - name.size(), ' ').append(name).append(": ").append(shown) += '\n';
  }
  return text;
}
