#include "host/UDClass.hpp"

#include <cstring>
#include <memory>

#include "host/UDInterface.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UDPropInfo.hpp"

namespace {

// Takes ownership of the item, also when the list cannot grow.
template <typename T>
void adopt(std::vector<T*>& owned, T* item) {
  std::unique_ptr<T> guard(item);
  owned.push_back(item);
  guard.release();
}

// The class of the property holder's children. Never freed: a child may outlive the
// class whose property it wraps by a reference held elsewhere.
UDClass* propertyWrapperClass() {
  static UDClass* const wrapperClass = [] {
    auto* cls = new UDClass;
    cls->setName("UDPropInfo", false);
    return cls;
  }();
  return wrapperClass;
}

void addPropertyWrapper(UDInterface* holder, UDPropInfo* property) {
  UDInterfacePtr wrapper(new UDInterface(property, propertyWrapperClass(), nullptr));
  holder->addChild(wrapper.get());
}

template <typename T, typename Members>
T* findByName(const UDClass* cls, const char* name, Members members) {
  if (name == nullptr) return nullptr;
  for (; cls != nullptr; cls = cls->getSuperClass()) {
    for (T* member : (cls->*members)()) {
      if (std::strcmp(member->getName(), name) == 0) return member;
    }
  }
  return nullptr;
}

}  // namespace

UDClass::UDClass() = default;

UDClass::~UDClass() {
  if (propertyHolder_ != nullptr) propertyHolder_->release();
  for (UDMethodSignature* signature : constructorSignatures_) delete signature;
  for (UDMethodInfo* method : methods_) delete method;
  for (UDPropInfo* property : properties_) delete property;
}

void UDClass::setName(const char* name, bool) { name_ = name != nullptr ? name : ""; }

void UDClass::addConstructorSignature(UDMethodSignature* signature) {
  adopt(constructorSignatures_, signature);
}

void UDClass::addMethod(UDMethodInfo* method) { adopt(methods_, method); }

void UDClass::addProperty(UDPropInfo* property) {
  adopt(properties_, property);
  if (propertyHolder_ != nullptr) addPropertyWrapper(propertyHolder_, property);
}

UDMethodInfo* UDClass::findMethod(const char* name) const {
  return findByName<UDMethodInfo>(this, name, &UDClass::getMethods);
}

UDPropInfo* UDClass::findProperty(const char* name) const {
  return findByName<UDPropInfo>(this, name, &UDClass::getProperties);
}

UDInterface* UDClass::createObject(UDDatabaseClient*, UDInterface* parent) {
  return createClassSpecificObject(parent);
}

UDInterface* UDClass::getPropertyHolder() {
  if (propertyHolder_ == nullptr) {
    UDInterfacePtr holder(new UDInterface(nullptr, this, nullptr));
    for (UDPropInfo* property : properties_) addPropertyWrapper(holder.get(), property);
    propertyHolder_ = holder.release();
  }
  return propertyHolder_;
}

UDInterface* UDClass::createClassSpecificObject(UDInterface*) { return nullptr; }

UDInterface* UDClass::createClassSpecificObject(UDInterface*, void**, int) { return nullptr; }

bool UDClass::canOtherClassContainThisClass(UDClass*) { return false; }

bool UDClass::canThisClassContainOtherClass(UDClass*) { return false; }

void UDClass::destroyObject(UDInterface*) {}
