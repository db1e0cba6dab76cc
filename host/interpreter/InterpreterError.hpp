#pragma once

// File: InterpreterError.hpp
// How the shell's interpreter raises its own errors: as the host does, an
// ErrorIdException* thrown by pointer with a "CALVEX:" identifier, so that one catch
// reports the interpreter's errors and the library's alike.
//
// Example:
//   raiseInterpreterError(kParseError, "unbalanced parenthesis at column 12");

#include <string>

// Identifiers of the interpreter's own errors.
inline constexpr const char* kParseError = "CALVEX:parse";
inline constexpr const char* kUndefinedFunction = "CALVEX:UndefinedFunction";
inline constexpr const char* kTooManyOutputs = "CALVEX:TooManyOutputs";
inline constexpr const char* kTooManyInputs = "CALVEX:TooManyInputs";
inline constexpr const char* kNotEnoughInputs = "CALVEX:NotEnoughInputs";
inline constexpr const char* kBadIndex = "CALVEX:badIndex";
inline constexpr const char* kBadSubscript = "CALVEX:badSubscript";
inline constexpr const char* kNonScalarObject = "CALVEX:nonScalarObject";
inline constexpr const char* kConcatenation = "CALVEX:concatenation";
inline constexpr const char* kInvalidArgument = "CALVEX:invalidArgument";
inline constexpr const char* kCommandSyntax = "CALVEX:commandSyntax";
inline constexpr const char* kUndefinedClass = "CALVEX:undefinedClass";

// Throws a new ErrorIdException with the identifier and message; the catcher deletes it.
[[noreturn]] void raiseInterpreterError(const char* identifier, std::string message);
