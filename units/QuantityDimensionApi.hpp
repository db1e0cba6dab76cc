#pragma once

// File: QuantityDimensionApi.hpp
// A physical quantity as other libraries see it: a name and seven integer exponents
// over the base dimensions, always in the order amount, mass, length, time,
// temperature, current, luminous intensity (base indexes 0 to 6).
//
// Example:
//   QuantityDimensionApi* force = registry->createQuantityDimensionApi();  // caller owns
//   (*force)[1] = 1; (*force)[2] = 1; (*force)[3] = -2;                    // mass*length/time^2
//   registry->getQuantityIdx(force);                                       // 17
//   delete force;

namespace TwUnits {

class QuantityDimensionApi {
 public:
  virtual ~QuantityDimensionApi() = default;

  // Returns a new copy (exponents and name); the caller owns it.
  virtual QuantityDimensionApi* clone() const = 0;
  // Never null; the empty string when no name is set.
  virtual const char* getName() const = 0;
  // Equality of the seven exponents; names take no part.
  virtual bool operator==(const QuantityDimensionApi& other) const = 0;
  virtual bool operator!=(const QuantityDimensionApi& other) const = 0;
  // Adding or subtracting quantities is only allowed between equal dimensions and
  // changes nothing; unequal ones raise "Unit:CannotAddSubtractDifferentQuantities".
  virtual QuantityDimensionApi& operator+=(const QuantityDimensionApi& other) = 0;
  virtual QuantityDimensionApi& operator-=(const QuantityDimensionApi& other) = 0;
  // Product and quotient of dimensions: exponents added or subtracted.
  virtual QuantityDimensionApi& operator*=(const QuantityDimensionApi& other) = 0;
  virtual QuantityDimensionApi& operator/=(const QuantityDimensionApi& other) = 0;
  // True when the seven exponents equal the seven integers given.
  virtual bool matchesSignature(const int* exponents) const = 0;
  // Every exponent multiplied by n.
  virtual QuantityDimensionApi& operator^=(int n) = 0;
  virtual bool isDimensionless() const = 0;
  // The exponent at a base index 0 to 6 (not checked).
  virtual int& operator[](unsigned int baseIndex) = 0;
  virtual int operator[](unsigned int baseIndex) const = 0;
  // Prints "[ e0 e1 ... e6 ]" and a line break on the host console.
  virtual void print() const = 0;
};

}  // namespace TwUnits
