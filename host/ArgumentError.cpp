#include "host/ArgumentError.hpp"

#include <cmath>

#include "host/ErrorIdException.hpp"

void raiseArgumentError(const std::string& argument, const std::string& requirement) {
  throw new ErrorIdException("CALVEX:badArgument", "The " + argument + " " + requirement + ".");
}

void requireFinite(double value, const std::string& argument) {
  if (!std::isfinite(value)) raiseArgumentError(argument, "must be a finite number");
}
