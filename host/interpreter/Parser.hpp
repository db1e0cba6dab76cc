#pragma once

// File: Parser.hpp
// Reads the tokens of one line into statements. The language is a small subset of the
// host language:
//
//   x = expr   [a, b] = expr   [~, b] = expr   obj.prop = expr   expr
//   name word ...               command form: the words are passed as texts
//   statements are separated by ',' (result shown) or ';' (result hidden)
//
//   expr: 12  2.5e-3  'text'  name  [a b, c]  (expr)  -expr  +expr
//         expr.name  expr(args)  expr{args}       where an index argument may be ':'
//
// Arithmetic is not part of the language: a binary '+' or '-' is an error. Inside
// brackets, blanks separate elements as in the host language: [1 -2] has two elements,
// and so has [a (1)]. Recursion only follows brackets, which the Lexer limits.
//
// Example:
//   std::vector<Statement> statements = Parser::parse(Lexer::tokenize("u = Unit; u.name"));

#include <vector>

#include "host/interpreter/Ast.hpp"
#include "host/interpreter/Token.hpp"

class Parser {
 public:
  // Returns the statements of the line (none for an empty line or a comment). Raises
  // "CALVEX:parse" naming the column of the first token that does not fit.
  static std::vector<Statement> parse(const std::vector<Token>& tokens);
};
