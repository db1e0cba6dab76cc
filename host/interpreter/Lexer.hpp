#pragma once

// File: Lexer.hpp
// Splits one line of the shell's language into tokens. A `%` outside a string starts a
// comment that runs to the end of the line. Brackets are checked here, before any
// parsing, so that an unbalanced one is reported at its own column and nesting stays
// within kMaxNesting.
//
// Example:
//   std::vector<Token> tokens = Lexer::tokenize("x = [0 1 -2]  % exponents");
//   // Identifier x, Assign, LeftBracket, Number 0, Number 1, Minus, Number 2,
//   // RightBracket, End

#include <cstddef>
#include <string>
#include <vector>

#include "host/interpreter/Token.hpp"

class Lexer {
 public:
  // Brackets of all kinds open at once, at most.
  static constexpr std::size_t kMaxNesting = 64;

  // Returns the tokens of the line, ending with an End token. Raises "CALVEX:parse" for an
  // unterminated string, a character outside the language, a malformed number, an
  // unbalanced parenthesis, bracket or brace, or nesting deeper than kMaxNesting.
  static std::vector<Token> tokenize(const std::string& line);
};
