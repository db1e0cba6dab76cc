#pragma once

// File: UnitManagerData.hpp
// The unit registry's listener state: who is told when a unit is registered or
// unregistered, in the order they were added, and the single removal hook that
// releases a removed unit's host object.

#include <boost/function.hpp>
#include <vector>

namespace TwUnits {

class UnitRepresentationApi;

class UnitManagerData {
 public:
  using Listener = boost::function1<void, const UnitRepresentationApi*>;

  // Calls every registered listener, in order, with the definition.
  void runreg(const UnitRepresentationApi* definition) const;

  std::vector<Listener> registered;
  std::vector<Listener> unregistered;
  Listener removalHook;
};

}  // namespace TwUnits
