#include "host/NintsDataType.hpp"

#include <stdexcept>
#include <vector>

#include "host/HostArray.hpp"

NintsDataType* NintsDataType::getType() {
  static NintsDataType instance;
  return &instance;
}

bool NintsDataType::isEqual(const void* a, const void* b) const {
  if (a == nullptr || b == nullptr) return a == b;
  return *static_cast<const std::vector<int>*>(a) == *static_cast<const std::vector<int>*>(b);
}

HostArray* NintsDataType::toHostValue(const void* native) const {
  if (native == nullptr) return HostArray::createDoubleMatrix(0, 0);
  const auto& values = *static_cast<const std::vector<int>*>(native);
  HostArray* row = HostArray::createDoubleMatrix(1, values.size());
  for (std::size_t i = 0; i < values.size(); ++i) row->getPr()[i] = values[i];
  return row;
}

bool NintsDataType::acceptsHostValue(const HostArray*) const { return false; }

void* NintsDataType::fromHostValue(const HostArray*) const {
  throw std::logic_error("an int vector is never an argument");
}

void NintsDataType::releaseArgument(void*) const {}

HostArray* NintsDataType::takeResult(void* result) const { return static_cast<HostArray*>(result); }
