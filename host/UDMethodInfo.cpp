#include "host/UDMethodInfo.hpp"

#include <memory>

#include "host/UDMethodSignature.hpp"

UDMethodInfo::UDMethodInfo(bool) {}

UDMethodInfo::~UDMethodInfo() {
  for (UDMethodSignature* signature : signatures_) delete signature;
}

void UDMethodInfo::setName(const char* name, bool) { name_ = name != nullptr ? name : ""; }

void UDMethodInfo::addMethodSignature(UDMethodSignature* signature) {
  std::unique_ptr<UDMethodSignature> owned(signature);  // freed if the list cannot grow
  signatures_.push_back(signature);
  owned.release();
}
