#include "host/StringDataType.hpp"

#include <cstring>

#include "host/ArgumentError.hpp"
#include "host/HostArray.hpp"

namespace {

// The host's '' and [] stand for "no text".
bool isNullText(const HostArray* value) {
  HostArray::ClassId id = value->getClassId();
  return (id == HostArray::ClassId::Char || id == HostArray::ClassId::Double) &&
         value->getM() == 0 && value->getN() == 0;
}

const char* orEmpty(const void* text) {
  return text != nullptr ? static_cast<const char*>(text) : "";
}

}  // namespace

StringDataType* StringDataType::getType() {
  static StringDataType instance;
  return &instance;
}

bool StringDataType::isEqual(const void* a, const void* b) const {
  return std::strcmp(orEmpty(a), orEmpty(b)) == 0;
}

HostArray* StringDataType::toHostValue(const void* native) const {
  return HostArray::createString(static_cast<const char*>(native));
}

bool StringDataType::acceptsHostValue(const HostArray* value) const {
  return isNullText(value) ||
         (value->getClassId() == HostArray::ClassId::Char && value->getM() == 1);
}

void* StringDataType::fromHostValue(const HostArray* value) const {
  if (isNullText(value)) return nullptr;
  std::string text = value->getString();
  // The native value is a C string: a NUL would cut the text short.
  if (text.find('\0') != std::string::npos) raiseArgumentError("text", "must not hold a NUL byte");
  char* copy = new char[text.size() + 1];
  std::memcpy(copy, text.c_str(), text.size() + 1);
  return copy;
}

void StringDataType::releaseArgument(void* argument) const {
  delete[] static_cast<char*>(argument);
}

HostArray* StringDataType::takeResult(void* result) const { return toHostValue(result); }

jobject StringDataType::toJavaObject(const char* text) const { return hostNewJavaString(text); }
