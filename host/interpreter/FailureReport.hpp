#pragma once

// File: FailureReport.hpp
// Turns whatever can leave a host call into the one line that the shell prints for it,
// freeing what was thrown by pointer:
//
//   ErrorIdException*        Error (Unit:NotFound): Referenced unit 'furlongs' does not exist.
//   Exception*, std::exception, an error without identifier      Error: MESSAGE
//   fl::except::IUserException, the host's interrupt and debugger exits: with identifier
//
// Example:
//   std::optional<std::string> failure = FailureReport::capture([&] { convert(); });
//   if (failure) std::fprintf(stderr, "%s\n", failure->c_str());

#include <functional>
#include <optional>
#include <string>

class FailureReport {
 public:
  // Runs the action. Returns nothing when it returns, or the error line (without a line
  // break) when it throws anything at all.
  static std::optional<std::string> capture(const std::function<void()>& action);

  // "Error (IDENTIFIER): MESSAGE", or "Error: MESSAGE" for an empty or null identifier.
  static std::string format(const char* identifier, const char* message);
};
