#include "units/udd/UnitPrefixUDC.hpp"

#include "host/BooleanDataType.hpp"
#include "host/Console.hpp"
#include "host/DoubleDataType.hpp"
#include "host/StringDataType.hpp"
#include "host/UDDatabaseClient.hpp"
#include "host/UDInterface.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UDPropInfoTemplate.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/udd/HostObjectSupport.hpp"
#include "units/udd/UDDObjectManager.hpp"
#include "units/udd/UnitsModule.hpp"

namespace TwUnits {

using namespace udd;

namespace {

UnitPrefix* prefixOf(UDInterface* object) { return wrapped<UnitPrefix>(object); }

}  // namespace

class UnitPrefix_RegisterUnitPrefix_MI : public UDMethodInfo {
 public:
  UnitPrefix_RegisterUnitPrefix_MI() : UDMethodInfo(false) {
    setName("register", true);
    addMethodSignature(signature({"handle"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    UDDObjectManager::registerPrefixOfHostObject(hostObject(args[0]));
  }
};

class UnitPrefix_compare_MI : public UDMethodInfo {
 public:
  UnitPrefix_compare_MI() : UDMethodInfo(false) {
    setName("compare", true);
    addMethodSignature(signature({"handle", "handle"}, {"bool"}));
  }
  void invokeMethod(UDMethodSignature*, int* nResults, void** results, int, void** args) override {
    *nResults = 1;
    results[0] = newResultBool(compareHostObjects(hostObject(args[0]), hostObject(args[1])));
  }
};

class UnitPrefix_display_MI : public UDMethodInfo {
 public:
  UnitPrefix_display_MI() : UDMethodInfo(false) {
    setName("display", true);
    single_ = signature({"handle"});
    addMethodSignature(single_);
    addMethodSignature(signature({"handle vector"}));
    banner_ = "\n   Unit Prefix Object Array\n\n" + blanks_.substr(0, 3) +
              "Index:" + blanks_.substr(0, indexWidth_ - 6) +
              "Name:" + blanks_.substr(0, nameWidth_ - 5) + "Exponent:" + "\n\n";
  }
  void invokeMethod(UDMethodSignature* matched, int*, void**, int, void** args) override {
    utPrintf("%s", banner_.c_str());
    int index = 0;
    for (UDInterface* object : displayTargets(matched, single_, args[0])) {
      if (object->getClass() != GetUnitPrefixUDC()) continue;
      const UnitPrefix& prefix = *prefixOf(object);
      // Positive exponents line up with the minus sign of negative ones.
      std::string line =
          blanks_.substr(0, 3) + indexColumn(++index) + column(prefix.getName(), nameWidth_, 8) +
          (prefix.getExponent() > 0 ? " " : "") + std::to_string(prefix.getExponent());
      utPrintf("%s\n", line.c_str());
    }
  }

 private:
  const std::size_t indexWidth_ = 8, nameWidth_ = 12;
  [[maybe_unused]] const std::size_t exponentWidth_ = 5;  // the exponent closes the line
  const std::string blanks_ = std::string(50, ' ');
  std::string banner_;
  UDMethodSignature* single_;
};

class UnitPrefix_Delete_MI : public UDMethodInfo {
 public:
  UnitPrefix_Delete_MI() : UDMethodInfo(false) {
    setName("delete", true);
    addMethodSignature(signature({"handle"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    UDInterface* object = hostObject(args[0]);
    UnitPrefixManager::Instance()->unregisterPrefix(prefixOf(object)->getName());
    if (object->getLifecycleState() < UDInterface::kBeingDestroyed) {
      object->destroy(UDDatabaseClient::getInternalClient());
    }
  }
};

class UnitPrefix_UnitPrefixNamePIT : public UDPropInfoTemplate {
 public:
  UnitPrefix_UnitPrefixNamePIT() {
    declareProperty(this, "name", StringDataType::getType(), "Unit prefix name", true);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return const_cast<char*>(prefixOf(object)->getName().c_str());
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    if (value != nullptr) prefixOf(object)->setName(text(value));
  }
};

class UnitPrefix_UnitPrefixExponentPIT : public UDPropInfoTemplate {
 public:
  UnitPrefix_UnitPrefixExponentPIT() {
    declareProperty(this, "exponent", DoubleDataType::getType(), "Prefix exponent", true);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return new double(prefixOf(object)->getExponent());
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    prefixOf(object)->setExponent(number(value));
  }
  void releaseValue(UDDatabaseClient*, UDInterface*, void* value) override {
    delete static_cast<double*>(value);
  }
};

class UnitPrefix_UnitPrefixMultiplierPIT : public UDPropInfoTemplate {
 public:
  UnitPrefix_UnitPrefixMultiplierPIT() {
    declareProperty(this, "multiplier", DoubleDataType::getType(), "Prefix multiplier", true,
                    false);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return new double(prefixOf(object)->getMult());
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    prefixOf(object)->setMult(number(value));
  }
  void releaseValue(UDDatabaseClient*, UDInterface*, void* value) override {
    delete static_cast<double*>(value);
  }
};

class UnitPrefix_Builtin_PIT : public UDPropInfoTemplate {
 public:
  UnitPrefix_Builtin_PIT() {
    declareProperty(this, "builtin", BooleanDataType::getType(),
                    "True if a unit prefix is a builtin unit prefix.", false);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return new unsigned char(
        UnitPrefixManager::Instance()->isPrefixBuiltin(prefixOf(object)->getName()) ? 1 : 0);
  }
  void releaseValue(UDDatabaseClient*, UDInterface*, void* value) override {
    delete static_cast<unsigned char*>(value);
  }
};

UnitPrefixUDC::UnitPrefixUDC() : UnitsHostClass("UnitPrefix") {
  addMethod(new UnitPrefix_RegisterUnitPrefix_MI());
  addMethod(new UnitPrefix_compare_MI());
  addMethod(new UnitPrefix_display_MI());
  addMethod(new UnitPrefix_Delete_MI());
  addProperty(new UnitPrefix_UnitPrefixNamePIT());
  addProperty(new UnitPrefix_UnitPrefixExponentPIT());
  addProperty(new UnitPrefix_UnitPrefixMultiplierPIT());
  addProperty(new UnitPrefix_Builtin_PIT());
}

UDInterface* UnitPrefixUDC::createClassSpecificObject(UDInterface*, void**, int) {
  auto* prefix = new UnitPrefix();
  prefix->setup();
  return new UDInterface(prefix, this, nullptr);
}

void UnitPrefixUDC::destroyObject(UDInterface* object) {
  UnitPrefix* prefix = prefixOf(object);
  object->setObject(nullptr);
  // A prefix with a host object of its own is registered: the registry owns it.
  if (prefix != nullptr && prefix->getUDI() == nullptr) delete prefix;
}

UnitPrefixUDC* SINGLETON_UnitPrefixUDC = nullptr;

UnitPrefixUDC* GetUnitPrefixUDC() {
  static UnitPrefixUDC* cls = addToUnitApplication(new UnitPrefixUDC());
  return cls;
}

}  // namespace TwUnits
