#include "host/ArgumentError.hpp"

#include "host/ErrorIdException.hpp"

void raiseArgumentError(const std::string& argument, const std::string& requirement) {
  throw new ErrorIdException("CALVEX:badArgument", "The " + argument + " " + requirement + ".");
}
