#pragma once

// File: ZophError.hpp
// The toolbox's error raising. Each call looks the message id up among the
// registered message tables (MessageTable.hpp), formats its text printf-style and
// throws `new ErrorIdException(identifier, text)`. None of them returns.
//
// Example:
//   zoph_error_str("Unit:NotFound", 0x470009, std::string("furlongs"));
//   // throws ErrorIdException*: "Referenced unit 'furlongs' does not exist."

#include <string>

[[noreturn]] void zoph_error(const char* identifier, int messageId, ...);
[[noreturn]] void zoph_error_str(const char* identifier, int messageId, const std::string& name);
[[noreturn]] void zoph_error_str(const char* identifier, int messageId, const std::string& first,
                                 const std::string& second);

// The formatted text of a registered message; a text naming the id when no
// registered table has it.
std::string utFormatMessage(int messageId, ...);
std::string utVFormatMessage(int messageId, va_list args);
