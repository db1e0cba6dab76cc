#pragma once

// File: UnitConverterManagerApi.hpp
// The conversion calculator as other libraries see it: converters between two units
// or compositions of the same physical quantity, and into a unit system's units.
// Every converter it hands out is new and belongs to the caller.
//
// Example:
//   UnitConverterApi* c = converters->getQuantityUnitConverterApi("kilometer/hour",
//   "meter/second"); c->doConversion(36.0);   // 10.0 delete c;

#include <string>

namespace TwUnits {

class UnitConverterApi;
class UnitSystemApi;

class UnitConverterManagerApi {
 public:
  // Returns a copy of the table converter between two units of a base quantity
  // (0 to 6), or null for another quantity; the caller owns it.
  virtual UnitConverterApi* getQuantityUnitConverterApi(int quantity, int fromUnit,
                                                        int toUnit) const = 0;
  // Returns a new converter between two composition strings; the caller owns it.
  // Raises the parser's errors, "Unit:ConversionDifferentQuants",
  // "Unit:ConversionMixedOffset" or "Unit:OffsetConversionWithPrefixNotAllowed".
  virtual UnitConverterApi* getQuantityUnitConverterApi(const std::string& from,
                                                        const std::string& to) const = 0;
  // Returns a new converter from a composition to the same quantity written in the
  // system's units; the caller owns it.
  virtual UnitConverterApi* getQuantityUnitConverterApi(const std::string& composition,
                                                        const UnitSystemApi* system) const = 0;
  // Returns a new converter y = multiplier * x + offset; the caller owns it.
  virtual UnitConverterApi* createUnitConverterApi(double multiplier, double offset) const = 0;
  // Returns the inverse converter; the caller owns it.
  virtual UnitConverterApi* getReverseUnitConverterApi(UnitConverterApi* converter) const = 0;
  virtual ~UnitConverterManagerApi() = default;
};

}  // namespace TwUnits
