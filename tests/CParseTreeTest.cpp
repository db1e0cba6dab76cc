#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

#include "host/CParseTree.hpp"
#include "tests/support/ErrorCapture.hpp"

namespace {

using Tokens = std::vector<std::string>;

Tokens parse(const char* text) {
  CParseTree tree(text);
  tree.init(false);
  Tokens tokens;
  tree.postFix(tokens);
  return tokens;
}
Tokens parse(const std::string& text) { return parse(text.c_str()); }

// The message of the Exception* that parsing raises (deleted here), or "" when none.
std::string parseError(const char* text) {
  auto error = captureError([&] { parse(text); });
  return error ? error->message : "";
}
std::string parseError(const std::string& text) { return parseError(text.c_str()); }

// Compositions as the transcripts write them parse there; the groupings and number forms they
// leave out, and every syntax error, are here.
TEST(CParseTree, PostfixFollowsPrecedenceLeftGroupingAndFoldedMinus) {
  struct Case {
    const char* text;
    Tokens postfix;
  } cases[] = {
      {"a^b^c", {"a", "b", "^", "c", "^"}},
      {"a-b-c", {"a", "b", "-", "c", "-"}},
      {"a+b*c^d", {"a", "b", "c", "d", "^", "*", "+"}},
      {" \tm_2 *\t_x ", {"m_2", "_x", "*"}},
      {"2.5*.5*2.*1e-3*1E+3", {"2.5", ".5", "*", "2.", "*", "1e-3", "*", "1E+3", "*"}},
      {"2*-3", {"2", "-3", "*"}},
      {"2 - -3", {"2", "-3", "-"}},
      {"(-2)^ -2", {"-2", "-2", "^"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(parse(c.text), c.postfix);
  }
}

TEST(CParseTree, SyntaxErrorsNameTokenAndColumn) {
  struct Case {
    const char* text;
    const char* message;
  } cases[] = {
      {nullptr, "unexpected end of text at column 1"},
      {"meter*", "unexpected end of text at column 7"},
      {"(meter))", "unexpected ')' at column 8"},
      {"()", "unexpected ')' at column 2"},
      {"meter second", "unexpected 'second' at column 7"},
      {"meter**2", "unexpected '*' at column 7"},
      {"meter(2)", "unexpected '(' at column 6"},
      {"me#ter", "unexpected character '#' at column 3"},
      {"a.b", "unexpected character '.' at column 2"},
      {"1.5.2", "unexpected '.2' at column 4"},
      {"2e", "unexpected 'e' at column 2"},
      {"-meter", "unexpected '-' at column 1"},
      {"--2", "unexpected '-' at column 1"},
      {"second^+1", "unexpected '+' at column 8"},
      {"meter\n", "unexpected byte 0x0A at column 6"},
      {"m\xC3\xA8tre", "unexpected byte 0xC3 at column 2"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(parseError(c.text), c.message);
  }
}

TEST(CParseTree, EveryByteOutsideTheGrammarIsRejected) {
  const std::string allowed = " \t_.+-*/^()";
  for (int byte = 1; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (std::isalnum(byte) || allowed.find(c) != std::string::npos) continue;
    SCOPED_TRACE(byte);
    EXPECT_NE(parseError(std::string("a*") + c + "b").find("at column 3"), std::string::npos);
  }
}

// postFix appends to what the list holds, and gives nothing before init or after a failed one.
TEST(CParseTree, PostFixAppendsAndAFailedParseYieldsNothing) {
  CParseTree tree("a*b");
  Tokens tokens{"kept"};
  tree.postFix(tokens);
  EXPECT_EQ(tokens, Tokens{"kept"});
  tree.init(false);
  tree.init(false);
  tree.postFix(tokens);
  EXPECT_EQ(tokens, (Tokens{"kept", "a", "b", "*"}));

  CParseTree broken("a*b)");
  EXPECT_TRUE(captureError([&] { broken.init(false); }));
  broken.postFix(tokens);
  EXPECT_EQ(tokens.size(), 4u);
}

// Nesting and length are bounded by memory only: the parser does not recurse.
TEST(CParseTree, DeepNestingAndLongTextsNeedNoStack) {
  const std::size_t depth = 1000000;
  const std::string open(depth, '('), close(depth, ')');
  EXPECT_EQ(parse(open + "meter^2" + close + "*s"), (Tokens{"meter", "2", "^", "s", "*"}));
  EXPECT_EQ(parseError(open + "meter" + close.substr(1)),
            "unexpected end of text at column " + std::to_string(2 * depth + 5));
  EXPECT_EQ(parseError(open + "meter" + close + ")"),
            "unexpected ')' at column " + std::to_string(2 * depth + 6));
  std::string text = "abc";  // 250,000 terms, 1 MB
  Tokens expected{"abc"};
  for (std::size_t i = 1; i < 250000; ++i) {
    text += i % 2 ? "*def" : "/ghi";
    expected.insert(expected.end(), {i % 2 ? "def" : "ghi", i % 2 ? "*" : "/"});
  }
  EXPECT_EQ(parse(text), expected);
}

}  // namespace
