// How the shell shows values. Scalars, texts, cells, handles (through their class's display
// method too) and the classes' property lists are in the transcripts; what only a test can make
// (matrices, cubes, int32, nested cells) is here.

#include <gtest/gtest.h>

#include <string>

#include "host/HostArray.hpp"
#include "host/interpreter/ValueDisplay.hpp"
#include "tests/support/HostCalls.hpp"

namespace {

TEST(ValueDisplay, NumbersShowFifteenDigitsAtMostAndSeventeenOnRequest) {
  struct Case {
    double value;
    const char* shown;
    const char* exact;
  } cases[] = {
      {0.1 + 0.2, "0.3", "0.30000000000000004"},
      {-0.0, "0", "0"},
      {123456789012345, "123456789012345", "123456789012345"},
      {1e15, "1e+15", "1e+15"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.exact);
    EXPECT_EQ(ValueDisplay::formatNumber(c.value), c.shown);
    EXPECT_EQ(ValueDisplay::formatNumberExact(c.value), c.exact);
  }
}

TEST(ValueDisplay, ValuesOnOneLine) {
  const char* rows[] = {"a", "bc"};
  HostArrayPtr nested(HostArray::createCellMatrix(1, 3));
  nested->setCell(0, HostArray::createDoubleScalar(1));
  nested->setCell(1, HostArray::createCellMatrix(1, 1));
  nested->getCell(1)->setCell(0, HostArray::createString("x"));
  std::size_t cube[3] = {1, 2, 2};
  struct Case {
    const char* name;
    HostArrayPtr value;
    const char* shown;
  } cases[] = {
      {"null text", HostArrayPtr(HostArray::createString(nullptr)), "''"},
      {"char matrix", HostArrayPtr(HostArray::createCharMatrixFromStrings(2, rows)),
       "['a '; 'bc']"},
      {"logical cube", HostArrayPtr(HostArray::createLogicalArray(3, cube)), "[1x2x2 logical]"},
      {"int32 row", HostArrayPtr(HostArray::createInt32Matrix(1, 2)), "[0 0]"},
      {"empty cell", HostArrayPtr(HostArray::createCellMatrix(0, 0)), "{}"},
      {"nested cell with an empty element", std::move(nested), "{1, {'x'}, []}"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(ValueDisplay::formatInline(*c.value), c.shown);
  }
  HostArrayPtr grid(row({1, 2, 3, 4}, 2));
  ConsoleCapture console;
  ValueDisplay::display("x", *grid);
  ValueDisplay::disp(*grid);
  EXPECT_EQ(console.text(), "x = [1 3; 2 4]\n1 3\n2 4\n");
}

}  // namespace
