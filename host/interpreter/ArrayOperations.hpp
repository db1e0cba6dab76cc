#pragma once

// File: ArrayOperations.hpp
// What the shell's language does to host values besides calling the host: joining
// them in brackets, indexing them from 1, and the unary signs.
//
// Example:
//   std::vector<HostArrayPtr> parts;  // 1, [2 3]
//   HostArrayPtr row = ArrayOperations::concatenate(std::move(parts));      // [1 2 3]
//   HostArrayPtr second = ArrayOperations::index(*row, {ArrayOperations::subscriptOf(*two)});

#include <cstddef>
#include <vector>

#include "host/HostArray.hpp"

class ArrayOperations {
 public:
  // One subscript of an index: every position of its dimension, or these 1-based ones.
  struct Subscript {
    bool all = false;
    std::vector<std::size_t> positions;
  };

  // The positions a numeric value names. Raises "CALVEX:badIndex" unless every element
  // is a positive whole number.
  static Subscript subscriptOf(const HostArray& value);

  // Returns a new array of the elements the subscripts select, of the value's class;
  // the caller owns it. No subscript gives a copy; one indexes the elements in
  // column-major order (a row's result is a row, a column's or ':''s a column); two
  // select rows and columns. Handle results are always rows. Raises "CALVEX:badIndex"
  // for a position past the end and for more than two subscripts.
  static HostArrayPtr index(const HostArray& value, const std::vector<Subscript>& subscripts);

  // Returns a copy of the one cell element that the subscripts select ([] for an unset
  // one). Raises "CALVEX:badIndex" when the value is not a cell or the subscripts do not
  // select exactly one element.
  static HostArrayPtr cellContent(const HostArray& value, const std::vector<Subscript>& subscripts);

  // Joins the values, left to right, into one row: numbers and logicals into doubles
  // (logicals alone stay logical), texts into one text, cells into a cell row, handles
  // into a handle row. Empty values add nothing; no values give [] (0x0 double). Raises
  // "CALVEX:concatenation" for a value with more than one row or classes that do not join.
  static HostArrayPtr concatenate(std::vector<HostArrayPtr> values);

  // -x and +x of a number, logical or int32 array, as doubles (int32 stays int32).
  // Raises "CALVEX:invalidArgument" for other classes.
  static HostArrayPtr negate(const HostArray& value);
  static HostArrayPtr plus(const HostArray& value);
};
