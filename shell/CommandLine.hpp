#pragma once

// File: CommandLine.hpp
// The shell's arguments:
//
//   zo_units [OPTIONS]                     a prompt on a terminal, else statements from stdin
//   zo_units [OPTIONS] FILE                runs the script (- for stdin)
//   zo_units [OPTIONS] -e 'STATEMENTS' ... runs the statements
//   zo_units [--events] convert VALUE FROM TO
//   zo_units --help
//
//   OPTIONS: --events  --keep-going  --echo  --no-history
//
// Example:
//   ShellOptions options = CommandLine::parse({"--echo", "demo.cvx"});
//   // options.mode == ShellOptions::Mode::kScript, options.script == "demo.cvx"

#include <string>
#include <vector>

struct ShellOptions {
  enum class Mode { kSession, kScript, kStatements, kConvert, kHelp };

  Mode mode = Mode::kSession;
  bool events = false;     // print change events as they are posted
  bool keepGoing = false;  // a script or -e goes on after an error
  bool echo = false;       // print each line of a script before running it
  bool history = true;     // the prompt reads and writes the history file
  std::string script;
  std::vector<std::string> statements;
  std::string value, from, to;  // convert
};

class CommandLine {
 public:
  // The options the arguments (program name left out) ask for. Throws
  // std::invalid_argument with a message for arguments that do not fit.
  static ShellOptions parse(const std::vector<std::string>& args);
  static const char* usage();
};
