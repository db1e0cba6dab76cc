#pragma once

// File: StringDataType.hpp
// The "string" data type: a text, which may be null.
//   argument: const char*; a char row passes its text, a 0-by-0 char or double array
//   (the host's '' or []) passes null; method result: const char*, borrowed (never
//   freed); host value: char row (null gives a 0-by-0 char array). Null reads as ""
//   in comparisons.
//
// Example:
//   HostArrayPtr value(StringDataType::getType()->toHostValue("meter"));  // 'meter'

#include "host/JavaBridge.hpp"
#include "host/UDDataType.hpp"

class StringDataType : public UDDataType {
 public:
  // The one instance, registered under "string".
  static StringDataType* getType();

  bool isEqual(const void* a, const void* b) const override;
  HostArray* toHostValue(const void* native) const override;
  bool acceptsHostValue(const HostArray* value) const override;
  void* fromHostValue(const HostArray* value) const override;
  void releaseArgument(void* argument) const override;
  HostArray* takeResult(void* result) const override;

  // A new Java string of the text (null when the bridge is off or the text is null);
  // release it with hostReleaseJavaObject.
  jobject toJavaObject(const char* text) const;

 private:
  StringDataType() : UDDataType("string") {}
};
