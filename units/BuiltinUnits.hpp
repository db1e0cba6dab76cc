#pragma once

// File: BuiltinUnits.hpp
// The built-in units that the unit registry sets up: the base units of each base
// quantity, the converters between them, and the derived units, each over the ones
// before it.

namespace TwUnits {

struct BuiltinBaseUnit {
  int quantity;
  const char* name;
  bool visible;  // listed by the registry's user-facing lists
};

// value in the reference unit = multiplier * value in the unit + offset
struct BuiltinBaseConverter {
  int quantity, unit, reference;
  const char* multiplier;  // exact decimals: pairs of built-in units are rounded once
  const char* offset;
};

struct BuiltinDerivedUnit {
  const char* name;
  const char* composition;
  double multiplier;
};

// The rows of a table, for a range-for.
template <typename Row>
struct BuiltinRows {
  const Row* first;
  const Row* last;
  const Row* begin() const { return first; }
  const Row* end() const { return last; }
};

// Unit indexes follow this order within each quantity.
extern const BuiltinRows<BuiltinBaseUnit> kBuiltinBaseUnits;
extern const BuiltinRows<BuiltinBaseConverter> kBuiltinBaseConverters;
// "liter" comes before "molarity", which uses it.
extern const BuiltinRows<BuiltinDerivedUnit> kBuiltinDerivedUnits;

}  // namespace TwUnits
