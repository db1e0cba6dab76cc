#pragma once

// File: Warning.hpp
// The host's warning channel. A warning prints and lets the operation go on. By
// default the host prints "Warning: <text>" on its console; the shell and tests
// install a handler of their own to see the identifier too.
//
// Example:
//   WarningHandler previous = utSetWarningHandler(
//       [](const std::string& id, const std::string& text) { log(id, text); });
//   ut_warning_id(utGetWarningContext(), "Unit:Deprecation", 0x470042, "celsius");
//   utSetWarningHandler(previous);

#include <functional>
#include <string>

struct utWarningContext;

using WarningHandler = std::function<void(const std::string& identifier, const std::string& text)>;

utWarningContext* utGetWarningContext();

// Replaces the warning handler and returns the previous one; an empty handler
// restores the host's own printing.
WarningHandler utSetWarningHandler(WarningHandler handler);

// Formats the registered text of the message id and issues it as a warning.
void ut_warning_id(utWarningContext* context, const char* identifier, int messageId, ...);

// Identifier and text of the last warning issued (the host's `lastwarn`).
const std::string& utLastWarningIdentifier();
const std::string& utLastWarningText();
