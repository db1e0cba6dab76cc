#include "host/Format.hpp"

#include <cstdio>

std::string utVFormat(const char* format, va_list args) {
  va_list sizing;
  va_copy(sizing, args);
  int length = std::vsnprintf(nullptr, 0, format, sizing);
  va_end(sizing);
  if (length <= 0) return {};
  std::string text(static_cast<std::size_t>(length), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, args);
  return text;
}

std::string utFormat(const char* format, ...) {
  va_list args;
  va_start(args, format);
  std::string text = utVFormat(format, args);
  va_end(args);
  return text;
}
