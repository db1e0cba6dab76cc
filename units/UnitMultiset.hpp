#pragma once

// File: UnitMultiset.hpp
// The ordered multiset of units that a composition's numerator or denominator is:
// units in UnitBase order (quantity, then unit; prefixes take no part), and units of
// equivalent keys in the order they were added. It is kept as a sorted array with room
// for three units inside and 40 bytes in all, since compositions mostly hold a few units
// and are copied, combined and cached by the thousand; more units take one heap block,
// sized exactly when the set is copied, or live in storage that its owner lends (the
// cache lends a part of the entry that holds the set).
//
// Example:
//   UnitMultiset units{UnitBase(2, 0, 3), UnitBase(1, 0, -1)};   // gram, kilometer
//   units.insert(UnitBase(2, 0, -1));                           // gram, kilometer, meter

#include <cstdint>
#include <initializer_list>
#include <set>
#include <type_traits>

#include "units/UnitBase.hpp"

namespace TwUnits {

class UnitMultiset {
 public:
  using value_type = UnitBase;
  using const_iterator = const UnitBase*;
  using iterator = const_iterator;
  // Units that fit inside the set itself.
  static constexpr std::size_t kInside = 3;

  UnitMultiset() = default;
  UnitMultiset(std::initializer_list<UnitBase> units) { insert(units.begin(), units.end()); }
  explicit UnitMultiset(const std::multiset<UnitBase>& units);
  UnitMultiset(const UnitMultiset& other);
  UnitMultiset(UnitMultiset&& other) noexcept { take(other); }
  UnitMultiset& operator=(const UnitMultiset& other);
  UnitMultiset& operator=(UnitMultiset&& other) noexcept;
  ~UnitMultiset() { releaseBlock(); }

  const_iterator begin() const { return units(); }
  const_iterator end() const { return units() + size(); }
  std::size_t size() const { return count_ & ~(kInBlock | kLent); }
  bool empty() const { return size() == 0; }
  void clear() { setSize(0); }

  // Adds the unit after every unit equivalent to it.
  const_iterator insert(const UnitBase& unit);
  // Adds each unit of the range in turn, as insert(unit) does.
  template <typename Iterator>
  void insert(Iterator first, Iterator last) {
    for (; first != last; ++first) insert(*first);
  }
  // Moves every unit of the other set in, as insert does, and empties it.
  void merge(UnitMultiset& other);
  const_iterator erase(const_iterator position);
  // Each unit `times` times in a row, in order; none for 0.
  void repeat(long long times);
  // Moves the units into `storage`, room for `capacity` units at least size(), which the
  // caller keeps as long as the set lives and frees itself: the set never frees it, and
  // moves to a block of its own when it outgrows it or is moved from. The storage lies at
  // least four bytes into the allocation that holds it.
  void lendStorage(UnitBase* storage, std::size_t capacity);
  // Replaces every unit by rewrite(unit); the rewrite must keep the units' order.
  template <typename Rewrite>
  void rewrite(Rewrite rewrite) {
    UnitBase* unit = units();
    for (std::size_t i = 0; i < size(); ++i) unit[i] = rewrite(unit[i]);
  }

 private:
  static_assert(std::is_trivially_copyable_v<UnitBase>, "units are moved as bytes");
  // Set in count_ when the units are in a heap block, or in lent storage.
  static constexpr std::uint32_t kInBlock = 0x80000000U;
  static constexpr std::uint32_t kLent = 0x40000000U;

  bool inBlock() const { return (count_ & kInBlock) != 0; }
  bool lent() const { return (count_ & kLent) != 0; }
  // The block's address is kept at the room's first pointer-aligned byte, where a leak
  // checker looking for pointers finds it; the room is not aligned that far itself.
  unsigned char* blockSlot() const;
  unsigned char* block() const;
  void setBlock(unsigned char* address);
  UnitBase* units();
  const UnitBase* units() const;
  std::size_t capacity() const;
  void setSize(std::size_t size) {
    count_ = static_cast<std::uint32_t>(size) | (count_ & (kInBlock | kLent));
  }
  // Room for at least `wanted` units, the units kept; `exact` takes no more than that.
  void reserve(std::size_t wanted, bool exact = false);
  void releaseBlock();
  void take(UnitMultiset& other) noexcept;

  std::uint32_t count_ = 0;
  // Up to kInside units, or the address of their heap block, which begins with its
  // capacity (a std::uint32_t) followed by the units, or the address of the lent storage
  // with its capacity in the room's last four bytes.
  static_assert(kInside * sizeof(UnitBase) >= sizeof(void*) + alignof(void*) - alignof(UnitBase),
                "the room holds an aligned address wherever it lies");
  alignas(UnitBase) unsigned char room_[kInside * sizeof(UnitBase)];
};

}  // namespace TwUnits
