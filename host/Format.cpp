#include "host/Format.hpp"

#include <cstdio>

std::string utVFormat(const char* format, va_list args) {
  // Most texts fit a small buffer: format once, and again only when it was too small.
  char buffer[256];
  va_list retry;
  va_copy(retry, args);
  int length = std::vsnprintf(buffer, sizeof buffer, format, args);
  if (length < 0) {
    va_end(retry);
    return {};
  }
  if (static_cast<std::size_t>(length) < sizeof buffer) {
    va_end(retry);
    return std::string(buffer, static_cast<std::size_t>(length));
  }
  std::string text(static_cast<std::size_t>(length), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, retry);
  va_end(retry);
  return text;
}

std::string utFormat(const char* format, ...) {
  va_list args;
  va_start(args, format);
  std::string text = utVFormat(format, args);
  va_end(args);
  return text;
}
