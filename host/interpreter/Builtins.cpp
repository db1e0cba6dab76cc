#include "host/interpreter/Builtins.hpp"

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/Console.hpp"
#include "host/Format.hpp"
#include "host/UDApplication.hpp"
#include "host/UDApplicationManager.hpp"
#include "host/UDClass.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDPropInfo.hpp"
#include "host/interpreter/InterpreterError.hpp"
#include "host/interpreter/ValueDisplay.hpp"
#include "host/interpreter/Workspace.hpp"

struct Builtins::Call {
  const Entry& entry;
  int nargout;
  std::vector<HostArrayPtr> args;
  const std::vector<std::string>& argNames;

  const HostArray& arg(std::size_t i) const { return *args[i]; }
};

namespace {

constexpr int kAny = std::numeric_limits<int>::max();

std::vector<HostArrayPtr> one(HostArray* value) {
  std::vector<HostArrayPtr> result;
  result.emplace_back(value);
  return result;
}

std::vector<HostArrayPtr> none() { return {}; }

bool isText(const HostArray& value) {
  return value.getClassId() == HostArray::ClassId::Char && value.getM() <= 1;
}

std::string textArgument(const HostArray& value, const char* function, std::size_t position) {
  if (!isText(value)) {
    raiseInterpreterError(kInvalidArgument,
                          utFormat("Argument %zu of %s must be a text.", position + 1, function));
  }
  return value.getString();
}

// The one valid object that the argument holds.
UDInterface* objectArgument(const HostArray& value, const char* function) {
  if (value.getClassId() != HostArray::ClassId::Handle || value.getNumberOfElements() != 1) {
    raiseInterpreterError(kInvalidArgument,
                          utFormat("The first argument of %s must be one object.", function));
  }
  UDInterface* object = value.getHandle(0);
  if (object == nullptr || !object->isValid())
    raiseInterpreterError("CALVEX:InvalidObject", "Invalid or deleted object.");
  return object;
}

// The class of the objects the argument holds, or the class that it names.
const UDClass* classArgument(const HostArray& value, const char* function) {
  if (value.getClassId() == HostArray::ClassId::Handle && !value.isEmpty() &&
      value.getHandle(0) != nullptr)
    return value.getHandle(0)->getClass();
  if (isText(value)) {
    std::string name = value.getString();
    if (const UDClass* cls = UDApplicationManager::findClass(name.c_str())) return cls;
    raiseInterpreterError(kUndefinedClass, "Undefined class '" + name + "'.");
  }
  raiseInterpreterError(kInvalidArgument,
                        utFormat("%s takes an object or a class name.", function));
}

HostArray* cellOfTexts(const std::vector<std::string>& texts) {
  HostArrayPtr cell(HostArray::createCellMatrix(1, texts.size()));
  for (std::size_t i = 0; i < texts.size(); ++i)
    cell->setCell(i, HostArray::createString(texts[i].c_str()));
  return cell.release();
}

void printList(const std::string& title, const std::vector<std::string>& names) {
  std::string text = title + "\n";
  for (const std::string& name : names) text += "    " + name + "\n";
  utPrintf("%s", text.c_str());
}

}  // namespace

const std::vector<Builtins::Entry>& Builtins::entries() {
  static const std::vector<Entry> table = {
      {"true", "true: the logical value true", &Builtins::constant, 0, 0, 1},
      {"false", "false: the logical value false", &Builtins::constant, 0, 0, 1},
      {"Inf", "Inf: positive infinity", &Builtins::constant, 0, 0, 1},
      {"inf", "inf: positive infinity", &Builtins::constant, 0, 0, 1},
      {"NaN", "NaN: not a number", &Builtins::constant, 0, 0, 1},
      {"nan", "nan: not a number", &Builtins::constant, 0, 0, 1},
      {"get",
       "get(obj) lists the object's properties and values; get(obj, 'name') returns one value",
       &Builtins::get, 1, 2, 1},
      {"set", "set(obj, 'name', value) sets a property, as obj.name = value does", &Builtins::set,
       3, 3, 0},
      {"methods", "methods(obj) or methods ClassName lists the methods of the class",
       &Builtins::methods, 1, 1, 1},
      {"properties",
       "properties(obj) or properties ClassName lists the visible properties of the class",
       &Builtins::properties, 1, 1, 1},
      {"class", "class(x) returns the name of the value's class ('double', 'Unit', ...)",
       &Builtins::classOf, 1, 1, 1},
      {"display", "display(x) shows the value with its name", &Builtins::display, 1, 1, 0},
      {"disp", "disp(x) shows the value without its name", &Builtins::disp, 1, 1, 0},
      {"numel", "numel(x) returns the number of elements", &Builtins::numel, 1, 1, 1},
      {"isempty", "isempty(x) returns true when x has no elements", &Builtins::isempty, 1, 1, 1},
      {"help", "help lists what the shell offers; help name describes a class or a function",
       &Builtins::help, 0, 1, 1},
      {"who", "who lists the variables", &Builtins::who, 0, 0, 0},
      {"clear", "clear releases every variable; clear x y releases those", &Builtins::clear, 0,
       kAny, 0},
      {"exit", "exit ends the session", &Builtins::exit, 0, 0, 0},
      {"quit", "quit ends the session", &Builtins::exit, 0, 0, 0},
  };
  return table;
}

