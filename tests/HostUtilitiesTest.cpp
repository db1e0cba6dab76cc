#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "host/Console.hpp"
#include "host/MessageTable.hpp"
#include "host/Numeric.hpp"
#include "host/StringUtils.hpp"
#include "host/Warning.hpp"
#include "host/ZophError.hpp"
#include "tests/support/ErrorCapture.hpp"

namespace {

TEST(HostNumeric, EqualWithinRelativeTolerance) {
  struct Case {
    double a, b;
    bool equal;
  } cases[] = {
      {1.0, 1.0, true},
      {0.1 + 0.2, 0.3, true},
      {1e300, 1e300 * (1 + 2 * DBL_EPSILON), true},
      {1.0, 1.0 + 8 * DBL_EPSILON, false},
      {0.0, 1e-300, false},
      {0.0, -0.0, true},
      {std::nan(""), std::nan(""), false},
      {INFINITY, INFINITY, true},
      {INFINITY, 0.0, false},  // the relative tolerance is infinite too
      {INFINITY, 1e308, false},
      {-INFINITY, INFINITY, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.a << " vs " << c.b);
    EXPECT_EQ(utEqualWithinEps(c.a, c.b), c.equal);
    EXPECT_EQ(utEqualWithinEps(c.b, c.a), c.equal);
  }
}

TEST(HostNumeric, RoundsHalvesAwayFromZero) {
  EXPECT_EQ(utRound(2.5), 3.0);
  EXPECT_EQ(utRound(-2.5), -3.0);
  EXPECT_EQ(utRound(2.4999), 2.0);
  EXPECT_EQ(utRound(-0.4), -0.0);
}

TEST(HostNumeric, NumericStrings) {
  struct Case {
    const char* text;
    bool numeric;
  } cases[] = {
      {"2", true},        {"2.5", true},    {".5", true},        {"2.", true},     {"1e-3", true},
      {"-1E+3", true},    {" +7 ", true},   {"Inf", true},       {"-inf", true},   {"NaN", true},
      {"", false},        {" ", false},     {".", false},        {"e3", false},    {"1e", false},
      {"2*meter", false}, {"meter", false}, {"1 2", false},      {"0x10", false},  {"--1", false},
      {"(2)", false},     {"1.5.2", false}, {"Infinity", false}, {nullptr, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "<null>");
    EXPECT_EQ(isstrnumeric(c.text), c.numeric);
  }
}

TEST(HostNumeric, ReadsNumbers) {
  EXPECT_EQ(ut_strtod(utGetFpcContext(), "-1.5e3", nullptr, 0), -1500.0);
  EXPECT_TRUE(std::isnan(ut_strtod(utGetFpcContext(), nullptr, nullptr, 0)));
  EXPECT_TRUE(std::isinf(ut_strtod(utGetFpcContext(), "Inf", nullptr, 0)));
}

TEST(HostStrings, Identifiers) {
  struct Case {
    const char* name;
    bool valid;
  } cases[] = {
      {"meter", true},   {"pound_force", true}, {"m2", true},      {"Celsius", true},
      {"", false},       {"2meter", false},     {"_meter", false}, {"me ter", false},
      {"me-ter", false}, {"mètre", false},      {nullptr, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name ? c.name : "<null>");
    EXPECT_EQ(isValidCALVEXIdentifier(c.name), c.valid);
  }
  EXPECT_TRUE(isValidCALVEXIdentifier(std::string(63, 'a')));
  EXPECT_FALSE(isValidCALVEXIdentifier(std::string(64, 'a')));
  EXPECT_FALSE(isValidCALVEXIdentifier(std::string("ab\0c", 4)));
}

TEST(HostStrings, TrimsWhiteSpaceAtBothEnds) {
  EXPECT_EQ(utTrim("  nano2 "), "nano2");
  EXPECT_EQ(utTrim("\t a b \n"), "a b");
  EXPECT_EQ(utTrim(" \t "), "");
  EXPECT_EQ(utTrim(""), "");
}

const std::uint32_t kTestIds[] = {0x7F0001, 0x7F0002, 0x7F0003};
const char* const kTestKeys[] = {"ONE", "TWO", "THREE"};
const char* const kTestTexts[] = {"Value %d of '%s'.", "Plain.", "Named '%s'."};
const ut_message_table kTestTable = {3, 0x7F, kTestIds, kTestKeys, kTestTexts, "", {}};

TEST(HostErrors, RaiseCarriesIdentifierAndFormattedText) {
  ut_mem_add_primary_message_table(utGetMemoryContext(), &kTestTable);
  EXPECT_UNIT_ERROR(zoph_error("Test:One", 0x7F0001, 3, "x"), "Test:One", "Value 3 of 'x'.");
  EXPECT_UNIT_ERROR(zoph_error_str("Test:Two", 0x7F0002, std::string("ignored")), "Test:Two",
                    "Plain.");
  EXPECT_UNIT_ERROR(zoph_error("Test:Missing", 0x7F0009), "Test:Missing",
                    "Unknown message id 0x7F0009.");
}

TEST(HostWarnings, DefaultHandlerPrintsToConsoleAndRecordsLastWarning) {
  ut_mem_add_primary_message_table(utGetMemoryContext(), &kTestTable);
  std::string printed;
  ConsoleSink previous = utSetConsoleSink([&](const std::string& text) { printed += text; });
  ut_warning_id(utGetWarningContext(), "Test:Warn", 0x7F0001, 1, "y");
  utSetConsoleSink(previous);
  EXPECT_EQ(printed, "Warning: Value 1 of 'y'.\n");
  EXPECT_EQ(utLastWarningIdentifier(), "Test:Warn");
  EXPECT_EQ(utLastWarningText(), "Value 1 of 'y'.");
}

TEST(HostWarnings, ATextArgumentIsFormattedWhenRead) {
  ut_mem_add_primary_message_table(utGetMemoryContext(), &kTestTable);
  WarningHandler previous = utSetWarningHandler([](const std::string&, const WarningText&) {});
  ut_warning_id(utGetWarningContext(), "Test:Warn", 0x7F0001, 1, "y");
  ut_warning_id_str(utGetWarningContext(), "Test:Named", 0x7F0003, "z");
  EXPECT_EQ(utLastWarningText(), "Named 'z'.");
  ut_warning_id_str(utGetWarningContext(), "Test:Named", 0x7F0003, "w");
  EXPECT_EQ(utLastWarningText(), "Named 'w'.");
  utSetWarningHandler(previous);
  WarningCapture warnings;
  ut_warning_id_str(utGetWarningContext(), "Test:Named", 0x7F0003, "v");
  EXPECT_EQ(warnings.texts(), std::vector<std::string>{"Named 'v'."});
}

TEST(HostWarnings, CaptureSeesIdentifierInsteadOfPrinting) {
  ut_mem_add_primary_message_table(utGetMemoryContext(), &kTestTable);
  std::string printed;
  ConsoleSink previous = utSetConsoleSink([&](const std::string& text) { printed += text; });
  {
    WarningCapture warnings;
    ut_warning_id(utGetWarningContext(), "Test:Warn", 0x7F0002);
    EXPECT_EQ(warnings.identifiers(), std::vector<std::string>{"Test:Warn"});
  }
  utSetConsoleSink(previous);
  EXPECT_EQ(printed, "");
}

}  // namespace
