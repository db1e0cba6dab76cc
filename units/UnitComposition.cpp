#include "units/UnitComposition.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <ostream>
#include <stdexcept>

#include "host/ArgumentError.hpp"
#include "host/Numeric.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitConverter.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/UnitSystemApi.hpp"

namespace TwUnits {

namespace {

// The name of a unit as compositions write it: the prefix's name, then the unit's.
std::string nameOf(const UnitBase& unit) {
  std::string name;
  UnitManager::Instance()->createUnitStringFromUnitBase(unit, name);
  return name;
}

std::vector<std::pair<std::string, int>> countByName(const UnitComposition::UnitSet& units) {
  std::map<std::string, int> counts;
  for (const UnitBase& unit : units) ++counts[nameOf(unit)];
  return {counts.begin(), counts.end()};
}

}  // namespace

std::vector<int> UnitComposition::removedPrefixes_;

UnitComposition::UnitComposition() = default;

UnitComposition::UnitComposition(const UnitSet& numerator, const UnitSet& denominator)
    : numerator_(numerator), denominator_(denominator) {}

UnitComposition::UnitComposition(const std::multiset<UnitBase>& numerator,
                                 const std::multiset<UnitBase>& denominator)
    : numerator_(numerator), denominator_(denominator) {}

UnitComposition::UnitComposition(const UnitBase& unit) { numerator_.insert(unit); }

UnitComposition::UnitComposition(int quantityIndex, const UnitSystemApi* system) {
  const QuantityDimension* quantity =
      PhysicalQuantityManager::Instance()->getQuantityDimension(quantityIndex);
  if (quantity == nullptr) throw std::out_of_range("quantity index out of range");
  UnitManager* units = UnitManager::Instance();
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) {
    if (quantity->at(b) == 0) continue;
    UnitBase base = units->getSystemUnit(getBaseUnitOf(*system, b), static_cast<int>(b));
    updateThisWithUnitBase(quantity->at(b), base);
  }
}

UnitComposition::~UnitComposition() = default;

void UnitComposition::updateThisWithUnitBase(int exponent, UnitBase& unit) {
  UnitComposition single(unit);
  for (int i = 0; i < std::abs(exponent); ++i) {
    if (exponent > 0) {
      *this *= single;
    } else {
      *this /= single;
    }
  }
}

UnitComposition& UnitComposition::operator*=(const UnitComposition& other) {
  // A copy when `other` is this composition, whose sets the inserts would grow.
  if (&other == this) return *this *= UnitComposition(other);
  takeNumberingOf(other);
  numerator_.insert(other.numerator_.begin(), other.numerator_.end());
  denominator_.insert(other.denominator_.begin(), other.denominator_.end());
  multiplier_ *= other.multiplier_;
  markQuantityStale();
  return *this;
}

UnitComposition& UnitComposition::operator/=(const UnitComposition& other) {
  if (&other == this) return *this /= UnitComposition(other);
  takeNumberingOf(other);
  numerator_.insert(other.denominator_.begin(), other.denominator_.end());
  denominator_.insert(other.numerator_.begin(), other.numerator_.end());
  multiplier_ /= other.multiplier_;
  markQuantityStale();
  return *this;
}

// merge() places each moved unit where insert() would put a copy (after the units
// equivalent to it, in the other's order), so both forms give the same sequence.
UnitComposition& UnitComposition::operator*=(UnitComposition&& other) {
  if (&other == this) return *this *= static_cast<const UnitComposition&>(other);
  takeNumberingOf(other);
  numerator_.merge(other.numerator_);
  denominator_.merge(other.denominator_);
  multiplier_ *= other.multiplier_;
  markQuantityStale();
  other.markQuantityStale();
  return *this;
}

UnitComposition& UnitComposition::operator/=(UnitComposition&& other) {
  if (&other == this) return *this /= static_cast<const UnitComposition&>(other);
  takeNumberingOf(other);
  numerator_.merge(other.denominator_);
  denominator_.merge(other.numerator_);
  multiplier_ /= other.multiplier_;
  markQuantityStale();
  other.markQuantityStale();
  return *this;
}

UnitComposition& UnitComposition::operator^=(int n) {
  markQuantityStale();
  if (n < 0) std::swap(numerator_, denominator_);
  // In long long: the magnitude of INT_MIN does not fit an int.
  long long times = std::llabs(static_cast<long long>(n));
  numerator_.repeat(times);
  denominator_.repeat(times);
  if (multiplier_ != 1.0) multiplier_ = std::pow(multiplier_, n);
  return *this;
}

