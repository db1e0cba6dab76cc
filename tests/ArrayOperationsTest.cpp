// Indexing, joining and signs of host values. Rows, texts, cells, handles and the errors a
// statement meets are in the transcripts; matrices, int32s and the edge values are here.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "host/HostArray.hpp"
#include "host/interpreter/ArrayOperations.hpp"
#include "host/interpreter/ValueDisplay.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"

namespace {

using Subscript = ArrayOperations::Subscript;
using Subscripts = std::vector<Subscript>;
using Parts = std::vector<HostArrayPtr>;

Subscript at(std::vector<std::size_t> positions) { return Subscript{false, std::move(positions)}; }
const Subscript kAll{true, {}};

// "MxN class: value", or "id: message" of what it raised.
std::string outcome(const std::function<HostArrayPtr()>& make) {
  HostArrayPtr value;
  if (auto error = captureError([&] { value = make(); }))
    return error->identifier + ": " + error->message;
  return std::to_string(value->getM()) + "x" + std::to_string(value->getN()) + " " +
         value->getClassName() + ": " + ValueDisplay::formatInline(*value);
}

HostArrayPtr texts(std::vector<const char*> rows) {
  return HostArrayPtr(HostArray::createCharMatrixFromStrings(rows.size(), rows.data()));
}
HostArrayPtr cellOf(std::vector<const char*> elements) {
  HostArrayPtr cell(HostArray::createCellMatrix(1, elements.size()));
  for (std::size_t i = 0; i < elements.size(); ++i)
    cell->setCell(i, HostArray::createString(elements[i]));
  return cell;
}
HostArrayPtr logicals(std::vector<bool> values) {
  std::size_t dims[2] = {1, values.size()};
  HostArrayPtr array(HostArray::createLogicalArray(2, dims));
  std::copy(values.begin(), values.end(), array->getLogicals());
  return array;
}
HostArrayPtr int32s(std::vector<std::int32_t> values) {
  HostArrayPtr array(HostArray::createInt32Matrix(1, values.size()));
  std::copy(values.begin(), values.end(), array->getInt32s());
  return array;
}
template <typename... Values>
Parts list(Values... values) {
  Parts parts;
  (parts.push_back(std::move(values)), ...);
  return parts;
}

TEST(ArrayOperations, Indexing) {
  HostArrayPtr column = row({10, 20, 30}, 3), grid = row({1, 4, 2, 5, 3, 6}, 2);
  HostArrayPtr ints = int32s({7, 8, 9});
  struct Case {
    const HostArray& value;
    Subscripts subscripts;
    const char* expected;
  } cases[] = {
      {*column, {at({2, 3})}, "2x1 double: [20; 30]"},  // a column keeps its shape
      {*grid, {at({2}), kAll}, "1x3 double: [4 5 6]"},
      {*grid, {kAll, at({3})}, "2x1 double: [3; 6]"},
      {*grid, {at({2, 1}), at({1, 3})}, "2x2 double: [4 6; 1 3]"},
      {*ints, {at({3, 3})}, "1x2 int32: [9 9]"},
      {*grid, {at({})}, "1x0 double: []"},
      {*column, {at({1, 7})}, "CALVEX:badIndex: Index exceeds the number of array elements (3)."},
      {*grid,
       {at({3}), kAll},
       "CALVEX:badIndex: Index in position 1 exceeds the array bounds (2)."},
      {*grid,
       {kAll, at({4})},
       "CALVEX:badIndex: Index in position 2 exceeds the array bounds (3)."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
    EXPECT_EQ(outcome([&] { return ArrayOperations::index(c.value, c.subscripts); }), c.expected);
  }
}

TEST(ArrayOperations, SubscriptsArePositiveWholeNumbers) {
  EXPECT_EQ(ArrayOperations::subscriptOf(*row({2, 1, 2})).positions,
            (std::vector<std::size_t>{2, 1, 2}));
  EXPECT_EQ(ArrayOperations::subscriptOf(*int32s({5})).positions, std::vector<std::size_t>{5});
  for (double bad : {-1.0, std::numeric_limits<double>::quiet_NaN(),
                     std::numeric_limits<double>::infinity(), 1e300}) {
    SCOPED_TRACE(bad);
    EXPECT_UNIT_ERROR(ArrayOperations::subscriptOf(*row({bad})), "CALVEX:badIndex",
                      "Array indices must be positive integers.");
  }
}

TEST(ArrayOperations, BracesTakeOneCellElementOut) {
  HostArrayPtr cell = cellOf({"a", "b"});
  cell->setCell(1, nullptr);
  EXPECT_EQ(outcome([&] { return ArrayOperations::cellContent(*cell, {at({2})}); }),
            "0x0 double: []");
  EXPECT_UNIT_ERROR(ArrayOperations::cellContent(*cell, {kAll}), "CALVEX:badIndex",
                    "Brace indexing must select exactly one element.");
}

TEST(ArrayOperations, BracketsJoinRowsOfOneKind) {
  struct Case {
    const char* name;
    Parts parts;
    const char* expected;
  } cases[] = {
      {"empties vanish", list(HostArrayPtr(HostArray::createDoubleMatrix(0, 0)), row({1, 2})),
       "1x2 double: [1 2]"},
      {"logicals with numbers", list(logicals({true}), int32s({4})), "1x2 double: [1 4]"},
      {"one int32", list(int32s({4})), "1x1 double: 4"},
      {"cells", list(cellOf({"a"}), cellOf({"b", "c"})), "1x3 cell: {'a', 'b', 'c'}"},
      {"two rows", list(texts({"mole", "liter"})),
       "CALVEX:concatenation: Brackets join rows; a value with more than one row cannot join."},
  };
  for (Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(outcome([&] { return ArrayOperations::concatenate(std::move(c.parts)); }),
              c.expected);
  }
}

TEST(ArrayOperations, SignsApplyToNumbersOnly) {
  HostArrayPtr yes = logicals({true}), none = cellOf({}), extremes = int32s({INT32_MIN, 5});
  struct Case {
    const HostArray& value;
    bool minus;
    const char* expected;
  } cases[] = {
      {*yes, false, "1x1 double: 1"},
      {*extremes, true, "1x2 int32: [2147483647 -5]"},  // saturated
      {*none, false,
       "CALVEX:invalidArgument: Unary plus is not defined for values of class 'cell'."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.expected);
    EXPECT_EQ(outcome([&] {
                return c.minus ? ArrayOperations::negate(c.value) : ArrayOperations::plus(c.value);
              }),
              c.expected);
  }
}

}  // namespace
