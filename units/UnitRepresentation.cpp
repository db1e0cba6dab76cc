#include "units/UnitRepresentation.hpp"

#include "host/StringUtils.hpp"

namespace TwUnits {

UnitRepresentation::UnitRepresentation() = default;

UnitRepresentation::UnitRepresentation(const std::string& name,
                                       const std::string& compositionString, double multiplier,
                                       double offset, bool libraryVisible)
    : name_(name),
      compositionString_(compositionString),
      multiplier_(multiplier),
      offset_(offset),
      libraryVisible_(libraryVisible) {}

UnitRepresentation::~UnitRepresentation() = default;

UnitRepresentation* UnitRepresentation::clone() const {
  auto* copy = new UnitRepresentation();
  copy->setName(name_);
  copy->setCompositionString(compositionString_);
  copy->setMultiplier(multiplier_);
  copy->setOffset(offset_);
  copy->libraryVisible_ = libraryVisible_;
  return copy;
}

void UnitRepresentation::addChangeListener(const ChangeListener& listener) {
  listeners_.push_back(listener);
}

// Listeners run before the field changes: one that raises leaves the old value.
void UnitRepresentation::announce(UNIT_REP_PROPERTY property) const {
  for (const ChangeListener& listener : listeners_) listener(this, property);
}

void UnitRepresentation::setName(const std::string& name) {
  announce(UNIT_REP_NAME);
  name_ = utTrim(name);
}

void UnitRepresentation::setAlias(const std::string& alias) {
  announce(UNIT_REP_ALIAS);
  alias_ = alias;
}

void UnitRepresentation::setCompositionString(const std::string& composition) {
  announce(UNIT_REP_COMPOSITION);
  compositionString_ = composition;
}

void UnitRepresentation::setMultiplier(double multiplier) {
  announce(UNIT_REP_MULTIPLIER);
  multiplier_ = multiplier;
}

void UnitRepresentation::setOffset(double offset) {
  announce(UNIT_REP_OFFSET);
  offset_ = offset;
}

}  // namespace TwUnits
