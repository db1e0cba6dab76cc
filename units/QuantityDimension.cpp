#include "units/QuantityDimension.hpp"

#include <limits>
#include <stdexcept>

#include "host/Console.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

QuantityDimension::QuantityDimension() = default;

QuantityDimension::QuantityDimension(const int* exponents, const char* name) {
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) exponents_[b] = exponents[b];
  setName(name);
}

QuantityDimension::QuantityDimension(const std::vector<int>& up, const std::vector<int>& down) {
  for (int b : up) ++exponents_.at(static_cast<std::size_t>(b));
  for (int b : down) --exponents_.at(static_cast<std::size_t>(b));
}

QuantityDimension::QuantityDimension(const std::vector<int>* quantityIndexes) {
  if (quantityIndexes == nullptr) return;
  PhysicalQuantityManager* registry = PhysicalQuantityManager::Instance();
  for (int index : *quantityIndexes) {
    const QuantityDimension* quantity = registry->getQuantityDimension(index);
    if (quantity == nullptr) throw std::out_of_range("quantity index out of range");
    *this *= *quantity;
  }
}

QuantityDimension::~QuantityDimension() = default;

QuantityDimension* QuantityDimension::clone() const { return new QuantityDimension(*this); }

bool QuantityDimension::operator==(const QuantityDimensionApi& other) const {
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) {
    if (exponents_[b] != other[b]) return false;
  }
  return true;
}

bool QuantityDimension::operator!=(const QuantityDimensionApi& other) const {
  return !(*this == other);
}

void QuantityDimension::requireEqual(const QuantityDimensionApi& other) const {
  if (*this != other) raiseError(errors::CannotAddSubtractDifferentQuantities);
}

QuantityDimension& QuantityDimension::operator+=(const QuantityDimensionApi& other) {
  requireEqual(other);
  return *this;
}

QuantityDimension& QuantityDimension::operator-=(const QuantityDimensionApi& other) {
  requireEqual(other);
  return *this;
}

QuantityDimension& QuantityDimension::operator*=(const QuantityDimensionApi& other) {
  std::array<long long, kBaseDimensionCount> product{};
  for (unsigned b = 0; b < kBaseDimensionCount; ++b)
    product[b] = static_cast<long long>(exponents_[b]) + other[b];
  return assignExponents(product);
}

QuantityDimension& QuantityDimension::operator/=(const QuantityDimensionApi& other) {
  std::array<long long, kBaseDimensionCount> quotient{};
  for (unsigned b = 0; b < kBaseDimensionCount; ++b)
    quotient[b] = static_cast<long long>(exponents_[b]) - other[b];
  return assignExponents(quotient);
}

bool QuantityDimension::matchesSignature(const int* exponents) const {
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) {
    if (exponents_[b] != exponents[b]) return false;
  }
  return true;
}

QuantityDimension& QuantityDimension::operator^=(int n) {
  std::array<long long, kBaseDimensionCount> power{};
  for (unsigned b = 0; b < kBaseDimensionCount; ++b)
    power[b] = static_cast<long long>(exponents_[b]) * n;
  return assignExponents(power);
}

// Exponents are ints: a result beyond them is refused as the parser refuses a written
// exponent beyond them, and the dimensions stay as they were.
QuantityDimension& QuantityDimension::assignExponents(
    const std::array<long long, kBaseDimensionCount>& exponents) {
  for (long long exponent : exponents) {
    if (exponent < std::numeric_limits<int>::min() || exponent > std::numeric_limits<int>::max())
      raiseError(errors::IntegersOnlyInQuantity);
  }
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) exponents_[b] = static_cast<int>(exponents[b]);
  return *this;
}

bool QuantityDimension::isDimensionless() const {
  for (int exponent : exponents_) {
    if (exponent != 0) return false;
  }
  return true;
}

void QuantityDimension::print() const {
  std::string line = "[";
  for (int exponent : exponents_) line += " " + std::to_string(exponent);
  utPrintf("%s ]\n", line.c_str());
}

void QuantityDimension::setName(const char* name) { name_ = name ? name : ""; }

std::string QuantityDimension::getBaseQuantityMakeup() const {
  const std::vector<std::string>& names =
      PhysicalQuantityManager::Instance()->getQuantityTypeNames();
  std::string makeup;
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) {
    if (exponents_[b] == 0) continue;
    if (!makeup.empty()) makeup += "*";
    makeup += names.at(b);
    if (exponents_[b] != 1) makeup += "^" + std::to_string(exponents_[b]);
  }
  return makeup;
}

QuantityDimension QuantityDimension::operator*(const QuantityDimension& other) const {
  QuantityDimension result(*this);
  result *= other;
  return result;
}

QuantityDimension QuantityDimension::operator/(const QuantityDimension& other) const {
  QuantityDimension result(*this);
  result /= other;
  return result;
}

QuantityDimension QuantityDimension::operator+(const QuantityDimension& other) const {
  requireEqual(other);
  return other;
}

QuantityDimension QuantityDimension::operator-(const QuantityDimension& other) const {
  requireEqual(other);
  return other;
}

}  // namespace TwUnits
