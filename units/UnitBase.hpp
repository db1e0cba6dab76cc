#pragma once

// File: UnitBase.hpp
// One unit inside a composition: which physical quantity, which unit of that
// quantity, and which prefix (-1 for none). Compositions order their units by
// quantity, then unit; the prefix takes no part in the order.
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

  std::uint32_t getPQIdx() const { return quantityIndex_; }
  std::uint32_t getUnitIdx() const { return unitIndex_; }
  std::int32_t getPrefixIdx() const { return prefixIndex_; }

  // Quantity, then unit, compared unsigned; prefixes are equivalent.
  bool operator<(const UnitBase& other) const {
    return quantityIndex_ != other.quantityIndex_ ? quantityIndex_ < other.quantityIndex_
                                                  : unitIndex_ < other.unitIndex_;
  }
  bool lessThanPQOnly(const UnitBase& other) const { return quantityIndex_ < other.quantityIndex_; }
  // Equal in all three fields.
  bool sameAs(const UnitBase& other) const {
    return quantityIndex_ == other.quantityIndex_ && unitIndex_ == other.unitIndex_ &&
           prefixIndex_ == other.prefixIndex_;
  }

  // The factor between the two units of this quantity, prefixes included (the prefix
  // ratio rounded to an integer). Raises "Units:ConversionDivideByZero".
  double operator/(const UnitBase& other) const;

 private:
  friend std::ostream& operator<<(std::ostream& out, const UnitBase& unit);

  static void connectRegistries();

  std::uint32_t quantityIndex_ = 0;
  std::uint32_t unitIndex_ = 0;
  std::int32_t prefixIndex_ = -1;

  static UnitPrefixManager* prefixes_;
  static UnitConverterManager* converters_;
};

// Writes "Q <quantity> P <prefix> U <unit>" and a line end.
std::ostream& operator<<(std::ostream& out, const UnitBase& unit);

}  // namespace TwUnits
