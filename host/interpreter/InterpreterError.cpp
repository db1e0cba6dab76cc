#include "host/interpreter/InterpreterError.hpp"

#include <utility>

#include "host/ErrorIdException.hpp"

void raiseInterpreterError(const char* identifier, std::string message) {
  throw new ErrorIdException(identifier, std::move(message));
}
