#pragma once

// File: DimensionalAnalysisManager.hpp
// Compares the dimensions of compositions through the quantities that verification
// gives them. Library errors become codes; other exceptions pass.
//
// Example:
//   DimensionalAnalysisManager::Instance()->checkDimensionsMatch("mole/liter", "mole");   // 1

#include <string>

#include "units/DimensionalAnalysisManagerApi.hpp"

namespace TwUnits {

class UnitComposition;
class UnitRepresentationApi;

class DimensionalAnalysisManager : public DimensionalAnalysisManagerApi {
 public:
  // The singleton; the unit registry's set-up creates it.
  static DimensionalAnalysisManager* _instance;
  static DimensionalAnalysisManager* Instance();

  // 0, 1, 2 or 3.
  int checkDimensionsMatch(const std::string& first, const std::string& second) const override;
  // 0, 1, or 2 when the composition cannot be verified.
  int checkDimensionsMatch(const std::string& composition, int quantityIndex) const;
  int checkDimensionsMatch(const std::string& composition, const UnitComposition* other) const;
  // The checks on unit definitions compare nothing and always answer 0.
  int checkDimensionsMatch(const std::string& composition, const UnitRepresentationApi* unit) const;
  int checkDimensionsMatch(const UnitRepresentationApi* first,
                           const UnitRepresentationApi* second) const;
  int checkDimensionsMatch(const UnitRepresentationApi* unit, int quantityIndex) const;
  ~DimensionalAnalysisManager() override;

 private:
  DimensionalAnalysisManager() = default;
};

}  // namespace TwUnits
