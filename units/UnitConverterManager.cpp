#include "units/UnitConverterManager.hpp"

#include <stdexcept>

#include "host/Numeric.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityDimension.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

namespace {

void checkUnitIndexes(int unitCount, int fromUnit, int toUnit) {
  if (fromUnit < 0 || toUnit < 0 || fromUnit >= unitCount || toUnit >= unitCount) {
    throw std::out_of_range("unit index outside the conversion table");
  }
}

int unitCountOf(int quantity) {
  return static_cast<int>(UnitManager::Instance()->getNumUnits(quantity));
}

double prefixMultiplier(const UnitBase& unit) {
  return UnitPrefixManager::Instance()->getPrefixMultiplier(unit.getPrefixIdx());
}

}  // namespace

UnitConverterManager* UnitConverterManager::Instance() {
  static UnitConverterManager* instance = new UnitConverterManager();
  return instance;
}

UnitConverterManager::UnitConverterManager()
    : tables_(PhysicalQuantityManager::kBuiltinQuantityCount),
      identity_(new UnitConverter(1.0, 0.0)) {
  identity_->setIdentity(true);
}

UnitConverterManager::~UnitConverterManager() = default;

const UnitConverter& UnitConverterManager::tableEntry(int quantity, int fromUnit,
                                                      int toUnit) const {
  // The table is always as many units square as the registry counts for the quantity.
  const ConverterTable& table = tables_.at(static_cast<std::size_t>(quantity));
  checkUnitIndexes(static_cast<int>(table.size()), fromUnit, toUnit);
  const auto& entry = table[static_cast<std::size_t>(fromUnit)][static_cast<std::size_t>(toUnit)];
  return entry ? *entry : *identity_;
}

std::size_t UnitConverterManager::getTableSize(int quantity) const {
  std::size_t size = 0;
  for (const ConverterList& row : tables_.at(static_cast<std::size_t>(quantity)))
    size += row.size();
  return size;
}

UnitConverter* UnitConverterManager::getQuantityUnitConverter(int quantity, int fromUnit,
                                                              int toUnit) const {
  if (quantity > kLastBaseQuantity) return nullptr;
  return new UnitConverter(tableEntry(quantity, fromUnit, toUnit));
}

UnitConverter* UnitConverterManager::getReverseUnitConverter(
    const UnitConverterApi* converter) const {
  double multiplier = 1.0 / converter->getMultiplier();
  double offset =
      utEqualWithinEps(converter->getOffset(), 0.0) ? 0.0 : -converter->getOffset() * multiplier;
  auto* reverse = new UnitConverter(multiplier, offset);
  if (auto* tableConverter = dynamic_cast<const UnitConverter*>(converter)) {
    reverse->setQuantityIdx(tableConverter->getQuantityIdx());
    reverse->setFromUnit(tableConverter->getToUnit());
    reverse->setToUnit(tableConverter->getFromUnit());
  }
  return reverse;
}

void UnitConverterManager::addBaseUnitConverter(int quantity, int newUnit, int referenceUnit,
                                                UnitConverter* converter) {
  std::unique_ptr<UnitConverter> owned(converter);
  ConverterTable& table = tables_.at(static_cast<std::size_t>(quantity));
  if (owned->getFromUnit() == -1) owned->setFromUnit(newUnit);
  if (owned->getToUnit() == -1) owned->setToUnit(referenceUnit);
  owned->setQuantityIdx(quantity);
  UnitManager* units = UnitManager::Instance();

  ConverterList batch;
  batch.emplace_back(getReverseUnitConverter(owned.get()));
  if (table.empty()) {
    // The quantity's first converter introduces both of its units.
    batch.push_back(std::move(owned));
    units->incrementNumUnits(quantity);
    units->incrementNumUnits(quantity);
    placeConverters(quantity, batch);
    return;
  }
  // Every chain through the reference unit is composed now, once.
  int unitCount = unitCountOf(quantity);
  for (int unit = 0; unit < unitCount; ++unit) {
    const UnitConverter& onward = tableEntry(quantity, referenceUnit, unit);
    if (onward.isIdentity()) continue;
    auto composed = std::make_unique<UnitConverter>(
        owned->getMultiplier() * onward.getMultiplier(),
        owned->getOffset() * onward.getMultiplier() + onward.getOffset());
    composed->setQuantityIdx(quantity);
    composed->setFromUnit(newUnit);
    composed->setToUnit(onward.getToUnit());
    batch.emplace_back(getReverseUnitConverter(composed.get()));
    batch.push_back(std::move(composed));
  }
  batch.push_back(std::move(owned));
  units->incrementNumUnits(quantity);
  placeConverters(quantity, batch);
}

