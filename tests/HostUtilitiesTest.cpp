#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/Console.hpp"
#include "host/DebugQuitException.hpp"
#include "host/FailureReport.hpp"
#include "host/InterruptException.hpp"
#include "host/MessageTable.hpp"
#include "host/Numeric.hpp"
#include "host/StringUtils.hpp"
#include "host/UserException.hpp"
#include "host/Warning.hpp"
#include "host/ZophError.hpp"
#include "tests/support/ErrorCapture.hpp"

namespace {

TEST(HostNumeric, EqualWithinRelativeTolerance) {
  struct Case {
    double a, b;
    bool equal;
  } cases[] = {
      {0.1 + 0.2, 0.3, true},
      {1e300, 1e300 * (1 + 2 * DBL_EPSILON), true},
      {1.0, 1.0 + 8 * DBL_EPSILON, false},
      {0.0, 1e-300, false},
      {0.0, -0.0, true},
      {std::nan(""), std::nan(""), false},
      {INFINITY, INFINITY, true},
      {INFINITY, 0.0, false},  // the relative tolerance is infinite too
      {-INFINITY, INFINITY, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.a << " vs " << c.b);
    EXPECT_EQ(utEqualWithinEps(c.a, c.b), c.equal);
    EXPECT_EQ(utEqualWithinEps(c.b, c.a), c.equal);
  }
}

TEST(HostNumeric, RoundsHalvesAwayFromZero) {
  const std::pair<double, double> halves[] = {{2.5, 3.0}, {-2.5, -3.0}, {2.4999, 2.0}};
  for (auto [value, rounded] : halves) EXPECT_EQ(utRound(value), rounded) << value;
}

TEST(HostStrings, NumericTextsAndIdentifiers) {
  for (const char* numeric : {"2", ".5", "2.", "-1E+3", " +7 ", "Inf", "-inf", "NaN"})
    EXPECT_TRUE(isstrnumeric(numeric)) << numeric;
  for (const char* other :
       {"", " ", ".", "e3", "1e", "2*meter", "1 2", "0x10", "--1", "(2)", "1.5.2", "Infinity"})
    EXPECT_FALSE(isstrnumeric(other)) << other;
  EXPECT_FALSE(isstrnumeric(nullptr));

  for (const char* name : {"meter", "pound_force", "m2", "Celsius"})
    EXPECT_TRUE(isValidCALVEXIdentifier(name)) << name;
  for (const char* name : {"", "2meter", "_meter", "me ter", "me-ter", "mètre"})
    EXPECT_FALSE(isValidCALVEXIdentifier(name)) << name;
  EXPECT_FALSE(isValidCALVEXIdentifier(nullptr));
  EXPECT_TRUE(isValidCALVEXIdentifier(std::string(63, 'a')));
  EXPECT_FALSE(isValidCALVEXIdentifier(std::string(64, 'a')));
  EXPECT_FALSE(isValidCALVEXIdentifier(std::string("ab\0c", 4)));
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

TEST(HostWarnings, PrintedByDefaultCapturedInsteadAndTheLastOneRecorded) {
  ut_mem_add_primary_message_table(utGetMemoryContext(), &kTestTable);
  std::string printed;
  ConsoleSink previous = utSetConsoleSink([&](const std::string& text) { printed += text; });
  ut_warning_id(utGetWarningContext(), "Test:Warn", 0x7F0001, 1, "y");
  EXPECT_EQ(printed, "Warning: Value 1 of 'y'.\n");
  EXPECT_EQ(utLastWarningIdentifier(), "Test:Warn");
  EXPECT_EQ(utLastWarningText(), "Value 1 of 'y'.");
  {
    WarningCapture warnings;
    ut_warning_id(utGetWarningContext(), "Test:Warn2", 0x7F0002);
    ut_warning_id_str(utGetWarningContext(), "Test:Named", 0x7F0003, "v");
    EXPECT_EQ(warnings.identifiers(), (std::vector<std::string>{"Test:Warn2", "Test:Named"}));
    EXPECT_EQ(warnings.texts(), (std::vector<std::string>{"Plain.", "Named 'v'."}));
  }
  utSetConsoleSink(previous);
  EXPECT_EQ(printed, "Warning: Value 1 of 'y'.\n");
}

// The last warning's text follows each warning, also when the handler never formatted it.
TEST(HostWarnings, ATextArgumentIsFormattedWhenRead) {
  ut_mem_add_primary_message_table(utGetMemoryContext(), &kTestTable);
  WarningHandler previous = utSetWarningHandler([](const std::string&, const WarningText&) {});
  ut_warning_id_str(utGetWarningContext(), "Test:Named", 0x7F0003, "z");
  EXPECT_EQ(utLastWarningText(), "Named 'z'.");
  ut_warning_id_str(utGetWarningContext(), "Test:Named", 0x7F0003, "w");
  EXPECT_EQ(utLastWarningText(), "Named 'w'.");
  utSetWarningHandler(previous);
}

// Kinds that the module's call into the host language turns into errors with identifiers
// before the shell sees them; the others are in the interpreter's test.
TEST(HostErrors, EveryKindOfFailureIsReported) {
  EXPECT_EQ(FailureReport::capture([] { throw fl::except::UserException("User:Id", "text"); }),
            "Error (User:Id): text");
  EXPECT_EQ(FailureReport::capture([] { throw Tarnwick::System::InterruptException(); }),
            "Error (CALVEX:interrupt): Interrupted.");
  EXPECT_EQ(FailureReport::capture([] { throw Tarnwick::System::DebugQuitException(); }),
            "Error (CALVEX:dbquit): Left the debugger.");
}

}  // namespace
