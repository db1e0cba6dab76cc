#include "shell/Completer.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

#include "host/FailureReport.hpp"
#include "host/HostArray.hpp"
#include "host/UDApplication.hpp"
#include "host/UDApplicationManager.hpp"
#include "host/UDClass.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"
#include "host/interpreter/Builtins.hpp"
#include "host/interpreter/Workspace.hpp"
#include "units/UnitSystemManager.hpp"

namespace {

bool isNameCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

bool startsWithDigit(const std::string& text) {
  return !text.empty() && std::isdigit(static_cast<unsigned char>(text[0]));
}

// The name characters at the end of text[from, end).
std::string trailingName(const std::string& text, std::size_t from, std::size_t end) {
  std::size_t start = end;
  while (start > from && isNameCharacter(text[start - 1])) --start;
  return text.substr(start, end - start);
}

// The "name" of every object that the UnitManager's listing method gives, the built-in
// ones included.
std::vector<std::string> listedNames(const char* method) {
  UDInterfacePtr manager(hostConstruct("UnitManager"));
  HostArrayPtr target(HostArray::createHandleArray({manager.get()}));
  HostArrayPtr builtinToo(HostArray::createLogicalScalar(true));
  std::vector<HostArray*> results = hostInvokeMethod(method, 1, {target.get(), builtinToo.get()});
  std::vector<HostArrayPtr> owned(results.begin(), results.end());
  std::vector<std::string> names;
  if (owned.empty() || owned[0] == nullptr) return names;
  for (std::size_t i = 0; i < owned[0]->getNumberOfElements(); ++i) {
    if (UDInterface* object = owned[0]->getHandle(i)) {
      HostArrayPtr name(hostGetProperty(object, "name"));
      names.push_back(name->getString());
    }
  }
  return names;
}

// The units bare, and once something is typed, with each prefix that agrees with it (every
// prefix with every unit would bury the bare names).
std::vector<std::string> unitNames(const std::string& word) {
  std::vector<std::string> units = listedNames("showunits");
  std::vector<std::string> names = units;
  if (word.empty()) return names;
  for (const std::string& prefix : listedNames("showprefixes")) {
    std::size_t common = std::min(prefix.size(), word.size());
    if (prefix.compare(0, common, word, 0, common) != 0) continue;
    for (const std::string& unit : units) names.push_back(prefix + unit);
  }
  return names;
}

// The registered unit systems' names. No host call lists them (registered systems have no
// host object), so they are read through the library's C++ interface, which the loaded
// module exports to other C++ libraries; the shell links no part of the library, so the
// registry is found by its symbol. A module without it offers none.
std::vector<std::string> unitSystemNames() {
  using Instance = TwUnits::UnitSystemManager* (*)();
  auto instance =
      reinterpret_cast<Instance>(dlsym(RTLD_DEFAULT, "_ZN7TwUnits17UnitSystemManager8InstanceEv"));
  std::vector<std::string> names;
  if (instance == nullptr) return names;
  for (const auto& system : instance()->getUnitSystems()) {
    // Through the interface, whose calls are virtual: nothing here needs the library's code.
    const TwUnits::UnitSystemApi& registered = *system;
    names.push_back(registered.getUnitSystemName());
  }
  return names;
}

// The one argument that names a unit system: UnitSystem's "unregister", after the object
// (`s.unregister('lab')` or `unregister(s, 'lab')`).
bool takesUnitSystem(const std::string& method, std::size_t argument) {
  return method == "unregister" && argument == 1;
}

}  // namespace

Completion Completer::complete(const std::string& beforeCursor) const {
  Context context = contextOf(beforeCursor);
  std::vector<std::string> offered;
  std::optional<std::string> failure = FailureReport::capture([&] {
    switch (context.kind) {
      case Context::Kind::kName:
        offered = names();
        break;
      case Context::Kind::kMember:
        offered = members(context.object);
        break;
      case Context::Kind::kUnit:
        offered = unitNames(context.word);
        for (std::string& name : unitSystemNames()) offered.push_back(std::move(name));
        break;
      case Context::Kind::kUnitSystem:
        offered = unitSystemNames();
        break;
      case Context::Kind::kNothing:
        break;
    }
  });
  Completion completion;
  completion.word = context.word;
  if (failure) return completion;
  std::set<std::string> matching;
  for (const std::string& name : offered) {
    if (name.compare(0, context.word.size(), context.word) == 0) matching.insert(name);
  }
  completion.candidates.assign(matching.begin(), matching.end());
  return completion;
}

Completer::Context Completer::contextOf(const std::string& text) {
  Context context;
  bool quoted = false;
  std::size_t quoteStart = 0;
  struct Bracket {
    std::size_t at;
    std::size_t commas;
  };
  std::vector<Bracket> open;  // the brackets not yet closed, innermost last
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (quoted) {
      quoted = c != '\'';  // a doubled quote closes the text and opens it again
    } else if (c == '%') {
      return context;  // a comment runs to the end of the line
    } else if (c == '\'') {
      quoted = true;
      quoteStart = i + 1;
    } else if (c == '(' || c == '[' || c == '{') {
      open.push_back({i, 0});
    } else if ((c == ')' || c == ']' || c == '}') && !open.empty()) {
      open.pop_back();
    } else if (c == ',' && !open.empty()) {
      ++open.back().commas;
    }
  }
  if (quoted) {
    context.kind = Context::Kind::kUnit;
    context.word = trailingName(text, quoteStart, text.size());
    // Which argument of which call the text is: `obj.method(` counts obj as the first.
    if (!open.empty() && text[open.back().at] == '(') {
      std::size_t paren = open.back().at;
      std::string method = trailingName(text, 0, paren);
      std::size_t methodStart = paren - method.size();
      bool dotted = methodStart > 0 && text[methodStart - 1] == '.';
      if (takesUnitSystem(method, open.back().commas + (dotted ? 1 : 0)))
        context.kind = Context::Kind::kUnitSystem;
    }
    return context;
  }
  std::string word = trailingName(text, 0, text.size());
  if (startsWithDigit(word)) return context;
  std::size_t start = text.size() - word.size();
  if (start == 0 || text[start - 1] != '.') {
    context.kind = Context::Kind::kName;
    context.word = word;
    return context;
  }
  std::size_t dot = start - 1;
  std::string object = trailingName(text, 0, dot);
  std::size_t objectStart = dot - object.size();
  // Only a variable's own members: `2.5`, `a.b.` and `x(1).` are left alone.
  if (object.empty() || startsWithDigit(object) ||
      (objectStart > 0 && text[objectStart - 1] == '.'))
    return context;
  context.kind = Context::Kind::kMember;
  context.word = word;
  context.object = object;
  return context;
}

std::vector<std::string> Completer::names() const {
  std::vector<std::string> names = workspace_.names();
  for (const std::string& function : Builtins::names()) names.push_back(function);
  for (const UDApplication* application : UDApplicationManager::getApplications()) {
    for (const UDClass* cls : application->getClasses()) names.emplace_back(cls->getName());
  }
  return names;
}

std::vector<std::string> Completer::members(const std::string& variable) const {
  const HostArray* value = workspace_.find(variable);
  if (value == nullptr || value->getClassId() != HostArray::ClassId::Handle || value->isEmpty())
    return {};
  const UDInterface* object = value->getHandle(0);
  if (object == nullptr || !object->isValid()) return {};
  std::vector<std::string> names = Builtins::methodNames(object->getClass());
  for (const std::string& property : Builtins::propertyNames(object->getClass()))
    names.push_back(property);
  return names;
}