void UnitConverterManager::placeConverters(int quantity, ConverterList& converters) {
  ConverterTable& table = tables_.at(static_cast<std::size_t>(quantity));
  std::size_t unitCount = static_cast<std::size_t>(unitCountOf(quantity));
  // New entries start empty, which is the identity.
  table.resize(unitCount);
  for (ConverterList& row : table) row.resize(unitCount);
  for (auto& converter : converters) {
    if (!converter || converter->isIdentity()) continue;
    checkUnitIndexes(static_cast<int>(unitCount), converter->getFromUnit(), converter->getToUnit());
    table[static_cast<std::size_t>(converter->getFromUnit())]
         [static_cast<std::size_t>(converter->getToUnit())] = std::move(converter);
  }
}

void UnitConverterManager::sortConversions(int quantity) {
  ConverterList converters;
  for (ConverterList& row : tables_.at(static_cast<std::size_t>(quantity))) {
    for (auto& converter : row) {
      if (converter) converters.push_back(std::move(converter));
    }
  }
  tables_.at(static_cast<std::size_t>(quantity)).clear();
  placeConverters(quantity, converters);
}

void UnitConverterManager::removeConversionFunctionsForUnit(int quantity, int unit) {
  ConverterTable& table = tables_.at(static_cast<std::size_t>(quantity));
  std::size_t removed = static_cast<std::size_t>(unit);
  if (removed >= table.size()) throw std::out_of_range("unit index outside the conversion table");
  // Drop the unit's row and column; later units move down one index.
  table.erase(table.begin() + unit);
  for (ConverterList& row : table) {
    row.erase(row.begin() + unit);
    for (auto& converter : row) {
      if (!converter) continue;
      if (converter->getFromUnit() > unit) converter->setFromUnit(converter->getFromUnit() - 1);
      if (converter->getToUnit() > unit) converter->setToUnit(converter->getToUnit() - 1);
    }
  }
}

bool UnitConverterManager::checkForConnectivity(const ConverterList* list, int unit) const {
  for (const auto& converter : *list) {
    if (converter && !converter->isIdentity() && converter->getToUnit() == unit) return true;
  }
  return false;
}

UnitConverter* UnitConverterManager::getQuantityUnitConverter(int, UnitComposition* from,
                                                              UnitComposition* to) const {
  from->cancelRepeats();
  to->cancelRepeats();
  double multiplier = from->getMultiplier() / to->getMultiplier();
  double offset = 0.0;
  int count = static_cast<int>(from->getNumerator().size() + from->getDenominator().size());
  UCMNamespace::iterateBaseForMultOffset(from->getNumerator(), to->getNumerator(), multiplier,
                                         offset, count, true);
  UCMNamespace::iterateBaseForMultOffset(from->getDenominator(), to->getDenominator(), multiplier,
                                         offset, count, false);
  return new UnitConverter(multiplier, offset);
}

namespace UCMNamespace {

void iterateBaseForMultOffset(const UnitMultiset& from, const UnitMultiset& to, double& multiplier,
                              double& offset, int count, bool numerator) {
  UnitConverterManager* converters = UnitConverterManager::Instance();
  auto a = from.begin();
  for (auto b = to.begin(); b != to.end() && a != from.end(); ++a, ++b) {
    // Read in place: a copy per unit pair would cost an allocation on every conversion.
    const UnitConverter& pair =
        converters->tableEntry(static_cast<int>(b->getPQIdx()), static_cast<int>(a->getUnitIdx()),
                               static_cast<int>(b->getUnitIdx()));
    bool hasOffset = !utEqualWithinEps(pair.getOffset(), 0.0);
    if (hasOffset) {
      if (count > 1) raiseError(errors::ConversionMixedOffset);
      if (a->getPrefixIdx() != -1 || b->getPrefixIdx() != -1) {
        raiseError(errors::OffsetConversionWithPrefixNotAllowed);
      }
    } else if (numerator) {
      if (a->getPrefixIdx() != -1) mult(multiplier, prefixMultiplier(*a));
      if (b->getPrefixIdx() != -1) div(multiplier, prefixMultiplier(*b));
    } else {
      if (a->getPrefixIdx() != -1) div(multiplier, prefixMultiplier(*a));
      if (b->getPrefixIdx() != -1) mult(multiplier, prefixMultiplier(*b));
    }
    if (numerator) {
      mult(multiplier, pair.getMultiplier());
    } else {
      div(multiplier, pair.getMultiplier());
    }
    offset += pair.getOffset();
  }
}

}  // namespace UCMNamespace

