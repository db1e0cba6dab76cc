#pragma once

// File: StringUtils.hpp
// The host's string helpers: trimming white space and the identifier test that
// every unit, prefix, quantity and unit-system name must pass.
//
// Example:
//   utTrim("  nano2 ")                       // "nano2"
//   isValidCALVEXIdentifier("pound_force")   // true; "2meter" and "" are false

#include <string>

// Removes blanks, tabs, line breaks, form feeds and vertical tabs at both ends.
std::string utTrim(const std::string& text);

// A letter, then letters, digits or underscores; at most 63 characters. Null is invalid.
bool isValidCALVEXIdentifier(const char* name);
inline bool isValidCALVEXIdentifier(const std::string& name) {
  return isValidCALVEXIdentifier(name.c_str()) && name.find('\0') == std::string::npos;
}
