#include "units/RegistryLock.hpp"

#include <mutex>

namespace TwUnits {

namespace {

// Made on first use: a call may hold it while other libraries are still being loaded.
std::recursive_mutex& registries() {
  static std::recursive_mutex mutex;
  return mutex;
}

}  // namespace

std::atomic<std::uint64_t> RegistryLock::changes_{1};

RegistryLock::Hold::Hold() { registries().lock(); }

RegistryLock::Hold::~Hold() { registries().unlock(); }

RegistryLock::Change::~Change() { changes_.fetch_add(1, std::memory_order_release); }

}  // namespace TwUnits
