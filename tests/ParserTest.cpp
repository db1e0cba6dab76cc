// The shell's parser: the statements and expressions of a line, and the lines it refuses.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "host/interpreter/Lexer.hpp"
#include "host/interpreter/Parser.hpp"
#include "tests/support/ErrorCapture.hpp"

namespace {

std::string show(const Expr& e);

std::string showList(const std::vector<std::unique_ptr<Expr>>& operands, std::size_t from,
                     const char* separator) {
  std::string text;
  for (std::size_t i = from; i < operands.size(); ++i) {
    if (i > from) text += separator;
    text += show(*operands[i]);
  }
  return text;
}

// Every node in a fully bracketed form, so that the tree's shape shows.
std::string show(const Expr& e) {
  switch (e.kind) {
    case Expr::Kind::Number: {
      char buffer[32];
      std::snprintf(buffer, sizeof buffer, "%g", e.number);
      return buffer;
    }
    case Expr::Kind::String:
      return "'" + e.text + "'";
    case Expr::Kind::Name:
      return e.text;
    case Expr::Kind::Row:
      return "[" + showList(e.operands, 0, " ") + "]";
    case Expr::Kind::Colon:
      return ":";
    case Expr::Kind::Negate:
      return "(-" + show(*e.operands[0]) + ")";
    case Expr::Kind::Plus:
      return "(+" + show(*e.operands[0]) + ")";
    case Expr::Kind::Field:
      return show(*e.operands[0]) + "." + e.text;
    case Expr::Kind::Call:
      return show(*e.operands[0]) + "(" + showList(e.operands, 1, ", ") + ")";
    case Expr::Kind::BraceIndex:
      return show(*e.operands[0]) + "{" + showList(e.operands, 1, ", ") + "}";
  }
  return "?";
}

std::string show(const Statement& s) {
  std::string text;
  switch (s.kind) {
    case Statement::Kind::Expression:
      text = show(*s.value);
      break;
    case Statement::Kind::Assign:
      text = s.targets[0] + " = " + show(*s.value);
      break;
    case Statement::Kind::PropertyAssign:
      text = s.targets[0] + "." + s.property + " = " + show(*s.value);
      break;
    case Statement::Kind::MultiAssign:
      text = "[";
      for (std::size_t i = 0; i < s.targets.size(); ++i) text += (i > 0 ? ", " : "") + s.targets[i];
      text += "] = " + show(*s.value);
      break;
    case Statement::Kind::Command:
      text = s.targets[0] + "<";
      for (std::size_t i = 0; i < s.words.size(); ++i) text += (i > 0 ? "|" : "") + s.words[i];
      text += ">";
      break;
  }
  return s.display ? text : text + ";";
}

std::vector<std::string> parse(const std::string& line) {
  std::vector<std::string> shown;
  for (const Statement& s : Parser::parse(Lexer::tokenize(line))) shown.push_back(show(s));
  return shown;
}

TEST(ShellParser, StatementKindsAndSeparators) {
  struct Case {
    const char* line;
    std::vector<std::string> statements;
  } cases[] = {
      {"", {}},
      {";;,", {}},
      {"x = 1", {"x = 1"}},
      {"x = 1, y = 2; z", {"x = 1", "y = 2;", "z"}},
      {"u.name = 'furlong';", {"u.name = 'furlong';"}},
      {"[names, exps] = um.parsecomposition('mole/liter')",
       {"[names, exps] = um.parsecomposition('mole/liter')"}},
      {"[~ b] = f", {"[~, b] = f"}},
      {"methods Unit", {"methods<Unit>"}},
      {"clear x y;", {"clear<x|y>;"}},
      {"help 'Unit' 3", {"help<Unit|3>"}},
      {"u = Unit()", {"u = Unit()"}},
      {"disp (x)", {"disp(x)"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    EXPECT_EQ(parse(c.line), c.statements);
  }
}

TEST(ShellParser, ExpressionShapes) {
  struct Case {
    const char* line;
    const char* shape;
  } cases[] = {
      {"um.calculateconversion('mile', 'meter', 1)", "um.calculateconversion('mile', 'meter', 1)"},
      {"units(2).name", "units(2).name"},
      {"a.b.c(1)(2)", "a.b.c(1)(2)"},
      {"c{2}", "c{2}"},
      {"names(2, :)", "names(2, :)"},
      {"[0 1 1 -2 0 0 0]", "[0 1 1 (-2) 0 0 0]"},
      {"[1, -2,]", "[1 (-2)]"},
      {"[a (1)]", "[a 1]"},
      {"[f(1, 2) -x]", "[f(1, 2) (-x)]"},
      {"[]", "[]"},
      {"[[1 2] [3]]", "[[1 2] [3]]"},
      {"- - -3", "(-3)"},
      {"-+-3", "(+3)"},
      {"((x))", "x"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    std::vector<std::string> statements = parse(c.line);
    ASSERT_EQ(statements.size(), 1u);
    EXPECT_EQ(statements[0], c.shape);
  }
}

TEST(ShellParser, RefusedStatementsNameTheColumn) {
  struct Case {
    const char* line;
    const char* message;
  } cases[] = {
      {"x =", "unexpected end of line at column 4"},
      {"= 3", "unexpected '=' at column 1"},
      {"x = 1 2", "unexpected '2' at column 7"},
      {"x y = 3", "unexpected '=' at column 5"},
      {"x(2) = 3", "unexpected '=' at column 6"},
      {"[] = 3", "unexpected ']' at column 2"},
      {"[a, 1] = f", "unexpected '1' at column 5"},
      {"x = 1 - 2", "operator '-' is not supported at column 7"},
      {"[1 - 2]", "operator '-' is not supported at column 4"},
      {"[1 -2 +]", "unexpected ']' at column 8"},
      {"[1; 2]", "only row vectors are supported: ';' inside brackets at column 3"},
      {"x = {1}", "unexpected '{' at column 5"},
      {"x = :", "unexpected ':' at column 5"},
      {"f(1:2)", "unexpected ':' at column 4"},
      {"u.1", "unexpected '.1' at column 2"},
      {"f(1,)", "unexpected ')' at column 5"},
      {"help x.y", "unexpected '.' at column 7"},
      {"x = 'a' 'b'", "unexpected text 'b' at column 9"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    EXPECT_UNIT_ERROR(parse(c.line), "CALVEX:parse", c.message);
  }
}

TEST(ShellParser, LongRunsOfSignsFoldIntoOneNode) {
  std::string line = "x = " + std::string(100001, '-') + "1";
  EXPECT_EQ(parse(line), std::vector<std::string>{"x = (-1)"});
}

}  // namespace
