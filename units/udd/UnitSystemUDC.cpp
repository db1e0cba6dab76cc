#include "units/udd/UnitSystemUDC.hpp"

#include <memory>

#include "host/StringDataType.hpp"
#include "host/UDInterface.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UDPropInfoTemplate.hpp"
#include "units/UnitSystemManager.hpp"
#include "units/messages/UnitErrors.hpp"
#include "units/udd/HostObjectSupport.hpp"
#include "units/udd/UnitsModule.hpp"

namespace TwUnits {

using namespace udd;

namespace {

UnitSystem* systemOf(UDInterface* object) { return wrapped<UnitSystem>(object); }

using Getter = const std::string& (UnitSystem::*)() const;
using Setter = void (UnitSystem::*)(const std::string&);

// A unit system's name or one of its unit names, read and written through the
// system's getter and setter. A null value writes the empty name.
class UnitSystemNameProperty : public UDPropInfoTemplate {
 public:
  UnitSystemNameProperty(const char* name, const char* description, Getter getter, Setter setter)
      : getter_(getter), setter_(setter) {
    declareProperty(this, name, StringDataType::getType(), description, true);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return const_cast<char*>((systemOf(object)->*getter_)().c_str());
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    (systemOf(object)->*setter_)(text(value));
  }

 private:
  Getter getter_;
  Setter setter_;
};

}  // namespace

class UnitSystem_registerSystem_MI : public UDMethodInfo {
 public:
  UnitSystem_registerSystem_MI() : UDMethodInfo(false) {
    setName("register", true);
    addMethodSignature(signature({"handle"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    const UnitSystem& form = *systemOf(hostObject(args[0]));
    const std::pair<Getter, UnitErrorOf<>> required[] = {
        {&UnitSystem::getMassType, errors::SystemMassTypeNotSet},
        {&UnitSystem::getAmountType, errors::SystemAmountTypeNotSet},
        {&UnitSystem::getLengthType, errors::SystemLengthTypeNotSet},
        {&UnitSystem::getTimeType, errors::SystemTimeTypeNotSet},
        {&UnitSystem::getTempType, errors::SystemTemperatureTypeNotSet},
        {&UnitSystem::getCurrentType, errors::SystemCurrentTypeNotSet},
        {&UnitSystem::getLuminousIntensityType, errors::SystemLuminousIntensityTypeNotSet},
    };
    for (const auto& [getter, unset] : required) {
      if ((form.*getter)().empty()) raiseError(unset);
    }
    // The registry keeps a copy: later changes to the form do not reach it.
    auto copy = std::make_unique<UnitSystem>(form);
    UnitSystemManager::Instance()->registerUnitSystem(copy.get());
    copy.release();
  }
};

class UnitSystem_unregisterSystem_MI : public UDMethodInfo {
 public:
  UnitSystem_unregisterSystem_MI() : UDMethodInfo(false) {
    setName("unregister", true);
    addMethodSignature(signature({"handle", "string"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    UnitSystemManager::Instance()->unregisterUnitSystem(text(args[1]));
  }
};

class UnitSystem_UnitSystemNamePIT : public UnitSystemNameProperty {
 public:
  UnitSystem_UnitSystemNamePIT()
      : UnitSystemNameProperty("Name", "Unit System Name.", &UnitSystem::getUnitSystemName,
                               &UnitSystem::setUnitSystemName) {}
};

class UnitSystem_MassUnitPIT : public UnitSystemNameProperty {
 public:
  UnitSystem_MassUnitPIT()
      : UnitSystemNameProperty("MassUnit", "Mass units for unit system.", &UnitSystem::getMassType,
                               &UnitSystem::setMassType) {}
};

class UnitSystem_AmountUnitPIT : public UnitSystemNameProperty {
 public:
  UnitSystem_AmountUnitPIT()
      : UnitSystemNameProperty("AmountUnit", "Amount units for unit system.",
                               &UnitSystem::getAmountType, &UnitSystem::setAmountType) {}
};

class UnitSystem_LengthUnitPIT : public UnitSystemNameProperty {
 public:
  UnitSystem_LengthUnitPIT()
      : UnitSystemNameProperty("LengthUnit", "Length units for unit system.",
                               &UnitSystem::getLengthType, &UnitSystem::setLengthType) {}
};

class UnitSystem_TimeUnitPIT : public UnitSystemNameProperty {
 public:
  UnitSystem_TimeUnitPIT()
      : UnitSystemNameProperty("TimeUnit", "Time units for unit system.", &UnitSystem::getTimeType,
                               &UnitSystem::setTimeType) {}
};

class UnitSystem_TempUnitPIT : public UnitSystemNameProperty {
 public:
  UnitSystem_TempUnitPIT()
      : UnitSystemNameProperty("TempUnit", "Temperature units for unit system.",
                               &UnitSystem::getTempType, &UnitSystem::setTempType) {}
};

class UnitSystem_CurrentUnitPIT : public UnitSystemNameProperty {
 public:
  UnitSystem_CurrentUnitPIT()
      : UnitSystemNameProperty("CurrentUnit", "Current units for unit system.",
                               &UnitSystem::getCurrentType, &UnitSystem::setCurrentType) {}
};

class UnitSystem_LuminousIntensityUnitPIT : public UnitSystemNameProperty {
 public:
  UnitSystem_LuminousIntensityUnitPIT()
      : UnitSystemNameProperty("LuminousIntensityUnit", "Luminous intensity units for unit system.",
                               &UnitSystem::getLuminousIntensityType,
                               &UnitSystem::setLuminousIntensityType) {}
};

UnitSystemUDC::UnitSystemUDC() : UnitsHostClass("UnitSystem") {
  addMethod(new UnitSystem_registerSystem_MI());
  addMethod(new UnitSystem_unregisterSystem_MI());
  addProperty(new UnitSystem_UnitSystemNamePIT());
  addProperty(new UnitSystem_MassUnitPIT());
  addProperty(new UnitSystem_AmountUnitPIT());
  addProperty(new UnitSystem_LengthUnitPIT());
  addProperty(new UnitSystem_TimeUnitPIT());
  addProperty(new UnitSystem_TempUnitPIT());
  addProperty(new UnitSystem_CurrentUnitPIT());
  addProperty(new UnitSystem_LuminousIntensityUnitPIT());
}

UDInterface* UnitSystemUDC::createClassSpecificObject(UDInterface*, void**, int) {
  auto* system = new UnitSystem();
  system->init();
  return new UDInterface(system, this, nullptr);
}

void UnitSystemUDC::destroyObject(UDInterface* object) {
  delete systemOf(object);
  object->setObject(nullptr);
}

UnitSystemUDC* SINGLETON_UnitSystemUDC = nullptr;

UnitSystemUDC* GetUnitSystemUDC() {
  static UnitSystemUDC* cls = addToUnitApplication(new UnitSystemUDC());
  return cls;
}

}  // namespace TwUnits
