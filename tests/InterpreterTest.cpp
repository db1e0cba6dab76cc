// The shell's interpreter: how each kind of failure prints. How many results a statement asks
// for, the order names are looked up in, what ends a session and what the units module prints
// are in the transcripts.

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/ErrorIdException.hpp"
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

// A method of one signature (a handle, then `arguments`) whose body is given as a function.
class ProbeMethod : public UDMethodInfo {
 public:
  using Body = std::function<void(void** args)>;
  ProbeMethod(const char* name, std::vector<const char*> arguments,
              std::vector<const char*> results, Body body)
      : UDMethodInfo(false), body_(std::move(body)) {
    setName(name, false);
    auto* signature = new UDMethodSignature;
    signature->addArgument("handle", nullptr);
    for (const char* type : arguments) signature->addArgument(type, nullptr);
    for (const char* type : results) signature->addResult(type);
    addMethodSignature(signature);
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override { body_(args); }

 private:
  Body body_;
};

// "empty" fills no result slot; "fail(k)" throws the k-th kind of failure.
class ProbeClass : public UDClass {
 public:
  ProbeClass() {
    setName("Probe", false);
    addConstructorSignature(new UDMethodSignature);
    addMethod(new ProbeMethod("empty", {}, {"double"}, [](void**) {}));
    addMethod(new ProbeMethod("fail", {"double"}, {}, [](void** args) {
      int kind = static_cast<int>(*static_cast<double*>(args[1]));
      if (kind == 1) throw new ErrorIdException("Probe:Failed", "it failed");
      if (kind == 2) throw new Exception("plain failure");
      if (kind == 3) throw std::runtime_error("std failure");
      if (kind == 4) throw fl::except::UserException("User:Id", "user failure");
      throw 42;
    }));
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
    static bool registered = [] {
      auto* application = new UDApplication("ProbeApp", false);
      application->addClass(new ProbeClass);
      UDApplicationManager::addApplication(application);
      return true;
    }();
    (void)registered;
    run("p = Probe;");
  }

  // What the line printed; its outcome in `outcome`.
  std::string run(const std::string& line) {
    ConsoleCapture console;
    outcome = interpreter.execute(line);
    return console.text();
  }

  // Runs the lines in order, each expected to print exactly its text and end as `expected`.
  void expectTranscript(const std::vector<std::pair<const char*, const char*>>& lines,
                        Interpreter::Outcome expected = Interpreter::Outcome::kCompleted) {
    for (const auto& [line, printed] : lines) {
      SCOPED_TRACE(line);
      EXPECT_EQ(run(line), printed);
      EXPECT_EQ(outcome, expected);
    }
  }

  Interpreter interpreter;
  Interpreter::Outcome outcome = Interpreter::Outcome::kCompleted;
};

// A result the method leaves unset shows nothing, and assigns an empty array.
TEST_F(InterpreterTest, AResultLeftUnsetIsEmpty) {
  expectTranscript({{"p.empty", ""}, {"x = p.empty", "x = []\n"}});
}

TEST_F(InterpreterTest, EveryKindOfFailurePrintsAndTheNextLineRuns) {
  expectTranscript(
      {
          {"p.fail(1)", "Error (Probe:Failed): it failed\n"},
          {"p.fail(2)", "Error: plain failure\n"},
          {"p.fail(3)", "Error: std failure\n"},
          {"p.fail(4)", "Error (User:Id): user failure\n"},
          {"p.fail(5)", "Error: An unknown failure ended the statement.\n"},
          {"exit(1)", "Error (CALVEX:TooManyInputs): Too many input arguments.\n"},
      },
      Interpreter::Outcome::kFailed);
  expectTranscript({{"x = 1", "x = 1\n"}, {"", ""}, {"% nothing", ""}});
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
