#pragma once

// File: Numeric.hpp
// The host's numeric helpers: reading numbers, the tolerance comparison used for
// every floating-point test of the library, and rounding.
//
// Example:
//   utEqualWithinEps(0.1 + 0.2, 0.3)   // true
//   isstrnumeric(" -1.5e3 ")            // true; "2*meter" is false
//   utRound(-2.5)                       // -3.0 (halves away from zero)

struct utFpcContext;

utFpcContext* utGetFpcContext();

// Reads a real number literal (digits, point, exponent, Inf, NaN) the way the host
// does; NaN for a null text. `end`, when given, receives the first unread character.
double ut_strtod(utFpcContext* context, const char* text, char** end, int flags);

// True when a == b, or both are finite and |a - b| <= 4 * DBL_EPSILON * max(|a|, |b|).
// NaN equals nothing, and an infinity only itself.
bool utEqualWithinEps(double a, double b);

// Rounds to the nearest integer, halves away from zero.
double utRound(double value);

// True when the whole text, blanks around it allowed, is one real number literal:
// optional sign, digits with an optional point, optional exponent; or Inf / NaN.
bool isstrnumeric(const char* text);
