#include "units/RegistryLock.hpp"

namespace TwUnits {

std::atomic<std::uint64_t> RegistryLock::changes_{1};

RegistryLock::Change::~Change() { changes_.fetch_add(1, std::memory_order_release); }

}  // namespace TwUnits
