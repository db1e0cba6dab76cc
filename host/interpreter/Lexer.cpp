#include "host/interpreter/Lexer.hpp"

#include <cctype>
#include <cstdlib>
#include <string>
#include <vector>

#include "host/Format.hpp"
#include "host/interpreter/InterpreterError.hpp"

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }
bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool isIdentifierStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
bool isIdentifierPart(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

// A character as an error message shows it: printable ones as they are, others in hex.
std::string shown(char c) {
  auto byte = static_cast<unsigned char>(c);
  if (std::isprint(byte)) return std::string(1, c);
  return utFormat("\\x%02X", byte);
}

[[noreturn]] void raiseAt(const char* what, std::size_t column) {
  raiseInterpreterError(kParseError, utFormat("%s at column %zu", what, column));
}

const char* bracketName(char open) {
  switch (open) {
    case '(':
      return "unbalanced parenthesis";
    case '[':
      return "unbalanced bracket";
    default:
      return "unbalanced brace";
  }
}

char openerOf(char close) {
  switch (close) {
    case ')':
      return '(';
    case ']':
      return '[';
    default:
      return '{';
  }
}

class LineScanner {
 public:
  explicit LineScanner(const std::string& line) : line_(line) {}

  std::vector<Token> scan() {
    while (true) {
      bool blanks = skipBlanks();
      if (pos_ >= line_.size() || line_[pos_] == '%') break;
      Token token = next();
      token.spaceBefore = blanks;
      tokens_.push_back(std::move(token));
    }
    if (!open_.empty()) raiseAt(bracketName(open_.back().first), open_.back().second);
    Token end;
    end.column = pos_ + 1;
    tokens_.push_back(end);
    return std::move(tokens_);
  }

 private:
  bool skipBlanks() {
    std::size_t start = pos_;
    while (pos_ < line_.size() && isBlank(line_[pos_])) ++pos_;
    return pos_ > start;
  }

  Token make(TokenKind kind, std::size_t length) {
    Token token;
    token.kind = kind;
    token.column = pos_ + 1;
    token.text = line_.substr(pos_, length);
    pos_ += length;
    return token;
  }

  Token next() {
    char c = line_[pos_];
    if (isIdentifierStart(c)) return identifier();
    if (isDigit(c) || (c == '.' && pos_ + 1 < line_.size() && isDigit(line_[pos_ + 1])))
      return number();
    switch (c) {
      case '\'':
        return string();
      case '(':
      case '[':
      case '{':
        opened(c);
        return make(c == '(' ? TokenKind::LeftParen
                             : (c == '[' ? TokenKind::LeftBracket : TokenKind::LeftBrace),
                    1);
      case ')':
      case ']':
      case '}':
        closed(c);
        return make(c == ')' ? TokenKind::RightParen
                             : (c == ']' ? TokenKind::RightBracket : TokenKind::RightBrace),
                    1);
      case ',':
        return make(TokenKind::Comma, 1);
      case ';':
        return make(TokenKind::Semicolon, 1);
      case '.':
        return make(TokenKind::Dot, 1);
      case '=':
        if (pos_ + 1 < line_.size() && line_[pos_ + 1] == '=')
          raiseAt("operator '==' is not supported", pos_ + 1);
        return make(TokenKind::Assign, 1);
      case '-':
        return make(TokenKind::Minus, 1);
      case '+':
        return make(TokenKind::Plus, 1);
      case ':':
        return make(TokenKind::Colon, 1);
      case '~':
        return make(TokenKind::Tilde, 1);
      case '*':
      case '/':
      case '\\':
      case '^':
      case '<':
      case '>':
      case '&':
      case '|':
      case '!':
        raiseAt(utFormat("operator '%c' is not supported", c).c_str(), pos_ + 1);
      case '"':
        raiseAt("double-quoted text is not supported, use 'single quotes',", pos_ + 1);
      default:
        raiseAt(("unexpected character '" + shown(c) + "'").c_str(), pos_ + 1);
    }
  }

  Token identifier() {
    std::size_t end = pos_;
    while (end < line_.size() && isIdentifierPart(line_[end])) ++end;
    return make(TokenKind::Identifier, end - pos_);
  }

  // digits [. digits] [e [+-] digits], or . digits [e ...]; a letter, digit or point
  // straight after it makes the whole a malformed number.
  Token number() {
    std::size_t end = pos_;
    while (end < line_.size() && isDigit(line_[end])) ++end;
    if (end < line_.size() && line_[end] == '.') {
      ++end;
      while (end < line_.size() && isDigit(line_[end])) ++end;
    }
    if (end < line_.size() && (line_[end] == 'e' || line_[end] == 'E')) {
      std::size_t exponent = end + 1;
      if (exponent < line_.size() && (line_[exponent] == '+' || line_[exponent] == '-')) ++exponent;
      if (exponent < line_.size() && isDigit(line_[exponent])) {
        end = exponent;
        while (end < line_.size() && isDigit(line_[end])) ++end;
      }
    }
    if (end < line_.size() && (isIdentifierPart(line_[end]) || line_[end] == '.'))
      raiseAt("malformed number", pos_ + 1);
    Token token = make(TokenKind::Number, end - pos_);
    token.number = std::strtod(token.text.c_str(), nullptr);
    return token;
  }

  Token string() {
    Token token;
    token.kind = TokenKind::String;
    token.column = pos_ + 1;
    std::size_t at = pos_ + 1;
    while (true) {
      if (at >= line_.size()) raiseAt("unterminated string", token.column);
      if (line_[at] == '\'') {
        if (at + 1 < line_.size() && line_[at + 1] == '\'') {
          token.text += '\'';
          at += 2;
          continue;
        }
        break;
      }
      token.text += line_[at++];
    }
    pos_ = at + 1;
    return token;
  }

  void opened(char c) {
    if (open_.size() >= Lexer::kMaxNesting) {
      raiseAt(utFormat("nesting deeper than %zu levels", Lexer::kMaxNesting).c_str(), pos_ + 1);
    }
    open_.emplace_back(c, pos_ + 1);
  }

  void closed(char c) {
    if (open_.empty() || open_.back().first != openerOf(c))
      raiseAt(bracketName(openerOf(c)), pos_ + 1);
    open_.pop_back();
  }

  const std::string& line_;
  std::size_t pos_ = 0;
  std::vector<Token> tokens_;
  std::vector<std::pair<char, std::size_t>> open_;  // kind and column of open brackets
};

}  // namespace

std::vector<Token> Lexer::tokenize(const std::string& line) { return LineScanner(line).scan(); }
