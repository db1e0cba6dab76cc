#include "units/udd/UnitsHostClass.hpp"

#include "host/UDMethodSignature.hpp"

namespace TwUnits {

UnitsHostClass::UnitsHostClass(const char* name) {
  setName(name, true);
  addConstructorSignature(new UDMethodSignature());
}

UnitsHostClass::~UnitsHostClass() = default;

UDInterface* UnitsHostClass::createClassSpecificObject(UDInterface* parent) {
  return createClassSpecificObject(parent, nullptr, 0);
}

bool UnitsHostClass::canOtherClassContainThisClass(UDClass*) { return false; }

bool UnitsHostClass::canThisClassContainOtherClass(UDClass*) { return false; }

}  // namespace TwUnits
