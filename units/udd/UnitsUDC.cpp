#include "units/udd/UnitsUDC.hpp"

#include <sstream>

#include "host/BooleanDataType.hpp"
#include "host/Console.hpp"
#include "host/DoubleDataType.hpp"
#include "host/StringDataType.hpp"
#include "host/UDDatabaseClient.hpp"
#include "host/UDInterface.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UDPropInfoTemplate.hpp"
#include "units/UnitManager.hpp"
#include "units/udd/HostObjectSupport.hpp"
#include "units/udd/UDDObjectManager.hpp"
#include "units/udd/UnitsModule.hpp"

namespace TwUnits {

using namespace udd;

namespace {

UnitRepresentation* unitOf(UDInterface* object) { return wrapped<UnitRepresentation>(object); }

// How a double shows in the display: a default output stream's formatting.
std::string streamed(double value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

}  // namespace

class Unit_RegisterUnit_MI : public UDMethodInfo {
 public:
  Unit_RegisterUnit_MI() : UDMethodInfo(false) {
    setName("register", true);
    addMethodSignature(signature({"handle"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    UDDObjectManager::registerUnitOfHostObject(hostObject(args[0]));
  }
};

class Unit_compare_MI : public UDMethodInfo {
 public:
  Unit_compare_MI() : UDMethodInfo(false) {
    setName("compare", true);
    addMethodSignature(signature({"handle", "handle"}, {"bool"}));
  }
  void invokeMethod(UDMethodSignature*, int* nResults, void** results, int, void** args) override {
    *nResults = 1;
    results[0] = newResultBool(compareHostObjects(hostObject(args[0]), hostObject(args[1])));
  }
};

class Unit_display_MI : public UDMethodInfo {
 public:
  Unit_display_MI() : UDMethodInfo(false) {
    setName("display", true);
    single_ = signature({"handle"});
    addMethodSignature(single_);
    addMethodSignature(signature({"handle vector"}));
    banner_ = "\n   Unit Object Array\n\n" + blanks_.substr(0, 3) + titled("Index:", indexWidth_) +
              titled("Name:", nameWidth_) + titled("Composition:", compositionWidth_) +
              titled("Multiplier:", multiplierWidth_) + "Offset:" + "\n\n";
  }
  void invokeMethod(UDMethodSignature* matched, int*, void**, int, void** args) override {
    utPrintf("%s", banner_.c_str());
    int index = 0;
    for (UDInterface* object : displayTargets(matched, single_, args[0])) {
      if (object->getClass() != GetUnitsUDC()) continue;
      utPrintf("%s\n", line(++index, *unitOf(object)).c_str());
    }
  }

 private:
  std::string titled(const char* title, std::size_t width) const {
    return title + blanks_.substr(0, width - std::string(title).size());
  }
  std::string line(int index, const UnitRepresentation& unit) const {
    std::string multiplier = streamed(unit.getMultiplier());
    return blanks_.substr(0, 3) + indexColumn(index) + column(unit.getName(), nameWidth_, 14) +
           column(unit.getCompositionString(), compositionWidth_, 16) +
           (multiplier.size() >= multiplierWidth_ ? multiplier
                                                  : column(multiplier, multiplierWidth_, 0)) +
           streamed(unit.getOffset());
  }

  const std::size_t indexWidth_ = 8, nameWidth_ = 18, compositionWidth_ = 20, multiplierWidth_ = 12;
  [[maybe_unused]] const std::size_t offsetWidth_ = 12;  // the offset closes the line
  const std::string blanks_ = std::string(50, ' ');
  std::string banner_;
  UDMethodSignature* single_;
};

class Unit_Delete_MI : public UDMethodInfo {
 public:
  Unit_Delete_MI() : UDMethodInfo(false) {
    setName("delete", true);
    addMethodSignature(signature({"handle"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    UDInterface* object = hostObject(args[0]);
    UnitManager::Instance()->unregisterUnit(unitOf(object)->getName());
    if (object->getLifecycleState() < UDInterface::kBeingDestroyed) {
      object->destroy(UDDatabaseClient::getInternalClient());
    }
  }
};

class Unit_UnitNamePIT : public UDPropInfoTemplate {
 public:
  Unit_UnitNamePIT() {
    declareProperty(this, "name", StringDataType::getType(), "Unit name", true);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return const_cast<char*>(unitOf(object)->getName().c_str());
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    unitOf(object)->setName(text(value));
  }
};

class Unit_CompositionPIT : public UDPropInfoTemplate {
 public:
  Unit_CompositionPIT() {
    declareProperty(this, "composition", StringDataType::getType(), "Composition of units.", true);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return const_cast<char*>(unitOf(object)->getCompositionString().c_str());
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    unitOf(object)->setCompositionString(text(value));
  }
};

class Unit_UnitConversionFactorPIT : public UDPropInfoTemplate {
 public:
  Unit_UnitConversionFactorPIT() {
    declareProperty(this, "conversionfactor", DoubleDataType::getType(),
                    "Multiplicative factor for conversion to base units.", true);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return new double(unitOf(object)->getMultiplier());
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    unitOf(object)->setMultiplier(number(value));
  }
  void releaseValue(UDDatabaseClient*, UDInterface*, void* value) override {
    delete static_cast<double*>(value);
  }
};

class Unit_UnitConversionOffsetPIT : public UDPropInfoTemplate {
 public:
  Unit_UnitConversionOffsetPIT() {
    declareProperty(this, "conversionoffset", DoubleDataType::getType(),
                    "Additional offset for conversion to base units.", true);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return new double(unitOf(object)->getOffset());
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    unitOf(object)->setOffset(number(value));
  }
  void releaseValue(UDDatabaseClient*, UDInterface*, void* value) override {
    delete static_cast<double*>(value);
  }
};

class Unit_Builtin_PIT : public UDPropInfoTemplate {
 public:
  Unit_Builtin_PIT() {
    declareProperty(this, "builtin", BooleanDataType::getType(),
                    "True if a unit is a builtin unit.", false);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return new unsigned char(UnitManager::Instance()->isUnitBuiltin(unitOf(object)->getName()) ? 1
                                                                                               : 0);
  }
  void releaseValue(UDDatabaseClient*, UDInterface*, void* value) override {
    delete static_cast<unsigned char*>(value);
  }
};

UnitsUDC::UnitsUDC() : UnitsHostClass("Unit") {
  addMethod(new Unit_RegisterUnit_MI());
  addMethod(new Unit_compare_MI());
  addMethod(new Unit_display_MI());
  addMethod(new Unit_Delete_MI());
  addProperty(new Unit_UnitNamePIT());
  addProperty(new Unit_CompositionPIT());
  addProperty(new Unit_UnitConversionFactorPIT());
  addProperty(new Unit_UnitConversionOffsetPIT());
  addProperty(new Unit_Builtin_PIT());
}

UDInterface* UnitsUDC::createClassSpecificObject(UDInterface*, void**, int) {
  return new UDInterface(new UnitRepresentation(), this, nullptr);
}

void UnitsUDC::destroyObject(UDInterface* object) {
  UnitRepresentation* unit = unitOf(object);
  object->setObject(nullptr);
  // A unit with a host object of its own is registered: the registry owns it.
  if (unit != nullptr && unit->getUDI() == nullptr) delete unit;
}

UnitsUDC* SINGLETON_UnitsUDC = nullptr;

UnitsUDC* GetUnitsUDC() {
  static UnitsUDC* cls = addToUnitApplication(new UnitsUDC());
  return cls;
}

}  // namespace TwUnits
