#pragma once

// File: ArgumentError.hpp
// The host's error for an argument whose value cannot be used, naming the argument:
// identifier "CALVEX:badArgument", message "The <argument> <requirement>.".
//
// Example:
//   raiseArgumentError("multiplier", "must be a finite number");
//   // ErrorIdException*: "CALVEX:badArgument", "The multiplier must be a finite number."
//   requireFinite(offset, "offset");   // the same error for an infinite or NaN offset

#include <string>

[[noreturn]] void raiseArgumentError(const std::string& argument, const std::string& requirement);

// Raises the argument error "must be a finite number" when the value is infinite or NaN.
void requireFinite(double value, const std::string& argument);
