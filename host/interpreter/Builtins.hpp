#pragma once

// File: Builtins.hpp
// The shell's own functions, which come before class names and methods when a name is
// looked up: constants (true, false, Inf, NaN), object inspection (get, set, methods,
// properties, class), values (display, disp, numel, isempty), the session (help, who,
// clear, exit, quit).
//
// Example:
//   Builtins builtins(workspace);
//   builtins.call("methods", 0, {unitHandle}, {"u"});   // prints the methods of Unit
//   builtins.call("class", 1, {unitHandle}, {"u"});     // {'Unit'}

#include <string>
#include <vector>

#include "host/HostArray.hpp"

class UDClass;
class Workspace;

class Builtins {
 public:
  explicit Builtins(Workspace& workspace) : workspace_(workspace) {}
  Builtins(const Builtins&) = delete;
  Builtins& operator=(const Builtins&) = delete;

  static bool has(const std::string& name);
  // Every function's name, the constants' included.
  static std::vector<std::string> names();
  // What methods(obj) and properties(obj) list: the members of the class and of its
  // superclasses, those that a subclass hides left out.
  static std::vector<std::string> methodNames(const UDClass* cls);
  static std::vector<std::string> propertyNames(const UDClass* cls);

  // Runs the function on the arguments (argNames[i] is the variable that argument i
  // came from, or ""). Returns at most nargout values that the caller owns (one value,
  // or none, when nargout is 0). Raises "CALVEX:TooManyInputs", "CALVEX:NotEnoughInputs",
  // "CALVEX:TooManyOutputs" or "CALVEX:invalidArgument" for a call that does not fit,
  // and passes on what the host raises.
  std::vector<HostArrayPtr> call(const std::string& name, int nargout,
                                 std::vector<HostArrayPtr> args,
                                 const std::vector<std::string>& argNames);

  // Whether exit or quit has run.
  bool exitRequested() const { return exitRequested_; }

 private:
  struct Call;
  using Handler = std::vector<HostArrayPtr> (Builtins::*)(Call&);
  struct Entry {
    const char* name;
    const char* usage;
    Handler handler;
    int minArgs, maxArgs, maxOutputs;
  };
  static const std::vector<Entry>& entries();
  static const Entry* find(const std::string& name);

  std::vector<HostArrayPtr> constant(Call& call);
  std::vector<HostArrayPtr> get(Call& call);
  std::vector<HostArrayPtr> set(Call& call);
  std::vector<HostArrayPtr> methods(Call& call);
  std::vector<HostArrayPtr> properties(Call& call);
  std::vector<HostArrayPtr> classOf(Call& call);
  std::vector<HostArrayPtr> display(Call& call);
  std::vector<HostArrayPtr> disp(Call& call);
  std::vector<HostArrayPtr> numel(Call& call);
  std::vector<HostArrayPtr> isempty(Call& call);
  std::vector<HostArrayPtr> help(Call& call);
  std::vector<HostArrayPtr> who(Call& call);
  std::vector<HostArrayPtr> clear(Call& call);
  std::vector<HostArrayPtr> exit(Call& call);

  std::string helpText() const;

  Workspace& workspace_;
  bool exitRequested_ = false;
};
