#pragma once

// File: PhysicalQuantityManagerApi.hpp
// The registry of physical quantities as other libraries see it. A quantity's
// position in the registry is its quantity index: the 37 built-in quantities are 0
// to 36 ("amount" ... "luminous_intensity" are 0 to 6, "dimensionless" is 36), user
// quantities follow and move down by one when an earlier one is removed.
//
// Example:
//   PhysicalQuantityManagerApi* registry = PhysicalQuantityManager::Instance();
//   registry->getQuantityIdx(std::string("pressure"));   // 12
//   registry->addPhysicalQuantityRegisteredListener(
//       [](const QuantityDimensionApi* q) { log("new quantity", q->getName()); });

#include <boost/function.hpp>
#include <string>

namespace TwUnits {

class QuantityDimensionApi;

class PhysicalQuantityManagerApi {
 public:
  using RegisteredListener = boost::function1<void, const QuantityDimensionApi*>;
  using UnregisteredListener = boost::function2<void, const QuantityDimensionApi*, unsigned long>;

  // Called, in the order added, with each quantity after it is registered.
  virtual void addPhysicalQuantityRegisteredListener(const RegisteredListener& listener) = 0;
  // Called, in the order added, with each quantity and its index before it is
  // removed; a listener may refuse the removal by raising.
  virtual void addPhysicalQuantityUnregisteredListener(const UnregisteredListener& listener) = 0;
  // Index of the first quantity with exactly this name, or -1.
  virtual int getQuantityIdx(const std::string& name) const = 0;
  // Index of the first quantity with the same seven exponents, or -1.
  virtual int getQuantityIdx(const QuantityDimensionApi* dimensions) const = 0;
  // The registered quantity at the index, or null past the end; the registry keeps it.
  virtual const QuantityDimensionApi* getQuantityDimensionApi(int index) const = 0;
  // Returns a new quantity, all exponents 0 and no name; the caller owns it.
  virtual QuantityDimensionApi* createQuantityDimensionApi() const = 0;
  // Returns a new copy (exponents and name) of the quantity; the caller owns it.
  virtual QuantityDimensionApi* createQuantityDimensionApi(
      const QuantityDimensionApi* quantity) const = 0;
  virtual ~PhysicalQuantityManagerApi() = default;
};

}  // namespace TwUnits
