#include "host/Warning.hpp"

#include <cstdarg>
#include <utility>

#include "host/Console.hpp"
#include "host/ZophError.hpp"

struct utWarningContext {
  WarningHandler handler;
  std::string lastIdentifier;
  WarningText lastText;
};

namespace {

// A deprecated unit warns on every use, so the warning fills the last-warning texts in
// place and hands those to the handler instead of building copies.
void issue(utWarningContext* context, const char* identifier) {
  context->lastIdentifier = identifier;
  if (context->handler) {
    context->handler(context->lastIdentifier, context->lastText);
  } else {
    utPrintf("Warning: %s\n", context->lastText.str().c_str());
  }
}

}  // namespace

const std::string& WarningText::str() const {
  if (!formatted_) {
    text_ = utFormatMessage(messageId_, argument_.c_str());
    formatted_ = true;
  }
  return text_;
}

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
  context->lastText.text_ = utVFormatMessage(messageId, args);
  va_end(args);
  context->lastText.formatted_ = true;
  issue(context, identifier);
}

void ut_warning_id_str(utWarningContext* context, const char* identifier, int messageId,
                       const std::string& argument) {
  context->lastText.messageId_ = messageId;
  context->lastText.argument_ = argument;
  context->lastText.formatted_ = false;
  issue(context, identifier);
}

const std::string& utLastWarningIdentifier() { return utGetWarningContext()->lastIdentifier; }
const std::string& utLastWarningText() { return utGetWarningContext()->lastText.str(); }
