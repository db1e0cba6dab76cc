#pragma once

// File: UDMethodSignature.hpp
// One way of calling a method: the data types of its arguments and of its results.
// The first argument is the object (or objects) the method is called on. When the last
// argument repeats, a call may pass any number of further arguments of its type.
//
// Example (a method taking an object and one or more names, returning a double):
//   auto* signature = new UDMethodSignature;
//   signature->addArgument("handle", "unit");
//   signature->addArgument("string", "name");
//   signature->setLastArgumentRepeats(true);
//   signature->addResult("double");

#include <string>
#include <vector>

class UDDataType;

class UDMethodSignature {
 public:
  UDMethodSignature() = default;

  // Appends an argument of the registered type of that name; the name of the argument
  // may be null. Throws std::logic_error for an unknown type name.
  void addArgument(const char* typeName, const char* name);
  // Appends a result of the registered type of that name; throws std::logic_error for
  // an unknown type name.
  void addResult(const char* typeName);
  // Lets calls repeat the last declared argument; throws std::logic_error when no
  // argument is declared yet.
  void setLastArgumentRepeats(bool repeats);
  bool getLastArgumentRepeats() const { return lastArgumentRepeats_; }

  int getArgumentCount() const { return static_cast<int>(arguments_.size()); }
  UDDataType* getArgumentType(int index) const;
  // "" for an argument declared without a name.
  const char* getArgumentName(int index) const;
  // The type of the argument at that position of a call, taking repetition into account;
  // null when the signature has no argument at that position.
  UDDataType* getTypeAtPosition(int position) const;
  // Whether a call with that many arguments fits the declared count.
  bool acceptsArgumentCount(int count) const;

  int getResultCount() const { return static_cast<int>(results_.size()); }
  UDDataType* getResultType(int index) const;

 private:
  struct Argument {
    UDDataType* type;
    std::string name;
  };
  std::vector<Argument> arguments_;
  std::vector<UDDataType*> results_;
  bool lastArgumentRepeats_ = false;
};
