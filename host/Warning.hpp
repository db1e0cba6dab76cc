#pragma once

// File: Warning.hpp
// The host's warning channel. A warning prints and lets the operation go on. By
// default the host prints "Warning: <text>" on its console; the shell and tests
// install a handler of their own to see the identifier too.
//
// A warning's text is formatted only when someone reads it: the console, a handler
// that takes it as a std::string, or utLastWarningText(). A handler that takes the
// WarningText and never reads it costs no formatting, which matters for a deprecated
// unit that warns on every conversion.
//
// Example:
//   WarningHandler previous = utSetWarningHandler(
//       [](const std::string& id, const std::string& text) { log(id, text); });
//   ut_warning_id(utGetWarningContext(), "Unit:Deprecation", 0x470042, "celsius");
//   utSetWarningHandler(previous);

#include <functional>
#include <string>

struct utWarningContext;

// The text of a warning, formatted the first time it is read.
class WarningText {
 public:
  const std::string& str() const;
  operator const std::string&() const { return str(); }

 private:
  friend void ut_warning_id(utWarningContext*, const char*, int, ...);
  friend void ut_warning_id_str(utWarningContext*, const char*, int, const std::string&);

  int messageId_ = 0;
  std::string argument_;
  bool variadic_ = true;  // formatted from arguments that were not kept
  mutable bool formatted_ = true;
  mutable std::string text_;
};

// A handler may take the text as `const std::string&` (formatted for it) or as
// `const WarningText&` (formatted only if it reads it).
using WarningHandler = std::function<void(const std::string& identifier, const WarningText& text)>;

utWarningContext* utGetWarningContext();

// Replaces the warning handler and returns the previous one; an empty handler
// restores the host's own printing. The handler is one for the process: set it before
// threads start warning; it is called on the thread that warns, by several at once.
WarningHandler utSetWarningHandler(WarningHandler handler);

// Formats the registered text of the message id and issues it as a warning.
void ut_warning_id(utWarningContext* context, const char* identifier, int messageId, ...);
// Issues the message id filled with one text argument as a warning; the text is
// formatted when it is read. The identifier is a literal: it is kept by its address.
void ut_warning_id_str(utWarningContext* context, const char* identifier, int messageId,
                       const std::string& argument);

// Identifier and text of the last warning this thread issued (the host's `lastwarn`).
const std::string& utLastWarningIdentifier();
const std::string& utLastWarningText();
