#include "host/StringUtils.hpp"

#include <cstring>

namespace {

constexpr const char* kWhiteSpace = " \t\n\r\f\v";
constexpr std::size_t kMaxIdentifierLength = 63;

bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isAsciiDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string utTrim(const std::string& text) {
  std::size_t first = text.find_first_not_of(kWhiteSpace);
  if (first == std::string::npos) return {};
  std::size_t last = text.find_last_not_of(kWhiteSpace);
  return text.substr(first, last - first + 1);
}

bool isValidCALVEXIdentifier(const char* name) {
  if (name == nullptr || !isAsciiLetter(name[0])) return false;
  std::size_t length = std::strlen(name);
  if (length > kMaxIdentifierLength) return false;
  for (std::size_t i = 1; i < length; ++i) {
    if (!isAsciiLetter(name[i]) && !isAsciiDigit(name[i]) && name[i] != '_') return false;
  }
  return true;
}
