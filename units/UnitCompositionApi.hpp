#pragma once

// File: UnitCompositionApi.hpp
// What a unit or a composition string is made of, as other libraries see it: the
// unit names it lists with their net integer exponents.
//
// Example:
//   UnitCompositionApi* c = UnitManager::Instance()->getQuantityStringParserApi()
//                               ->createUnitCompApiFromString("meter^2/second");   // caller owns
//   c->getUnitMakeupVectors();   // (["meter", "second"], [2, -1])
//   delete c;

#include <string>
#include <utility>
#include <vector>

namespace TwUnits {

class UnitCompositionApi {
 public:
  using MakeupVectors = std::pair<std::vector<std::string>, std::vector<int>>;

  virtual ~UnitCompositionApi() = default;
  // Unit names in name order with their net exponents (0 for a unit on both sides
  // of an uncancelled composition); (["dimensionless"], [1]) for no units.
  virtual MakeupVectors getUnitMakeupVectors() const = 0;
};

}  // namespace TwUnits
