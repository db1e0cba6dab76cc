#include "tests/support/RegistrySnapshot.hpp"

#include <sstream>

#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/UnitSystemManager.hpp"

using namespace TwUnits;

RegistrySnapshot RegistrySnapshot::take() {
  RegistrySnapshot snapshot;
  UnitManager* units = UnitManager::Instance();
  PhysicalQuantityManager* quantities = PhysicalQuantityManager::Instance();
  for (int q = 0; q < quantities->getNumQuantities(); ++q) {
    const QuantityDimension* quantity = quantities->getQuantityDimension(q);
    snapshot.quantities.push_back(
        std::string(quantity->getName()) + " " + quantity->getBaseQuantityMakeup() + " " +
        quantities->getQuantityTypeNames().at(static_cast<std::size_t>(q)));
    std::vector<std::string> unitsOfQuantity;
    for (int u = 0; u < static_cast<int>(units->getNumUnits(q)); ++u) {
      const UnitRepresentation* unit = units->getUnitRepresentation(q, u);
      std::ostringstream line;
      line << unit->getName() << " = " << unit->getMultiplier() << " "
           << unit->getCompositionString() << " + " << unit->getOffset() << " @"
           << units->getUnitIndex(q, unit->getName());
      unitsOfQuantity.push_back(line.str());
      snapshot.storedCompositions.push_back(
          units->getUnitComposition(q, u)->getCompositionString());
    }
    snapshot.units.push_back(unitsOfQuantity);
  }
  for (int q = 0; q <= UnitConverterManager::kLastBaseQuantity; ++q) {
    snapshot.conversionTableSizes.push_back(UnitConverterManager::Instance()->getTableSize(q));
  }
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  for (int p = 0; p < prefixes->getNumPrefixes(); ++p) {
    snapshot.prefixes.push_back(prefixes->getUnitPrefixAsString(p) + " " +
                                std::to_string(prefixes->getPrefixExponent(p)));
  }
  for (const auto& system : UnitSystemManager::Instance()->getUnitSystems()) {
    snapshot.unitSystems.push_back(system->getUnitSystemName());
  }
  return snapshot;
}

bool RegistrySnapshot::operator==(const RegistrySnapshot& other) const {
  return quantities == other.quantities && units == other.units &&
         storedCompositions == other.storedCompositions &&
         conversionTableSizes == other.conversionTableSizes && prefixes == other.prefixes &&
         unitSystems == other.unitSystems;
}

std::ostream& operator<<(std::ostream& out, const RegistrySnapshot& snapshot) {
  out << snapshot.quantities.size() << " quantities, " << snapshot.prefixes.size()
      << " prefixes, units:";
  for (const auto& unitsOfQuantity : snapshot.units) {
    for (const auto& unit : unitsOfQuantity) out << "\n  " << unit;
  }
  return out;
}
