// Loads the units module as the host does, with dlopen: this binary links only the
// host, never the module.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "host/HostArray.hpp"
#include "host/UDApplicationManager.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"

namespace {

TEST(ModuleLoad, LoadingCreatesFourClassesAndInitialisationTheManager) {
  EXPECT_EQ(UDApplicationManager::findClass("Unit"), nullptr);
  void* module = dlopen(TW_MODULE_PATH, RTLD_NOW | RTLD_GLOBAL);
  ASSERT_NE(module, nullptr) << dlerror();
  for (const char* name : {"PhysicalQuantity", "UnitPrefix", "UnitSystem", "Unit"}) {
    EXPECT_NE(UDApplicationManager::findClass(name), nullptr) << name;
  }
  EXPECT_EQ(UDApplicationManager::findClass("UnitManager"), nullptr);

  auto initialise = reinterpret_cast<void (*)()>(dlsym(module, "CVInitialize_zo_units"));
  ASSERT_NE(initialise, nullptr);
  initialise();
  ASSERT_NE(UDApplicationManager::findClass("UnitManager"), nullptr);
  EXPECT_NE(dlsym(module, "QueryCVFcnTable_zo_units"), nullptr);
  EXPECT_NE(dlsym(module, "GetUnitApplication"), nullptr);
  EXPECT_NE(dlsym(module, "libtwzo_units_version"), nullptr);

  UDInterfacePtr manager(hostConstruct("UnitManager"));
  HostArrayPtr target(HostArray::createHandleArray({manager.get()}));
  HostArrayPtr from(HostArray::createString("mile")), to(HostArray::createString("meter"));
  HostArrayPtr value(HostArray::createDoubleScalar(1.0));
  std::vector<HostArray*> results =
      hostInvokeMethod("calculateconversion", 1, {target.get(), from.get(), to.get(), value.get()});
  ASSERT_EQ(results.size(), 1u);
  HostArrayPtr converted(results[0]);
  EXPECT_DOUBLE_EQ(converted->getPr()[0], 1609.344);
}

}  // namespace
