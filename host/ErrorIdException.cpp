#include "host/ErrorIdException.hpp"

#include <utility>

ErrorIdException::ErrorIdException(std::string identifier, std::string message)
    : Exception(std::move(message)), identifier_(std::move(identifier)) {}

ErrorIdException::~ErrorIdException() = default;
