// How the shell shows values: numbers, one-line forms, blocks, and objects.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "host/HostArray.hpp"
#include "host/UDDatabaseClient.hpp"
#include "host/interpreter/ValueDisplay.hpp"
#include "tests/support/HostCalls.hpp"

namespace {

std::string displayed(const char* name, const HostArray& value) {
  ConsoleCapture console;
  ValueDisplay::display(name, value);
  return console.text();
}

std::string disped(const HostArray& value) {
  ConsoleCapture console;
  ValueDisplay::disp(value);
  return console.text();
}

HostArrayPtr cellOf(std::vector<const char*> elements) {
  HostArrayPtr cell(HostArray::createCellMatrix(1, elements.size()));
  for (std::size_t i = 0; i < elements.size(); ++i)
    cell->setCell(i, HostArray::createString(elements[i]));
  return cell;
}

TEST(ValueDisplay, NumbersShowFifteenDigitsAtMostAndExactlyOnRequest) {
  const double inf = std::numeric_limits<double>::infinity();
  struct Case {
    double value;
    const char* shown;
    const char* exact;
  } cases[] = {
      {1609.3439999999998, "1609.344", "1609.3439999999998"},
      {0.1 + 0.2, "0.3", "0.30000000000000004"},
      {10, "10", "10"},
      {-40, "-40", "-40"},
      {-0.0, "0", "0"},
      {2.5e-3, "0.0025", "0.0025"},
      {1.0 / 3, "0.333333333333333", "0.3333333333333333"},
      {123456789012345, "123456789012345", "123456789012345"},
      {1e15, "1e+15", "1e+15"},
      {1e-300, "1e-300", "1e-300"},
      {inf, "Inf", "Inf"},
      {-inf, "-Inf", "-Inf"},
      {std::nan(""), "NaN", "NaN"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.exact);
    EXPECT_EQ(ValueDisplay::formatNumber(c.value), c.shown);
    EXPECT_EQ(ValueDisplay::formatNumberExact(c.value), c.exact);
  }
}

TEST(ValueDisplay, ValuesOnOneLine) {
  const char* rows[] = {"a", "bc"};
  HostArrayPtr names(HostArray::createCharMatrixFromStrings(2, rows));
  HostArrayPtr nested(HostArray::createCellMatrix(1, 3));
  nested->setCell(0, HostArray::createDoubleScalar(1));
  nested->setCell(1, cellOf({"x"}).release());
  std::size_t cube[3] = {1, 2, 2};
  struct Case {
    const char* name;
    HostArrayPtr value;
    const char* shown;
  } cases[] = {
      {"scalar", HostArrayPtr(HostArray::createDoubleScalar(7)), "7"},
      {"empty double", HostArrayPtr(HostArray::createDoubleMatrix(0, 0)), "[]"},
      {"text", HostArrayPtr(HostArray::createString("it's")), "'it's'"},
      {"empty text", HostArrayPtr(HostArray::createString("")), "''"},
      {"null text", HostArrayPtr(HostArray::createString(nullptr)), "''"},
      {"char matrix", std::move(names), "['a '; 'bc']"},
      {"logical", HostArrayPtr(HostArray::createLogicalScalar(true)), "true"},
      {"logical cube", HostArrayPtr(HostArray::createLogicalArray(3, cube)), "[1x2x2 logical]"},
      {"int32 row", HostArrayPtr(HostArray::createInt32Matrix(1, 2)), "[0 0]"},
      {"empty cell", HostArrayPtr(HostArray::createCellMatrix(0, 0)), "{}"},
      {"nested cell", std::move(nested), "{1, {'x'}, []}"},
      {"empty handle", HostArrayPtr(HostArray::createHandleArray({})), "[] (empty handle)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(ValueDisplay::formatInline(*c.value), c.shown);
  }
}

// Text rows, cells and disp are in the language transcript; matrices only come from here.
TEST(ValueDisplay, Matrices) {
  HostArrayPtr grid(HostArray::createDoubleMatrix(2, 2));
  for (int i = 0; i < 4; ++i) grid->getPr()[i] = i + 1;
  EXPECT_EQ(displayed("x", *grid), "x = [1 3; 2 4]\n");
  EXPECT_EQ(disped(*grid), "1 3\n2 4\n");
}

using ObjectDisplay = ModuleFixture;

TEST_F(ObjectDisplay, ClassesWithoutDisplayListTheirVisibleProperties) {
  UDInterface* system = construct("UnitSystem");
  set(system, "Name", text("lab"));
  EXPECT_EQ(displayed("s", *handles({system})),
            "s =\n"
            "  UnitSystem with properties:\n"
            "                     Name: 'lab'\n"
            "                 MassUnit: ''\n"
            "               AmountUnit: ''\n"
            "               LengthUnit: ''\n"
            "                 TimeUnit: ''\n"
            "                 TempUnit: ''\n"
            "              CurrentUnit: ''\n"
            "    LuminousIntensityUnit: ''\n");
  // CreatedQuantities is invisible.
  EXPECT_EQ(displayed("um", *handles({manager()})),
            "um =\n  UnitManager with no visible properties\n");
  EXPECT_EQ(displayed("two", *handles({system, system})), "two =\n  1x2 UnitSystem array\n");
  system->destroy(UDDatabaseClient::getInternalClient());
  EXPECT_EQ(displayed("s", *handles({system})), "s =\n  handle to a deleted UnitSystem object\n");
}

TEST_F(ObjectDisplay, ClassesWithDisplayShowThroughIt) {
  UDInterface* unit = construct("Unit");
  set(unit, "name", text("furlong"));
  set(unit, "composition", text("meter"));
  set(unit, "conversionfactor", num(201.168));
  std::string shown;
  {
    ConsoleCapture console;
    call(unit, "display", 0);
    shown = console.text();
  }
  EXPECT_EQ(displayed("u", *handles({unit})), "u =\n" + shown);
  EXPECT_NE(shown.find("furlong"), std::string::npos);
  EXPECT_EQ(disped(*handles({unit})), shown);
}

}  // namespace
