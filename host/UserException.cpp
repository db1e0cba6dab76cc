#include "host/UserException.hpp"

#include <utility>

namespace fl::except {

UserException::UserException(std::string identifier, std::string message)
    : identifier_(std::move(identifier)), message_(std::move(message)) {}

}  // namespace fl::except
