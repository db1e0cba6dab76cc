// Indexing, joining and signs of host values in the shell's language.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "host/HostArray.hpp"
#include "host/UDClass.hpp"
#include "host/UDInterface.hpp"
#include "host/interpreter/ArrayOperations.hpp"
#include "host/interpreter/ValueDisplay.hpp"
#include "tests/support/ErrorCapture.hpp"

namespace {

using Subscript = ArrayOperations::Subscript;
using Subscripts = std::vector<Subscript>;

Subscript at(std::vector<std::size_t> positions) { return Subscript{false, std::move(positions)}; }
const Subscript kAll{true, {}};

// "MxN class: value"
std::string describe(const HostArray& value) {
  return std::to_string(value.getM()) + "x" + std::to_string(value.getN()) + " " +
         value.getClassName() + ": " + ValueDisplay::formatInline(value);
}

HostArrayPtr matrix(std::size_t m, std::size_t n, std::vector<double> columnMajor) {
  HostArrayPtr value(HostArray::createDoubleMatrix(m, n));
  for (std::size_t i = 0; i < columnMajor.size(); ++i) value->getPr()[i] = columnMajor[i];
  return value;
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
  for (std::size_t i = 0; i < values.size(); ++i) array->getLogicals()[i] = values[i];
  return array;
}

HostArrayPtr int32s(std::vector<std::int32_t> values) {
  HostArrayPtr array(HostArray::createInt32Matrix(1, values.size()));
  for (std::size_t i = 0; i < values.size(); ++i) array->getInt32s()[i] = values[i];
  return array;
}

template <typename... Values>
std::vector<HostArrayPtr> list(Values... values) {
  std::vector<HostArrayPtr> parts;
  (parts.push_back(std::move(values)), ...);
  return parts;
}

class ArrayOperationsTest : public testing::Test {
 protected:
  ArrayOperationsTest() {
    cls_.setName("Thing", false);
    first_.reset(new UDInterface(&payload_, &cls_, nullptr));
    second_.reset(new UDInterface(&payload_, &cls_, nullptr));
  }
  HostArrayPtr both() const {
    return HostArrayPtr(HostArray::createHandleArray({first_.get(), second_.get()}));
  }

