#pragma once

// File: UnitComposition.hpp
// The value of what a unit or composition string is made of: a numerator and a
// denominator of base-quantity units (each possibly prefixed) and a multiplier,
// standing for multiplier * (numerator units) / (denominator units). A unit raised
// to the power n is held n times. Compositions never hold derived units, only their
// expansion, so two compositions compare dimension by dimension.
//
// Example:
//   UnitComposition c(UnitBase(2, 0, 3));   // kilometer
//   c /= UnitComposition(UnitBase(2, 0, -1));
//   c.cancelRepeats();                      // empty, multiplier 1000
//   c.getCompositionString();               // "dimensionless"

#include <cstdint>
#include <iosfwd>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "units/QuantityDimension.hpp"
#include "units/UnitBase.hpp"
#include "units/UnitCompositionApi.hpp"
#include "units/UnitMultiset.hpp"

namespace TwUnits {

class UnitSystemApi;

class UnitComposition : public UnitCompositionApi {
 public:
  using UnitSet = UnitMultiset;

  // The empty composition, "dimensionless": multiplier 1.0.
  UnitComposition();
  UnitComposition(const UnitSet& numerator, const UnitSet& denominator);
  UnitComposition(const std::multiset<UnitBase>& numerator,
                  const std::multiset<UnitBase>& denominator);
  explicit UnitComposition(const UnitBase& unit);
  UnitComposition(const UnitComposition& other) = default;
  UnitComposition& operator=(const UnitComposition& other) = default;
  // The quantity's dimensions written in the unit system's units, multiplier 1.0. Raises
  // as UnitManager::getSystemUnit does for a unit that the system names wrongly.
  UnitComposition(int quantityIndex, const UnitSystemApi* system);
  ~UnitComposition() override;

  MakeupVectors getUnitMakeupVectors() const override;

  // Products and quotients keep every unit; nothing cancels. The rvalue forms move
  // the other's units over instead of copying them and leave it empty.
  UnitComposition& operator*=(const UnitComposition& other);
  UnitComposition& operator/=(const UnitComposition& other);
  UnitComposition& operator*=(UnitComposition&& other);
  UnitComposition& operator/=(UnitComposition&& other);
  // Raises to an integer power; 0 gives the empty composition with multiplier 1.0.
  UnitComposition& operator^=(int n);
  // Removes units of the same quantity that stand on both sides, folding their ratio
  // into the multiplier: kilometer/meter becomes the empty composition times 1000.
  void cancelRepeats();
  // Whether a quantity stands on both sides, so that cancelRepeats has work.
  bool hasRepeats() const;
  // The factor by which a quantity in unit a is expressed in unit b, prefixes included.
  double getMultiplierForUnitCancelation(const UnitBase& a, const UnitBase& b) const;

  // Same units position by position (prefixes included), multipliers equal within
  // the host tolerance.
  bool operator==(const UnitComposition& other) const;
  bool operator!=(const UnitComposition& other) const { return !(*this == other); }
  bool containsUnit(int quantityIndex, int unitIndex) const;
  bool containsPrefix(int prefixIndex) const;
  void getQuantityIdxVector(std::vector<int>& quantities, bool numerator) const;
  // Index of the registered quantity with these dimensions, or -1; cached until the
  // composition changes or markQuantityStale is called.
  int getCombinedUnitsQuantityType() const {
    return cachedQuantityIndex_ == kStale ? resolveQuantityType() : cachedQuantityIndex_;
  }
  void markQuantityStale() { cachedQuantityIndex_ = kStale; }
  QuantityDimension getDimensions() const;
  // The prefix index of the prefix that begins the unit name (-1 for none).
  int getPrefixIdx(const std::string& unitName) const;
  // The canonical text: names in byte order with "^" counts, "(...)" around several
  // names when needed, "1/second" for an empty numerator, "dimensionless" for nothing.
  // The multiplier is never written.
  std::string getCompositionString() const;

  const UnitSet& getNumerator() const { return numerator_; }
  const UnitSet& getDenominator() const { return denominator_; }
  double getMultiplier() const { return multiplier_; }
  void setMultiplier(double multiplier) { multiplier_ = multiplier; }
  // Rewrites the prefix index of every unit above `removedPrefix` one lower, after the
  // prefix registry removed that prefix.
  void shiftPrefixIndexesAfterRemoval(int removedPrefix);

  // The prefix registry tells when it removes the prefix at an index. A composition made
  // before then that holds that prefix or a later one, and that the unit registry did not
  // shift, holds stale prefix indexes: using it raises "CALVEX:badArgument" instead of
  // reading another prefix, or none.
  static void prefixRemoved(int index) { removedPrefixes_.push_back(index); }
  void requireCurrentPrefixes() const;

 private:
  friend std::ostream& operator<<(std::ostream& out, const UnitComposition& composition);
  friend class CompositionCache;  // lends the units storage in its entries

  int resolveQuantityType() const;
  bool holdsPrefix() const;
  // A product or quotient holds the older of the two numberings that it has prefixes of.
  void takeNumberingOf(const UnitComposition& other);
  void updateThisWithUnitBase(int exponent, UnitBase& unit);
  static std::string getCompositionString_Helper(
      const std::vector<std::pair<std::string, int>>& names);

  UnitSet numerator_;
  UnitSet denominator_;
  double multiplier_ = 1.0;
  // The quantity found for these units, or kStale until it is looked up again.
  static constexpr int kStale = std::numeric_limits<int>::min();
  mutable int cachedQuantityIndex_ = kStale;
  // The prefix index removed by each removal so far, in order; a composition knows how
  // many of them its prefix indexes have followed.
  static std::vector<int> removedPrefixes_;
  std::uint32_t prefixNumbering_ = numbering();
  static std::uint32_t numbering() { return static_cast<std::uint32_t>(removedPrefixes_.size()); }
};

// A debugging dump: multiplier, then every numerator and denominator unit.
std::ostream& operator<<(std::ostream& out, const UnitComposition& composition);

}  // namespace TwUnits
