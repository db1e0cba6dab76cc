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
  // One line per quantity (name, make-up), unit (name, definition, stored composition, index),
  // conversion table of a base quantity (size), prefix (name, exponent) and unit system.
  std::vector<std::string> lines;

  static RegistrySnapshot take();
  bool operator==(const RegistrySnapshot& other) const { return lines == other.lines; }
};

// Prints the lines that the other snapshot lacks, each after '+', then those it has alone,
// after '-'; or "(the same)".
std::string differences(const RegistrySnapshot& snapshot, const RegistrySnapshot& other);

std::ostream& operator<<(std::ostream& out, const RegistrySnapshot& snapshot);
