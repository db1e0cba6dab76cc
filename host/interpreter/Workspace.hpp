#pragma once

// File: Workspace.hpp
// The shell's variables: names bound to host values that the workspace owns. Reading
// a variable hands out a copy, so that what a statement does with a value never
// changes the variable; handles in a copy are new references to the same objects.
//
// Example:
//   workspace.assign("x", HostArrayPtr(HostArray::createDoubleScalar(10)));
//   HostArrayPtr x = workspace.copy("x");   // a new 1x1 double 10
//   workspace.clear();                      // releases every variable

#include <map>
#include <string>
#include <vector>

#include "host/HostArray.hpp"

class Workspace {
 public:
  Workspace() = default;
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  bool has(const std::string& name) const { return variables_.count(name) != 0; }
  // The variable's value, borrowed; null when there is no such variable.
  const HostArray* find(const std::string& name) const;
  // Returns a new copy of the variable's value that the caller owns; null when there is
  // no such variable.
  HostArrayPtr copy(const std::string& name) const;
  // Binds the name to the value, taking it over; the value it replaces is freed.
  void assign(const std::string& name, HostArrayPtr value);
  // Frees the variable; false when there was none.
  bool remove(const std::string& name);
  void clear() { variables_.clear(); }
  // The names in alphabetical order.
  std::vector<std::string> names() const;

 private:
  std::map<std::string, HostArrayPtr> variables_;
};
