#pragma once

// File: UDDataType.hpp
// The type of a method argument, a method result or a property value in the host
// object system. Each type knows the native form its values take on the library's
// side (a `void*` to a double, a text, a handle, ...) and converts between that form
// and host values. The concrete types are singletons, looked up by name with
// UDTypeRepository::getType or taken with e.g. DoubleDataType::getType().
//
// Example:
//   UDDataType* type = UDTypeRepository::getType("double", false);
//   double width = 2.5;
//   HostArrayPtr value(type->toHostValue(&width));  // 1x1 double 2.5

class HostArray;

class UDDataType {
 public:
  UDDataType(const UDDataType&) = delete;
  UDDataType& operator=(const UDDataType&) = delete;
  virtual ~UDDataType();

  // The name the type is registered under ("double", "handle vector", ...).
  const char* getName() const { return name_; }

  // Whether two native values of this type are equal.
  virtual bool isEqual(const void* a, const void* b) const = 0;

  // Returns a new host value of the native value; the caller owns it. The native value
  // is only read (handles get new references); null gives an empty array.
  virtual HostArray* toHostValue(const void* native) const = 0;

  // Whether the (non-null) host value can be passed as an argument of this type.
  virtual bool acceptsHostValue(const HostArray* value) const = 0;
  // The native argument form of an accepted host value. Free it with releaseArgument
  // once the call is over; the host value must outlive it.
  virtual void* fromHostValue(const HostArray* value) const = 0;
  virtual void releaseArgument(void* argument) const = 0;

  // Turns a method's result slot into a new host value that the caller owns, and frees
  // or keeps the slot as the type's ownership rule says. The slot is dealt with even
  // when the conversion throws.
  virtual HostArray* takeResult(void* result) const = 0;

 protected:
  explicit UDDataType(const char* name) : name_(name) {}

 private:
  const char* name_;
};
