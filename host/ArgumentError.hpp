#pragma once

// File: ArgumentError.hpp
// The host's error for an argument whose value cannot be used, naming the argument:
// identifier "CALVEX:badArgument", message "The <argument> <requirement>.".
//
// Example:
//   raiseArgumentError("multiplier", "must be a finite number");
//   // ErrorIdException*: "CALVEX:badArgument", "The multiplier must be a finite number."

#include <string>

[[noreturn]] void raiseArgumentError(const std::string& argument, const std::string& requirement);
