// Indexing, joining and signs of host values. What a statement reaches is in the language
// transcript; int32 values, which the shell never holds, and the empty cases are here.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/HostArray.hpp"
#include "host/interpreter/ArrayOperations.hpp"
#include "host/interpreter/ValueDisplay.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"

namespace {

using Subscript = ArrayOperations::Subscript;

Subscript at(std::vector<std::size_t> positions) { return Subscript{false, std::move(positions)}; }

// "MxN class: value".
std::string outcome(const HostArrayPtr& value) {
  return std::to_string(value->getM()) + "x" + std::to_string(value->getN()) + " " +
         value->getClassName() + ": " + ValueDisplay::formatInline(*value);
}

HostArrayPtr int32s(std::vector<std::int32_t> values) {
  HostArrayPtr array(HostArray::createInt32Matrix(1, values.size()));
  std::copy(values.begin(), values.end(), array->getInt32s());
  return array;
}

TEST(ArrayOperations, Int32sIndexJoinAndNegate) {
  HostArrayPtr ints = int32s({7, 8, 9});
  std::vector<HostArrayPtr> one;
  one.push_back(int32s({4}));
  struct Case {
    const char* name;
    std::function<HostArrayPtr()> make;
    const char* expected;
  } cases[] = {
      {"indexed",
       [&] {
         return ArrayOperations::index(*ints, {at({3, 3})});
       },
       "1x2 int32: [9 9]"},
      {"joined alone", [&] { return ArrayOperations::concatenate(std::move(one)); },
       "1x1 double: 4"},
      {"negated, saturating",
       [&] {
         return ArrayOperations::negate(*int32s({INT32_MIN, 5}));
       },
       "1x2 int32: [2147483647 -5]"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(outcome(c.make()), c.expected);
  }
  EXPECT_EQ(ArrayOperations::subscriptOf(*int32s({5})).positions, std::vector<std::size_t>{5});
}

TEST(ArrayOperations, EmptySelectionsAndEmptyCellElements) {
  EXPECT_EQ(outcome(ArrayOperations::index(*row({1, 4, 2, 5}, 2), {at({})})), "1x0 double: []");
  HostArrayPtr cell(HostArray::createCellMatrix(1, 2));
  cell->setCell(0, HostArray::createString("a"));
  EXPECT_EQ(outcome(ArrayOperations::cellContent(*cell, {at({2})})), "0x0 double: []");
}

}  // namespace
