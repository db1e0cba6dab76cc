#include "host/DoubleDataType.hpp"

#include <cmath>
#include <memory>

#include "host/HostArray.hpp"
#include "host/Memory.hpp"

DoubleDataType* DoubleDataType::getType() {
  static DoubleDataType instance;
  return &instance;
}

bool DoubleDataType::isEqual(const void* a, const void* b) const {
  if (a == nullptr || b == nullptr) return a == b;
  double x = *static_cast<const double*>(a), y = *static_cast<const double*>(b);
  return x == y || (std::isnan(x) && std::isnan(y));
}

HostArray* DoubleDataType::toHostValue(const void* native) const {
  if (native == nullptr) return HostArray::createDoubleMatrix(0, 0);
  return HostArray::createDoubleScalar(*static_cast<const double*>(native));
}

bool DoubleDataType::acceptsHostValue(const HostArray* value) const {
  return value->getClassId() == HostArray::ClassId::Double && value->getNumberOfElements() == 1;
}

void* DoubleDataType::fromHostValue(const HostArray* value) const {
  return new double(value->getPr()[0]);
}

void DoubleDataType::releaseArgument(void* argument) const {
  delete static_cast<double*>(argument);
}

HostArray* DoubleDataType::takeResult(void* result) const {
  std::unique_ptr<void, decltype(&utFree)> slot(result, &utFree);
  return toHostValue(result);
}
