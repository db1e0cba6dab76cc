#include "host/ZophError.hpp"

#include <cstdarg>

#include "host/ErrorIdException.hpp"
#include "host/Format.hpp"
#include "host/MessageTable.hpp"

std::string utVFormatMessage(int messageId, va_list args) {
  const char* text = utLookupMessage(static_cast<std::uint32_t>(messageId));
  if (text == nullptr)
    return utFormat("Unknown message id 0x%X.", static_cast<unsigned>(messageId));
  return utVFormat(text, args);
}

std::string utFormatMessage(int messageId, ...) {
  va_list args;
  va_start(args, messageId);
  std::string text = utVFormatMessage(messageId, args);
  va_end(args);
  return text;
}

void zoph_error(const char* identifier, int messageId, ...) {
  va_list args;
  va_start(args, messageId);
  std::string text = utVFormatMessage(messageId, args);
  va_end(args);
  throw new ErrorIdException(identifier, text);
}

void zoph_error_str(const char* identifier, int messageId, const std::string& name) {
  zoph_error(identifier, messageId, name.c_str());
}

void zoph_error_str(const char* identifier, int messageId, const std::string& first,
                    const std::string& second) {
  zoph_error(identifier, messageId, first.c_str(), second.c_str());
}
