#pragma once

// File: UDInterfaceType.hpp
// The "handle" data type: one host object.
//   argument: UDInterface* from a 1x1 handle array; method result: UDInterface*,
//   borrowed (the host value takes a reference of its own); host value: 1x1 handle,
//   or a 0-by-0 handle array for null.
//
// Example:
//   results[0] = unitObject;  // the caller sees a handle to the same object

#include "host/UDDataType.hpp"

class UDInterfaceType : public UDDataType {
 public:
  // The one instance, registered under "handle".
  static UDInterfaceType* getType();

  bool isEqual(const void* a, const void* b) const override;
  HostArray* toHostValue(const void* native) const override;
  bool acceptsHostValue(const HostArray* value) const override;
  void* fromHostValue(const HostArray* value) const override;
  void releaseArgument(void* argument) const override;
  HostArray* takeResult(void* result) const override;

 private:
  UDInterfaceType() : UDDataType("handle") {}
};
