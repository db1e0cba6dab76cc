#include "host/Warning.hpp"

#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <utility>

#include "host/Console.hpp"
#include "host/ZophError.hpp"

struct utWarningContext {
  WarningHandler handler;
  std::string lastIdentifier;
  const char* lastLiteral = nullptr;  // the literal that lastIdentifier holds, if any
  WarningText lastText;
};

namespace {

// Whether the texts are equal; texts of 4 to 16 bytes, as unit names mostly are, are
// compared in two overlapping words each, without a call.
bool sameText(const std::string& a, const std::string& b) {
  const std::size_t n = a.size();
  if (n != b.size()) return false;
  if (n >= 8 && n <= 16) {
    std::uint64_t a0, a1, b0, b1;
    std::memcpy(&a0, a.data(), 8);
    std::memcpy(&a1, a.data() + n - 8, 8);
    std::memcpy(&b0, b.data(), 8);
    std::memcpy(&b1, b.data() + n - 8, 8);
    return a0 == b0 && a1 == b1;
  }
  if (n >= 4 && n < 8) {
    std::uint32_t a0, a1, b0, b1;
    std::memcpy(&a0, a.data(), 4);
    std::memcpy(&a1, a.data() + n - 4, 4);
    std::memcpy(&b0, b.data(), 4);
    std::memcpy(&b1, b.data() + n - 4, 4);
    return a0 == b0 && a1 == b1;
  }
  return a == b;
}

// A deprecated unit warns on every use, so the warning fills the last-warning texts in
// place, only where they change, and hands those to the handler instead of copies.
void issue(utWarningContext* context) {
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
  context->lastText.variadic_ = true;
  context->lastIdentifier = identifier;
  context->lastLiteral = nullptr;
  issue(context);
}

void ut_warning_id_str(utWarningContext* context, const char* identifier, int messageId,
                       const std::string& argument) {
  WarningText& text = context->lastText;
  // The same warning again keeps its text, formatted or not.
  if (text.messageId_ != messageId || text.variadic_ || !sameText(text.argument_, argument)) {
    text.messageId_ = messageId;
    text.argument_ = argument;
    text.formatted_ = false;
    text.variadic_ = false;
  }
  if (identifier != context->lastLiteral) {
    context->lastIdentifier = identifier;
    context->lastLiteral = identifier;
  }
  issue(context);
}

const std::string& utLastWarningIdentifier() { return utGetWarningContext()->lastIdentifier; }
const std::string& utLastWarningText() { return utGetWarningContext()->lastText.str(); }
