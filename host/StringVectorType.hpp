#pragma once

// File: StringVectorType.hpp
// The "string vector" data type: a list of texts. Not an argument type.
//   method result: a HostArray* cell that the host takes over, made with toHostValue;
//   property value and toHostValue input: const StringVector*; host value: 1-by-n cell
//   of char rows.
//
// Example:
//   results[0] = StringVectorType::getType()->toHostValue(&names);  // {'m', 'km'}

#include "host/UDDataType.hpp"

class StringVectorType : public UDDataType {
 public:
  // The one instance, registered under "string vector".
  static StringVectorType* getType();

  bool isEqual(const void* a, const void* b) const override;
  HostArray* toHostValue(const void* native) const override;
  bool acceptsHostValue(const HostArray* value) const override;
  void* fromHostValue(const HostArray* value) const override;
  void releaseArgument(void* argument) const override;
  HostArray* takeResult(void* result) const override;

 private:
  StringVectorType() : UDDataType("string vector") {}
};
