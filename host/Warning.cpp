#include "host/Warning.hpp"

#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>

#include "host/Console.hpp"
#include "host/ZophError.hpp"

struct utWarningContext {
  WarningHandler handler;
};

namespace {

// The last warning is each thread's own: threads that warn at once write no shared text.
struct LastWarning {
  std::string identifier;
  const char* literal = nullptr;  // the literal that identifier holds, if any
  WarningText text;
};

// Made on the thread's first warning, freed when it ends. The plain pointer is read
// without the guard that a thread_local object with a constructor needs, and, eight
// bytes in the initial thread-local block, without a call to find it.
LastWarning& lastWarning() {
  [[gnu::tls_model("initial-exec")]] thread_local LastWarning* last = nullptr;
  if (last == nullptr) {
    thread_local std::unique_ptr<LastWarning> owner = std::make_unique<LastWarning>();
    last = owner.get();
  }
  return *last;
}

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
void issue(utWarningContext* context, const LastWarning& last) {
  if (context->handler) {
    context->handler(last.identifier, last.text);
  } else {
    utPrintf("Warning: %s\n", last.text.str().c_str());
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
  LastWarning& last = lastWarning();
  va_list args;
  va_start(args, messageId);
  last.text.text_ = utVFormatMessage(messageId, args);
  va_end(args);
  last.text.formatted_ = true;
  last.text.variadic_ = true;
  last.identifier = identifier;
  last.literal = nullptr;
  issue(context, last);
}

void ut_warning_id_str(utWarningContext* context, const char* identifier, int messageId,
                       const std::string& argument) {
  LastWarning& last = lastWarning();
  WarningText& text = last.text;
  // The same warning again keeps its text, formatted or not.
  if (text.messageId_ != messageId || text.variadic_ || !sameText(text.argument_, argument)) {
    text.messageId_ = messageId;
    text.argument_ = argument;
    text.formatted_ = false;
    text.variadic_ = false;
  }
  if (identifier != last.literal) {
    last.identifier = identifier;
    last.literal = identifier;
  }
  issue(context, last);
}

const std::string& utLastWarningIdentifier() { return lastWarning().identifier; }
const std::string& utLastWarningText() { return lastWarning().text.str(); }
