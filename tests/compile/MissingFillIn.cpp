// Must not compile: the message of Unit:NotFound takes the unit's name.
#include "units/messages/UnitErrors.hpp"

void raiseWithoutTheName() { TwUnits::raiseError(TwUnits::errors::NotFound); }