const Builtins::Entry* Builtins::find(const std::string& name) {
  for (const Entry& entry : entries()) {
    if (name == entry.name) return &entry;
  }
  return nullptr;
}

bool Builtins::has(const std::string& name) { return find(name) != nullptr; }

std::vector<std::string> Builtins::names() {
  std::vector<std::string> names;
  for (const Entry& entry : entries()) names.emplace_back(entry.name);
  return names;
}

std::vector<std::string> Builtins::methodNames(const UDClass* cls) {
  std::vector<std::string> names;
  for (const UDClass* c = cls; c != nullptr; c = c->getSuperClass()) {
    for (const UDMethodInfo* method : c->getMethods()) {
      if (cls->findMethod(method->getName()) == method) names.emplace_back(method->getName());
    }
  }
  return names;
}

std::vector<std::string> Builtins::propertyNames(const UDClass* cls) {
  std::vector<std::string> names;
  for (const UDClass* c = cls; c != nullptr; c = c->getSuperClass()) {
    for (const UDPropInfo* property : c->getProperties()) {
      if (property->getVisible() && cls->findProperty(property->getName()) == property)
        names.emplace_back(property->getName());
    }
  }
  return names;
}

std::vector<HostArrayPtr> Builtins::call(const std::string& name, int nargout,
                                         std::vector<HostArrayPtr> args,
                                         const std::vector<std::string>& argNames) {
  const Entry* entry = find(name);
  if (entry == nullptr)
    raiseInterpreterError(kUndefinedFunction, "Undefined function or variable '" + name + "'.");
  int count = static_cast<int>(args.size());
  if (count < entry->minArgs)
    raiseInterpreterError(kNotEnoughInputs, "Not enough input arguments.");
  if (count > entry->maxArgs) raiseInterpreterError(kTooManyInputs, "Too many input arguments.");
  if (nargout > entry->maxOutputs)
    raiseInterpreterError(kTooManyOutputs, "Too many output arguments.");
  for (const HostArrayPtr& arg : args) {
    if (arg == nullptr) throw std::invalid_argument("Builtins::call: null argument");
  }
  Call call{*entry, nargout, std::move(args), argNames};
  return (this->*(entry->handler))(call);
}

std::vector<HostArrayPtr> Builtins::constant(Call& call) {
  std::string name = call.entry.name;
  if (name == "true" || name == "false") return one(HostArray::createLogicalScalar(name == "true"));
  if (name == "Inf" || name == "inf")
    return one(HostArray::createDoubleScalar(std::numeric_limits<double>::infinity()));
  return one(HostArray::createDoubleScalar(std::numeric_limits<double>::quiet_NaN()));
}

std::vector<HostArrayPtr> Builtins::get(Call& call) {
  UDInterface* object = objectArgument(call.arg(0), "get");
  if (call.args.size() == 2)
    return one(hostGetProperty(object, textArgument(call.arg(1), "get", 1)));
  if (call.nargout > 0) {
    raiseInterpreterError(kTooManyOutputs,
                          "get(obj) only shows the properties; get(obj, 'name') returns one.");
  }
  utPrintf("%s", ValueDisplay::describeProperties(object).c_str());
  return none();
}

std::vector<HostArrayPtr> Builtins::set(Call& call) {
  UDInterface* object = objectArgument(call.arg(0), "set");
  hostSetProperty(object, textArgument(call.arg(1), "set", 1), &call.arg(2));
  return none();
}

std::vector<HostArrayPtr> Builtins::methods(Call& call) {
  const UDClass* cls = classArgument(call.arg(0), "methods");
  std::vector<std::string> names = methodNames(cls);
  if (call.nargout > 0) return one(cellOfTexts(names));
  printList(std::string("Methods for class ") + cls->getName() + ":", names);
  return none();
}

std::vector<HostArrayPtr> Builtins::properties(Call& call) {
  const UDClass* cls = classArgument(call.arg(0), "properties");
  std::vector<std::string> names = propertyNames(cls);
  if (call.nargout > 0) return one(cellOfTexts(names));
  if (names.empty()) {
    utPrintf("No visible properties for class %s.\n", cls->getName());
  } else {
    printList(std::string("Properties for class ") + cls->getName() + ":", names);
  }
  return none();
}

