#include "host/IntDataType.hpp"

#include <climits>
#include <cmath>
#include <memory>

#include "host/ErrorIdException.hpp"
#include "host/Format.hpp"
#include "host/HostArray.hpp"
#include "host/Memory.hpp"

IntDataType* IntDataType::getType() {
  static IntDataType instance;
  return &instance;
}

bool IntDataType::isEqual(const void* a, const void* b) const {
  if (a == nullptr || b == nullptr) return a == b;
  return *static_cast<const int*>(a) == *static_cast<const int*>(b);
}

HostArray* IntDataType::toHostValue(const void* native) const {
  if (native == nullptr) return HostArray::createDoubleMatrix(0, 0);
  return HostArray::createDoubleScalar(*static_cast<const int*>(native));
}

bool IntDataType::acceptsHostValue(const HostArray* value) const {
  HostArray::ClassId id = value->getClassId();
  return (id == HostArray::ClassId::Double || id == HostArray::ClassId::Int32) &&
         value->getNumberOfElements() == 1;
}

void* IntDataType::fromHostValue(const HostArray* value) const {
  if (value->getClassId() == HostArray::ClassId::Int32) return new int(value->getInt32s()[0]);
  double number = value->getPr()[0];
  // The range test also refuses NaN, which compares false with everything.
  if (!(number >= INT_MIN && number <= INT_MAX) || std::trunc(number) != number) {
    throw new ErrorIdException("CALVEX:expectedInteger",
                               utFormat("Expected an integer value, got %g.", number));
  }
  return new int(static_cast<int>(number));
}

void IntDataType::releaseArgument(void* argument) const { delete static_cast<int*>(argument); }

HostArray* IntDataType::takeResult(void* result) const {
  std::unique_ptr<void, decltype(&utFree)> slot(result, &utFree);
  return toHostValue(result);
}
