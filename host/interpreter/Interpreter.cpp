#include "host/interpreter/Interpreter.hpp"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/Console.hpp"
#include "host/FailureReport.hpp"
#include "host/Format.hpp"
#include "host/UDApplicationManager.hpp"
#include "host/UDClass.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"
#include "host/interpreter/Ast.hpp"
#include "host/interpreter/InterpreterError.hpp"
#include "host/interpreter/Lexer.hpp"
#include "host/interpreter/Parser.hpp"
#include "host/interpreter/ValueDisplay.hpp"

namespace {

std::vector<HostArrayPtr> single(HostArrayPtr value) {
  std::vector<HostArrayPtr> values;
  values.push_back(std::move(value));
  return values;
}

HostArrayPtr emptyDouble() { return HostArrayPtr(HostArray::createDoubleMatrix(0, 0)); }

[[noreturn]] void raiseUndefined(const std::string& name) {
  raiseInterpreterError(kUndefinedFunction, "Undefined function or variable '" + name + "'.");
}

}  // namespace

Interpreter::Interpreter() : builtins_(workspace_) {
  previousWarningHandler_ =
      utSetWarningHandler([](const std::string& identifier, const std::string& text) {
        if (identifier.empty()) {
          utPrintf("Warning: %s\n", text.c_str());
        } else {
          utPrintf("Warning (%s): %s\n", identifier.c_str(), text.c_str());
        }
      });
}

Interpreter::~Interpreter() { utSetWarningHandler(std::move(previousWarningHandler_)); }

Interpreter::Outcome Interpreter::execute(const std::string& line) {
  bool exit = false;
  std::optional<std::string> failure = FailureReport::capture([&] {
    std::vector<Statement> statements = Parser::parse(Lexer::tokenize(line));
    for (const Statement& statement : statements) {
      run(statement);
      if (builtins_.exitRequested()) {
        exit = true;
        return;
      }
    }
  });
  if (failure) {
    utPrintf("%s\n", failure->c_str());
    return Outcome::kFailed;
  }
  return exit ? Outcome::kExit : Outcome::kCompleted;
}

void Interpreter::run(const Statement& statement) {
  switch (statement.kind) {
    case Statement::Kind::Expression: {
      const Expr& value = *statement.value;
      if (value.kind == Expr::Kind::Name && workspace_.has(value.text)) {
        if (statement.display) ValueDisplay::display(value.text, *workspace_.find(value.text));
        return;
      }
      showResult(statement, evaluate(value, 0));
      return;
    }
    case Statement::Kind::Assign: {
      const std::string& name = statement.targets[0];
      workspace_.assign(name, evaluateOne(*statement.value));
      if (statement.display) ValueDisplay::display(name, *workspace_.find(name));
      return;
    }
    case Statement::Kind::PropertyAssign: {
      const std::string& name = statement.targets[0];
      HostArrayPtr value = evaluateOne(*statement.value);
      const HostArray* target = workspace_.find(name);
      if (target == nullptr) raiseUndefined(name);
      if (target->getClassId() != HostArray::ClassId::Handle) {
        raiseInterpreterError(kBadSubscript,
                              utFormat("Properties belong to objects; '%s' is of class '%s'.",
                                       name.c_str(), target->getClassName()));
      }
      if (target->getNumberOfElements() != 1) {
        raiseInterpreterError(kNonScalarObject,
                              utFormat("A property is set on one object; '%s' holds %zu.",
                                       name.c_str(), target->getNumberOfElements()));
      }
      hostSetProperty(target->getHandle(0), statement.property, value.get());
      if (statement.display) ValueDisplay::display(name, *target);
      return;
    }
    case Statement::Kind::MultiAssign: {
      int count = static_cast<int>(statement.targets.size());
      Values results = evaluate(*statement.value, count);
      if (static_cast<int>(results.size()) < count)
        raiseInterpreterError(kTooManyOutputs, "Too many output arguments.");
      for (std::size_t i = 0; i < statement.targets.size(); ++i) {
        if (statement.targets[i] == "~") continue;
        workspace_.assign(statement.targets[i],
                          results[i] != nullptr ? std::move(results[i]) : emptyDouble());
      }
      if (!statement.display) return;
      for (const std::string& name : statement.targets) {
        if (name != "~") ValueDisplay::display(name, *workspace_.find(name));
      }
      return;
    }
    case Statement::Kind::Command: {
      const std::string& name = statement.targets[0];
      if (workspace_.has(name)) {
        raiseInterpreterError(kCommandSyntax,
                              "'" + name + "' is a variable; it cannot take words as a command.");
      }
      Values words;
      for (const std::string& word : statement.words)
        words.emplace_back(HostArray::createString(word.c_str()));
      showResult(statement, callFunction(name, std::move(words), {}, 0));
      return;
    }
  }
}

// A first result of a statement that asked for none becomes `ans`.
void Interpreter::showResult(const Statement& statement, Values results) {
  if (results.empty() || results[0] == nullptr) return;
  workspace_.assign("ans", std::move(results[0]));
  if (statement.display) ValueDisplay::display("ans", *workspace_.find("ans"));
}