std::vector<HostArrayPtr> Builtins::classOf(Call& call) {
  const HostArray& value = call.arg(0);
  std::string name = value.getClassName();
  if (value.getClassId() == HostArray::ClassId::Handle && !value.isEmpty() &&
      value.getHandle(0) != nullptr)
    name = value.getHandle(0)->getClass()->getName();
  return one(HostArray::createString(name.c_str()));
}

std::vector<HostArrayPtr> Builtins::display(Call& call) {
  std::string name = call.argNames.empty() ? "" : call.argNames[0];
  ValueDisplay::display(name.empty() ? "ans" : name, call.arg(0));
  return none();
}

std::vector<HostArrayPtr> Builtins::disp(Call& call) {
  ValueDisplay::disp(call.arg(0));
  return none();
}

std::vector<HostArrayPtr> Builtins::numel(Call& call) {
  return one(HostArray::createDoubleScalar(static_cast<double>(call.arg(0).getNumberOfElements())));
}

std::vector<HostArrayPtr> Builtins::isempty(Call& call) {
  return one(HostArray::createLogicalScalar(call.arg(0).isEmpty()));
}

std::vector<HostArrayPtr> Builtins::help(Call& call) {
  std::string text;
  if (call.args.empty()) {
    text = helpText();
  } else {
    const HostArray& topic = call.arg(0);
    std::string name = isText(topic) ? topic.getString() : "";
    const Entry* entry = find(name);
    const UDClass* cls = nullptr;
    if (topic.getClassId() == HostArray::ClassId::Handle) {
      cls = classArgument(topic, "help");
    } else if (!name.empty()) {
      cls = UDApplicationManager::findClass(name.c_str());
      // `help u` for a variable that holds objects describes their class.
      const HostArray* variable = workspace_.find(name);
      if (cls == nullptr && entry == nullptr && variable != nullptr &&
          variable->getClassId() == HostArray::ClassId::Handle && !variable->isEmpty())
        cls = classArgument(*variable, "help");
    }
    if (cls != nullptr) {
      text = hostDescribeClass(cls);
    } else if (entry != nullptr) {
      text = std::string(entry->usage) + "\n";
    } else {
      raiseInterpreterError(kUndefinedFunction, "No help for '" + name +
                                                    "': it is neither a class nor a "
                                                    "function of the shell.");
    }
  }
  if (call.nargout > 0) return one(HostArray::createString(text.c_str()));
  utPrintf("%s", text.c_str());
  return none();
}

std::string Builtins::helpText() const {
  std::string classes;
  for (const UDApplication* application : UDApplicationManager::getApplications()) {
    for (const UDClass* cls : application->getClasses()) {
      if (!classes.empty()) classes += ", ";
      classes += cls->getName();
    }
  }
  std::string functions;
  for (const Entry& entry : entries()) {
    if (entry.handler == &Builtins::constant) continue;
    if (!functions.empty()) functions += ", ";
    functions += entry.name;
  }
  return "The shell runs a small part of the host language, one statement after another.\n"
         "\n"
         "  x = expr                 assigns; a ';' after a statement hides its result\n"
         "  [a, b] = obj.m(...)      takes two results of a method ([~, b] skips one)\n"
         "  obj.prop = value         sets a property; obj.prop reads it\n"
         "  obj.m(args), m(obj, ...) call a method of the object's class\n"
         "  u = ClassName            constructs an object\n"
         "  x(i), x(i, j), c{i}      index a variable, from 1; ':' takes a whole row or "
         "column\n"
         "  name word ...            passes the words as texts: help Unit, clear x\n"
         "\n"
         "Values: 12, 2.5e-3, -40, Inf, NaN, 'text' ('' for a quote), true, false,\n"
         "[0 1 -2] and [] (an empty text for a method). '%' starts a comment.\n"
         "\n"
         "Classes (help ClassName): " +
         (classes.empty() ? std::string("none loaded") : classes) +
         "\n"
         "Functions (help name): " +
         functions + "\n";
}

std::vector<HostArrayPtr> Builtins::who(Call&) {
  std::vector<std::string> names = workspace_.names();
  if (names.empty()) return none();
  std::string text = "Variables:";
  for (const std::string& name : names) text += " " + name;
  utPrintf("%s\n", text.c_str());
  return none();
}

std::vector<HostArrayPtr> Builtins::clear(Call& call) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < call.args.size(); ++i)
    names.push_back(textArgument(call.arg(i), "clear", i));
  bool all = names.empty();
  for (const std::string& name : names) all = all || name == "all";
  if (all) {
    workspace_.clear();
  } else {
    for (const std::string& name : names) workspace_.remove(name);
  }
  return none();
}

std::vector<HostArrayPtr> Builtins::exit(Call&) {
  exitRequested_ = true;
  return none();
}
