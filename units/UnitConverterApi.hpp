#pragma once

// File: UnitConverterApi.hpp
// An affine converter between two units: y = multiplier * x + offset. Offsets exist
// only for temperatures.
//
// Example (celsius to fahrenheit):
//   UnitConverterApi* c = converters->getQuantityUnitConverterApi("celsius", "fahrenheit");
//   c->doConversion(100.0);   // 212.0 = 1.8 * 100 + 32
//   delete c;

namespace TwUnits {

class UnitConverterApi {
 public:
  virtual ~UnitConverterApi() = default;
  // value * multiplier + offset, multiplication first.
  virtual double doConversion(double value) const = 0;
  virtual double getMultiplier() const = 0;
  virtual void setMultiplier(double multiplier) = 0;
  virtual double getOffset() const = 0;
  virtual void setOffset(double offset) = 0;
};

}  // namespace TwUnits