Interpreter::Values Interpreter::evaluate(const Expr& expr, int nargout) {
  switch (expr.kind) {
    case Expr::Kind::Number:
      return single(HostArrayPtr(HostArray::createDoubleScalar(expr.number)));
    case Expr::Kind::String:
      return single(HostArrayPtr(HostArray::createString(expr.text)));
    case Expr::Kind::Row: {
      Values elements;
      for (const auto& element : expr.operands) elements.push_back(evaluateOne(*element));
      return single(ArrayOperations::concatenate(std::move(elements)));
    }
    case Expr::Kind::Colon:
      raiseInterpreterError(kBadIndex,
                            utFormat("':' stands for a whole row or column only inside an index "
                                     "(column %zu).",
                                     expr.column));
    case Expr::Kind::Negate:
      return single(ArrayOperations::negate(*evaluateOne(*expr.operands[0])));
    case Expr::Kind::Plus:
      return single(ArrayOperations::plus(*evaluateOne(*expr.operands[0])));
    case Expr::Kind::Name:
      return callName(expr.text, nullptr, nargout);
    case Expr::Kind::Field:
      return member(expr, nullptr, nargout);
    case Expr::Kind::Call: {
      const Expr& callee = *expr.operands[0];
      if (callee.kind == Expr::Kind::Name) return callName(callee.text, &expr.operands, nargout);
      if (callee.kind == Expr::Kind::Field) return member(callee, &expr.operands, nargout);
      HostArrayPtr value = evaluateOne(callee);
      return single(ArrayOperations::index(*value, subscripts(expr.operands)));
    }
    case Expr::Kind::BraceIndex: {
      HostArrayPtr value = evaluateOne(*expr.operands[0]);
      return single(ArrayOperations::cellContent(*value, subscripts(expr.operands)));
    }
  }
  return {};
}

// A method may leave its result empty; the value is then [].
HostArrayPtr Interpreter::evaluateOne(const Expr& expr) {
  Values values = evaluate(expr, 1);
  if (values.empty()) raiseInterpreterError(kTooManyOutputs, "Too many output arguments.");
  return values[0] != nullptr ? std::move(values[0]) : emptyDouble();
}

Interpreter::Values Interpreter::arguments(const Operands& operands,
                                           std::vector<std::string>* names) {
  Values values;
  for (std::size_t i = 1; i < operands.size(); ++i) {
    const Expr& operand = *operands[i];
    values.push_back(evaluateOne(operand));
    if (names != nullptr) {
      bool variable = operand.kind == Expr::Kind::Name && workspace_.has(operand.text);
      names->push_back(variable ? operand.text : "");
    }
  }
  return values;
}

std::vector<ArrayOperations::Subscript> Interpreter::subscripts(const Operands& operands) {
  std::vector<ArrayOperations::Subscript> result;
  for (std::size_t i = 1; i < operands.size(); ++i) {
    if (operands[i]->kind == Expr::Kind::Colon) {
      ArrayOperations::Subscript all;
      all.all = true;
      result.push_back(all);
    } else {
      result.push_back(ArrayOperations::subscriptOf(*evaluateOne(*operands[i])));
    }
  }
  return result;
}

// Variables come first, then the shell's functions, then classes; any other name is a
// method of the first argument's class.
Interpreter::Values Interpreter::callName(const std::string& name, const Operands* call,
                                          int nargout) {
  if (workspace_.has(name)) {
    if (call == nullptr) return single(workspace_.copy(name));
    std::vector<ArrayOperations::Subscript> positions = subscripts(*call);
    // The subscripts were evaluated first: the variable is looked up again.
    const HostArray* value = workspace_.find(name);
    if (value == nullptr) raiseUndefined(name);
    return single(ArrayOperations::index(*value, positions));
  }
  std::vector<std::string> names;
  Values args = call != nullptr ? arguments(*call, &names) : Values();
  return callFunction(name, std::move(args), names, nargout);
}

Interpreter::Values Interpreter::callFunction(const std::string& name, Values args,
                                              const std::vector<std::string>& names, int nargout) {
  if (Builtins::has(name)) return builtins_.call(name, nargout, std::move(args), names);
  if (UDApplicationManager::findClass(name.c_str()) != nullptr) {
    if (!args.empty()) raiseInterpreterError(kTooManyInputs, "Too many input arguments.");
    UDInterfacePtr object(hostConstruct(name));
    return single(HostArrayPtr(HostArray::createHandleArray({object.get()})));
  }
  return invoke(name, nargout, args);
}

Interpreter::Values Interpreter::member(const Expr& field, const Operands* call, int nargout) {
  HostArrayPtr object = evaluateOne(*field.operands[0]);
  const std::string& name = field.text;
  if (object->getClassId() != HostArray::ClassId::Handle) {
    raiseInterpreterError(kBadSubscript,
                          utFormat("Dot indexing is not supported for values of class '%s'.",
                                   object->getClassName()));
  }
  if (object->isEmpty())
    raiseInterpreterError(kBadSubscript, "Dot indexing is not supported for an empty handle.");
  UDInterface* first = object->getHandle(0);
  if (first == nullptr) raiseInterpreterError("CALVEX:InvalidObject", "Invalid or deleted object.");
  if (first->getClass()->findMethod(name.c_str()) != nullptr) {
    Values args;
    args.push_back(std::move(object));
    if (call != nullptr) {
      for (HostArrayPtr& arg : arguments(*call, nullptr)) args.push_back(std::move(arg));
    }
    return invoke(name, nargout, args);
  }
  if (object->getNumberOfElements() != 1) {
    raiseInterpreterError(kNonScalarObject,
                          utFormat("Property '%s' is read from one object, not from %zu.",
                                   name.c_str(), object->getNumberOfElements()));
  }
  HostArrayPtr value(hostGetProperty(first, name));
  if (call == nullptr) return single(std::move(value));
  return single(ArrayOperations::index(*value, subscripts(*call)));
}

Interpreter::Values Interpreter::invoke(const std::string& method, int nargout,
                                        const Values& args) {
  std::vector<const HostArray*> raw;
  raw.reserve(args.size());
  for (const HostArrayPtr& arg : args) raw.push_back(arg.get());
  std::vector<HostArray*> results = hostInvokeMethod(method, nargout, raw);
  Values values;
  values.reserve(results.size());
  for (HostArray* result : results) values.emplace_back(result);
  return values;
}
