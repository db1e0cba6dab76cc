#include "shell/Session.hpp"

#include <istream>

#include "host/Console.hpp"
#include "host/interpreter/Interpreter.hpp"

namespace {

bool isCommentOrBlank(const std::string& line) {
  std::size_t first = line.find_first_not_of(" \t");
  return first == std::string::npos || line[first] == '%';
}

}  // namespace

bool Session::feed(const std::string& raw) {
  std::string line = raw;
  if (!line.empty() && line.back() == '\r') line.pop_back();
  if (options_.echo) {
    utPrintf("%s%s\n", isCommentOrBlank(line) ? "" : ">> ", line.c_str());
  }
  switch (interpreter_.execute(line)) {
    case Interpreter::Outcome::kExit:
      return false;
    case Interpreter::Outcome::kFailed:
      if (options_.keepGoing) return true;
      stoppedByError_ = true;
      return false;
    case Interpreter::Outcome::kCompleted:
      return true;
  }
  return true;
}

int Session::run(std::istream& in) {
  return run([&]() -> std::optional<std::string> {
    if (options_.prompt) utPrintf(">> ");
    std::string line;
    if (!std::getline(in, line)) return std::nullopt;
    return line;
  });
}

int Session::run(const std::function<std::optional<std::string>()>& nextLine) {
  while (std::optional<std::string> line = nextLine()) {
    if (!feed(*line)) return exitStatus();
  }
  // End of input ends the session; on a terminal the prompt's line is closed.
  if (options_.prompt) utPrintf("\n");
  return exitStatus();
}
