// zo_units: the units module for people. It loads libtwzo_units.so as the host does
// and runs statements of the host language against its classes (see CommandLine.hpp
// for the modes, and `help` inside the shell for the language).

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "host/Console.hpp"
#include "host/FailureReport.hpp"
#include "host/HostArray.hpp"
#include "host/JavaBridge.hpp"
#include "host/ModuleLoader.hpp"
#include "host/ToolboxFunctions.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"
#include "host/Warning.hpp"
#include "host/interpreter/Interpreter.hpp"
#include "host/interpreter/InterpreterError.hpp"
#include "host/interpreter/ValueDisplay.hpp"
#include "shell/CommandLine.hpp"
#include "shell/Completer.hpp"
#include "shell/LineEditor.hpp"
#include "shell/Session.hpp"

namespace {

// The one-shot conversion: "calculateconversion" on the manager object, the result at
// full precision on standard output, warnings and errors on standard error.
int convert(const ShellOptions& options) {
  // Standard output carries the number alone; warnings go with errors.
  utSetWarningHandler([](const std::string& identifier, const std::string& text) {
    std::fprintf(stderr, "Warning (%s): %s\n", identifier.c_str(), text.c_str());
  });
  double converted = 0;
  std::optional<std::string> failure = FailureReport::capture([&] {
    char* end = nullptr;
    errno = 0;
    double value = std::strtod(options.value.c_str(), &end);
    if (options.value.empty() || *end != '\0' || errno == ERANGE) {
      raiseInterpreterError(kInvalidArgument, "'" + options.value + "' is not a number.");
    }
    UDInterfacePtr manager(hostConstruct("UnitManager"));
    HostArrayPtr target(HostArray::createHandleArray({manager.get()}));
    HostArrayPtr from(HostArray::createString(options.from.c_str()));
    HostArrayPtr to(HostArray::createString(options.to.c_str()));
    HostArrayPtr amount(HostArray::createDoubleScalar(value));
    std::vector<HostArray*> results = hostInvokeMethod(
        "calculateconversion", 1, {target.get(), from.get(), to.get(), amount.get()});
    std::vector<HostArrayPtr> owned(results.begin(), results.end());
    converted = owned.at(0)->getPr()[0];
  });
  if (failure) {
    std::fprintf(stderr, "%s\n", failure->c_str());
    return 1;
  }
  utPrintf("%s\n", ValueDisplay::formatNumberExact(converted).c_str());
  return 0;
}

// Lines of the -e texts, each text split at its line breaks.
std::vector<std::string> linesOf(const std::vector<std::string>& texts) {
  std::vector<std::string> lines;
  for (const std::string& text : texts) {
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) lines.push_back(line);
  }
  return lines;
}

int runSession(const ShellOptions& options) {
  Interpreter interpreter;
  Session::Options session;
  session.echo = options.echo;
  switch (options.mode) {
    case ShellOptions::Mode::kStatements: {
      session.keepGoing = options.keepGoing;
      Session statements(interpreter, session);
      for (const std::string& line : linesOf(options.statements)) {
        if (!statements.feed(line)) break;
      }
      return statements.exitStatus();
    }
    case ShellOptions::Mode::kScript: {
      session.keepGoing = options.keepGoing;
      if (options.script == "-") return Session(interpreter, session).run(std::cin);
      std::ifstream script(options.script);
      if (!script) {
        std::fprintf(stderr, "zo_units: cannot open the script '%s'\n", options.script.c_str());
        return 1;
      }
      return Session(interpreter, session).run(script);
    }
    default: {
      // A person at a terminal, or statements piped in: an error never ends the session.
      session.keepGoing = true;
      session.prompt = isatty(STDIN_FILENO) != 0;
      if (!session.prompt || isatty(STDOUT_FILENO) == 0)
        return Session(interpreter, session).run(std::cin);
      Completer completer(interpreter.workspace());
      LineEditor editor(options.history ? LineEditor::historyFile() : "",
                        [&](const std::string& before) { return completer.complete(before); });
      return Session(interpreter, session).run([&] { return editor.read(); });
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  ShellOptions options;
  try {
    options = CommandLine::parse(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const std::invalid_argument& refused) {
    std::fprintf(stderr, "zo_units: %s\n%s", refused.what(), CommandLine::usage());
    return 2;
  }
  if (options.mode == ShellOptions::Mode::kHelp) {
    std::fputs(CommandLine::usage(), stdout);
    return 0;
  }
  try {
    // The module decides once, when its registries first start, whether the Java
    // layer is there: the bridge must be on before the module loads.
    if (options.events) hostSetUsingJava(true);
    ModuleLoader::load(
        ModuleLoader::candidates(ZO_UNITS_BUILD_MODULE, ModuleLoader::executableDirectory()));
    hostRegisterToolboxFunctions();
    if (options.events) {
      hostClearJavaEventQueue();  // what the built-in library posted while loading
      hostSetJavaEventListener([](const JavaEvent& event) {
        utPrintf("Event: %s %s\n", event.type.c_str(), event.name.c_str());
        hostClearJavaEventQueue();  // printed: nothing else reads the queue
      });
    }
    int status =
        options.mode == ShellOptions::Mode::kConvert ? convert(options) : runSession(options);
    hostSetJavaEventListener(nullptr);
    return status;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "zo_units: %s\n", failure.what());
    return 1;
  }
}
