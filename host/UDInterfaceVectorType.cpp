#include "host/UDInterfaceVectorType.hpp"

#include <memory>
#include <vector>

#include "host/HostArray.hpp"
#include "host/Vector.hpp"

UDInterfaceVectorType* UDInterfaceVectorType::getType() {
  static UDInterfaceVectorType instance;
  return &instance;
}

bool UDInterfaceVectorType::isEqual(const void* a, const void* b) const {
  if (a == nullptr || b == nullptr) return a == b;
  const auto& x = *static_cast<const Vector*>(a);
  const auto& y = *static_cast<const Vector*>(b);
  if (x.size() != y.size()) return false;
  for (int i = 0; i < x.size(); ++i) {
    if (x.elementAt(i) != y.elementAt(i)) return false;
  }
  return true;
}

HostArray* UDInterfaceVectorType::toHostValue(const void* native) const {
  std::vector<UDInterface*> objects;
  if (native != nullptr) {
    const auto& elements = *static_cast<const Vector*>(native);
    for (int i = 0; i < elements.size(); ++i) {
      objects.push_back(static_cast<UDInterface*>(elements.elementAt(i)));
    }
  }
  return HostArray::createHandleArray(objects);
}

bool UDInterfaceVectorType::acceptsHostValue(const HostArray* value) const {
  return value->getClassId() == HostArray::ClassId::Handle;
}

void* UDInterfaceVectorType::fromHostValue(const HostArray* value) const {
  auto objects = std::make_unique<Vector>();
  for (std::size_t i = 0; i < value->getNumberOfElements(); ++i) {
    objects->addElement(value->getHandle(i));
  }
  return objects.release();
}

void UDInterfaceVectorType::releaseArgument(void* argument) const {
  delete static_cast<Vector*>(argument);
}

HostArray* UDInterfaceVectorType::takeResult(void* result) const {
  std::unique_ptr<Vector> objects(static_cast<Vector*>(result));
  return toHostValue(objects.get());
}
