// The shell's interpreter: how each kind of failure prints. How many results a statement asks
// for, the order names are looked up in, what ends a session and what the units module prints
// are in the transcripts.

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/DebugQuitException.hpp"
#include "host/ErrorIdException.hpp"
#include "host/HostFunctions.hpp"
#include "host/InterruptException.hpp"
#include "host/UserException.hpp"
#include "host/interpreter/Interpreter.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"
#include "tests/support/Pristine.hpp"

namespace {

class InterpreterTest : public ModuleFixture {
 protected:
  // What the line printed.
  std::string run(const std::string& line) {
    ConsoleCapture console;
    interpreter.execute(line);
    return console.text();
  }

  Interpreter interpreter;
};

// Through a quantity's register, which calls back into the host: the failures a host function
// raises reach the statement (the host's own kinds with an identifier) and print.
PRISTINE_TEST_F(InterpreterTest, EveryKindOfFailurePrints) {
  struct Case {
    std::function<void()> fail;
    const char* printed;
  } cases[] = {
      {[] { throw new ErrorIdException("Host:Raised", "raised in the host"); },
       "Error (Host:Raised): raised in the host\n"},
      {[] { throw fl::except::UserException("User:Error", "user text"); },
       "Error (User:Error): user text\n"},
      {[] { throw Tarnwick::System::DebugQuitException(); }, "Error (CALVEX:dbquit): \n"},
      {[] { throw Tarnwick::System::InterruptException(); }, "Error (CALVEX:interupt): \n"},
      {[] { throw new Exception("plain failure"); }, "Error: plain failure\n"},
      {[] { throw std::runtime_error("std failure"); }, "Error: std failure\n"},
      {[] { throw 42; }, "Error: An unknown failure ended the statement.\n"},
  };
  run("q = PhysicalQuantity;");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.printed);
    hostRegisterFunction("zophregisterquantity",
                         [fail = c.fail](int, HostArray**, int, HostArray**) { fail(); });
    EXPECT_EQ(run("q.register"), c.printed);
    EXPECT_EQ(run("x = 1"), "x = 1\n");
  }
}

// A run of signs folds into one node: reading and evaluating it needs no deep recursion.
TEST_F(InterpreterTest, LongRunsOfSignsFoldIntoOneNode) {
  EXPECT_EQ(run("x = " + std::string(100001, '-') + "1"), "x = -1\n");
}

// Warnings print through the interpreter only while it lives; then they go back to the host.
TEST_F(InterpreterTest, TheWarningPrinterIsOnlyInstalledWhileTheInterpreterLives) {
  WarningCapture warnings;
  {
    Interpreter inner;
    ConsoleCapture console;
    inner.execute("UnitManager.calculateconversion('celsius', 'kelvin', 0);");
    EXPECT_TRUE(warnings.identifiers().empty());
    EXPECT_NE(console.text().find("Warning (Unit:Deprecation)"), std::string::npos);
  }
  std::vector<HostArrayPtr> args;
  args.push_back(text("celsius"));
  args.push_back(text("kelvin"));
  args.push_back(num(0));
  call(manager(), "calculateconversion", 1, std::move(args));
  EXPECT_EQ(warnings.identifiers(), std::vector<std::string>{"Unit:Deprecation"});
}

}  // namespace
