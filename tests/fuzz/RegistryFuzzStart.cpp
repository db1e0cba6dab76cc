// The start of every target that goes through the registry: the built-in library set up
// once, and deprecation warnings silenced (they would print once per input).

#include "tests/fuzz/FuzzSupport.hpp"
#include "units/UnitManager.hpp"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  silenceWarnings();
  TwUnits::UnitManager::Instance();
  return 0;
}
