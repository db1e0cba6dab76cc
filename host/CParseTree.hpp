#pragma once

// File: CParseTree.hpp
// The host's expression parser. It reads an arithmetic expression over names and number
// literals (`kilogram*meter/second^2`) and hands it back in postfix order, which is how the
// units library reads unit compositions.
//
// Example:
//   CParseTree tree("kilogram*meter/second^2");
//   tree.init(false);  // throws Exception* on a syntax error
//   std::vector<std::string> tokens;
//   tree.postFix(tokens);  // kilogram meter * second 2 ^ /
//
// Grammar: names (a letter or underscore, then letters, digits or underscores), number
// literals (2, 2.5, .5, 2., 1e-3, 1E+3), binary + - * / ^ and parentheses, with blanks (spaces
// and tabs) allowed between tokens. ^ binds tighter than * and /, which bind tighter than + and
// -; every operator groups from the left, so a^b^c is (a^b)^c. Where an operand is expected, a
// minus sign directly followed by a number literal (no blank between) belongs to that number:
// second^-1 gives the tokens second, -1, ^. Any other unary minus, and any unary plus, is a
// syntax error.
//
// The parser is iterative: nesting depth is limited only by memory, and time is linear in the
// length of the text.

#include <string>
#include <string_view>
#include <vector>

class CParseTree {
 public:
  // A null text is read as the empty text.
  explicit CParseTree(const char* text);
  ~CParseTree();

  // Parses the text; the flag does not change the result. Raises a new Exception (the catcher
  // deletes it) on a syntax error, naming the offending token and its column, counted from 1:
  // "unexpected ')' at column 7", "unexpected end of text at column 8". After a failed parse
  // postFix yields nothing.
  void init(bool flag);

  // Appends the tokens of the last successful parse in postfix order: operands as written
  // (a folded minus in front of its number), operators as one-character tokens after their
  // operands, no parentheses. Appends nothing before a parse or after a failed one.
  void postFix(std::vector<std::string>& tokens) const;

  // Parses the text as init does, without copying it or its tokens: `tokens` is given the
  // postfix tokens as views into the text, and keeps its capacity for the next parse.
  // Raises init's Exception*, after which `tokens` holds no meaning.
  static void parse(std::string_view text, std::vector<std::string_view>& tokens);

 private:
  std::string text_;
  std::vector<std::string> postfix_;
};
