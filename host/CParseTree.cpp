#include "host/CParseTree.hpp"

#include <cstdio>
#include <utility>

#include "host/Exception.hpp"

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isBinaryOperator(char c) { return c == '+' || c == '-' || c == '*' || c == '/' || c == '^'; }

// '(' has the lowest rank so that popping operators stops at it.
int precedence(char pending) {
  switch (pending) {
    case '^':
      return 3;
    case '*':
    case '/':
      return 2;
    case '+':
    case '-':
      return 1;
    default:
      return 0;
  }
}

std::size_t identifierLength(std::string_view text, std::size_t pos) {
  std::size_t end = pos;
  if (end < text.size() && isLetter(text[end])) {
    while (end < text.size() && (isLetter(text[end]) || isDigit(text[end]))) ++end;
  }
  return end - pos;
}

// An exponent marker without digits after it ends the literal before the 'e', so "2e" reads
// as the number 2 followed by the name e, which the caller then rejects.
std::size_t numberLength(std::string_view text, std::size_t pos) {
  std::size_t end = pos;
  std::size_t digits = 0;
  for (; end < text.size() && isDigit(text[end]); ++end) ++digits;
  if (end < text.size() && text[end] == '.') {
    for (++end; end < text.size() && isDigit(text[end]); ++end) ++digits;
  }
  if (digits == 0) return 0;
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    std::size_t exponent = end + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    if (exponent < text.size() && isDigit(text[exponent])) {
      while (exponent < text.size() && isDigit(text[exponent])) ++exponent;
      end = exponent;
    }
  }
  return end - pos;
}

// The length of the operand token at pos, or 0 when none starts there.
std::size_t operandLength(std::string_view text, std::size_t pos) {
  if (std::size_t length = identifierLength(text, pos)) return length;
  if (std::size_t length = numberLength(text, pos)) return length;
  if (text[pos] == '-') {
    if (std::size_t length = numberLength(text, pos + 1)) return length + 1;
  }
  return 0;
}

[[noreturn]] void raiseUnexpected(const std::string& what, std::size_t pos) {
  throw new Exception("unexpected " + what + " at column " + std::to_string(pos + 1));
}

// Names the token at pos in the error: a whole operand, an operator or parenthesis, or the
// single character; bytes that would not print are shown in hex.
[[noreturn]] void raiseUnexpectedToken(std::string_view text, std::size_t pos) {
  const char c = text[pos];
  const auto byte = static_cast<unsigned char>(c);
  if (std::size_t length = operandLength(text, pos)) {
    raiseUnexpected("'" + std::string(text.substr(pos, length)) + "'", pos);
  } else if (isBinaryOperator(c) || c == '(' || c == ')') {
    raiseUnexpected(std::string("'") + c + "'", pos);
  } else if (byte > 0x20 && byte < 0x7F) {
    raiseUnexpected(std::string("character '") + c + "'", pos);
  }
  char hex[8];
  std::snprintf(hex, sizeof hex, "0x%02X", static_cast<unsigned>(byte));
  raiseUnexpected(std::string("byte ") + hex, pos);
}

// The operator as a one-character token, viewing storage that outlives every parse.
std::string_view operatorToken(char op) {
  static constexpr char kOperators[] = "+-*/^";
  const char* found = std::char_traits<char>::find(kOperators, 5, op);
  return {found, 1};
}

}  // namespace

CParseTree::CParseTree(const char* text) : text_(text != nullptr ? text : "") {}

CParseTree::~CParseTree() = default;

// Shunting-yard: operands go straight to the output, operators wait on a stack until an
// operator of no higher precedence (all group from the left) or a ')' pushes them out.
// `expectOperand` tracks whether an operand or an operator must come next, which rejects every
// misplaced token the moment it is read.
void CParseTree::parse(std::string_view text, std::vector<std::string_view>& tokens) {
  tokens.clear();
  std::string pending;  // operators and '(' not yet output; short texts need no allocation
  bool expectOperand = true;
  std::size_t pos = 0;
  const std::size_t size = text.size();
  for (;;) {
    while (pos < size && isBlank(text[pos])) ++pos;
    if (pos == size) break;
    const char c = text[pos];
    if (expectOperand) {
      if (std::size_t length = operandLength(text, pos)) {
        tokens.push_back(text.substr(pos, length));
        pos += length;
        expectOperand = false;
      } else if (c == '(') {
        pending.push_back(c);
        ++pos;
      } else {
        raiseUnexpectedToken(text, pos);
      }
    } else if (isBinaryOperator(c)) {
      while (!pending.empty() && precedence(pending.back()) >= precedence(c)) {
        tokens.push_back(operatorToken(pending.back()));
        pending.pop_back();
      }
      pending.push_back(c);
      ++pos;
      expectOperand = true;
    } else if (c == ')') {
      while (!pending.empty() && pending.back() != '(') {
        tokens.push_back(operatorToken(pending.back()));
        pending.pop_back();
      }
      if (pending.empty()) raiseUnexpectedToken(text, pos);
      pending.pop_back();
      ++pos;
    } else {
      raiseUnexpectedToken(text, pos);
    }
  }
  if (expectOperand) raiseUnexpected("end of text", size);
  for (; !pending.empty(); pending.pop_back()) {
    if (pending.back() == '(') raiseUnexpected("end of text", size);
    tokens.push_back(operatorToken(pending.back()));
  }
}

void CParseTree::init(bool /*flag*/) {
  postfix_.clear();
  std::vector<std::string_view> tokens;
  parse(text_, tokens);
  postfix_.assign(tokens.begin(), tokens.end());
}

void CParseTree::postFix(std::vector<std::string>& tokens) const {
  tokens.insert(tokens.end(), postfix_.begin(), postfix_.end());
}
