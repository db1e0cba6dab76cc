#pragma once

// File: Completer.hpp
// What Tab offers at the prompt, from the text before the cursor:
//   - at the start of an expression, the variables, the shell's functions and the classes;
//   - after `obj.`, the methods and properties of that object's class;
//   - inside a quoted text that is UnitSystem's "unregister" argument, the registered unit
//     system names;
//   - inside any other quoted text, the registered unit names, bare and with each registered
//     prefix.
// Everything is asked at the moment of the Tab, so a unit or system registered a line earlier
// completes: unit and prefix names of the host object system (the UnitManager's "showunits"
// and "showprefixes"); unit system names, which no host call lists, of the loaded module's
// C++ API, as the toolbox's other libraries read them. Nothing here ever throws: a failing
// call completes nothing.
//
// Example:
//   Completer completer(interpreter.workspace(), modulePath);   // where ModuleLoader found it
//   Completion offer = completer.complete("um.calculateconversion('mile', 'furl");
//   // offer.word == "furl", offer.candidates == {"furlong"} once furlong is registered

#include <memory>
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

  // module: the path that ModuleLoader::load loaded the module from.
  Completer(const Workspace& workspace, const std::string& module);

  Completion complete(const std::string& beforeCursor) const;

  // kNothing in a comment, inside a number and after a dot that does not follow a
  // variable's name.
  static Context contextOf(const std::string& text);

 private:
  std::vector<std::string> names() const;
  std::vector<std::string> members(const std::string& variable) const;
  std::vector<std::string> unitSystemNames() const;

  const Workspace& workspace_;
  // The loaded module, held open while the Completer reads from it; null when not loaded.
  std::unique_ptr<void, int (*)(void*)> module_;
};
