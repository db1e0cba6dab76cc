#include "shell/CommandLine.hpp"

#include <stdexcept>

namespace {

[[noreturn]] void refuse(const std::string& message) { throw std::invalid_argument(message); }

}  // namespace

ShellOptions CommandLine::parse(const std::vector<std::string>& args) {
  ShellOptions options;
  std::vector<std::string> positional;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    // After "convert" every argument is its own, so that "-40" is a value.
    bool converting = !positional.empty() && positional[0] == "convert";
    if (optionsEnded || converting || arg.empty() || arg[0] != '-' || arg == "-") {
      positional.push_back(arg);
    } else if (arg == "--") {
      optionsEnded = true;
    } else if (arg == "--help" || arg == "-h") {
      options.mode = ShellOptions::Mode::kHelp;
      return options;
    } else if (arg == "--events") {
      options.events = true;
    } else if (arg == "--keep-going") {
      options.keepGoing = true;
    } else if (arg == "--echo") {
      options.echo = true;
    } else if (arg == "--no-history") {
      options.history = false;
    } else if (arg == "-e") {
      if (i + 1 == args.size()) refuse("-e needs statements to run");
      options.statements.push_back(args[++i]);
    } else {
      refuse("unknown option '" + arg + "'");
    }
  }
  if (!positional.empty() && positional[0] == "convert") {
    if (!options.statements.empty()) refuse("convert does not take -e");
    if (positional.size() != 4) refuse("convert takes VALUE FROM TO");
    options.mode = ShellOptions::Mode::kConvert;
    options.value = positional[1];
    options.from = positional[2];
    options.to = positional[3];
    return options;
  }
  if (positional.size() > 1) refuse("one script at a time");
  if (!options.statements.empty()) {
    if (!positional.empty()) refuse("-e and a script do not go together");
    options.mode = ShellOptions::Mode::kStatements;
  } else if (!positional.empty()) {
    options.mode = ShellOptions::Mode::kScript;
    options.script = positional[0];
  }
  return options;
}

const char* CommandLine::usage() {
  return "Usage:\n"
         "  zo_units [OPTIONS]                     prompt on a terminal, else run stdin\n"
         "  zo_units [OPTIONS] FILE                run a script (- for stdin)\n"
         "  zo_units [OPTIONS] -e 'STATEMENTS' ... run statements\n"
         "  zo_units [--events] convert VALUE FROM TO\n"
         "                                         print VALUE in FROM converted to TO\n"
         "  zo_units --help\n"
         "\n"
         "Options:\n"
         "  --events      print each change event of the registries as it is posted\n"
         "  --keep-going  go on after an error in a script or in -e statements\n"
         "                (by default they stop there, with exit status 1)\n"
         "  --echo        print each line of a script before its output\n"
         "  --no-history  at the prompt, neither read nor write the history file\n"
         "\n"
         "At a terminal the prompt edits the line: Up and Down recall earlier statements,\n"
         "Tab completes names, Ctrl-C abandons the line, Ctrl-D on an empty line ends\n"
         "the session. The last 1000 statements are kept in $ZO_UNITS_HISTORY, by\n"
         "default ~/.zo_units_history.\n"
         "\n"
         "The module libtwzo_units.so is taken from $ZO_UNITS_MODULE when that is set,\n"
         "else from the build tree or next to the executable.\n"
         "Type 'help' in the shell for its language.\n";
}
