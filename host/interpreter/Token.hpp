#pragma once

// File: Token.hpp
// One token of a line of the shell's language, as the Lexer hands it to the Parser.
//
// Example: `u.name = 'furlong'` gives Identifier "u", Dot, Identifier "name", Assign,
// String "furlong" and End, with columns 1, 2, 3, 8, 10 and 19.

#include <cstddef>
#include <string>

enum class TokenKind {
  Identifier,
  Number,
  String,
  LeftParen,
  RightParen,
  LeftBracket,
  RightBracket,
  LeftBrace,
  RightBrace,
  Comma,
  Semicolon,
  Dot,
  Assign,
  Minus,
  Plus,
  Colon,
  Tilde,
  End
};

struct Token {
  TokenKind kind = TokenKind::End;
  // The name of an identifier, the text of a string (quotes removed, '' made '), the
  // characters of a number or of a punctuation mark; empty for End.
  std::string text;
  double number = 0.0;       // the value of a Number
  std::size_t column = 0;    // 1-based column of the first character
  bool spaceBefore = false;  // blanks between this token and the previous one
};
