#include "host/HostArrayDataType.hpp"

#include <algorithm>
#include <cmath>

#include "host/HostArray.hpp"

namespace {

bool sameValue(const HostArray& x, const HostArray& y);

bool sameDoubles(const double* x, const double* y, std::size_t count) {
  return std::equal(x, x + count, y,
                    [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); });
}

bool sameElements(const HostArray& x, const HostArray& y) {
  std::size_t count = x.getNumberOfElements();
  switch (x.getClassId()) {
    case HostArray::ClassId::Double:
      return sameDoubles(x.getPr(), y.getPr(), count);
    case HostArray::ClassId::Char:
      return x.getString() == y.getString();
    case HostArray::ClassId::Logical:
      return std::equal(x.getLogicals(), x.getLogicals() + count, y.getLogicals());
    case HostArray::ClassId::Int32:
      return std::equal(x.getInt32s(), x.getInt32s() + count, y.getInt32s());
    case HostArray::ClassId::Cell:
      for (std::size_t i = 0; i < count; ++i) {
        const HostArray *a = x.getCell(i), *b = y.getCell(i);
        if ((a == nullptr || b == nullptr) ? a != b : !sameValue(*a, *b)) return false;
      }
      return true;
    case HostArray::ClassId::Handle:
      for (std::size_t i = 0; i < count; ++i) {
        if (x.getHandle(i) != y.getHandle(i)) return false;
      }
      return true;
  }
  return false;
}

bool sameValue(const HostArray& x, const HostArray& y) {
  return x.getClassId() == y.getClassId() &&
         x.getNumberOfDimensions() == y.getNumberOfDimensions() &&
         std::equal(x.getDimensions(), x.getDimensions() + x.getNumberOfDimensions(),
                    y.getDimensions()) &&
         sameElements(x, y);
}

}  // namespace

HostArrayDataType* HostArrayDataType::getType() {
  static HostArrayDataType instance;
  return &instance;
}

bool HostArrayDataType::isEqual(const void* a, const void* b) const {
  if (a == nullptr || b == nullptr) return a == b;
  return sameValue(*static_cast<const HostArray*>(a), *static_cast<const HostArray*>(b));
}

HostArray* HostArrayDataType::toHostValue(const void* native) const {
  if (native == nullptr) return HostArray::createDoubleMatrix(0, 0);
  return static_cast<const HostArray*>(native)->duplicate();
}

bool HostArrayDataType::acceptsHostValue(const HostArray*) const { return true; }

// The argument is the caller's array itself; a method must not keep or change it.
void* HostArrayDataType::fromHostValue(const HostArray* value) const {
  return const_cast<HostArray*>(value);
}

void HostArrayDataType::releaseArgument(void*) const {}

HostArray* HostArrayDataType::takeResult(void* result) const {
  return static_cast<HostArray*>(result);
}
