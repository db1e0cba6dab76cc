#pragma once

// File: Ast.hpp
// The parsed form of a line of the shell's language: statements over expressions.
//
// Example: `[names, exps] = um.parsecomposition('mole/liter');` is one MultiAssign
// statement with targets {"names", "exps"}, display off, whose value is
//   Call(Field(Name um, "parsecomposition"), String "mole/liter")

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

struct Expr {
  enum class Kind {
    Number,      // number
    String,      // text
    Name,        // text: a variable, function or class name
    Row,         // operands: the elements of [a b c]
    Colon,       // a lone ':' as an index
    Negate,      // operands[0]
    Plus,        // operands[0], unary plus
    Field,       // operands[0] . text
    Call,        // operands[0] ( operands[1..] ): a call or an index
    BraceIndex,  // operands[0] { operands[1..] }
  };

  Expr(Kind k, std::size_t at) : kind(k), column(at) {}

  Kind kind;
  std::size_t column;  // 1-based column where the expression starts
  double number = 0.0;
  std::string text;
  std::vector<std::unique_ptr<Expr>> operands;
};

struct Statement {
  enum class Kind {
    Expression,      // value
    Assign,          // targets[0] = value
    PropertyAssign,  // targets[0] . property = value
    MultiAssign,     // [targets...] = value; "~" skips a result
    Command,         // targets[0] words...: the words are passed as texts
  };

  Kind kind = Kind::Expression;
  std::vector<std::string> targets;
  std::string property;
  std::vector<std::string> words;
  std::unique_ptr<Expr> value;
  bool display = true;  // false when a ';' ends the statement
  std::size_t column = 0;
};
