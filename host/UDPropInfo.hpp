#pragma once

// File: UDPropInfo.hpp
// A property of a host-object class: its name, description, data type and access,
// and the calls that read and write its value on one object. Values travel in the
// native form of the data type (see UDDataType); a value that getValue allocates is
// freed by the same property's releaseValue. Libraries derive their properties from
// UDPropInfoTemplate.
//
// Access: writable = external and internal set on, init off; read-only = all three off.
// The host does not enforce access; a read-only property's setValue does nothing.
//
// Example:
//   void* value = object->get(client, nameProperty);   // calls nameProperty->getValue
//   HostArrayPtr shown(nameProperty->getDataType()->toHostValue(value));
//   object->release(client, nameProperty, value);     // calls nameProperty->releaseValue

#include <string>

class UDDatabaseClient;
class UDDataType;
class UDInterface;

class UDPropInfo {
 public:
  UDPropInfo(const UDPropInfo&) = delete;
  UDPropInfo& operator=(const UDPropInfo&) = delete;
  virtual ~UDPropInfo();

  // The name is copied; the flag is unused by this host.
  void setName(const char* name, bool flag);
  const char* getName() const { return name_.c_str(); }
  void setDescription(const char* description);
  const char* getDescription() const { return description_.c_str(); }
  // The type is a singleton of the type repository; it is not owned.
  void setDataType(UDDataType* type) { type_ = type; }
  UDDataType* getDataType() const { return type_; }

  void setExternalSetAccess(bool on) { externalSet_ = on; }
  bool getExternalSetAccess() const { return externalSet_; }
  void setInternalSetAccess(bool on) { internalSet_ = on; }
  bool getInternalSetAccess() const { return internalSet_; }
  void setInitAccess(bool on) { init_ = on; }
  bool getInitAccess() const { return init_; }
  // Invisible properties work as usual but are left out of listings.
  void setVisible(bool on) { visible_ = on; }
  bool getVisible() const { return visible_; }

  // The object's value in the data type's native form; pass it to releaseValue when done.
  virtual void* getValue(UDDatabaseClient* client, UDInterface* object) = 0;
  // Stores the value, a native argument that stays the caller's.
  virtual void setValue(UDDatabaseClient* client, UDInterface* object, void* value) = 0;
  // Frees what getValue allocated; does nothing by default.
  virtual void releaseValue(UDDatabaseClient* client, UDInterface* object, void* value);
  virtual bool canContainUDInterfaces() const;

 protected:
  // A new property is read-only, visible and has no type yet.
  UDPropInfo() = default;

 private:
  std::string name_;
  std::string description_;
  UDDataType* type_ = nullptr;
  bool externalSet_ = false;
  bool internalSet_ = false;
  bool init_ = false;
  bool visible_ = true;
};
