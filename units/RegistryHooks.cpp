#include "units/RegistryHooks.hpp"

namespace TwUnits {

namespace {
RegistryHooks attached;
}  // namespace

void attachRegistryHooks(const RegistryHooks& hooks) { attached = hooks; }

const RegistryHooks& registryHooks() { return attached; }

}  // namespace TwUnits
