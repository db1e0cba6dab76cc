#pragma once

// File: Exception.hpp
// The host's base error. Host services throw it by pointer to a heap object
// (`throw new Exception(...)`); whoever catches the pointer and handles the error
// deletes it.
//
// Example:
//   try { parser.init(false); } catch (Exception* e) { report(e->getMessage()); delete e; }

#include <string>

class Exception {
 public:
  explicit Exception(std::string message);
  virtual ~Exception();

  const char* getMessage() const { return message_.c_str(); }

 private:
  std::string message_;
};
