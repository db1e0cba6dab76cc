#pragma once

// File: UnitMultiset.hpp
// The ordered multiset of units that a composition's numerator or denominator is:
// units in UnitBase order (quantity, then unit; prefixes take no part), and units of
// equivalent keys in the order they were added. It is kept as a sorted vector with room
// for a few units inside, since compositions mostly hold a few units and are copied,
// combined and cached by the thousand.
//
// Example:
//   UnitMultiset units{UnitBase(2, 0, 3), UnitBase(1, 0, -1)};   // gram, kilometer
//   units.insert(UnitBase(2, 0, -1));                           // gram, kilometer, meter

#include <boost/container/small_vector.hpp>
#include <initializer_list>
#include <set>

#include "units/UnitBase.hpp"

namespace TwUnits {

class UnitMultiset {
 public:
  using value_type = UnitBase;
  using Storage = boost::container::small_vector<UnitBase, 3>;
  using const_iterator = Storage::const_iterator;
  using iterator = const_iterator;

  UnitMultiset() = default;
  UnitMultiset(std::initializer_list<UnitBase> units) { insert(units.begin(), units.end()); }
  explicit UnitMultiset(const std::multiset<UnitBase>& units)
      : units_(units.begin(), units.end()) {}

  const_iterator begin() const { return units_.begin(); }
  const_iterator end() const { return units_.end(); }
  std::size_t size() const { return units_.size(); }
  bool empty() const { return units_.empty(); }
  void clear() { units_.clear(); }

  // Adds the unit after every unit equivalent to it.
  const_iterator insert(const UnitBase& unit);
  // Adds each unit of the range in turn, as insert(unit) does.
  template <typename Iterator>
  void insert(Iterator first, Iterator last) {
    for (; first != last; ++first) insert(*first);
  }
  // Moves every unit of the other set in, as insert does, and empties it.
  void merge(UnitMultiset& other);
  const_iterator erase(const_iterator position) {  // NOLINT(performance-unnecessary-value-param)
    return units_.erase(position);
  }
  // Each unit `times` times in a row, in order; none for 0.
  void repeat(long long times);
  // Replaces every unit by rewrite(unit); the rewrite must keep the units' order.
  template <typename Rewrite>
  void rewrite(Rewrite rewrite) {
    for (UnitBase& unit : units_) unit = rewrite(unit);
  }

 private:
  Storage units_;
};

}  // namespace TwUnits
