#include "host/Numeric.hpp"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <limits>

struct utFpcContext {};

utFpcContext* utGetFpcContext() {
  static utFpcContext context;
  return &context;
}

double ut_strtod(utFpcContext*, const char* text, char** end, int) {
  if (text == nullptr) return std::numeric_limits<double>::quiet_NaN();
  return std::strtod(text, end);
}

bool utEqualWithinEps(double a, double b) {
  if (a == b) return true;
  // An infinity equals only itself: the relative tolerance would take it for anything.
  if (!std::isfinite(a) || !std::isfinite(b)) return false;
  double scale = std::max(std::fabs(a), std::fabs(b));
  return std::fabs(a - b) <= 4 * DBL_EPSILON * scale;
}

double utRound(double value) { return std::round(value); }

namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Consumes one unsigned literal at p; returns the position after it, or null.
const char* scanUnsignedLiteral(const char* p) {
  if (*p == 'i' || *p == 'I' || *p == 'n' || *p == 'N') {
    for (const char* word : {"inf", "nan"}) {
      if (strncasecmp(p, word, 3) == 0) return p + 3;
    }
  }
  const char* start = p;
  while (isDigit(*p)) ++p;
  bool integerDigits = p != start;
  bool fractionDigits = false;
  if (*p == '.') {
    const char* fraction = ++p;
    while (isDigit(*p)) ++p;
    fractionDigits = p != fraction;
  }
  if (!integerDigits && !fractionDigits) return nullptr;
  if (*p == 'e' || *p == 'E') {
    const char* exponent = p + 1;
    if (*exponent == '+' || *exponent == '-') ++exponent;
    if (!isDigit(*exponent)) return nullptr;
    while (isDigit(*exponent)) ++exponent;
    p = exponent;
  }
  return p;
}

}  // namespace

bool isstrnumeric(const char* text) {
  if (text == nullptr) return false;
  const char* p = text;
  while (isBlank(*p)) ++p;
  if (*p == '+' || *p == '-') ++p;
  p = scanUnsignedLiteral(p);
  if (p == nullptr) return false;
  while (isBlank(*p)) ++p;
  return *p == '\0';
}
