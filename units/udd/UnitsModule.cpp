#include "units/udd/UnitsModule.hpp"

#include "host/CVFcnTable.hpp"
#include "host/UDApplicationManager.hpp"
#include "units/udd/QuantityDimensionUDC.hpp"
#include "units/udd/UDDObjectManager.hpp"
#include "units/udd/UnitManagerUDC.hpp"
#include "units/udd/UnitPrefixUDC.hpp"
#include "units/udd/UnitSystemUDC.hpp"
#include "units/udd/UnitsUDC.hpp"

#ifndef TW_UNITS_VERSION
#define TW_UNITS_VERSION "0.0.0"
#endif
#ifndef TW_UNITS_BUILD_DATE
#define TW_UNITS_BUILD_DATE __DATE__
#endif

extern "C" {

const char libtwzo_units_version[] = TW_UNITS_VERSION;
const char libtwzo_units_build_date[] = TW_UNITS_BUILD_DATE;

void CVInitialize_zo_units() { TwUnits::units_initialize(); }

const CVFcnTable* QueryCVFcnTable_zo_units() {
  static const CVFcnTable table = {0, nullptr};
  return &table;
}

UDApplication* GetUnitApplication() {
  static UDApplication* application = [] {
    auto* made = new UDApplication("UnitApp", true);
    UDApplicationManager::addApplication(made);
    return made;
  }();
  return application;
}
}

namespace TwUnits {

void units_initialize() {
  GetQuantityDimensionUDC();
  GetUnitPrefixUDC();
  GetUnitSystemUDC();
  GetUnitsUDC();
  GetUnitManagerUDC();
}

namespace {

// Loading the library attaches the binding to the registries and creates four of the
// classes; the registries wait for the module's initialisation.
struct LoadTimeClasses {
  LoadTimeClasses() {
    UDDObjectManager::attachToRegistries();
    SINGLETON_QuantityDimensionUDC = GetQuantityDimensionUDC();
    SINGLETON_UnitPrefixUDC = GetUnitPrefixUDC();
    SINGLETON_UnitSystemUDC = GetUnitSystemUDC();
    SINGLETON_UnitsUDC = GetUnitsUDC();
  }
} loadTimeClasses;

}  // namespace

}  // namespace TwUnits
