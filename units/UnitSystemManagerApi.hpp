#pragma once

// File: UnitSystemManagerApi.hpp
// The registry of unit systems as other libraries see it.
//
// Example:
//   const UnitSystemApi* mks = UnitSystemManager::Instance()->getUnitSystemApi("MKS");
//   mks->getMassType();   // "kilogram"

#include <string>

namespace TwUnits {

class UnitSystemApi;

class UnitSystemManagerApi {
 public:
  // Returns a new system with eight empty names; the caller owns it.
  virtual UnitSystemApi* createUnitSystemApi() const = 0;
  // The registered system of that name (the registry keeps it); raises
  // "Unit:SystemNotFound" when there is none, never returns null.
  virtual const UnitSystemApi* getUnitSystemApi(const std::string& name) const = 0;
  virtual ~UnitSystemManagerApi() = default;
};

}  // namespace TwUnits
