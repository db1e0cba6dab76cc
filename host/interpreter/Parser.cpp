#include "host/interpreter/Parser.hpp"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/Format.hpp"
#include "host/interpreter/InterpreterError.hpp"

namespace {

using ExprPtr = std::unique_ptr<Expr>;

bool isSign(TokenKind kind) { return kind == TokenKind::Minus || kind == TokenKind::Plus; }

bool startsElement(TokenKind kind) {
  switch (kind) {
    case TokenKind::Number:
    case TokenKind::String:
    case TokenKind::Identifier:
    case TokenKind::LeftBracket:
    case TokenKind::LeftParen:
    case TokenKind::Minus:
    case TokenKind::Plus:
      return true;
    default:
      return false;
  }
}

class LineParser {
 public:
  explicit LineParser(const std::vector<Token>& tokens) : tokens_(tokens) {}

  std::vector<Statement> statements() {
    std::vector<Statement> parsed;
    while (peek().kind != TokenKind::End) {
      if (peek().kind == TokenKind::Comma || peek().kind == TokenKind::Semicolon) {
        ++pos_;
        continue;
      }
      Statement s = statement();
      if (peek().kind == TokenKind::Semicolon) {
        s.display = false;
        ++pos_;
      } else if (peek().kind == TokenKind::Comma) {
        ++pos_;
      } else if (peek().kind != TokenKind::End) {
        unexpected(peek());
      }
      parsed.push_back(std::move(s));
    }
    return parsed;
  }

 private:
  // The token `ahead` places on; the End token past the last one.
  const Token& peek(std::size_t ahead = 0) const {
    std::size_t at = pos_ + ahead;
    return at < tokens_.size() ? tokens_[at] : tokens_.back();
  }

  const Token& take() {
    const Token& token = peek();
    if (pos_ < tokens_.size() - 1) ++pos_;
    return token;
  }

  [[noreturn]] static void unexpected(const Token& token) {
    if (token.kind == TokenKind::End)
      raiseInterpreterError(kParseError,
                            utFormat("unexpected end of line at column %zu", token.column));
    std::string shown =
        token.kind == TokenKind::String ? "text '" + token.text + "'" : "'" + token.text + "'";
    raiseInterpreterError(kParseError,
                          utFormat("unexpected %s at column %zu", shown.c_str(), token.column));
  }

  const Token& expect(TokenKind kind) {
    if (peek().kind != kind) unexpected(peek());
    return take();
  }

  Statement statement() {
    Statement s;
    s.column = peek().column;
    const Token& first = peek();
    if (first.kind == TokenKind::LeftBracket && bracketIsAssigned()) return multiAssign(s);
    if (first.kind == TokenKind::Identifier) {
      const Token& second = peek(1);
      if (second.kind == TokenKind::Assign) {
        s.kind = Statement::Kind::Assign;
        s.targets.push_back(take().text);
        take();
        s.value = expression(false);
        return s;
      }
      if (second.kind == TokenKind::Dot && peek(2).kind == TokenKind::Identifier &&
          peek(3).kind == TokenKind::Assign) {
        s.kind = Statement::Kind::PropertyAssign;
        s.targets.push_back(take().text);
        take();
        s.property = take().text;
        take();
        s.value = expression(false);
        return s;
      }
      if (second.spaceBefore &&
          (second.kind == TokenKind::Identifier || second.kind == TokenKind::Number ||
           second.kind == TokenKind::String)) {
        s.kind = Statement::Kind::Command;
        s.targets.push_back(take().text);
        while (peek().kind == TokenKind::Identifier || peek().kind == TokenKind::Number ||
               peek().kind == TokenKind::String)
          s.words.push_back(take().text);
        return s;
      }
    }
    s.value = expression(false);
    return s;
  }

  // Whether the bracket that opens here is closed by a ']' followed by '=': the left
  // side of a multiple assignment. The Lexer has checked that brackets balance.
  bool bracketIsAssigned() const {
    int depth = 0;
    for (std::size_t at = pos_; at < tokens_.size(); ++at) {
      switch (tokens_[at].kind) {
        case TokenKind::LeftParen:
        case TokenKind::LeftBracket:
        case TokenKind::LeftBrace:
          ++depth;
          break;
        case TokenKind::RightParen:
        case TokenKind::RightBracket:
        case TokenKind::RightBrace:
          if (--depth == 0) return peek(at - pos_ + 1).kind == TokenKind::Assign;
          break;
        default:
          break;
      }
    }
    return false;
  }

  Statement multiAssign(Statement& s) {
    s.kind = Statement::Kind::MultiAssign;
    take();  // '['
    while (true) {
      const Token& target = peek();
      if (target.kind != TokenKind::Identifier && target.kind != TokenKind::Tilde)
        unexpected(target);
      s.targets.push_back(take().text);
      if (peek().kind == TokenKind::Comma) {
        take();
      } else if (peek().kind == TokenKind::RightBracket) {
        break;
      } else if (!peek().spaceBefore) {
        unexpected(peek());
      }
    }
    take();  // ']'
    expect(TokenKind::Assign);
    s.value = expression(false);
    return std::move(s);
  }

