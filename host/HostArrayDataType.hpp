#pragma once

// File: HostArrayDataType.hpp
// The "CALVEX array" data type: any host value, passed as it is.
//   argument: HostArray*, borrowed; method result: HostArray*, which the host takes
//   over; property value: HostArray*, copied by toHostValue. Equality compares class,
//   dimensions and contents.
//
// Example:
//   results[0] = HostArray::createDoubleMatrix(2, 2);  // the host takes it over

#include "host/UDDataType.hpp"

class HostArrayDataType : public UDDataType {
 public:
  // The one instance, registered under "CALVEX array".
  static HostArrayDataType* getType();

  bool isEqual(const void* a, const void* b) const override;
  HostArray* toHostValue(const void* native) const override;
  bool acceptsHostValue(const HostArray* value) const override;
  void* fromHostValue(const HostArray* value) const override;
  void releaseArgument(void* argument) const override;
  HostArray* takeResult(void* result) const override;

 private:
  HostArrayDataType() : UDDataType("CALVEX array") {}
};
