#pragma once

// File: UDInterface.hpp
// A host object: the host's reference-counted handle on one library object of a
// host-object class. It starts with one reference, the creator's. `destroy` has the
// class free the library object (UDClass::destroyObject, exactly once, and only when
// the handle wraps an object); the handle itself stays until the last reference is
// released, so that every holder can still see that it is destroyed. Releasing the
// last reference destroys the object first if nobody did.
//
// Example:
//   UDInterfacePtr unit(cls->createObject(client, nullptr));  // releases when it goes
//   unit->destroy(client);          // the library object is freed
//   unit->getLifecycleState()       // UDInterface::kDestroyed; get/set now raise
//                                   // "CALVEX:InvalidObject"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

class UDClass;
class UDDatabaseClient;
class UDPropInfo;

class UDInterface final {
 public:
  enum LifecycleState { kCreated = 0, kExternal = 1, kBeingDestroyed = 2, kDestroyed = 3 };

  // Wraps the library object (not owned; the class frees it in destroyObject) with one
  // reference, the caller's.
  UDInterface(void* object, UDClass* cls, UDDatabaseClient* client);
  UDInterface(const UDInterface&) = delete;
  UDInterface& operator=(const UDInterface&) = delete;

  void* getObject() const { return object_; }
  void setObject(void* object) { object_ = object; }
  UDClass* getClass() const { return class_; }

  // Visible in the host language (kExternal), and back (kCreated). No effect once the
  // object is being destroyed.
  void internalToExternal();
  void externalToInternal();
  int getLifecycleState() const { return state_; }
  // Not destroyed and wrapping an object: what get, set and method calls need.
  bool isValid() const { return state_ < kBeingDestroyed && object_ != nullptr; }

  // Adds a reference for the caller and returns this.
  UDInterface* getReference();
  // Drops one reference; the last one destroys the object if that has not happened and
  // frees the handle.
  void release();
  // Handles made and not yet freed, in the whole process: what a front-end reads to see
  // that its references are all given back.
  static std::size_t liveCount();
  // Has the class free the library object (when one is wrapped); later calls do nothing.
  void destroy(UDDatabaseClient* client);

  // Named pointers that others hang on the object; not owned. Setting null removes one.
  void setAttachment(const char* name, void* value);
  void* getAttachment(const char* name) const;

  // Takes a reference on the child, held until this object is freed. Children are
  // visited by UDBreadthOnlyIterator in the order they were added.
  void addChild(UDInterface* child);
  const std::vector<UDInterface*>& getChildren() const { return children_; }

  // The property's value (prop->getValue); free it with release(client, prop, value).
  // Raises "CALVEX:InvalidObject" when the object is not valid.
  void* get(UDDatabaseClient* client, UDPropInfo* prop);
  // prop->setValue, whatever the property's access; the value stays the caller's.
  // Raises "CALVEX:InvalidObject" when the object is not valid.
  void set(UDDatabaseClient* client, UDPropInfo* prop, void* value);
  // prop->releaseValue on a value that get returned.
  void release(UDDatabaseClient* client, UDPropInfo* prop, void* value);

 private:
  ~UDInterface();  // only release() frees a handle
  void requireValid() const;

  void* object_;
  UDClass* class_;
  UDDatabaseClient* client_;
  int references_ = 1;
  int state_ = kCreated;
  std::map<std::string, void*> attachments_;
  std::vector<UDInterface*> children_;  // one reference each
};

struct UDInterfaceReleaser {
  void operator()(UDInterface* object) const { object->release(); }
};

// Holds one reference: `UDInterfacePtr unit(hostConstruct("Unit"));`
using UDInterfacePtr = std::unique_ptr<UDInterface, UDInterfaceReleaser>;
