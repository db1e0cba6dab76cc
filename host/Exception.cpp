#include "host/Exception.hpp"

#include <utility>

Exception::Exception(std::string message) : message_(std::move(message)) {}

Exception::~Exception() = default;
