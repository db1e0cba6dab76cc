// The shell's lexer: tokens with their columns, blanks and values, and the lines it refuses.
// Statements as the transcripts write them are lexed there; the forms they leave out are here.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "host/interpreter/Lexer.hpp"
#include "tests/support/ErrorCapture.hpp"

namespace {

// "kind:text@column", a number as "num:text=value", with a leading '_' when blanks come first.
std::vector<std::string> describe(const std::string& line) {
  static const char* const kNames[] = {"id", "num", "str", "(", ")", "[", "]", "{", "}",
                                       ",",  ";",   ".",   "=", "-", "+", ":", "~", "end"};
  std::vector<std::string> described;
  for (const Token& token : Lexer::tokenize(line)) {
    std::ostringstream text;
    text << (token.spaceBefore ? "_" : "") << kNames[static_cast<int>(token.kind)];
    if (token.kind == TokenKind::Identifier || token.kind == TokenKind::String ||
        token.kind == TokenKind::Number)
      text << ":" << token.text;
    if (token.kind == TokenKind::Number) text << "=" << token.number;
    described.push_back(text.str() + "@" + std::to_string(token.column));
  }
  return described;
}

TEST(ShellLexer, TokensCarryColumnsBlanksAndDecodedValues) {
  struct Case {
    const char* line;
    std::vector<std::string> tokens;
  } cases[] = {
      {"   ", {"end@4"}},
      {".5 2. 1e-3 1E+3 007",
       {"num:.5=0.5@1", "_num:2.=2@4", "_num:1e-3=0.001@7", "_num:1E+3=1000@12", "_num:007=7@17",
        "end@20"}},
      {"'' 'it''s' '''' 'a % b' 'é'",
       {"str:@1", "_str:it's@4", "_str:'@12", "_str:a % b@17", "_str:é@25", "end@29"}},
      {"\tx\r", {"_id:x@2", "end@4"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    EXPECT_EQ(describe(c.line), c.tokens);
  }
}

TEST(ShellLexer, RefusedLinesNameTheColumn) {
  struct Case {
    std::string line;
    const char* message;
  } cases[] = {
      {"x = 'it''", "unterminated string at column 5"},
      {"x = 1)", "unbalanced parenthesis at column 6"},
      {"3 * 4", "operator '*' is not supported at column 3"},
      {"[1 2", "unbalanced bracket at column 1"},
      {"[(1", "unbalanced parenthesis at column 2"},  // the innermost one
      {"[1 2)", "unbalanced parenthesis at column 5"},
      {"c{1", "unbalanced brace at column 2"},
      {"x == 1", "operator '==' is not supported at column 3"},
      {"\"text\"", "double-quoted text is not supported, use 'single quotes', at column 1"},
      {"x = #", "unexpected character '#' at column 5"},
      {std::string("x\x01"), "unexpected character '\\x01' at column 2"},
      {"x = 2abc", "malformed number at column 5"},
      {"1.2.3", "malformed number at column 1"},
      {std::string(65, '['), "nesting deeper than 64 levels at column 65"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    EXPECT_UNIT_ERROR(Lexer::tokenize(c.line), "CALVEX:parse", c.message);
  }
}

TEST(ShellLexer, NestingUpToTheLimitAndLongLinesAreFine) {
  std::string nested =
      std::string(Lexer::kMaxNesting, '(') + "1" + std::string(Lexer::kMaxNesting, ')');
  EXPECT_EQ(Lexer::tokenize(nested).size(), 2 * Lexer::kMaxNesting + 2);
  std::string row = "[";
  for (int i = 0; i < 100000; ++i) row += "1 ";
  EXPECT_EQ(Lexer::tokenize(row + "]").size(), 100003u);
}

}  // namespace
