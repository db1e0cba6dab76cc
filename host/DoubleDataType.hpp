#pragma once

// File: DoubleDataType.hpp
// The "double" data type: a real number.
//   argument: double*; method result: double* from utMalloc, freed by the host;
//   host value: 1x1 double (a 1x1 double is the only accepted argument).
//
// Example:
//   double ratio = 0.3048;
//   HostArrayPtr value(DoubleDataType::getType()->toHostValue(&ratio));  // 0.3048

#include "host/UDDataType.hpp"

class DoubleDataType : public UDDataType {
 public:
  // The one instance, registered under "double".
  static DoubleDataType* getType();

  bool isEqual(const void* a, const void* b) const override;
  HostArray* toHostValue(const void* native) const override;
  bool acceptsHostValue(const HostArray* value) const override;
  void* fromHostValue(const HostArray* value) const override;
  void releaseArgument(void* argument) const override;
  HostArray* takeResult(void* result) const override;

 private:
  DoubleDataType() : UDDataType("double") {}
};
