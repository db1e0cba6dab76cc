#pragma once

// File: IntDataType.hpp
// The "int32" data type: an int.
//   argument: int*, from a real scalar (double or int32) with an integral value in range;
//   any other real scalar raises "CALVEX:expectedInteger"; method result: int* from
//   utMalloc, freed by the host; host value: 1x1 double holding the value.
//
// Example:
//   int count = 3;
//   HostArrayPtr value(IntDataType::getType()->toHostValue(&count));  // 3 (a double)

#include "host/UDDataType.hpp"

class IntDataType : public UDDataType {
 public:
  // The one instance, registered under "int32".
  static IntDataType* getType();

  bool isEqual(const void* a, const void* b) const override;
  HostArray* toHostValue(const void* native) const override;
  bool acceptsHostValue(const HostArray* value) const override;
  void* fromHostValue(const HostArray* value) const override;
  void releaseArgument(void* argument) const override;
  HostArray* takeResult(void* result) const override;

 private:
  IntDataType() : UDDataType("int32") {}
};
