#pragma once

// File: UnitBase.hpp
// One unit inside a composition: which physical quantity, which unit of that
// quantity, and which prefix (-1 for none). Compositions order their units by
// quantity, then unit; the prefix takes no part in the order. The three indexes are
// packed into 8 bytes, since compositions hold units by the million: a quantity or unit
// index below kIndexLimit, a prefix index below kPrefixLimit; others raise
// "CALVEX:badArgument" (the prefix registry refuses to grow past its limit).
//
// Example:
//   UnitBase millimole(0, 2, 8);   // amount, "mole", "milli"
//   std::cout << millimole;         // "Q 0 P 8 U 2\n"

#include <cstdint>
#include <iosfwd>

namespace TwUnits {

class UnitConverterManager;
class UnitPrefixManager;

class UnitBase {
 public:
  UnitBase();
  UnitBase(std::uint32_t quantityIndex, std::uint32_t unitIndex, std::int32_t prefixIndex);
  UnitBase(const UnitBase& other) = default;
  UnitBase& operator=(const UnitBase& other) = default;

  static constexpr std::uint32_t kIndexLimit = 1U << 24;
  static constexpr std::int32_t kPrefixLimit = 0xffff;

  std::uint32_t getPQIdx() const { return static_cast<std::uint32_t>(bits() >> kQuantityShift); }
  std::uint32_t getUnitIdx() const {
    return static_cast<std::uint32_t>(bits() >> kUnitShift) & (kIndexLimit - 1);
  }
  std::int32_t getPrefixIdx() const { return static_cast<std::int32_t>(bits() & 0xffff) - 1; }

  // Quantity, then unit, compared unsigned; prefixes are equivalent.
  bool operator<(const UnitBase& other) const {
    return bits() >> kUnitShift < other.bits() >> kUnitShift;
  }
  bool lessThanPQOnly(const UnitBase& other) const {
    return bits() >> kQuantityShift < other.bits() >> kQuantityShift;
  }
  // Equal in all three fields.
  bool sameAs(const UnitBase& other) const { return high_ == other.high_ && low_ == other.low_; }

  // The factor between the two units of this quantity, prefixes included (the prefix
  // ratio rounded to an integer). Raises "Units:ConversionDivideByZero".
  double operator/(const UnitBase& other) const;

 private:
  friend std::ostream& operator<<(std::ostream& out, const UnitBase& unit);

  static void connectRegistries();

  static constexpr int kQuantityShift = 40;
  static constexpr int kUnitShift = 16;
  // Quantity, unit, and prefix + 1 (0 for none), from the highest bits down; kept as two
  // halves so that a unit needs only 4-byte alignment and a set of them packs tightly.
  std::uint64_t bits() const { return std::uint64_t{high_} << 32 | low_; }
  std::uint32_t high_ = 0;
  std::uint32_t low_ = 0;

  static UnitPrefixManager* prefixes_;
  static UnitConverterManager* converters_;
};

// Writes "Q <quantity> P <prefix> U <unit>" and a line end.
std::ostream& operator<<(std::ostream& out, const UnitBase& unit);

}  // namespace TwUnits
