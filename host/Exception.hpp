#pragma once

// File: Exception.hpp
// The host's base error. Host services throw it by pointer to a heap object
// (`throw new Exception(...)`); whoever catches the pointer and handles the error
// deletes it, by taking it over with adoptError.
//
// Example:
//   try { parser.init(false); } catch (Exception* e) { report(adoptError(e)->getMessage()); }

#include <memory>
#include <string>

class Exception {
 public:
  explicit Exception(std::string message);
  virtual ~Exception();

  const char* getMessage() const { return message_.c_str(); }

 private:
  std::string message_;
};

// Takes over a caught error: `catch (Exception* raised) { adoptError(raised); }` drops it,
// `auto owned = adoptError(raised);` keeps it to the end of the scope.
template <typename Error>
std::unique_ptr<Error> adoptError(Error* raised) {
  return std::unique_ptr<Error>(raised);
}
