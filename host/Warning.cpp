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
  // A deprecated unit warns on every use, so the warning fills the last-warning texts
  // in place and hands those to the handler instead of building copies.
  va_list args;
  va_start(args, messageId);
  context->lastText = utVFormatMessage(messageId, args);
  va_end(args);
  context->lastIdentifier = identifier;
  if (context->handler) {
    context->handler(context->lastIdentifier, context->lastText);
  } else {
    utPrintf("Warning: %s\n", context->lastText.c_str());
  }
}

const std::string& utLastWarningIdentifier() { return utGetWarningContext()->lastIdentifier; }
const std::string& utLastWarningText() { return utGetWarningContext()->lastText; }
