#include "units/DimensionalAnalysisManager.hpp"

#include <memory>

#include "host/Exception.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {

namespace {

// The quantity index of the verified composition, or -1 when verification raised a
// library error (whose object is freed here).
bool verifiedQuantity(const std::string& composition, int& quantity) {
  try {
    quantity = UnitManager::Instance()->getQuantityIdxFromCompositionString(composition);
    return true;
  } catch (Exception* raised) {
    delete raised;
    return false;
  }
}

}  // namespace

DimensionalAnalysisManager* DimensionalAnalysisManager::_instance = nullptr;

DimensionalAnalysisManager* DimensionalAnalysisManager::Instance() {
  if (_instance == nullptr) _instance = new DimensionalAnalysisManager();
  return _instance;
}

DimensionalAnalysisManager::~DimensionalAnalysisManager() = default;

int DimensionalAnalysisManager::checkDimensionsMatch(const std::string& first,
                                                     const std::string& second) const {
  int firstQuantity = -1, secondQuantity = -1;
  if (!verifiedQuantity(first, firstQuantity)) return 2;
  if (!verifiedQuantity(second, secondQuantity)) return 3;
  return firstQuantity == secondQuantity ? 0 : 1;
}

int DimensionalAnalysisManager::checkDimensionsMatch(const std::string& composition,
                                                     int quantityIndex) const {
  int quantity = -1;
  if (!verifiedQuantity(composition, quantity)) return 2;
  return quantity == quantityIndex ? 0 : 1;
}

int DimensionalAnalysisManager::checkDimensionsMatch(const std::string& composition,
                                                     const UnitComposition* other) const {
  int quantity = -1;
  if (!verifiedQuantity(composition, quantity)) return 2;
  return quantity == other->getCombinedUnitsQuantityType() ? 0 : 1;
}

int DimensionalAnalysisManager::checkDimensionsMatch(const std::string&,
                                                     const UnitRepresentationApi*) const {
  return 0;
}

int DimensionalAnalysisManager::checkDimensionsMatch(const UnitRepresentationApi*,
                                                     const UnitRepresentationApi*) const {
  return 0;
}

int DimensionalAnalysisManager::checkDimensionsMatch(const UnitRepresentationApi*, int) const {
  return 0;
}

}  // namespace TwUnits