double UnitComposition::getMultiplierForUnitCancelation(const UnitBase& a,
                                                        const UnitBase& b) const {
  if (a.sameAs(b)) return 1.0;
  // A unit over a unit of its own quantity is a difference: no offset applies.
  double multiplier =
      UnitConverterManager::Instance()
          ->tableEntry(static_cast<int>(a.getPQIdx()), static_cast<int>(a.getUnitIdx()),
                       static_cast<int>(b.getUnitIdx()))
          .getMultiplier();
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  if (a.getPrefixIdx() != -1) multiplier *= prefixes->getPrefixMultiplier(a.getPrefixIdx());
  if (b.getPrefixIdx() != -1) multiplier /= prefixes->getPrefixMultiplier(b.getPrefixIdx());
  return multiplier;
}

bool UnitComposition::hasRepeats() const {
  // Both sides are sorted by quantity first.
  auto up = numerator_.begin();
  auto down = denominator_.begin();
  while (up != numerator_.end() && down != denominator_.end()) {
    if (up->lessThanPQOnly(*down)) {
      ++up;
    } else if (down->lessThanPQOnly(*up)) {
      ++down;
    } else {
      return true;
    }
  }
  return false;
}

void UnitComposition::cancelRepeats() {
  requireCurrentPrefixes();
  if (!hasRepeats()) return;
  std::vector<UnitBase> common;
  auto byQuantity = [](const UnitBase& x, const UnitBase& y) { return x.lessThanPQOnly(y); };
  std::set_intersection(numerator_.begin(), numerator_.end(), denominator_.begin(),
                        denominator_.end(), std::back_inserter(common), byQuantity);
  for (const UnitBase& shared : common) {
    auto sameQuantity = [&](const UnitBase& unit) { return unit.getPQIdx() == shared.getPQIdx(); };
    auto up = std::find_if(numerator_.begin(), numerator_.end(), sameQuantity);
    auto down = std::find_if(denominator_.begin(), denominator_.end(), sameQuantity);
    multiplier_ = getMultiplierForUnitCancelation(*up, *down) * multiplier_;
    numerator_.erase(up);
    denominator_.erase(down);
  }
}

bool UnitComposition::operator==(const UnitComposition& other) const {
  auto sameUnits = [](const UnitSet& x, const UnitSet& y) {
    return x.size() == y.size() &&
           std::equal(x.begin(), x.end(), y.begin(),
                      [](const UnitBase& a, const UnitBase& b) { return a.sameAs(b); });
  };
  return sameUnits(numerator_, other.numerator_) && sameUnits(denominator_, other.denominator_) &&
         utEqualWithinEps(multiplier_, other.multiplier_);
}

bool UnitComposition::containsUnit(int quantityIndex, int unitIndex) const {
  auto isIt = [&](const UnitBase& unit) {
    return static_cast<int>(unit.getPQIdx()) == quantityIndex &&
           static_cast<int>(unit.getUnitIdx()) == unitIndex;
  };
  return std::any_of(numerator_.begin(), numerator_.end(), isIt) ||
         std::any_of(denominator_.begin(), denominator_.end(), isIt);
}

bool UnitComposition::containsPrefix(int prefixIndex) const {
  auto hasIt = [&](const UnitBase& unit) { return unit.getPrefixIdx() == prefixIndex; };
  return std::any_of(numerator_.begin(), numerator_.end(), hasIt) ||
         std::any_of(denominator_.begin(), denominator_.end(), hasIt);
}

void UnitComposition::getQuantityIdxVector(std::vector<int>& quantities, bool numerator) const {
  const UnitSet& units = numerator ? numerator_ : denominator_;
  quantities.clear();
  quantities.reserve(units.size());
  for (const UnitBase& unit : units) {
    quantities.push_back(static_cast<int>(unit.getPQIdx()));
  }
}

QuantityDimension UnitComposition::getDimensions() const {
  // Counted in place; a quantity index beyond the base quantities raises
  // std::out_of_range, as the (up, down) constructor does.
  std::array<int, kBaseDimensionCount> exponents{};
  for (const UnitBase& unit : numerator_) ++exponents.at(unit.getPQIdx());
  for (const UnitBase& unit : denominator_) --exponents.at(unit.getPQIdx());
  return QuantityDimension(exponents.data(), nullptr);
}

