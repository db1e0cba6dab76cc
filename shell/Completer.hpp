#pragma once

// File: Completer.hpp
// What Tab offers at the prompt, from the text before the cursor:
//   - at the start of an expression, the variables, the shell's functions and the classes;
//   - after `obj.`, the methods and properties of that object's class;
//   - inside a quoted text, the registered unit names, bare and with each registered prefix,
//     and the registered unit systems' names; inside UnitSystem's "unregister" argument,
//     those names alone.
// Everything is asked at the moment of the Tab (unit and prefix names of the host object
// system, through the UnitManager's "showunits" and "showprefixes"; unit systems of the
// library's registry), so a unit or system registered a line earlier completes. Nothing here ever
// throws: a failing host call completes nothing.
//
// Example:
//   Completer completer(interpreter.workspace());
//   Completion offer = completer.complete("um.calculateconversion('mile', 'furl");
//   // offer.word == "furl", offer.candidates == {"furlong"} once furlong is registered

#include <string>
#include <vector>

class Workspace;

struct Completion {
  std::string word;                     // the end of the text that the candidates extend
  std::vector<std::string> candidates;  // sorted, no repeats, each beginning with word
};

class Completer {
 public:
  // Where the cursor stands and what is needed to complete there.
  struct Context {
    enum class Kind { kNothing, kName, kMember, kUnit, kUnitSystem };
    Kind kind = Kind::kNothing;
    std::string word;    // the part of the name already typed
    std::string object;  // kMember: the variable before the dot
  };

  explicit Completer(const Workspace& workspace) : workspace_(workspace) {}

  Completion complete(const std::string& beforeCursor) const;

  // kNothing in a comment, inside a number and after a dot that does not follow a
  // variable's name.
  static Context contextOf(const std::string& text);

 private:
  std::vector<std::string> names() const;
  std::vector<std::string> members(const std::string& variable) const;

  const Workspace& workspace_;
};
