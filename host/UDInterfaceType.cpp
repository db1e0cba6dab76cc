#include "host/UDInterfaceType.hpp"

#include "host/HostArray.hpp"

UDInterfaceType* UDInterfaceType::getType() {
  static UDInterfaceType instance;
  return &instance;
}

bool UDInterfaceType::isEqual(const void* a, const void* b) const { return a == b; }

HostArray* UDInterfaceType::toHostValue(const void* native) const {
  // The array takes a reference of its own; the object itself is not changed.
  auto* object = static_cast<UDInterface*>(const_cast<void*>(native));
  if (object == nullptr) return HostArray::createHandleArray({});
  return HostArray::createHandleArray({object});
}

bool UDInterfaceType::acceptsHostValue(const HostArray* value) const {
  return value->getClassId() == HostArray::ClassId::Handle && value->getM() == 1 &&
         value->getN() == 1;
}

void* UDInterfaceType::fromHostValue(const HostArray* value) const { return value->getHandle(0); }

void UDInterfaceType::releaseArgument(void*) const {}

HostArray* UDInterfaceType::takeResult(void* result) const { return toHostValue(result); }
