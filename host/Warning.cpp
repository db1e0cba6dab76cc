#include "host/Warning.hpp"

#include <cstdarg>
#include <utility>

#include "host/Console.hpp"
#include "host/ZophError.hpp"

struct utWarningContext {
  WarningHandler handler;
  std::string lastIdentifier;
  std::string lastText;
};

utWarningContext* utGetWarningContext() {
  static utWarningContext context;
  return &context;
}

WarningHandler utSetWarningHandler(WarningHandler handler) {
  return std::exchange(utGetWarningContext()->handler, std::move(handler));
}

void ut_warning_id(utWarningContext* context, const char* identifier, int messageId, ...) {
  va_list args;
  va_start(args, messageId);
  std::string text = utVFormatMessage(messageId, args);
  va_end(args);
  context->lastIdentifier = identifier;
  context->lastText = text;
  if (context->handler) {
    context->handler(identifier, text);
  } else {
    utPrintf("Warning: %s\n", text.c_str());
  }
}

const std::string& utLastWarningIdentifier() { return utGetWarningContext()->lastIdentifier; }
const std::string& utLastWarningText() { return utGetWarningContext()->lastText; }
