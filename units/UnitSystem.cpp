#include "units/UnitSystem.hpp"

namespace TwUnits {

UnitSystem::UnitSystem(const char* name) : name_(name ? name : "") {}

}  // namespace TwUnits
