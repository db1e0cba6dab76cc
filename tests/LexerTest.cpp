// The shell's lexer. The lines it refuses and the values it reads are in the syntax transcript;
// the bytes a transcript cannot hold and the limits are here.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/interpreter/Lexer.hpp"
#include "tests/support/ErrorCapture.hpp"

namespace {

TEST(ShellLexer, TabsAndCarriageReturnsAreBlanksAndControlBytesAreRefused) {
  std::vector<Token> tokens = Lexer::tokenize("\tx\r");
  ASSERT_EQ(tokens.size(), 2u);
  EXPECT_EQ(tokens[0].text, "x");
  EXPECT_TRUE(tokens[0].spaceBefore);
  EXPECT_EQ(tokens[0].column, 2u);
  EXPECT_EQ(tokens[1].column, 4u);
  EXPECT_UNIT_ERROR(Lexer::tokenize("x\x01"), "CALVEX:parse",
                    "unexpected character '\\x01' at column 2");
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
