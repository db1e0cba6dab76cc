#pragma once

// File: ErrorIdException.hpp
// A host error with an identifier ("Unit:NotFound") besides its message. The units
// library raises every error as one of these, thrown by pointer. Other libraries
// catch `ErrorIdException*`, read both texts and delete the object.
//
// Example:
//   catch (ErrorIdException* e) { auto owned = adoptError(e); log(e->getIdentifier()); }

#include <string>

#include "host/Exception.hpp"

class ErrorIdException : public Exception {
 public:
  ErrorIdException(std::string identifier, std::string message);
  ~ErrorIdException() override;

  const char* getIdentifier() const { return identifier_.c_str(); }

 private:
  std::string identifier_;
};
