#include "units/udd/UnitManagerUDC.hpp"

#include <climits>
#include <cmath>
#include <memory>

#include "host/ArgumentError.hpp"
#include "host/BooleanDataType.hpp"
#include "host/Exception.hpp"
#include "host/HostArrayDataType.hpp"
#include "host/NintsDataType.hpp"
#include "host/Numeric.hpp"
#include "host/StringVector.hpp"
#include "host/StringVectorType.hpp"
#include "host/UDDatabaseClient.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"
#include "host/UDInterfaceVectorType.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UDPropInfoTemplate.hpp"
#include "host/Vector.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverter.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/messages/UnitErrors.hpp"
#include "units/udd/HostObjectSupport.hpp"
#include "units/udd/QuantityDimensionUDC.hpp"
#include "units/udd/UDDObjectManager.hpp"
#include "units/udd/UnitPrefixUDC.hpp"
#include "units/udd/UnitsModule.hpp"
#include "units/udd/UnitsUDC.hpp"

namespace TwUnits {

using namespace udd;

namespace {

constexpr const char* kCreatedQuantities = "quantityattach";
// The binding's buffer of unit names holds this many.
constexpr std::size_t kCompositionNameLimit = 100;

UnitManager* registryOf(void* manager) { return wrapped<UnitManager>(hostObject(manager)); }

HostArray* stringVectorResult(StringVector* names) {
  std::unique_ptr<StringVector> owned(names);
  return StringVectorType::getType()->toHostValue(owned.get());
}

// Truncates toward zero into an int; NaN gives 0 and values far outside saturate.
int truncatedToInt(double value) {
  if (std::isnan(value)) return 0;
  if (value >= INT_MAX) return INT_MAX;
  if (value <= INT_MIN) return INT_MIN;
  return static_cast<int>(value);
}

// Frees a host object held in the created-quantities list (the list's reference).
void deleteHostObject(UDInterface* object) {
  object->destroy(UDDatabaseClient::getInternalClient());
  object->release();
}

std::string quantityNameOf(UDInterface* object) {
  const auto* quantity = wrapped<QuantityDimension>(object);
  return quantity ? quantity->getName() : "";
}

// A new "PhysicalQuantity" host object (one reference, the caller's) with the name and
// exponents of the quantity, or no name and all exponents 0.
UDInterface* newQuantityObject(const char* name, const QuantityDimensionApi* exponents) {
  UDInterface* object = GetQuantityDimensionUDC()->createObject(nullptr, nullptr);
  auto* quantity = wrapped<QuantityDimension>(object);
  quantity->setName(name);
  if (exponents != nullptr) {
    for (unsigned b = 0; b < kBaseDimensionCount; ++b) (*quantity)[b] = (*exponents)[b];
  }
  return object;
}

// The exponent a prefix method was given, checked as registering a prefix checks it.
int checkedPrefixExponent(double exponent, const UnitErrorOf<>& notAnInteger) {
  requireFinite(exponent, "exponent");
  if (!utEqualWithinEps(exponent, utRound(exponent))) raiseError(notAnInteger);
  if (utEqualWithinEps(exponent, 0.0)) raiseError(errors::PrefixZeroMultNotAllowed);
  return roundedToInt(exponent);
}

// A unit definition from the arguments of "registerunit" and "verifyunit": name,
// composition, multiplier and, with the longer signature, offset.
std::unique_ptr<UnitRepresentation> definitionFrom(int nArgs, void** args) {
  auto definition = std::make_unique<UnitRepresentation>();
  definition->setName(text(args[1]));
  definition->setCompositionString(text(args[2]));
  definition->setMultiplier(number(args[3]));
  definition->setOffset(nArgs > 4 ? number(args[4]) : 0.0);
  return definition;
}

}  // namespace

Vector* getCreatedQuantities(UDInterface* manager) {
  return static_cast<Vector*>(manager->getAttachment(kCreatedQuantities));
}

// 1
class Unit_GetPhysicalQuantityTypes_MI : public UDMethodInfo {
 public:
  Unit_GetPhysicalQuantityTypes_MI() : UDMethodInfo(false) {
    setName("getpqtypes", true);
    addMethodSignature(signature({"handle"}, {"string vector"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void** results, int, void**) override {
    results[0] =
        stringVectorResult(PhysicalQuantityManager::Instance()->getAllQuantityTypeStrings());
  }
};

// 2
class Unit_GetRegisteredUnits_MI : public UDMethodInfo {
 public:
  Unit_GetRegisteredUnits_MI() : UDMethodInfo(false) {
    setName("showunits", true);
    all_ = signature({"handle", "bool"}, {"handle vector"});
    addMethodSignature(all_);
    UDMethodSignature* named = signature({"handle", "string"}, {"handle vector"});
    named->setLastArgumentRepeats(true);
    addMethodSignature(named);
  }
  void invokeMethod(UDMethodSignature* matched, int* nResults, void** results, int nArgs,
                    void** args) override {
    *nResults = 1;
    UnitManager* units = registryOf(args[0]);
    auto objects = std::make_unique<Vector>();
    // Units without a host object ("dimensionless") are left out.
    auto add = [&](const UnitRepresentation* unit) {
      if (unit != nullptr && unit->getUDI() != nullptr) objects->addElement(unit->getUDI());
    };
    if (matched == all_) {
      bool builtinToo = *static_cast<unsigned char*>(args[1]) != 0;
      int quantities = std::min(PhysicalQuantityManager::Instance()->getNumQuantities(),
                                units->getNumQuantityLists());
      for (int q = 0; q < quantities; ++q) {
        for (int u = 0; u < static_cast<int>(units->getNumUnits(q)); ++u) {
          const UnitRepresentation* unit = units->getUnitRepresentation(q, u);
          if (builtinToo || !units->isUnitBuiltin(unit->getName())) add(unit);
        }
      }
    } else {
      for (int i = 1; i < nArgs && args[i] != nullptr; ++i)
        add(units->getUnitRepresentation(text(args[i])));
    }
    results[0] = objects.release();
  }

 private:
  UDMethodSignature* all_;
};

// 3
class Unit_GetRegisteredPrefixes_MI : public UDMethodInfo {
 public:
  Unit_GetRegisteredPrefixes_MI() : UDMethodInfo(false) {
    setName("showprefixes", true);
    all_ = signature({"handle", "bool"}, {"handle vector"});
    addMethodSignature(all_);
    UDMethodSignature* named = signature({"handle", "string"}, {"handle vector"});
    named->setLastArgumentRepeats(true);
    addMethodSignature(named);
  }
  void invokeMethod(UDMethodSignature* matched, int* nResults, void** results, int nArgs,
                    void** args) override {
    *nResults = 1;
    UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
    auto objects = std::make_unique<Vector>();
    auto add = [&](int index) {
      if (UDInterface* object = prefixes->getPrefix(index)->getUDI()) objects->addElement(object);
    };
    if (matched == all_) {
      bool builtinToo = *static_cast<unsigned char*>(args[1]) != 0;
      for (int p = 0; p < prefixes->getNumPrefixes(); ++p) {
        if (builtinToo || !prefixes->isPrefixBuiltin(prefixes->getUnitPrefixAsString(p))) add(p);
      }
    } else {
      for (int i = 1; i < nArgs && args[i] != nullptr; ++i) {
        int index = prefixes->getPrefixIndex(text(args[i]));
        if (index >= 0) add(index);
      }
    }
    results[0] = objects.release();
  }

 private:
  UDMethodSignature* all_;
};

// 4
class Unit_GetRegisteredPQS_MI : public UDMethodInfo {
 public:
  Unit_GetRegisteredPQS_MI() : UDMethodInfo(false) {
    setName("showphysicalquantities", true);
    names_ = signature({"handle"}, {"string vector"});
    addMethodSignature(names_);
    withMakeup_ = signature({"handle"}, {"string vector", "string vector"});
    addMethodSignature(withMakeup_);
    addMethodSignature(signature({"handle"}, {"string vector", "string vector", "CALVEX array"}));
  }
  void invokeMethod(UDMethodSignature* matched, int*, void** results, int, void**) override {
    PhysicalQuantityManager* quantities = PhysicalQuantityManager::Instance();
    results[0] = stringVectorResult(quantities->getAllQuantityTypeStrings());
    if (matched == names_) return;
    auto makeups = std::make_unique<StringVector>();
    for (int q = 0; q < quantities->getNumQuantities(); ++q) {
      makeups->addElement(quantities->getQuantityDimension(q)->getBaseQuantityMakeup().c_str());
    }
    results[1] = stringVectorResult(makeups.release());
    if (matched == withMakeup_) return;
    std::size_t dims[2] = {1, static_cast<std::size_t>(quantities->getNumQuantities())};
    HostArrayPtr builtin(HostArray::createLogicalArray(2, dims));
    for (int q = 0; q < quantities->getNumQuantities(); ++q) {
      builtin->getLogicals()[q] = q < PhysicalQuantityManager::kBuiltinQuantityCount;
    }
    results[2] = HostArrayDataType::getType()->toHostValue(builtin.get());
  }

 private:
  UDMethodSignature* names_;
  UDMethodSignature* withMakeup_;
};

// 5
class UnitManager_createUnitPrefix_MI : public UDMethodInfo {
 public:
  UnitManager_createUnitPrefix_MI() : UDMethodInfo(false) {
    setName("registerprefix", true);
    byValues_ = signature({"handle", "string", "double"}, {"handle"});
    addMethodSignature(byValues_);
    addMethodSignature(signature({"handle", "handle"}, {"handle"}));
  }
  void invokeMethod(UDMethodSignature* matched, int* nResults, void** results, int,
                    void** args) override {
    *nResults = 1;
    UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
    if (matched != byValues_) {
      UDInterface* object = hostObject(args[1]);
      requireClass(object, GetUnitPrefixUDC());
      UDDObjectManager::registerPrefixOfHostObject(object);
      results[0] = object;
      return;
    }
    int exponent = checkedPrefixExponent(number(args[2]), errors::UnitPrefixMustBeMultTen);
    auto prefix = std::make_unique<UnitPrefix>(text(args[1]), exponent, "");
    UnitPrefix* registered = prefix.get();
    // The same prefix registered already: nothing new to show.
    if (!handOver(
            prefix, [&] { prefixes->registerPrefix(registered); },
            [&] { return prefixes->getUnitPrefixApi(registered->getName()) == registered; })) {
      return;
    }
    results[0] = registered->getUDI();
  }

 private:
  UDMethodSignature* byValues_;
};

// 6
class UnitManager_createUnit_MI : public UDMethodInfo {
 public:
  UnitManager_createUnit_MI() : UDMethodInfo(false) {
    setName("registerunit", true);
    addMethodSignature(signature({"handle", "string", "string", "double"}, {"handle"}));
    addMethodSignature(signature({"handle", "string", "string", "double", "double"}, {"handle"}));
    byObject_ = signature({"handle", "handle"}, {"handle"});
    addMethodSignature(byObject_);
  }
  void invokeMethod(UDMethodSignature* matched, int* nResults, void** results, int nArgs,
                    void** args) override {
    *nResults = 1;
    UnitManager* units = registryOf(args[0]);
    if (matched == byObject_) {
      UDInterface* object = hostObject(args[1]);
      requireClass(object, GetUnitsUDC());
      UDDObjectManager::registerUnitOfHostObject(object);
      results[0] = object;
      return;
    }
    std::unique_ptr<UnitRepresentation> definition = definitionFrom(nArgs, args);
    UnitRepresentation* registered = definition.get();
    // Nothing to register (the same definition, or a prefix on a unit): an empty handle.
    if (!handOver(
            definition, [&] { units->registerUnit(registered); },
            [&] { return units->getUnitRepresentation(registered->getName()) == registered; })) {
      return;
    }
    results[0] = registered->getUDI();
  }

 private:
  UDMethodSignature* byObject_;
};

// 7
class UnitManager_removeUnit_MI : public UDMethodInfo {
 public:
  UnitManager_removeUnit_MI() : UDMethodInfo(false) {
    setName("unregisterunit", true);
    addMethodSignature(signature({"handle", "string"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    registryOf(args[0])->unregisterUnit(text(args[1]));
  }
};

// 8
class UnitManager_createPhysicalQuantity_MI : public UDMethodInfo {
 public:
  UnitManager_createPhysicalQuantity_MI() : UDMethodInfo(false) {
    setName("registerphysicalquantity", true);
    fromComposition_ = signature({"handle", "string", "string"});
    addMethodSignature(fromComposition_);
    addMethodSignature(signature({"handle", "string", "CALVEX array"}));
  }
  void invokeMethod(UDMethodSignature* matched, int*, void**, int, void** args) override {
    std::string name = text(args[1]);
    std::unique_ptr<QuantityDimension> quantity;
    if (matched == fromComposition_) {
      quantity.reset(
          QuantityStringParser::Instance()->createQuantityDimensionFromString(text(args[2])));
      quantity->setName(name.c_str());
    } else {
      quantity = fromExponents(name, *static_cast<const HostArray*>(args[2]));
    }
    PhysicalQuantityManager* quantities = PhysicalQuantityManager::Instance();
    const QuantityDimension* registered = quantity.get();
    handOver(
        quantity, [&] { quantities->registerPhysicalQuantity(registered); },
        [&] {
          return quantities->getQuantityDimension(quantities->getQuantityIdx(name)) == registered;
        });

    UDInterface* manager = hostObject(args[0]);
    Vector* created = getCreatedQuantities(manager);
    // A quantity of the same name removed from the registry some other way leaves a
    // stale host object behind; the new one replaces it.
    for (int i = created->size() - 1; i >= 0; --i) {
      auto* stale = static_cast<UDInterface*>(created->elementAt(i));
      if (quantityNameOf(stale) == name) {
        created->removeElementAt(i);
        deleteHostObject(stale);
      }
    }
    created->addElement(newQuantityObject(name.c_str(), registered));
  }

 private:
  // Numbers, or logicals read as 0 and 1; each exponent a finite value that a 32-bit
  // integer holds once its fraction is dropped.
  static std::unique_ptr<QuantityDimension> fromExponents(const std::string& name,
                                                          const HostArray& values) {
    using ClassId = HostArray::ClassId;
    const ClassId kind = values.getClassId();
    if (kind != ClassId::Double && kind != ClassId::Logical && kind != ClassId::Int32) {
      raiseArgumentError("exponents",
                         std::string("must be numbers, not of class ") + values.getClassName());
    }
    if (values.getN() != kBaseDimensionCount || values.getM() != 1)
      raiseError(errors::BadQuantArgs);
    int exponents[kBaseDimensionCount];
    for (unsigned b = 0; b < kBaseDimensionCount; ++b) {
      double value = kind == ClassId::Double    ? values.getPr()[b]
                     : kind == ClassId::Logical ? (values.getLogicals()[b] ? 1.0 : 0.0)
                                                : values.getInt32s()[b];
      requireFinite(value, "exponent");
      if (!(value > INT_MIN - 1.0 && value < INT_MAX + 1.0))
        raiseArgumentError("exponent", "must lie between -2147483648 and 2147483647");
      if (!utEqualWithinEps(value, utRound(value))) issueWarning(errors::FractionalExponentsFixed);
      exponents[b] = truncatedToInt(value);
    }
    return std::make_unique<QuantityDimension>(exponents, name.c_str());
  }

  UDMethodSignature* fromComposition_;
};

// 9
class UnitManager_removePrefix_MI : public UDMethodInfo {
 public:
  UnitManager_removePrefix_MI() : UDMethodInfo(false) {
    setName("unregisterunitprefix", true);
    addMethodSignature(signature({"handle", "string"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    std::string name = text(args[1]);
    if (name.empty()) raiseError(errors::PrefixNotFound, name);
    UnitPrefixManager::Instance()->unregisterPrefix(name);
  }
};

// 10
class UnitManager_removePhysicalQuantity_MI : public UDMethodInfo {
 public:
  UnitManager_removePhysicalQuantity_MI() : UDMethodInfo(false) {
    setName("unregisterpq", true);
    addMethodSignature(signature({"handle", "string"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    std::string name = text(args[1]);
    PhysicalQuantityManager::Instance()->unregisterPhysicalQuantity(name);
    Vector* created = getCreatedQuantities(hostObject(args[0]));
    for (int i = 0; i < created->size(); ++i) {
      auto* object = static_cast<UDInterface*>(created->elementAt(i));
      if (quantityNameOf(object) == name) {
        created->removeElementAt(i);
        deleteHostObject(object);
        return;
      }
    }
  }
};

// 11
class UnitManager_UnitConversionCalculator_MI : public UDMethodInfo {
 public:
  UnitManager_UnitConversionCalculator_MI() : UDMethodInfo(false) {
    setName("calculateconversion", true);
    addMethodSignature(signature({"handle", "string", "string", "double"}, {"double"}));
  }
  void invokeMethod(UDMethodSignature*, int* nResults, void** results, int, void** args) override {
    *nResults = 1;
    std::unique_ptr<UnitConverter> converter(
        UnitConverterManager::Instance()->getQuantityUnitConverter(text(args[1]), text(args[2])));
    results[0] = newResultDouble(converter->doConversion(number(args[3])));
  }
};

// 12
class UnitManager_VerifyUnit_MI : public UDMethodInfo {
 public:
  UnitManager_VerifyUnit_MI() : UDMethodInfo(false) {
    setName("verifyunit", true);
    addMethodSignature(signature({"handle", "string", "string", "double"}, {"bool"}));
    addMethodSignature(signature({"handle", "string", "string", "double", "double"}, {"bool"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void** results, int nArgs, void** args) override {
    std::unique_ptr<UnitRepresentation> definition = definitionFrom(nArgs, args);
    int code = registryOf(args[0])->verifyUnitForRegistration(definition.get());
    results[0] = newResultBool(code == UnitManager::NOTHING_TO_REGISTER);
  }
};

// 13
class UnitManager_VerifyUnitPrefix_MI : public UDMethodInfo {
 public:
  UnitManager_VerifyUnitPrefix_MI() : UDMethodInfo(false) {
    setName("verifyunitprefix", true);
    addMethodSignature(signature({"handle", "string", "double"}, {"bool"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void** results, int, void** args) override {
    int exponent = checkedPrefixExponent(number(args[2]), errors::PrefixMustBeMultTen);
    UnitPrefix prefix(text(args[1]), exponent, "");
    auto* prefixes =
        static_cast<UnitPrefixManager*>(registryOf(args[0])->getUnitPrefixManagerApi());
    results[0] = newResultBool(prefixes->verifyUnitPrefix(&prefix));
  }
};

// 14
class UnitManager_VerifyComposition_MI : public UDMethodInfo {
 public:
  UnitManager_VerifyComposition_MI() : UDMethodInfo(false) {
    setName("verifycomposition", true);
    addMethodSignature(signature({"handle", "string"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    delete QuantityStringParser::Instance()->createUnitCompFromString(text(args[1]));
  }
};

// 15
class UnitManager_ParseComposition_MI : public UDMethodInfo {
 public:
  UnitManager_ParseComposition_MI() : UDMethodInfo(false) {
    setName("parsecomposition", true);
    addMethodSignature(signature({"handle", "string"}, {"CALVEX array", "int vector"}));
  }
  void invokeMethod(UDMethodSignature*, int* nResults, void** results, int, void** args) override {
    if (*nResults == 0) return;  // nothing asked for: not even parsed
    QuantityStringParser::Makeup makeup;
    try {
      makeup = QuantityStringParser::Instance()->getUnitMakeupAndExponentsFromString(text(args[1]));
    } catch (Exception* raised) {
      delete raised;
      raiseError(errors::InternalParseError);
    } catch (const std::exception&) {
      raiseError(errors::InternalParseError);
    }
    if (makeup.first.size() > kCompositionNameLimit) raiseError(errors::CompositionLimit);
    std::vector<const char*> names;
    for (const std::string& name : makeup.first) names.push_back(name.c_str());
    results[0] = HostArray::createCharMatrixFromStrings(names.size(), names.data());
    if (*nResults >= 2) results[1] = NintsDataType::getType()->toHostValue(&makeup.second);
  }
};

// 16
class Unit_GetPhysicalQuantityFromComposition_MI : public UDMethodInfo {
 public:
  Unit_GetPhysicalQuantityFromComposition_MI() : UDMethodInfo(false) {
    setName("getphysqtyforcomposition", true);
    addMethodSignature(signature({"handle", "string"}, {"bool", "handle"}));
  }
  void invokeMethod(UDMethodSignature*, int* nResults, void** results, int, void** args) override {
    const QuantityDimensionApi* quantity =
        registryOf(args[0])->getQuantityDimensionFromComposition(text(args[1]));
    results[0] = newResultBool(quantity != nullptr);
    if (*nResults < 2) return;
    UDInterface* object = newQuantityObject("", quantity);
    hostReleaseAfterCall(object);  // the result holds the host's own reference
    results[1] = object;
  }
};

class UnitManager_CreatedQuantities_PIT : public UDPropInfoTemplate {
 public:
  UnitManager_CreatedQuantities_PIT() {
    declareProperty(this, "CreatedQuantities", UDInterfaceVectorType::getType(),
                    "All the physical quantities created during a CALVEX session.", false, false);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return getCreatedQuantities(object);
  }
  bool canContainUDInterfaces() const override { return false; }
};

UnitManagerUDC::UnitManagerUDC() : UnitsHostClass("UnitManager") {
  addMethod(new Unit_GetPhysicalQuantityTypes_MI());
  addMethod(new Unit_GetRegisteredUnits_MI());
  addMethod(new Unit_GetRegisteredPrefixes_MI());
  addMethod(new Unit_GetRegisteredPQS_MI());
  addMethod(new UnitManager_createUnitPrefix_MI());
  addMethod(new UnitManager_createUnit_MI());
  addMethod(new UnitManager_removeUnit_MI());
  addMethod(new UnitManager_createPhysicalQuantity_MI());
  addMethod(new UnitManager_removePrefix_MI());
  addMethod(new UnitManager_removePhysicalQuantity_MI());
  addMethod(new UnitManager_UnitConversionCalculator_MI());
  addMethod(new UnitManager_VerifyUnit_MI());
  addMethod(new UnitManager_VerifyUnitPrefix_MI());
  addMethod(new UnitManager_VerifyComposition_MI());
  addMethod(new UnitManager_ParseComposition_MI());
  addMethod(new Unit_GetPhysicalQuantityFromComposition_MI());
  addProperty(new UnitManager_CreatedQuantities_PIT());
}

UDInterface* UnitManagerUDC::createClassSpecificObject(UDInterface*, void**, int) {
  return manager_->getReference();
}

void UnitManagerUDC::destroyObject(UDInterface* object) {
  if (Vector* created = getCreatedQuantities(object)) {
    for (int i = 0; i < created->size(); ++i)
      deleteHostObject(static_cast<UDInterface*>(created->elementAt(i)));
    delete created;
  }
  object->setAttachment(kCreatedQuantities, nullptr);
  object->setObject(nullptr);
}

UnitManagerUDC* GetUnitManagerUDC() {
  static UnitManagerUDC* cls = [] {
    UnitManagerUDC* made = addToUnitApplication(new UnitManagerUDC());
    auto* manager = new UDInterface(UnitManager::Instance(), made, nullptr);
    made->setManagerObject(manager);
    manager->internalToExternal();
    manager->setAttachment(kCreatedQuantities, new Vector());
    return made;
  }();
  return cls;
}

}  // namespace TwUnits
