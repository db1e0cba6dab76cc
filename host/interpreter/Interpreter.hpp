#pragma once

// File: Interpreter.hpp
// Runs lines of the shell's language (see Parser.hpp) against the host object system:
// classes are constructed, properties read and written and methods called only
// through the host's calls, so any module whose classes the host knows can be used.
//
// A statement's results show on the host console as the host language shows them
// (see ValueDisplay.hpp). A failing statement prints "Error (IDENTIFIER): MESSAGE" (or
// "Error: MESSAGE" for an error without identifier) and ends its line; the session
// goes on. While an interpreter lives, warnings print "Warning (IDENTIFIER): TEXT".
//
// How many results a method is asked for follows the host language: none for a
// statement that is only an expression (a first result it still returns becomes `ans`),
// one for `x = ...` and for an argument, n for `[a1, ..., an] = ...`.
//
// Example:
//   Interpreter interpreter;
//   interpreter.execute("um = UnitManager;");
//   interpreter.execute("x = um.calculateconversion('mile', 'meter', 1)");  // x = 1609.344
//   interpreter.execute("um.calculateconversion('furlongs', 'meter', 1)");
//   // Error (Unit:NotFound): Referenced unit 'furlongs' does not exist.

#include <memory>
#include <string>
#include <vector>

#include "host/HostArray.hpp"
#include "host/Warning.hpp"
#include "host/interpreter/ArrayOperations.hpp"
#include "host/interpreter/Builtins.hpp"
#include "host/interpreter/Workspace.hpp"

struct Expr;
struct Statement;

class Interpreter {
 public:
  enum class Outcome { kCompleted, kFailed, kExit };

  // Installs the warning printer; the destructor restores the previous handler.
  Interpreter();
  ~Interpreter();
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;

  // Runs the statements of one line in order. kFailed when one of them failed (the
  // error is printed and the rest of the line skipped), kExit when exit or quit ran.
  // Never throws.
  Outcome execute(const std::string& line);

  const Workspace& workspace() const { return workspace_; }

 private:
  using Values = std::vector<HostArrayPtr>;
  using Operands = std::vector<std::unique_ptr<Expr>>;

  void run(const Statement& statement);
  void showResult(const Statement& statement, Values results);
  Values evaluate(const Expr& expr, int nargout);
  HostArrayPtr evaluateOne(const Expr& expr);
  // The arguments operands[1..] of a call; `names` gets the variable each one names.
  Values arguments(const Operands& operands, std::vector<std::string>* names);
  std::vector<ArrayOperations::Subscript> subscripts(const Operands& operands);
  // A name on its own or called with arguments (null when there are no parentheses).
  Values callName(const std::string& name, const Operands* call, int nargout);
  Values callFunction(const std::string& name, Values args, const std::vector<std::string>& names,
                      int nargout);
  Values member(const Expr& field, const Operands* call, int nargout);
  static Values invoke(const std::string& method, int nargout, const Values& args);

  Workspace workspace_;
  Builtins builtins_;
  WarningHandler previousWarningHandler_;
};
