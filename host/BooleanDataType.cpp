#include "host/BooleanDataType.hpp"

#include <memory>

#include "host/HostArray.hpp"
#include "host/Memory.hpp"

BooleanDataType* BooleanDataType::getType() {
  static BooleanDataType instance;
  return &instance;
}

bool BooleanDataType::isEqual(const void* a, const void* b) const {
  if (a == nullptr || b == nullptr) return a == b;
  return (*static_cast<const unsigned char*>(a) != 0) ==
         (*static_cast<const unsigned char*>(b) != 0);
}

HostArray* BooleanDataType::toHostValue(const void* native) const {
  if (native == nullptr) {
    const std::size_t empty[] = {0, 0};
    return HostArray::createLogicalArray(2, empty);
  }
  return HostArray::createLogicalScalar(*static_cast<const unsigned char*>(native) != 0);
}

bool BooleanDataType::acceptsHostValue(const HostArray* value) const {
  return value->getClassId() == HostArray::ClassId::Logical && value->getNumberOfElements() == 1;
}

void* BooleanDataType::fromHostValue(const HostArray* value) const {
  return new unsigned char(value->getLogicals()[0] ? 1 : 0);
}

void BooleanDataType::releaseArgument(void* argument) const {
  delete static_cast<unsigned char*>(argument);
}

HostArray* BooleanDataType::takeResult(void* result) const {
  std::unique_ptr<void, decltype(&utFree)> slot(result, &utFree);
  return toHostValue(result);
}
