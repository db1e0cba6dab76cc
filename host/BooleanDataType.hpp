#pragma once

// File: BooleanDataType.hpp
// The "bool" data type: a truth value held in an unsigned char (0 or 1).
//   argument: unsigned char*; method result: unsigned char* from utMalloc, freed by the
//   host; host value: 1x1 logical (a 1x1 logical is the only accepted argument).
//
// Example:
//   unsigned char* result = static_cast<unsigned char*>(utMallocWithCheck(1));
//   *result = 1;  // the dispatcher shows it as logical true and frees it

#include "host/UDDataType.hpp"

class BooleanDataType : public UDDataType {
 public:
  // The one instance, registered under "bool".
  static BooleanDataType* getType();

  bool isEqual(const void* a, const void* b) const override;
  HostArray* toHostValue(const void* native) const override;
  bool acceptsHostValue(const HostArray* value) const override;
  void* fromHostValue(const HostArray* value) const override;
  void releaseArgument(void* argument) const override;
  HostArray* takeResult(void* result) const override;

 private:
  BooleanDataType() : UDDataType("bool") {}
};
