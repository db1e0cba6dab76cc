#include "units/UnitManagerData.hpp"

namespace TwUnits {

void UnitManagerData::runreg(const UnitRepresentationApi* definition) const {
  for (const Listener& listener : registered) listener(definition);
}

}  // namespace TwUnits
