#pragma once

// File: UDInterfaceVectorType.hpp
// The "handle vector" data type: a list of host objects.
//   argument: Vector* of UDInterface*, made from a handle array of any size and freed
//   after the call; method result: a new Vector* of borrowed UDInterface*, which the
//   host frees after taking references; property value: a Vector* that the property's
//   releaseValue frees or keeps; host value: 1-by-n handle array.
//
// Example:
//   auto* found = new Vector; found->addElement(unitObject); results[0] = found;

#include "host/UDDataType.hpp"

class UDInterfaceVectorType : public UDDataType {
 public:
  // The one instance, registered under "handle vector".
  static UDInterfaceVectorType* getType();

  bool isEqual(const void* a, const void* b) const override;
  HostArray* toHostValue(const void* native) const override;
  bool acceptsHostValue(const HostArray* value) const override;
  void* fromHostValue(const HostArray* value) const override;
  void releaseArgument(void* argument) const override;
  HostArray* takeResult(void* result) const override;

 private:
  UDInterfaceVectorType() : UDDataType("handle vector") {}
};
