#pragma once

// A comparable picture of everything the registries hold, for tests that check that
// a refused operation changed nothing.
//
//   RegistrySnapshot before = RegistrySnapshot::take();
//   EXPECT_UNIT_ERROR_ID(units->unregisterUnit("meter"), "Unit:CannotUnregisterBuiltin");
//   EXPECT_EQ(RegistrySnapshot::take(), before);

#include <ostream>
#include <string>
#include <vector>

struct RegistrySnapshot {
  std::vector<std::string> quantities;            // name and make-up, per index
  std::vector<std::vector<std::string>> units;    // per quantity: name, composition string, factor
  std::vector<std::string> storedCompositions;    // every unit's stored composition text
  std::vector<std::size_t> conversionTableSizes;  // base quantities 0 to 6
  std::vector<std::string> prefixes;              // name and exponent, per index
  std::vector<std::string> unitSystems;

  static RegistrySnapshot take();
  bool operator==(const RegistrySnapshot& other) const;
};

std::ostream& operator<<(std::ostream& out, const RegistrySnapshot& snapshot);
