#pragma once

// File: DimensionalAnalysisManagerApi.hpp
// The dimension check as other libraries see it: whether two compositions have the
// same dimensions, answered with a code instead of an error so that the caller can
// report a mismatch in its own words.
//
// Codes: 0 match, 1 both valid but different, 2 the first could not be verified,
// 3 the second could not be verified.
//
// Example:
//   UnitManager::Instance()->getDimensionalAnalysisManagerApi()
//       ->checkDimensionsMatch("kilogram/(meter*second^2)", "pascal");   // 0

#include <string>

namespace TwUnits {

class DimensionalAnalysisManagerApi {
 public:
  virtual int checkDimensionsMatch(const std::string& first, const std::string& second) const = 0;
  virtual ~DimensionalAnalysisManagerApi() = default;
};

}  // namespace TwUnits
