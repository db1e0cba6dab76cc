#include "host/UDApplication.hpp"

#include <cstring>
#include <memory>

#include "host/UDClass.hpp"

UDApplication::UDApplication(const char* name, bool) : name_(name != nullptr ? name : "") {}

UDApplication::~UDApplication() {
  for (UDClass* cls : classes_) delete cls;
}

void UDApplication::addClass(UDClass* cls) {
  std::unique_ptr<UDClass> owned(cls);  // freed if the list cannot grow
  classes_.push_back(cls);
  owned.release();
}

UDClass* UDApplication::findClass(const char* name) const {
  if (name == nullptr) return nullptr;
  for (UDClass* cls : classes_) {
    if (std::strcmp(cls->getName(), name) == 0) return cls;
  }
  return nullptr;
}
