#pragma once

// File: IUserException.hpp
// What the host throws (by value) when code written in the host language raises an
// error with an identifier. The protected host call turns it into an
// `ErrorIdException*` with the same identifier and text.

namespace fl::except {

class IUserException {
 public:
  virtual ~IUserException() = default;
  virtual const char* GetIdentifier() const = 0;
  virtual const char* GetMessageTxt() const = 0;
};

}  // namespace fl::except