int UnitComposition::resolveQuantityType() const {
  QuantityDimension dimensions = getDimensions();
  cachedQuantityIndex_ = PhysicalQuantityManager::Instance()->getQuantityIdx(&dimensions);
  return cachedQuantityIndex_;
}

int UnitComposition::getPrefixIdx(const std::string& unitName) const {
  std::string rest = unitName, prefixName;
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  prefixes->stripPrefixAndGetMultiplier(rest, prefixName);
  return prefixes->getPrefixIndex(prefixName);
}

std::string UnitComposition::getCompositionString_Helper(
    const std::vector<std::pair<std::string, int>>& names) {
  std::string text;
  for (const auto& [name, count] : names) {
    if (!text.empty()) text += "*";
    text += name;
    if (count != 1) text += "^" + std::to_string(count);
  }
  return text;
}

std::string UnitComposition::getCompositionString() const {
  requireCurrentPrefixes();
  auto up = countByName(numerator_);
  auto down = countByName(denominator_);
  std::string text;
  if (!up.empty()) {
    bool parenthesised = up.size() >= 2 && down.size() >= 2;
    text = getCompositionString_Helper(up);
    if (parenthesised) text = "(" + text + ")";
  } else {
    text = down.empty() ? "dimensionless" : "1";
  }
  if (!down.empty()) {
    std::string bottom = getCompositionString_Helper(down);
    text += down.size() >= 2 ? "/(" + bottom + ")" : "/" + bottom;
  }
  return text;
}

UnitCompositionApi::MakeupVectors UnitComposition::getUnitMakeupVectors() const {
  requireCurrentPrefixes();
  if (numerator_.empty() && denominator_.empty()) return {{"dimensionless"}, {1}};
  std::map<std::string, int> net;
  for (const UnitBase& unit : numerator_) ++net[nameOf(unit)];
  for (const UnitBase& unit : denominator_) --net[nameOf(unit)];
  MakeupVectors result;
  for (const auto& [name, exponent] : net) {
    result.first.push_back(name);
    result.second.push_back(exponent);
  }
  return result;
}

bool UnitComposition::holdsPrefix() const {
  auto prefixed = [](const UnitBase& unit) { return unit.getPrefixIdx() != -1; };
  return std::any_of(numerator_.begin(), numerator_.end(), prefixed) ||
         std::any_of(denominator_.begin(), denominator_.end(), prefixed);
}

void UnitComposition::takeNumberingOf(const UnitComposition& other) {
  if (prefixNumbering_ == other.prefixNumbering_ || !other.holdsPrefix()) return;
  if (!holdsPrefix() || other.prefixNumbering_ < prefixNumbering_)
    prefixNumbering_ = other.prefixNumbering_;
}

void UnitComposition::requireCurrentPrefixes() const {
  if (prefixNumbering_ == removedPrefixes_.size()) return;
  int highest = -1;
  for (const UnitSet* units : {&numerator_, &denominator_}) {
    for (const UnitBase& unit : *units) highest = std::max(highest, unit.getPrefixIdx());
  }
  for (std::size_t r = prefixNumbering_; r < removedPrefixes_.size(); ++r) {
    if (highest >= removedPrefixes_[r]) {
      raiseArgumentError("composition",
                         "holds the indexes of prefixes from before a prefix was "
                         "removed; make it again from its text");
    }
  }
}

void UnitComposition::shiftPrefixIndexesAfterRemoval(int removedPrefix) {
  prefixNumbering_ = numbering();
  auto later = [&](const UnitBase& unit) { return unit.getPrefixIdx() > removedPrefix; };
  if (std::none_of(numerator_.begin(), numerator_.end(), later) &&
      std::none_of(denominator_.begin(), denominator_.end(), later)) {
    return;
  }
  auto shift = [&](const UnitBase& unit) {
    return later(unit) ? UnitBase(unit.getPQIdx(), unit.getUnitIdx(), unit.getPrefixIdx() - 1)
                       : unit;
  };
  numerator_.rewrite(shift);
  denominator_.rewrite(shift);
}

std::ostream& operator<<(std::ostream& out, const UnitComposition& composition) {
  out << "Multiplier : " << composition.multiplier_ << "\n";
  out << "Numerator : \n";
  for (const UnitBase& unit : composition.numerator_) out << unit;
  out << "Denominator : \n";
  for (const UnitBase& unit : composition.denominator_) out << unit;
  return out;
}

}  // namespace TwUnits
