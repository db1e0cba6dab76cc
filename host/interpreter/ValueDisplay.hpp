#pragma once

// File: ValueDisplay.hpp
// How the shell shows host values. Numbers take the shortest text that reads back as
// the same double; objects show through their class's own "display" method when it has
// one, and otherwise as a list of their visible properties.
//
//   x = 1609.344            ans = true            exps = [1 -1]
//   name = 'furlong'        ans = [] (empty handle)
//   names =                 types =               q =
//       'mole '                 'length'            PhysicalQuantity with properties:
//       'liter'                 'mass'                  name: 'speed2'
//
// Example:
//   ValueDisplay::display("x", *value);   // prints "x = 1609.344\n" on the host console
//   ValueDisplay::formatNumber(0.1 + 0.2)       // "0.3"
//   ValueDisplay::formatNumberExact(0.1 + 0.2)  // "0.30000000000000004"

#include <string>

class HostArray;
class UDInterface;

class ValueDisplay {
 public:
  // The value with at most 15 significant digits, as few as read back as the value when
  // that many suffice; whole numbers below 1e15 in full; "Inf", "-Inf", "NaN". 15 digits
  // hide the last bit of a result (1609.3439999999998 shows as 1609.344).
  static std::string formatNumber(double value);
  // The shortest text that reads back as exactly the value (up to 17 digits).
  static std::string formatNumberExact(double value);

  // The value on one line: 10, 'furlong', true, [0 1 -2], {'a', 'b'}, [1x2 Unit],
  // [] (empty handle).
  static std::string formatInline(const HostArray& value);

  // Prints "name = value", or "name =" and a block of lines, on the host console.
  // Objects of a class with a "display" method show through it; that call's errors
  // pass through.
  static void display(const std::string& name, const HostArray& value);

  // Prints the value without its name: texts without quotes, numbers separated by
  // blanks, one cell element per line; nothing for an empty value.
  static void disp(const HostArray& value);

  // The object's visible properties, one "    name: value" line each, names aligned.
  static std::string describeProperties(UDInterface* object);
};
