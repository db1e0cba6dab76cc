// The shell's lexer: tokens with their columns and blanks, and the lines it refuses.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/interpreter/Lexer.hpp"
#include "tests/support/ErrorCapture.hpp"

namespace {

// "kind:text@column", with a leading '_' when blanks come before the token.
std::vector<std::string> describe(const std::string& line) {
  static const char* const kNames[] = {"id", "num", "str", "(", ")", "[", "]", "{", "}",
                                       ",",  ";",   ".",   "=", "-", "+", ":", "~", "end"};
  std::vector<std::string> described;
  for (const Token& token : Lexer::tokenize(line)) {
    std::string text = token.spaceBefore ? "_" : "";
    text += kNames[static_cast<int>(token.kind)];
    if (token.kind == TokenKind::Identifier || token.kind == TokenKind::String ||
        token.kind == TokenKind::Number)
      text += ":" + token.text;
    described.push_back(text + "@" + std::to_string(token.column));
  }
  return described;
}

TEST(ShellLexer, TokensCarryColumnsAndTheBlanksBeforeThem) {
  struct Case {
    const char* line;
    std::vector<std::string> tokens;
  } cases[] = {
      {"", {"end@1"}},
      {"   ", {"end@4"}},
      {"u.name = 'furlong'", {"id:u@1", ".@2", "id:name@3", "_=@8", "_str:furlong@10", "end@19"}},
      {"[a, ~] = f(x_1);",
       {"[@1", "id:a@2", ",@3", "_~@5", "]@6", "_=@8", "_id:f@10", "(@11", "id:x_1@12", ")@15",
        ";@16", "end@17"}},
      {"[0 1 -2]", {"[@1", "num:0@2", "_num:1@4", "_-@6", "num:2@7", "]@8", "end@9"}},
      {"c{+1}(:)", {"id:c@1", "{@2", "+@3", "num:1@4", "}@5", "(@6", ":@7", ")@8", "end@9"}},
      {"x = 1 % the rest ' is a comment", {"id:x@1", "_=@3", "_num:1@5", "end@7"}},
      {"%only a comment", {"end@1"}},
      {"\tx\r", {"_id:x@2", "end@4"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    EXPECT_EQ(describe(c.line), c.tokens);
  }
}

TEST(ShellLexer, NumbersAndStringsAreDecoded) {
  struct Case {
    const char* line;
    double number;
  } numbers[] = {{"2", 2},       {"2.5", 2.5},  {".5", 0.5},  {"2.", 2},
                 {"1e-3", 1e-3}, {"1E+3", 1e3}, {"1e3", 1e3}, {"007", 7}};
  for (const Case& c : numbers) {
    SCOPED_TRACE(c.line);
    std::vector<Token> tokens = Lexer::tokenize(c.line);
    ASSERT_EQ(tokens.size(), 2u);
    EXPECT_EQ(tokens[0].kind, TokenKind::Number);
    EXPECT_EQ(tokens[0].number, c.number);
  }
  struct Text {
    const char* line;
    const char* text;
  } texts[] = {{"''", ""}, {"'it''s'", "it's"}, {"''''", "'"}, {"'a % b'", "a % b"}, {"'é'", "é"}};
  for (const Text& c : texts) {
    SCOPED_TRACE(c.line);
    std::vector<Token> tokens = Lexer::tokenize(c.line);
    ASSERT_EQ(tokens.size(), 2u);
    EXPECT_EQ(tokens[0].kind, TokenKind::String);
    EXPECT_EQ(tokens[0].text, c.text);
  }
}

TEST(ShellLexer, RefusedLinesNameTheColumn) {
  struct Case {
    std::string line;
    const char* message;
  } cases[] = {
      {"x = 'abc", "unterminated string at column 5"},
      {"x = 'it''", "unterminated string at column 5"},
      {"x = (1", "unbalanced parenthesis at column 5"},
      {"f((1)", "unbalanced parenthesis at column 2"},
      {"x = 1)", "unbalanced parenthesis at column 6"},
      {"[1 2", "unbalanced bracket at column 1"},
      {"[1 2)", "unbalanced parenthesis at column 5"},
      {"c{1", "unbalanced brace at column 2"},
      {"(x % )", "unbalanced parenthesis at column 1"},
      {"3 * 4", "operator '*' is not supported at column 3"},
      {"a^2", "operator '^' is not supported at column 2"},
      {"x == 1", "operator '==' is not supported at column 3"},
      {"\"text\"", "double-quoted text is not supported, use 'single quotes', at column 1"},
      {"x = #", "unexpected character '#' at column 5"},
      {std::string("x\x01"), "unexpected character '\\x01' at column 2"},
      {"x = 2abc", "malformed number at column 5"},
      {"1.2.3", "malformed number at column 1"},
      {std::string(64, '(') + "1" + std::string(64, ')') + ")",
       "unbalanced parenthesis at column 130"},
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
  row += "]";
  EXPECT_EQ(Lexer::tokenize(row).size(), 100003u);
}

}  // namespace
