#include "units/UnitBase.hpp"

#include <memory>
#include <ostream>

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

UnitBase::UnitBase(std::uint32_t quantityIndex, std::uint32_t unitIndex, std::int32_t prefixIndex)
    : quantityIndex_(quantityIndex), unitIndex_(unitIndex), prefixIndex_(prefixIndex) {
  connectRegistries();
}

double UnitBase::operator/(const UnitBase& other) const {
  double unitFactor = 1.0;
  if (unitIndex_ != other.unitIndex_) {
    std::unique_ptr<UnitConverter> converter(converters_->getQuantityUnitConverter(
        static_cast<int>(quantityIndex_), static_cast<int>(unitIndex_),
        static_cast<int>(other.unitIndex_)));
    if (!converter) raiseError(errors::ConversionDivideByZero);
    double converted = converter->doConversion(1.0);
    if (utEqualWithinEps(converted, 0.0)) raiseError(errors::ConversionDivideByZero);
    unitFactor = 1.0 / converted;
  }
  if (prefixIndex_ == other.prefixIndex_) return unitFactor;
  auto multiplierOf = [](std::int32_t prefix) {
    return prefix == -1 ? 1.0 : prefixes_->getPrefixMultiplier(prefix);
  };
  return unitFactor * utRound(multiplierOf(prefixIndex_) / multiplierOf(other.prefixIndex_));
}

std::ostream& operator<<(std::ostream& out, const UnitBase& unit) {
  return out << "Q " << unit.quantityIndex_ << " P " << unit.prefixIndex_ << " U "
             << unit.unitIndex_ << "\n";
}

}  // namespace TwUnits
