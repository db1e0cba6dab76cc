// Host arrays and vectors. The transcripts make and copy every kind the shell shows (and the
// sanitizer build checks their ownership there); what no statement makes is here.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "host/HostArray.hpp"
#include "host/StringVector.hpp"
#include "host/Vector.hpp"

namespace {

TEST(HostArray, ShapesNoStatementMakesStartAtZero) {
  const std::size_t cube[] = {2, 3, 4};
  HostArrayPtr logicals(HostArray::createLogicalArray(3, cube));  // columns fold: 2x12
  EXPECT_EQ(logicals->getM(), 2u);
  EXPECT_EQ(logicals->getN(), 12u);
  EXPECT_EQ(logicals->getNumberOfDimensions(), 3u);
  for (std::size_t i = 0; i < 24; ++i) EXPECT_FALSE(logicals->getLogicals()[i]);
  HostArrayPtr column(HostArray::createLogicalArray(1, cube));  // one dimension: a column
  EXPECT_EQ(column->getN(), 1u);
  HostArrayPtr ints(HostArray::createInt32Matrix(3, 2));
  EXPECT_EQ(ints->getClassId(), HostArray::ClassId::Int32);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(ints->getInt32s()[i], 0);
  EXPECT_EQ(ints->getPr(), nullptr);
  HostArrayPtr none(HostArray::createCharMatrixFromStrings(0, nullptr));
  EXPECT_TRUE(none->isEmpty());
}

TEST(HostArray, CharMatrixPadsShorterRowsWithBlanks) {
  const char* const texts[] = {"m", "km", nullptr, "abc"};
  HostArrayPtr names(HostArray::createCharMatrixFromStrings(4, texts));
  const char* const rows[] = {"m  ", "km ", "   ", "abc"};
  for (std::size_t r = 0; r < 4; ++r) EXPECT_EQ(names->getStringRow(r), rows[r]);
  EXPECT_EQ(names->getString(), "m  km    abc");  // column-major
  EXPECT_THROW(names->getStringRow(4), std::out_of_range);
}

TEST(HostArray, IndexesOutOfRangeThrow) {
  HostArrayPtr cell(HostArray::createCellMatrix(1, 2));
  EXPECT_THROW(cell->setCell(2, HostArray::createDoubleScalar(2)), std::out_of_range);
  int a = 1, b = 2;
  Vector elements;
  elements.addElement(&a);
  elements.addElement(&b);
  elements.removeElementAt(0);
  EXPECT_EQ(elements.elementAt(0), &b);
  EXPECT_THROW(elements.elementAt(1), std::out_of_range);
  EXPECT_THROW(elements.removeElementAt(-1), std::out_of_range);
  StringVector names;
  names.addElement(nullptr);  // kept as an empty text
  EXPECT_STREQ(names.elementAt(0), "");
  EXPECT_THROW(names.elementAt(1), std::out_of_range);
}

}  // namespace
