#include "tests/fuzz/FuzzSupport.hpp"

#include <cstdio>
#include <cstdlib>

void fuzzFault(const std::string& what, const std::string& input) {
  std::fprintf(stderr, "fuzz fault: %s\n  input: \"%s\"\n", what.c_str(), input.c_str());
  std::abort();
}
