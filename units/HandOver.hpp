#pragma once

// File: HandOver.hpp
// Giving a definition to a registry that takes ownership only when it keeps it.

#include <memory>

namespace TwUnits {

// Runs a registration of `object` and lets go of it when the registry keeps it: when
// `kept()` is true afterwards, whether the registration returned or raised (a listener's
// error comes after the registration is complete). Returns whether it was kept; what the
// registry did not keep stays with the caller.
template <typename T, typename Registration, typename Kept>
bool handOver(std::unique_ptr<T>& object, Registration registration, Kept kept) {
  try {
    registration();
  } catch (...) {
    if (kept()) object.release();
    throw;
  }
  if (!kept()) return false;
  object.release();
  return true;
}

}  // namespace TwUnits