UnitConverter* UnitConverterManager::temperatureConverter(
    const std::string& from, const std::string& to, const UnitComposition* fromComposition,
    const UnitComposition* toComposition) const {
  UnitManager* units = UnitManager::Instance();
  int fromUnit = units->getUnitIndex(kTemperatureIndex, from);
  int toUnit = units->getUnitIndex(kTemperatureIndex, to);
  for (const UnitComposition* composition : {fromComposition, toComposition}) {
    const auto& numerator = composition->getNumerator();
    if (!numerator.empty() && numerator.begin()->getPrefixIdx() != -1) {
      raiseError(errors::OffsetConversionWithPrefixNotAllowed);
    }
  }
  // A temperature written as a composition (kelvin*meter/meter) has no table entry of
  // its own; the composition converter applies the same offset and prefix rules.
  if (fromUnit == -1 || toUnit == -1) {
    return getQuantityUnitConverter(kTemperatureIndex,
                                    const_cast<UnitComposition*>(fromComposition),
                                    const_cast<UnitComposition*>(toComposition));
  }
  return getQuantityUnitConverter(kTemperatureIndex, fromUnit, toUnit);
}

UnitConverter* UnitConverterManager::getQuantityUnitConverter(const std::string& from,
                                                              const std::string& to) const {
  UnitManager* units = UnitManager::Instance();
  UnitComposition* fromComposition = units->verifyUnitCompositionString(from);
  UnitComposition* toComposition = units->verifyUnitCompositionString(to);
  int fromQuantity = fromComposition->getCombinedUnitsQuantityType();
  int toQuantity = toComposition->getCombinedUnitsQuantityType();
  if (fromQuantity == -1 || toQuantity == -1) {
    if (fromComposition->getDimensions() != toComposition->getDimensions()) {
      raiseError(errors::ConversionDifferentQuants);
    }
    fromComposition->markQuantityStale();
    toComposition->markQuantityStale();
    fromQuantity = fromComposition->getCombinedUnitsQuantityType();
  } else if (fromQuantity != toQuantity) {
    raiseError(errors::ConversionDifferentQuants);
  }
  if (fromQuantity == kTemperatureIndex)
    return temperatureConverter(from, to, fromComposition, toComposition);
  return getQuantityUnitConverter(fromQuantity, fromComposition, toComposition);
}

UnitConverter* UnitConverterManager::getQuantityUnitConverter(const std::string& composition,
                                                              const UnitSystemApi* system) const {
  UnitComposition* source = UnitManager::Instance()->verifyUnitCompositionString(composition);
  UnitComposition inSystem(source->getCombinedUnitsQuantityType(), system);
  return getQuantityUnitConverter(0, source, &inSystem);
}

UnitConverterApi* UnitConverterManager::getQuantityUnitConverterApi(int quantity, int fromUnit,
                                                                    int toUnit) const {
  return getQuantityUnitConverter(quantity, fromUnit, toUnit);
}

UnitConverterApi* UnitConverterManager::getQuantityUnitConverterApi(const std::string& from,
                                                                    const std::string& to) const {
  return getQuantityUnitConverter(from, to);
}

UnitConverterApi* UnitConverterManager::getQuantityUnitConverterApi(
    const std::string& composition, const UnitSystemApi* system) const {
  return getQuantityUnitConverter(composition, system);
}

UnitConverterApi* UnitConverterManager::createUnitConverterApi(double multiplier,
                                                               double offset) const {
  return new UnitConverter(multiplier, offset);
}

UnitConverterApi* UnitConverterManager::getReverseUnitConverterApi(
    UnitConverterApi* converter) const {
  return getReverseUnitConverter(converter);
}

}  // namespace TwUnits
