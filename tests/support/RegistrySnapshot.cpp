#include "tests/support/RegistrySnapshot.hpp"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/UnitSystemManager.hpp"

using namespace TwUnits;

namespace {

template <typename... Parts>
std::string joined(const Parts&... parts) {
  std::ostringstream text;
  (text << ... << parts);
  return text.str();
}

}  // namespace

RegistrySnapshot RegistrySnapshot::take() {
  std::vector<std::string> lines;
  UnitManager* units = UnitManager::Instance();
  PhysicalQuantityManager* quantities = PhysicalQuantityManager::Instance();
  for (int q = 0; q < quantities->getNumQuantities(); ++q) {
    const QuantityDimension* quantity = quantities->getQuantityDimension(q);
    lines.push_back(joined("quantity ", q, " ", quantity->getName(), " ",
                           quantity->getBaseQuantityMakeup(), " ",
                           quantities->getQuantityTypeNames().at(static_cast<std::size_t>(q))));
    for (int u = 0; u < static_cast<int>(units->getNumUnits(q)); ++u) {
      const UnitRepresentation* unit = units->getUnitRepresentation(q, u);
      lines.push_back(joined("unit ", unit->getName(), " = ", unit->getMultiplier(), " ",
                             unit->getCompositionString(), " + ", unit->getOffset(), " stored as ",
                             units->getUnitComposition(q, u)->getCompositionString(), " @", q, ",",
                             units->getUnitIndex(q, unit->getName())));
    }
  }
  for (int q = 0; q <= UnitConverterManager::kLastBaseQuantity; ++q) {
    lines.push_back(joined("table ", q, " ", UnitConverterManager::Instance()->getTableSize(q)));
  }
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  for (int p = 0; p < prefixes->getNumPrefixes(); ++p) {
    lines.push_back(
        joined("prefix ", prefixes->getUnitPrefixAsString(p), " ", prefixes->getPrefixExponent(p)));
  }
  for (const auto& system : UnitSystemManager::Instance()->getUnitSystems()) {
    lines.push_back(joined("system ", system->getUnitSystemName()));
  }
  return {lines};
}

std::string differences(const RegistrySnapshot& snapshot, const RegistrySnapshot& other) {
  std::vector<std::string> mine = snapshot.lines, theirs = other.lines, only;
  std::sort(mine.begin(), mine.end());
  std::sort(theirs.begin(), theirs.end());
  std::string text;
  std::set_difference(mine.begin(), mine.end(), theirs.begin(), theirs.end(),
                      std::back_inserter(only));
  for (const std::string& line : only) text += "\n  + " + line;
  only.clear();
  std::set_difference(theirs.begin(), theirs.end(), mine.begin(), mine.end(),
                      std::back_inserter(only));
  for (const std::string& line : only) text += "\n  - " + line;
  return text.empty() ? "(the same)" : text;
}

std::ostream& operator<<(std::ostream& out, const RegistrySnapshot& snapshot) {
  for (const std::string& line : snapshot.lines) out << "\n  " << line;
  return out;
}
