#pragma once

// File: UnitConverter.hpp
// The converter value. Converters in the calculator's tables also know their
// quantity and the unit indexes they convert between.
//
// Example:
//   UnitConverter mileToFoot(5280.0, 0.0);
//   mileToFoot.doConversion(2.0);   // 10560.0

#include "units/UnitConverterApi.hpp"

namespace TwUnits {

class UnitConverter : public UnitConverterApi {
 public:
  UnitConverter(double multiplier, double offset) : multiplier_(multiplier), offset_(offset) {}
  UnitConverter(const UnitConverter& other) = default;
  UnitConverter& operator=(const UnitConverter& other) = default;
  ~UnitConverter() override = default;

  double doConversion(double value) const override { return value * multiplier_ + offset_; }
  double getMultiplier() const override { return multiplier_; }
  void setMultiplier(double multiplier) override { multiplier_ = multiplier; }
  double getOffset() const override { return offset_; }
  void setOffset(double offset) override { offset_ = offset; }

  bool isIdentity() const { return identity_; }
  void setIdentity(bool identity) { identity_ = identity; }
  int getQuantityIdx() const { return quantityIndex_; }
  void setQuantityIdx(int quantityIndex) { quantityIndex_ = quantityIndex; }
  // Unit indexes within the quantity; -1 when the converter is not in a table.
  int getFromUnit() const { return fromUnit_; }
  void setFromUnit(int unit) { fromUnit_ = unit; }
  int getToUnit() const { return toUnit_; }
  void setToUnit(int unit) { toUnit_ = unit; }

 private:
  bool identity_ = false;
  int quantityIndex_ = 0;
  double multiplier_;
  double offset_;
  int fromUnit_ = -1;
  int toUnit_ = -1;
};

}  // namespace TwUnits
