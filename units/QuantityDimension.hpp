#pragma once

// File: QuantityDimension.hpp
// The value class of a physical quantity: a name and seven exponents, with the
// dimension arithmetic that the composition algebra and the parser use.
//
// Example:
//   int energy[7] = {0, 1, 2, -2, 0, 0, 0};
//   QuantityDimension e(energy, "energy");
//   e.getBaseQuantityMakeup();   // "mass*length^2*time^-2"

#include <array>
#include <string>
#include <vector>

#include "units/QuantityDimensionApi.hpp"

namespace TwUnits {

inline constexpr unsigned kBaseDimensionCount = 7;

class QuantityDimension : public QuantityDimensionApi {
 public:
  // All exponents 0, empty name.
  QuantityDimension();
  // Exponents copied from seven integers; a null name gives the empty name.
  QuantityDimension(const int* exponents, const char* name);
  // Each base index in `up` raises that exponent by one, each in `down` lowers it.
  // A base index outside 0 to 6 raises std::out_of_range.
  QuantityDimension(const std::vector<int>& up, const std::vector<int>& down);
  // The product of the registered quantities at the listed quantity indexes (none
  // when the pointer is null). An index that is not registered raises std::out_of_range.
  explicit QuantityDimension(const std::vector<int>* quantityIndexes);
  QuantityDimension(const QuantityDimension& other) = default;
  QuantityDimension& operator=(const QuantityDimension& other) = default;
  ~QuantityDimension() override;

  QuantityDimension* clone() const override;
  const char* getName() const override { return name_.c_str(); }
  bool operator==(const QuantityDimensionApi& other) const override;
  bool operator!=(const QuantityDimensionApi& other) const override;
  QuantityDimension& operator+=(const QuantityDimensionApi& other) override;
  QuantityDimension& operator-=(const QuantityDimensionApi& other) override;
  // *=, /= and ^= raise "Unit:IntegersOnlyInQuantity", changing nothing, when an exponent
  // of the result does not fit an int.
  QuantityDimension& operator*=(const QuantityDimensionApi& other) override;
  QuantityDimension& operator/=(const QuantityDimensionApi& other) override;
  bool matchesSignature(const int* exponents) const override;
  QuantityDimension& operator^=(int n) override;
  bool isDimensionless() const override;
  int& operator[](unsigned int baseIndex) override { return exponents_[baseIndex]; }
  int operator[](unsigned int baseIndex) const override { return exponents_[baseIndex]; }
  void print() const override;

  int at(unsigned int baseIndex) const { return exponents_[baseIndex]; }
  // A null name sets the empty name.
  void setName(const char* name);
  // The quantity written in the base quantities' names: factors joined by "*",
  // "^" and the exponent where it is not 1, zero exponents left out; "" when
  // dimensionless. Energy gives "mass*length^2*time^-2".
  std::string getBaseQuantityMakeup() const;

  // A copy of the left operand (name included) combined with the right one.
  QuantityDimension operator*(const QuantityDimension& other) const;
  QuantityDimension operator/(const QuantityDimension& other) const;
  // The same test as += and -=; the result is a copy of the right operand.
  QuantityDimension operator+(const QuantityDimension& other) const;
  QuantityDimension operator-(const QuantityDimension& other) const;

 private:
  void requireEqual(const QuantityDimensionApi& other) const;
  QuantityDimension& assignExponents(const std::array<long long, kBaseDimensionCount>& exponents);

  std::array<int, kBaseDimensionCount> exponents_{};
  std::string name_;
};

}  // namespace TwUnits
