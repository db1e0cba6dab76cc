#include "units/UnitPrefix.hpp"

#include <cmath>

#include "host/ArgumentError.hpp"
#include "host/Numeric.hpp"
#include "host/StringUtils.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

UnitPrefix::UnitPrefix() { setup(); }

UnitPrefix::UnitPrefix(const std::string& name, int exponent, const std::string& alias) {
  setup();
  setName(name);
  setExponent(exponent);
  setAlias(alias);
}

// The exponent is copied last, so a copy's multiplier is always pow(10, exponent).
UnitPrefix::UnitPrefix(const UnitPrefix& other) : UnitPrefixApi() {
  setup();
  setName(other.name_);
  setAlias(other.alias_);
  multiplier_ = other.multiplier_;
  setExponent(other.exponent_);
}

UnitPrefix::~UnitPrefix() = default;

// The multiplier is copied last, so a clone keeps a multiplier that was set directly.
UnitPrefix* UnitPrefix::clone() const {
  auto* copy = new UnitPrefix();
  copy->setName(name_);
  copy->setAlias(alias_);
  copy->setExponent(exponent_);
  copy->multiplier_ = multiplier_;
  return copy;
}

void UnitPrefix::setup() {
  name_.clear();
  multiplier_ = 1.0;
  exponent_ = 0;
  alias_.clear();
  hostObject_ = nullptr;
  listeners_.clear();
}

void UnitPrefix::addChangeListener(const ChangeListener& listener) {
  listeners_.push_back(listener);
}

void UnitPrefix::notifySetEvent(UNIT_PREFIX_PROPERTY property) {
  for (const ChangeListener& listener : listeners_) listener(this, property);
}

void UnitPrefix::setName(const std::string& name) {
  notifySetEvent(UNIT_PREFIX_NAME);
  name_ = utTrim(name);
}

void UnitPrefix::setExponent(int exponent) {
  if (exponent > kMaxExponent) raiseError(errors::PrefixExponentTooLarge, kMaxExponent);
  if (exponent < kMinExponent) raiseError(errors::PrefixExponentTooSmall, kMinExponent);
  notifySetEvent(UNIT_PREFIX_EXPONENT);
  exponent_ = exponent;
  multiplier_ = std::pow(10.0, exponent);
}

void UnitPrefix::setExponent(double exponent) {
  requireFinite(exponent, "exponent");
  double rounded = utRound(exponent);
  if (!utEqualWithinEps(exponent, rounded)) raiseError(errors::UnitPrefixMustBeMultTen);
  if (exponent > kMaxExponent) raiseError(errors::PrefixExponentTooLarge, kMaxExponent);
  if (exponent < kMinExponent) raiseError(errors::PrefixExponentTooSmall, kMinExponent);
  setExponent(static_cast<int>(rounded));
}

void UnitPrefix::setMult(double multiplier) {
  requireFinite(multiplier, "multiplier");
  if (utEqualWithinEps(multiplier, 0.0)) raiseError(errors::PrefixZeroMultNotAllowed);
  multiplier_ = multiplier;
}

}  // namespace TwUnits
