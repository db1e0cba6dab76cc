#pragma once

// File: NintsDataType.hpp
// The "int vector" data type: a list of ints. Not an argument type.
//   method result: a HostArray* that the host takes over, made with toHostValue;
//   property value and toHostValue input: const std::vector<int>*; host value: 1-by-n
//   double row of the values.
//
// Example:
//   std::vector<int> powers{1, -2};
//   results[0] = NintsDataType::getType()->toHostValue(&powers);  // [1 -2]

#include "host/UDDataType.hpp"

class NintsDataType : public UDDataType {
 public:
  // The one instance, registered under "int vector".
  static NintsDataType* getType();

  bool isEqual(const void* a, const void* b) const override;
  HostArray* toHostValue(const void* native) const override;
  bool acceptsHostValue(const HostArray* value) const override;
  void* fromHostValue(const HostArray* value) const override;
  void releaseArgument(void* argument) const override;
  HostArray* takeResult(void* result) const override;

 private:
  NintsDataType() : UDDataType("int vector") {}
};
