#pragma once

// File: UserException.hpp
// The host's concrete error of host-language code: `error('Id:part', 'text')` in a
// host function throws one of these by value.

#include <string>

#include "host/IUserException.hpp"

namespace fl::except {

class UserException : public IUserException {
 public:
  UserException(std::string identifier, std::string message);

  const char* GetIdentifier() const override { return identifier_.c_str(); }
  const char* GetMessageTxt() const override { return message_.c_str(); }

 private:
  std::string identifier_;
  std::string message_;
};

}  // namespace fl::except
