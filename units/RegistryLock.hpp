#pragma once

// File: RegistryLock.hpp
// The registries' one lock, and the count of their changes.
//
// Threads: any number of threads may convert, verify and parse at once while others
// register or remove units, prefixes, quantities and unit systems. Each of those calls
// holds the lock for its whole run (a Hold, re-entrant on its thread), so it sees the
// registries before a change or after it, never in the middle. A conversion between two
// texts that the thread has converted between before takes no lock: the thread
// remembers the converter with the count of changes it was resolved at, and every
// change moves the count on when it ends (a Change), however it ends.
//
// What the calls hand out of the registries (a cached composition, a definition, a list
// of names) and the plain queries (getUnitIndex, getTableSize, ...) are read without the
// lock: use them from one thread, or hold a Hold around the call and the use. A listener
// runs on the changing thread, inside the change; it must not wait for another thread
// that uses the registries. The first UnitManager::Instance() sets the library up while
// other threads wait for it. Warning handlers are set before threads start, and must
// bear calls from several threads at once.
//
// Example:
//   void UnitManager::unregisterUnit(const std::string& name) {
//     RegistryLock::Change change;   // other threads' calls wait until it ends
//     ...
//   }

#include <atomic>
#include <cstdint>

namespace TwUnits {

class RegistryLock {
 public:
  // The count of completed changes; never 0.
  static std::uint64_t generation() { return changes_.load(std::memory_order_acquire); }

  // Holds the lock for its lifetime; a thread may hold it again inside.
  class Hold {
   public:
    Hold();
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold();
  };

  // Holds the lock for a change, and moves the count on before it lets go.
  class Change {
   public:
    Change() = default;
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    ~Change();

   private:
    Hold hold_;
  };

 private:
  static std::atomic<std::uint64_t> changes_;
};

}  // namespace TwUnits
