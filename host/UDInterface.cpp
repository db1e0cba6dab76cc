#include "host/UDInterface.hpp"

#include <cassert>

#include "host/ErrorIdException.hpp"
#include "host/UDClass.hpp"
#include "host/UDPropInfo.hpp"

namespace {

std::size_t liveHandles = 0;

}  // namespace

UDInterface::UDInterface(void* object, UDClass* cls, UDDatabaseClient* client)
    : object_(object), class_(cls), client_(client) {
  ++liveHandles;
}

UDInterface::~UDInterface() {
  for (UDInterface* child : children_) child->release();
  --liveHandles;
}

std::size_t UDInterface::liveCount() { return liveHandles; }

void UDInterface::internalToExternal() {
  if (state_ == kCreated) state_ = kExternal;
}

void UDInterface::externalToInternal() {
  if (state_ == kExternal) state_ = kCreated;
}

UDInterface* UDInterface::getReference() {
  ++references_;
  return this;
}

void UDInterface::release() {
  assert(references_ > 0 && "UDInterface released more often than referenced");
  // The last reference is still counted while the class frees the library object, so
  // the handle is alive for destroyObject.
  if (references_ == 1 && state_ < kBeingDestroyed) destroy(client_);
  if (--references_ == 0) delete this;
}

void UDInterface::destroy(UDDatabaseClient*) {
  if (state_ >= kBeingDestroyed) return;
  state_ = kBeingDestroyed;
  // destroyObject may drop references to this object (the library letting go of its
  // own); the extra one keeps the handle alive until the state is final.
  getReference();
  try {
    if (object_ != nullptr) class_->destroyObject(this);
  } catch (...) {
    state_ = kDestroyed;
    release();
    throw;
  }
  state_ = kDestroyed;
  release();
}

void UDInterface::setAttachment(const char* name, void* value) {
  if (name == nullptr) return;
  if (value == nullptr) {
    attachments_.erase(name);
  } else {
    attachments_[name] = value;
  }
}

void* UDInterface::getAttachment(const char* name) const {
  if (name == nullptr) return nullptr;
  auto found = attachments_.find(name);
  return found != attachments_.end() ? found->second : nullptr;
}

void UDInterface::addChild(UDInterface* child) {
  children_.push_back(child);
  child->getReference();
}

void UDInterface::requireValid() const {
  if (!isValid()) throw new ErrorIdException("CALVEX:InvalidObject", "Invalid or deleted object.");
}

void* UDInterface::get(UDDatabaseClient* client, UDPropInfo* prop) {
  requireValid();
  return prop->getValue(client, this);
}

void UDInterface::set(UDDatabaseClient* client, UDPropInfo* prop, void* value) {
  requireValid();
  prop->setValue(client, this, value);
}

void UDInterface::release(UDDatabaseClient* client, UDPropInfo* prop, void* value) {
  prop->releaseValue(client, this, value);
}
