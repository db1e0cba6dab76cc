#include "units/UnitBase.hpp"

#include <memory>
#include <ostream>

#include "host/ArgumentError.hpp"
#include "host/Numeric.hpp"
#include "units/UnitConverter.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

UnitPrefixManager* UnitBase::prefixes_ = nullptr;
UnitConverterManager* UnitBase::converters_ = nullptr;

void UnitBase::connectRegistries() {
  if (prefixes_ == nullptr) prefixes_ = UnitPrefixManager::Instance();
  if (converters_ == nullptr) converters_ = UnitConverterManager::Instance();
}

UnitBase::UnitBase() { connectRegistries(); }

UnitBase::UnitBase(std::uint32_t quantityIndex, std::uint32_t unitIndex, std::int32_t prefixIndex) {
  if (quantityIndex >= kIndexLimit || unitIndex >= kIndexLimit)
    raiseArgumentError("unit", "must have a quantity and unit index below 16777216");
  if (prefixIndex < -1 || prefixIndex >= kPrefixLimit)
    raiseArgumentError("unit", "must have a prefix index from -1 to 65534");
  const std::uint64_t bits = std::uint64_t{quantityIndex} << kQuantityShift |
                             std::uint64_t{unitIndex} << kUnitShift |
                             static_cast<std::uint64_t>(prefixIndex + 1);
  high_ = static_cast<std::uint32_t>(bits >> 32);
  low_ = static_cast<std::uint32_t>(bits);
  connectRegistries();
}

double UnitBase::operator/(const UnitBase& other) const {
  double unitFactor = 1.0;
  if (getUnitIdx() != other.getUnitIdx()) {
    std::unique_ptr<UnitConverter> converter(converters_->getQuantityUnitConverter(
        static_cast<int>(getPQIdx()), static_cast<int>(getUnitIdx()),
        static_cast<int>(other.getUnitIdx())));
    if (!converter) raiseError(errors::ConversionDivideByZero);
    double converted = converter->doConversion(1.0);
    if (utEqualWithinEps(converted, 0.0)) raiseError(errors::ConversionDivideByZero);
    unitFactor = 1.0 / converted;
  }
  if (getPrefixIdx() == other.getPrefixIdx()) return unitFactor;
  auto multiplierOf = [](std::int32_t prefix) {
    return prefix == -1 ? 1.0 : prefixes_->getPrefixMultiplier(prefix);
  };
  return unitFactor * utRound(multiplierOf(getPrefixIdx()) / multiplierOf(other.getPrefixIdx()));
}

std::ostream& operator<<(std::ostream& out, const UnitBase& unit) {
  return out << "Q " << unit.getPQIdx() << " P " << unit.getPrefixIdx() << " U "
             << unit.getUnitIdx() << "\n";
}

}  // namespace TwUnits
