#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/HostArray.hpp"
#include "host/StringVector.hpp"
#include "host/UDClass.hpp"
#include "host/UDInterface.hpp"
#include "host/Vector.hpp"

namespace {

using ClassId = HostArray::ClassId;

TEST(HostArray, CreatorsGiveClassShapeAndZeros) {
  const std::size_t cube[] = {2, 3, 4};
  struct Case {
    const char* name;
    std::function<HostArray*()> create;
    ClassId classId;
    std::size_t m, n, dims;
  } cases[] = {
      {"empty string", [] { return HostArray::createString(""); }, ClassId::Char, 1, 0, 2},
      {"null string", [] { return HostArray::createString(nullptr); }, ClassId::Char, 0, 0, 2},
      {"no strings", [] { return HostArray::createCharMatrixFromStrings(0, nullptr); },
       ClassId::Char, 0, 0, 2},
      {"logical 3-D: columns fold", [&] { return HostArray::createLogicalArray(3, cube); },
       ClassId::Logical, 2, 12, 3},
      {"logical 1-D: a column", [&] { return HostArray::createLogicalArray(1, cube); },
       ClassId::Logical, 2, 1, 2},
      {"int32", [] { return HostArray::createInt32Matrix(3, 2); }, ClassId::Int32, 3, 2, 2},
      {"double", [] { return HostArray::createDoubleMatrix(2, 3); }, ClassId::Double, 2, 3, 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    HostArrayPtr array(c.create());
    EXPECT_EQ(array->getClassId(), c.classId);
    EXPECT_EQ(array->getM(), c.m);
    EXPECT_EQ(array->getN(), c.n);
    EXPECT_EQ(array->getNumberOfDimensions(), c.dims);
    EXPECT_EQ(array->isEmpty(), c.m * c.n == 0);
    for (std::size_t i = 0; i < c.m * c.n; ++i) {
      const double value = c.classId == ClassId::Logical ? array->getLogicals()[i]
                           : c.classId == ClassId::Int32 ? array->getInt32s()[i]
                                                         : array->getPr()[i];
      EXPECT_EQ(value, 0.0);
    }
  }
}

TEST(HostArray, CharMatrixPadsShorterRowsWithBlanks) {
  const char* const texts[] = {"m", "km", nullptr, "abc"};
  HostArrayPtr names(HostArray::createCharMatrixFromStrings(4, texts));
  ASSERT_EQ(names->getN(), 3u);
  const char* const rows[] = {"m  ", "km ", "   ", "abc"};
  for (std::size_t r = 0; r < 4; ++r) EXPECT_EQ(names->getStringRow(r), rows[r]);
  EXPECT_EQ(names->getString(), "m  km    abc");  // column-major
  EXPECT_THROW(names->getStringRow(4), std::out_of_range);
  EXPECT_EQ(HostArrayPtr(HostArray::createDoubleScalar(1))->getString(), "");
}

// Cells own their elements (a replaced one is freed) and copy them deeply.
TEST(HostArray, CellsOwnTheirElementsAndCopiesAreDeep) {
  HostArrayPtr cell(HostArray::createCellMatrix(1, 2));
  EXPECT_EQ(cell->getCell(1), nullptr);
  cell->setCell(0, HostArray::createString("old"));
  cell->setCell(0, HostArray::createString("new"));
  cell->setCell(1, HostArray::createDoubleScalar(1));
  EXPECT_THROW(cell->setCell(2, HostArray::createDoubleScalar(2)), std::out_of_range);
  HostArrayPtr copy(cell->duplicate());
  cell->getCell(1)->getPr()[0] = 5;
  cell->setCell(0, nullptr);
  EXPECT_EQ(copy->getCell(0)->getString(), "new");
  EXPECT_EQ(copy->getCell(1)->getPr()[0], 1);
}

// A handle array, and each copy of it, holds a reference of its own to every object.
TEST(HostArray, HandleArraysHoldTheirOwnReferences) {
  struct CountingClass : UDClass {
    void destroyObject(UDInterface*) override { ++destroyed; }
    int destroyed = 0;
  } cls;
  int library = 0;
  UDInterface* first = new UDInterface(&library, &cls, nullptr);
  UDInterface* second = new UDInterface(&library, &cls, nullptr);
  HostArrayPtr handles(HostArray::createHandleArray({first, second}));
  first->release();
  second->release();
  EXPECT_EQ(handles->getM(), 1u);
  EXPECT_EQ(handles->getHandle(1), second);
  HostArrayPtr copy(handles->duplicate());
  handles.reset();
  EXPECT_EQ(cls.destroyed, 0);
  copy.reset();
  EXPECT_EQ(cls.destroyed, 2);
}

TEST(HostVectors, VectorKeepsOrderAndStringVectorKeepsCopies) {
  int a = 1, b = 2, c = 3;
  Vector elements;
  for (int* element : {&a, &b, &c}) elements.addElement(element);
  elements.removeElementAt(1);
  ASSERT_EQ(elements.size(), 2);
  EXPECT_EQ(elements.elementAt(1), &c);
  EXPECT_THROW(elements.elementAt(2), std::out_of_range);
  EXPECT_THROW(elements.removeElementAt(-1), std::out_of_range);

  char buffer[] = "meter";
  StringVector names;
  names.addElement(buffer);
  names.addElement(nullptr);
  buffer[0] = 'p';
  EXPECT_STREQ(names.elementAt(0), "meter");
  EXPECT_STREQ(names.elementAt(1), "");
  EXPECT_THROW(names.elementAt(2), std::out_of_range);
}

}  // namespace
