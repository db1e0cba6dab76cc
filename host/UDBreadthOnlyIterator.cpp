#include "host/UDBreadthOnlyIterator.hpp"

#include "host/UDInterface.hpp"

UDBreadthOnlyIterator::UDBreadthOnlyIterator(UDInterface* object, bool includeSelf)
    : object_(object), selfPending_(includeSelf && object != nullptr) {}

bool UDBreadthOnlyIterator::hasMoreElements() const {
  return selfPending_ || (object_ != nullptr && nextChild_ < object_->getChildren().size());
}

UDInterface* UDBreadthOnlyIterator::nextElement() {
  if (selfPending_) {
    selfPending_ = false;
    return object_;
  }
  if (!hasMoreElements()) return nullptr;
  return object_->getChildren()[nextChild_++];
}