  int payload_ = 0;
  UDClass cls_;
  UDInterfacePtr first_, second_;
};

TEST_F(ArrayOperationsTest, IndexingSelectsElementsOfTheValuesClass) {
  HostArrayPtr row = matrix(1, 3, {10, 20, 30});
  HostArrayPtr column = matrix(3, 1, {10, 20, 30});
  HostArrayPtr grid = matrix(2, 3, {1, 4, 2, 5, 3, 6});
  HostArrayPtr names = texts({"mole", "liter"});
  HostArrayPtr cell = cellOf({"a", "b", "c"});
  HostArrayPtr flags = logicals({true, false});
  HostArrayPtr ints = int32s({7, 8, 9});
  HostArrayPtr objects = both();
  struct Case {
    const char* name;
    const HostArray& value;
    Subscripts subscripts;
    const char* expected;
  } cases[] = {
      {"no subscript copies", *row, {}, "1x3 double: [10 20 30]"},
      {"one element", *row, {at({2})}, "1x1 double: 20"},
      {"row keeps rows", *row, {at({3, 1})}, "1x2 double: [30 10]"},
      {"colon gives a column", *row, {kAll}, "3x1 double: [10; 20; 30]"},
      {"column keeps columns", *column, {at({2, 3})}, "2x1 double: [20; 30]"},
      {"linear in a matrix", *grid, {at({4})}, "1x1 double: 5"},
      {"a row of a matrix", *grid, {at({2}), kAll}, "1x3 double: [4 5 6]"},
      {"a column of a matrix", *grid, {kAll, at({3})}, "2x1 double: [3; 6]"},
      {"rows and columns", *grid, {at({2, 1}), at({1, 3})}, "2x2 double: [4 6; 1 3]"},
      {"a row of texts", *names, {at({2}), kAll}, "1x5 char: 'liter'"},
      {"padding stays", *names, {at({1}), kAll}, "1x5 char: 'mole '"},
      {"a column of texts", *names, {kAll, at({1})}, "2x1 char: ['m'; 'l']"},
      {"cells", *cell, {at({3, 1})}, "1x2 cell: {'c', 'a'}"},
      {"logicals", *flags, {at({2})}, "1x1 logical: false"},
      {"int32s", *ints, {at({3, 3})}, "1x2 int32: [9 9]"},
      {"handles stay a row", *objects, {kAll}, "1x2 handle: [1x2 Thing]"},
      {"one handle", *objects, {at({2})}, "1x1 handle: [1x1 Thing]"},
      {"nothing selected", *row, {at({})}, "1x0 double: []"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(describe(*ArrayOperations::index(c.value, c.subscripts)), c.expected);
  }
  EXPECT_EQ(ArrayOperations::index(*objects, {at({2})})->getHandle(0), second_.get());
}

TEST_F(ArrayOperationsTest, IndexingRefusesPositionsOutsideTheValue) {
  HostArrayPtr row = matrix(1, 3, {10, 20, 30});
  HostArrayPtr grid = matrix(2, 3, {1, 4, 2, 5, 3, 6});
  struct Case {
    const HostArray& value;
    Subscripts subscripts;
    const char* message;
  } cases[] = {
      {*row, {at({4})}, "Index exceeds the number of array elements (3)."},
      {*row, {at({1, 7})}, "Index exceeds the number of array elements (3)."},
      {*grid, {at({3}), kAll}, "Index in position 1 exceeds the array bounds (2)."},
      {*grid, {kAll, at({4})}, "Index in position 2 exceeds the array bounds (3)."},
      {*grid, {kAll, kAll, kAll}, "Only one or two subscripts are supported."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
    EXPECT_UNIT_ERROR(ArrayOperations::index(c.value, c.subscripts), "CALVEX:badIndex", c.message);
  }
}

TEST_F(ArrayOperationsTest, SubscriptsArePositiveWholeNumbers) {
  EXPECT_EQ(ArrayOperations::subscriptOf(*matrix(1, 3, {2, 1, 2})).positions,
            (std::vector<std::size_t>{2, 1, 2}));
  EXPECT_EQ(ArrayOperations::subscriptOf(*int32s({5})).positions, std::vector<std::size_t>{5});
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  for (double bad : {0.0, -1.0, 1.5, nan, inf, 1e300}) {
    SCOPED_TRACE(bad);
    EXPECT_UNIT_ERROR(ArrayOperations::subscriptOf(*matrix(1, 1, {bad})), "CALVEX:badIndex",
                      "Array indices must be positive integers.");
  }
  EXPECT_UNIT_ERROR(ArrayOperations::subscriptOf(*texts({"a"})), "CALVEX:badIndex",
                    "Array indices must be positive integers, not char.");
  EXPECT_UNIT_ERROR(ArrayOperations::subscriptOf(*logicals({true})), "CALVEX:badIndex",
                    "Array indices must be positive integers, not logical.");
}

TEST_F(ArrayOperationsTest, BracesTakeOneCellElementOut) {
  HostArrayPtr cell = cellOf({"a", "b"});
  cell->setCell(1, nullptr);
  EXPECT_EQ(describe(*ArrayOperations::cellContent(*cell, {at({1})})), "1x1 char: 'a'");
  EXPECT_EQ(describe(*ArrayOperations::cellContent(*cell, {at({2})})), "0x0 double: []");
  EXPECT_UNIT_ERROR(ArrayOperations::cellContent(*cell, {kAll}), "CALVEX:badIndex",
                    "Brace indexing must select exactly one element.");
  EXPECT_UNIT_ERROR(ArrayOperations::cellContent(*matrix(1, 1, {1}), {at({1})}), "CALVEX:badIndex",
                    "Brace indexing is only for cells, not for double.");
}

TEST_F(ArrayOperationsTest, BracketsJoinRowsOfOneKind) {
  struct Case {
    const char* name;
    std::function<std::vector<HostArrayPtr>()> parts;
    const char* expected;
  } cases[] = {
      {"nothing", [] { return std::vector<HostArrayPtr>{}; }, "0x0 double: []"},
      {"numbers and rows",
       [] {
         return list(matrix(0, 0, {}), matrix(1, 1, {1}), matrix(1, 2, {2, 3}));
       },
       "1x3 double: [1 2 3]"},
      {"logicals stay logical",
       [] {
         return list(logicals({true}), logicals({false, true}));
       },
       "1x3 logical: [true false true]"},
      {"logicals with numbers are numbers", [] { return list(logicals({true}), int32s({4})); },
       "1x2 double: [1 4]"},
      {"one int32 becomes a double", [] { return list(int32s({4})); }, "1x1 double: 4"},
      {"texts", [] { return list(texts({"furl"}), texts({""}), texts({"ong"})); },
       "1x7 char: 'furlong'"},
      {"cells",
       [] {
         return list(cellOf({"a"}), cellOf({"b", "c"}));
       },
       "1x3 cell: {'a', 'b', 'c'}"},
      {"handles",
       [this] { return list(both(), HostArrayPtr(HostArray::createHandleArray({first_.get()}))); },
       "1x3 handle: [1x3 Thing]"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(describe(*ArrayOperations::concatenate(c.parts())), c.expected);
  }
}

TEST_F(ArrayOperationsTest, BracketsRefuseWhatDoesNotJoin) {
  struct Case {
    const char* name;
    std::function<std::vector<HostArrayPtr>()> parts;
    const char* message;
  } cases[] = {
      {"text and number", [] { return list(texts({"a"}), matrix(1, 1, {1})); },
       "Values of classes 'char' and 'double' cannot be joined."},
      {"handle and number", [this] { return list(both(), logicals({true})); },
       "Values of classes 'handle' and 'logical' cannot be joined."},
      {"two rows",
       [] {
         return list(texts({"mole", "liter"}));
       },
       "Brackets join rows; a value with more than one row cannot join."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_UNIT_ERROR(ArrayOperations::concatenate(c.parts()), "CALVEX:concatenation", c.message);
  }
}

TEST_F(ArrayOperationsTest, SignsApplyToNumbersOnly) {
  EXPECT_EQ(describe(*ArrayOperations::negate(*matrix(1, 2, {1, -2}))), "1x2 double: [-1 2]");
  EXPECT_EQ(describe(*ArrayOperations::negate(*logicals({true}))), "1x1 double: -1");
  EXPECT_EQ(describe(*ArrayOperations::plus(*logicals({true}))), "1x1 double: 1");
  EXPECT_EQ(describe(*ArrayOperations::negate(*int32s({INT32_MIN, 5}))),
            "1x2 int32: [2147483647 -5]");
  EXPECT_UNIT_ERROR(ArrayOperations::negate(*texts({"a"})), "CALVEX:invalidArgument",
                    "Unary minus is not defined for values of class 'char'.");
  EXPECT_UNIT_ERROR(ArrayOperations::plus(*cellOf({})), "CALVEX:invalidArgument",
                    "Unary plus is not defined for values of class 'cell'.");
}

}  // namespace
