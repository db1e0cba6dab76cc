// The host expression parser on arbitrary text. Besides crashes and sanitizer reports it
// checks what every caller relies on: a parse yields a well-formed postfix sequence whose
// operands stand in the text in the same order, writing that sequence back as a fully
// parenthesised text parses to the same sequence, and a syntax error names a column
// within the text and leaves no tokens behind.

#include <cstdint>
#include <string>
#include <vector>

#include "host/CParseTree.hpp"
#include "tests/fuzz/FuzzSupport.hpp"

namespace {

bool isOperator(const std::string& token) {
  return token.size() == 1 && std::string("+-*/^").find(token[0]) != std::string::npos;
}

// The expression of a postfix sequence, every operation in parentheses; empty when the
// sequence is not well formed.
std::string infixOf(const std::vector<std::string>& postfix) {
  std::vector<std::string> stack;
  for (const std::string& token : postfix) {
    if (!isOperator(token)) {
      stack.push_back(token);
      continue;
    }
    if (stack.size() < 2) return "";
    std::string right = stack.back();
    stack.pop_back();
    stack.back() = "(" + stack.back() + token + right + ")";
  }
  return stack.size() == 1 ? stack.back() : "";
}

std::vector<std::string> postfixOf(const std::string& text) {
  CParseTree tree(text.c_str());
  tree.init(false);
  std::vector<std::string> tokens;
  tree.postFix(tokens);
  return tokens;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzzText(data, size);
  CParseTree tree(text.c_str());
  std::string error;
  try {
    tree.init(false);
  } catch (Exception* raised) {
    error = raised->getMessage();
    delete raised;
  }
  std::vector<std::string> tokens;
  tree.postFix(tokens);

  if (!error.empty()) {
    if (!tokens.empty()) fuzzFault("a failed parse left tokens", text);
    const std::string::size_type at = error.rfind(" at column ");
    if (error.rfind("unexpected ", 0) != 0 || at == std::string::npos)
      fuzzFault("unexpected error message: " + error, text);
    const unsigned long column = std::stoul(error.substr(at + 11));
    if (column < 1 || column > text.size() + 1)
      fuzzFault("column outside the text: " + error, text);
    return 0;
  }

  std::string::size_type position = 0;
  for (const std::string& token : tokens) {
    if (token.empty()) fuzzFault("empty token", text);
    if (isOperator(token)) continue;
    position = text.find(token, position);
    if (position == std::string::npos) fuzzFault("operand '" + token + "' out of order", text);
    position += token.size();
  }
  const std::string infix = infixOf(tokens);
  if (infix.empty()) fuzzFault("postfix sequence is not well formed", text);
  std::vector<std::string> again;
  if (acceptLibraryErrors([&] { again = postfixOf(infix); }))
    fuzzFault("the parenthesised text '" + infix + "' does not parse", text);
  if (again != tokens) fuzzFault("the parenthesised text '" + infix + "' parses differently", text);
  return 0;
}
