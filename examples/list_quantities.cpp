// Prints the built-in physical quantities with their make-up in base quantities.
//
//   $ list_quantities
//    0  amount                       amount
//    9  energy                       mass*length^2*time^-2
//   ...

#include <cstdio>

#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitManager.hpp"

int main() {
  TwUnits::UnitManager::Instance();  // sets up every registry and the built-in library
  TwUnits::PhysicalQuantityManager* quantities = TwUnits::PhysicalQuantityManager::Instance();
  for (int q = 0; q < quantities->getBuiltinCount(); ++q) {
    const TwUnits::QuantityDimension* quantity = quantities->getQuantityDimension(q);
    std::printf("%2d  %-28s %s\n", q, quantity->getName(),
                quantity->getBaseQuantityMakeup().c_str());
  }
  return 0;
}