  // Signs in front of an operand fold into one node, so that a long run of them
  // cannot nest deeply.
  ExprPtr expression(bool inRow) {
    std::size_t column = peek().column;
    int minuses = 0;
    bool signed_ = false;
    while (isSign(peek().kind)) {
      signed_ = true;
      if (take().kind == TokenKind::Minus) ++minuses;
    }
    ExprPtr operand = postfix(inRow);
    if (isSign(peek().kind)) {
      // In a row, " -2" starts the next element; anything else is arithmetic.
      bool nextElement =
          inRow && peek().spaceBefore && !peek(1).spaceBefore && peek(1).kind != TokenKind::End;
      if (!nextElement) {
        raiseInterpreterError(kParseError, utFormat("operator '%s' is not supported at column %zu",
                                                    peek().text.c_str(), peek().column));
      }
    }
    if (!signed_) return operand;
    auto sign = std::make_unique<Expr>(minuses % 2 ? Expr::Kind::Negate : Expr::Kind::Plus, column);
    sign->operands.push_back(std::move(operand));
    return sign;
  }

  ExprPtr postfix(bool inRow) {
    ExprPtr e = primary();
    while (true) {
      const Token& token = peek();
      bool opensIndex = token.kind == TokenKind::LeftParen || token.kind == TokenKind::LeftBrace;
      if (inRow && opensIndex && token.spaceBefore) break;  // [a (1)]: two elements
      if (token.kind == TokenKind::Dot) {
        take();
        const Token& name = expect(TokenKind::Identifier);
        auto field = std::make_unique<Expr>(Expr::Kind::Field, e->column);
        field->text = name.text;
        field->operands.push_back(std::move(e));
        e = std::move(field);
      } else if (opensIndex) {
        bool brace = take().kind == TokenKind::LeftBrace;
        auto call =
            std::make_unique<Expr>(brace ? Expr::Kind::BraceIndex : Expr::Kind::Call, e->column);
        call->operands.push_back(std::move(e));
        arguments(brace ? TokenKind::RightBrace : TokenKind::RightParen, call->operands);
        e = std::move(call);
      } else {
        return e;
      }
    }
    return e;
  }

  void arguments(TokenKind close, std::vector<ExprPtr>& into) {
    if (peek().kind == close) {
      take();
      return;
    }
    while (true) {
      if (peek().kind == TokenKind::Colon &&
          (peek(1).kind == TokenKind::Comma || peek(1).kind == close)) {
        into.push_back(std::make_unique<Expr>(Expr::Kind::Colon, take().column));
      } else {
        into.push_back(expression(false));
      }
      if (peek().kind == TokenKind::Comma) {
        take();
      } else {
        expect(close);
        return;
      }
    }
  }

  ExprPtr primary() {
    const Token& token = peek();
    switch (token.kind) {
      case TokenKind::Number: {
        auto e = std::make_unique<Expr>(Expr::Kind::Number, token.column);
        e->number = take().number;
        return e;
      }
      case TokenKind::String:
      case TokenKind::Identifier: {
        auto e = std::make_unique<Expr>(
            token.kind == TokenKind::String ? Expr::Kind::String : Expr::Kind::Name, token.column);
        e->text = take().text;
        return e;
      }
      case TokenKind::LeftParen: {
        take();
        ExprPtr inner = expression(false);
        expect(TokenKind::RightParen);
        return inner;
      }
      case TokenKind::LeftBracket:
        return row();
      default:
        unexpected(token);
    }
  }

  ExprPtr row() {
    auto e = std::make_unique<Expr>(Expr::Kind::Row, take().column);
    while (peek().kind != TokenKind::RightBracket) {
      e->operands.push_back(expression(true));
      const Token& after = peek();
      if (after.kind == TokenKind::Comma) {
        take();
      } else if (after.kind == TokenKind::Semicolon) {
        raiseInterpreterError(
            kParseError,
            utFormat("only row vectors are supported: ';' inside brackets at column %zu",
                     after.column));
      } else if (after.kind != TokenKind::RightBracket &&
                 !(after.spaceBefore && startsElement(after.kind))) {
        unexpected(after);
      }
    }
    take();  // ']'
    return e;
  }

  const std::vector<Token>& tokens_;
  std::size_t pos_ = 0;
};

}  // namespace

std::vector<Statement> Parser::parse(const std::vector<Token>& tokens) {
  if (tokens.empty() || tokens.back().kind != TokenKind::End) {
    raiseInterpreterError(kParseError, "the tokens of a line must end with an End token");
  }
  return LineParser(tokens).statements();
}
