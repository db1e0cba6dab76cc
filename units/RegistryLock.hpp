#pragma once

// File: RegistryLock.hpp
// Counts the changes of the registries (units, prefixes, quantities). A result that
// depends on them, computed while the count was g, still holds while the count is g:
// a conversion remembers its converter with the count and checks it before reuse.
// Every operation that changes a registry holds a Change for its duration; the count
// moves on when the Change ends, however it ends, so nothing remembered during a
// change (by a listener, say) outlives it.
//
// Example:
//   void UnitManager::unregisterUnit(const std::string& name) {
//     RegistryLock::Change change;
//     ...
//   }

#include <atomic>
#include <cstdint>

namespace TwUnits {

class RegistryLock {
 public:
  // The count of completed changes; never 0.
  static std::uint64_t generation() { return changes_.load(std::memory_order_acquire); }

  class Change {
   public:
    Change() = default;
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    ~Change();
  };

 private:
  static std::atomic<std::uint64_t> changes_;
};

}  // namespace TwUnits
