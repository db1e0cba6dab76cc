// The shell's interpreter: how many results a statement asks for, what it shows, how
// failures print and the session goes on; the units module through it is the transcripts' part.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "host/ErrorIdException.hpp"
#include "host/Memory.hpp"
#include "host/ToolboxFunctions.hpp"
#include "host/UDApplication.hpp"
#include "host/UDApplicationManager.hpp"
#include "host/UDClass.hpp"
#include "host/UDInterface.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UserException.hpp"
#include "host/interpreter/Interpreter.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/HostCalls.hpp"

namespace {

UDMethodSignature* signature(std::vector<const char*> arguments, std::vector<const char*> results) {
  auto* made = new UDMethodSignature;
  for (const char* type : arguments) made->addArgument(type, nullptr);
  for (const char* type : results) made->addResult(type);
  return made;
}

double* newDouble(double value) {
  auto* result = static_cast<double*>(utMallocWithCheck(sizeof(double)));
  *result = value;
  return result;
}

// "nargout" returns the number of results it was asked for, in each slot it fills.
class NargoutMethod : public UDMethodInfo {
 public:
  NargoutMethod() : UDMethodInfo(false) {
    setName("nargout", false);
    addMethodSignature(signature({"handle"}, {"double", "double"}));
  }
  void invokeMethod(UDMethodSignature*, int* nResults, void** results, int, void**) override {
    results[0] = newDouble(*nResults);
    if (*nResults >= 2) results[1] = newDouble(*nResults);
  }
};

// "empty" leaves its one result unset.
class EmptyMethod : public UDMethodInfo {
 public:
  EmptyMethod() : UDMethodInfo(false) {
    setName("empty", false);
    addMethodSignature(signature({"handle"}, {"double"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void**) override {}
};

// "fail(k)" throws the k-th kind of failure.
class FailMethod : public UDMethodInfo {
 public:
  FailMethod() : UDMethodInfo(false) {
    setName("fail", false);
    addMethodSignature(signature({"handle", "double"}, {}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    switch (static_cast<int>(*static_cast<double*>(args[1]))) {
      case 1:
        throw new ErrorIdException("Probe:Failed", "it failed");
      case 2:
        throw new Exception("plain failure");
      case 3:
        throw std::runtime_error("std failure");
      case 4:
        throw fl::except::UserException("User:Id", "user failure");
      default:
        throw 42;
    }
  }
};

// A class of the test's own, so that the dispatch is seen without the units module.
class ProbeClass : public UDClass {
 public:
  ProbeClass() {
    setName("Probe", false);
    addConstructorSignature(new UDMethodSignature);
    addMethod(new NargoutMethod);
    addMethod(new EmptyMethod);
    addMethod(new FailMethod);
  }
  UDInterface* createClassSpecificObject(UDInterface*) override {
    return new UDInterface(&payload_, this, nullptr);
  }
  void destroyObject(UDInterface* object) override { object->setObject(nullptr); }

 private:
  int payload_ = 0;
};

class InterpreterTest : public ModuleFixture {
 protected:
  void SetUp() override {
    ModuleFixture::SetUp();
    hostRegisterToolboxFunctions();  // PhysicalQuantity's register calls back into the host
    static bool registered = [] {
      auto* application = new UDApplication("ProbeApp", false);
      application->addClass(new ProbeClass);
      UDApplicationManager::addApplication(application);
      return true;
    }();
    (void)registered;
  }

  // What the line printed; its outcome in `outcome`.
  std::string run(const std::string& line) {
    ConsoleCapture console;
    outcome = interpreter.execute(line);
    return console.text();
  }

  struct Line {
    const char* line;
    const char* printed;
  };

  // Runs the lines in order, each expected to print exactly its text.
  void expectTranscript(const std::vector<Line>& lines) {
    for (const Line& l : lines) {
      SCOPED_TRACE(l.line);
      EXPECT_EQ(run(l.line), l.printed);
    }
  }

  Interpreter interpreter;
  Interpreter::Outcome outcome = Interpreter::Outcome::kCompleted;
};

TEST_F(InterpreterTest, ResultsAskedForFollowTheStatement) {
  run("p = Probe;");
  expectTranscript({
      {"p.nargout", "ans = 0\n"},
      {"nargout(p)", "ans = 0\n"},
      {"x = p.nargout", "x = 1\n"},
      {"x = nargout(p)", "x = 1\n"},
      {"[a, b] = p.nargout", "a = 2\nb = 2\n"},
      {"[~, b] = p.nargout", "b = 2\n"},
      {"disp(p.nargout)", "1\n"},
      {"[p.nargout p.nargout]", "ans = [1 1]\n"},
      {"p.nargout;", ""},
      {"ans", "ans = 0\n"},
      {"p.empty", ""},
      {"x = p.empty", "x = []\n"},
      {"[a, b, c] = p.nargout",
       "Error (CALVEX:NoMatchingSignature): No method 'nargout' with "
       "matching signature found for class 'Probe'.\n"},
  });
}

TEST_F(InterpreterTest, FailuresPrintAndTheSessionGoesOn) {
  run("p = Probe;");
  struct Failure {
    const char* line;
    const char* printed;
  } failures[] = {
      {"p.fail(1)", "Error (Probe:Failed): it failed\n"},
      {"p.fail(2)", "Error: plain failure\n"},
      {"p.fail(3)", "Error: std failure\n"},
      {"p.fail(4)", "Error (User:Id): user failure\n"},
      {"p.fail(5)", "Error: An unknown failure ended the statement.\n"},
      {"x = (1", "Error (CALVEX:parse): unbalanced parenthesis at column 5\n"},
      {"foo", "Error (CALVEX:UndefinedFunction): Undefined function or variable 'foo'.\n"},
  };
  for (const Failure& f : failures) {
    SCOPED_TRACE(f.line);
    EXPECT_EQ(run(f.line), f.printed);
    EXPECT_EQ(outcome, Interpreter::Outcome::kFailed);
    EXPECT_EQ(run("x = 1;"), "");
    EXPECT_EQ(outcome, Interpreter::Outcome::kCompleted);
  }
  // A failure ends its line: y is never assigned.
  EXPECT_EQ(run("x = 2, p.fail(1), y = 3"), "x = 2\nError (Probe:Failed): it failed\n");
  EXPECT_FALSE(interpreter.workspace().has("y"));
}

TEST_F(InterpreterTest, ExitEndsTheLineAndTheSession) {
  struct Outcomes {
    const char* line;
    Interpreter::Outcome outcome;
  } cases[] = {
      {"", Interpreter::Outcome::kCompleted},
      {"% nothing", Interpreter::Outcome::kCompleted},
      {"x = 1; exit; y = 2", Interpreter::Outcome::kExit},
      {"quit", Interpreter::Outcome::kExit},
      {"exit(1)", Interpreter::Outcome::kFailed},
  };
  for (const Outcomes& c : cases) {
    SCOPED_TRACE(c.line);
    run(c.line);
    EXPECT_EQ(outcome, c.outcome);
  }
  EXPECT_TRUE(interpreter.workspace().has("x"));
  EXPECT_FALSE(interpreter.workspace().has("y"));
}

TEST_F(InterpreterTest, NamesAreVariablesThenFunctionsThenClassesThenMethods) {
  expectTranscript({
      {"disp = 3", "disp = 3\n"},
      {"disp", "disp = 3\n"},
      {"clear disp", ""},
      {"disp('back')", "back\n"},
      {"Unit = 'shadow';", ""},
      {"class(Unit)", "ans = 'char'\n"},
      {"clear('Unit'), class(Unit)", "ans = 'Unit'\n"},
      {"p = Probe(); class(p)", "ans = 'Probe'\n"},
      {"x = 1; y = x; x = 2; y", "y = 1\n"},
      {"p 1",
       "Error (CALVEX:commandSyntax): 'p' is a variable; it "
       "cannot take words as a command.\n"},
      {"nargout(3)",
       "Error (CALVEX:UndefinedFunction): Undefined "
       "function 'nargout' for input arguments of type "
       "'double'.\n"},
  });
}

TEST_F(InterpreterTest, TheWarningPrinterIsOnlyInstalledWhileTheInterpreterLives) {
  WarningCapture warnings;
  {
    Interpreter inner;
    ConsoleCapture console;
    inner.execute("UnitManager.calculateconversion('celsius', 'kelvin', 0);");
    EXPECT_TRUE(warnings.identifiers().empty());
    EXPECT_EQ(console.text(),
              "Warning (Unit:Deprecation): The temperature unit 'celsius' has been removed. Use "
              "kelvin instead.\n");
  }
  std::vector<HostArrayPtr> args;
  args.push_back(text("celsius"));
  args.push_back(text("kelvin"));
  args.push_back(num(0));
  call(manager(), "calculateconversion", 1, std::move(args));
  EXPECT_EQ(warnings.identifiers(), std::vector<std::string>{"Unit:Deprecation"});
}

}  // namespace
