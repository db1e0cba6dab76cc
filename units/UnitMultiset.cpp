#include "units/UnitMultiset.hpp"

#include <algorithm>

namespace TwUnits {

UnitMultiset::const_iterator UnitMultiset::insert(const UnitBase& unit) {
  // Usually the unit belongs at the end; otherwise after its equivalents.
  if (units_.empty() || !(unit < units_.back())) {
    units_.push_back(unit);
    return units_.end() - 1;
  }
  return units_.insert(std::upper_bound(units_.begin(), units_.end(), unit), unit);
}

void UnitMultiset::merge(UnitMultiset& other) {
  if (&other == this) return;
  insert(other.begin(), other.end());
  other.clear();
}

void UnitMultiset::repeat(long long times) {
  Storage repeated;
  repeated.reserve(units_.size() * static_cast<std::size_t>(times));
  for (const UnitBase& unit : units_)
    repeated.insert(repeated.end(), static_cast<std::size_t>(times), unit);
  units_ = std::move(repeated);
}

}  // namespace TwUnits
