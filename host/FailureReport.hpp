#pragma once

// File: FailureReport.hpp
// Turns whatever can leave a host call into an identifier and a message, freeing what
// was thrown by pointer, for a front-end to show in its own way. The shell prints one
// line:
//
//   ErrorIdException*        Error (Unit:NotFound): Referenced unit 'furlongs' does not exist.
//   Exception*, std::exception, an error without identifier      Error: MESSAGE
//   fl::except::IUserException, the host's interrupt and debugger exits: with identifier
//
// Example:
//   std::optional<std::string> failure = FailureReport::capture([&] { convert(); });
//   if (failure) std::fprintf(stderr, "%s\n", failure->c_str());
//
//   std::optional<FailureReport::Failure> raised = FailureReport::catchAll([&] { call(); });
//   if (raised) error_with_id(raised->identifier.c_str(), "%s", raised->message.c_str());

#include <functional>
#include <optional>
#include <string>

class FailureReport {
 public:
  struct Failure {
    std::string identifier;  // empty for an error without one
    std::string message;
  };

  // Runs the action. Returns nothing when it returns, or what it threw, whatever that was.
  static std::optional<Failure> catchAll(const std::function<void()>& action);

  // Runs the action. Returns nothing when it returns, or the error line (without a line
  // break) when it throws anything at all.
  static std::optional<std::string> capture(const std::function<void()>& action);

  // "Error (IDENTIFIER): MESSAGE", or "Error: MESSAGE" for an empty or null identifier.
  static std::string format(const char* identifier, const char* message);
};
