#include "units/udd/QuantityDimensionUDC.hpp"

#include "host/IntDataType.hpp"
#include "host/StringDataType.hpp"
#include "host/UDInterface.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UDPropInfoTemplate.hpp"
#include "units/QuantityDimension.hpp"
#include "units/udd/HostObjectSupport.hpp"
#include "units/udd/UnitsModule.hpp"

namespace TwUnits {

using namespace udd;

namespace {

QuantityDimension* quantityOf(UDInterface* object) { return wrapped<QuantityDimension>(object); }

// One exponent of the quantity, by base index.
class ExponentProperty : public UDPropInfoTemplate {
 public:
  ExponentProperty(const char* name, const char* description, unsigned baseIndex)
      : baseIndex_(baseIndex) {
    declareProperty(this, name, IntDataType::getType(), description, true);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return new int(quantityOf(object)->at(baseIndex_));
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    QuantityDimension* quantity = quantityOf(object);
    int exponents[kBaseDimensionCount];
    for (unsigned b = 0; b < kBaseDimensionCount; ++b) exponents[b] = quantity->at(b);
    exponents[baseIndex_] = *static_cast<const int*>(value);
    for (unsigned b = 0; b < kBaseDimensionCount; ++b) (*quantity)[b] = exponents[b];
  }
  void releaseValue(UDDatabaseClient*, UDInterface*, void* value) override {
    delete static_cast<int*>(value);
  }

 private:
  unsigned baseIndex_;
};

}  // namespace

class QuantityDimension_RegisterQuantityDimension_MI : public UDMethodInfo {
 public:
  QuantityDimension_RegisterQuantityDimension_MI() : UDMethodInfo(false) {
    setName("register", true);
    addMethodSignature(signature({"handle"}));
  }
  void invokeMethod(UDMethodSignature*, int*, void**, int, void** args) override {
    const QuantityDimension& quantity = *quantityOf(hostObject(args[0]));
    std::vector<HostArrayPtr> arguments;
    arguments.emplace_back(HostArray::createString(quantity.getName()));
    arguments.emplace_back(HostArray::createDoubleMatrix(1, kBaseDimensionCount));
    for (unsigned b = 0; b < kBaseDimensionCount; ++b) arguments[1]->getPr()[b] = quantity.at(b);
    callHostFunction("zophregisterquantity", arguments);
  }
};

class QuantityDimension_QuantityDimensionName_PIT : public UDPropInfoTemplate {
 public:
  QuantityDimension_QuantityDimensionName_PIT() {
    declareProperty(this, "name", StringDataType::getType(), "Quantity name", true);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override {
    return const_cast<char*>(quantityOf(object)->getName());
  }
  void setValue(UDDatabaseClient*, UDInterface* object, void* value) override {
    quantityOf(object)->setName(static_cast<const char*>(value));
  }
};

class QuantityDimension_AMOUNT_PIT : public ExponentProperty {
 public:
  QuantityDimension_AMOUNT_PIT() : ExponentProperty("Amount", "The amount composition.", 0) {}
};

class QuantityDimension_MASS_PIT : public ExponentProperty {
 public:
  QuantityDimension_MASS_PIT() : ExponentProperty("Mass", "The mass composition.", 1) {}
};

class QuantityDimension_LENGTH_PIT : public ExponentProperty {
 public:
  QuantityDimension_LENGTH_PIT() : ExponentProperty("Length", "The length composition.", 2) {}
};

class QuantityDimension_TIME_PIT : public ExponentProperty {
 public:
  QuantityDimension_TIME_PIT() : ExponentProperty("Time", "The time composition.", 3) {}
};

class QuantityDimension_TEMP_PIT : public ExponentProperty {
 public:
  QuantityDimension_TEMP_PIT() : ExponentProperty("Temp", "The temp composition.", 4) {}
};

class QuantityDimension_CURRENT_PIT : public ExponentProperty {
 public:
  QuantityDimension_CURRENT_PIT() : ExponentProperty("Current", "The current composition.", 5) {}
};

class QuantityDimension_LUMINOUS_INTENSITY_PIT : public ExponentProperty {
 public:
  QuantityDimension_LUMINOUS_INTENSITY_PIT()
      : ExponentProperty("LuminousIntensity", "The luminous intensity composition.", 6) {}
};

QuantityDimensionUDC::QuantityDimensionUDC() : UnitsHostClass("PhysicalQuantity") {
  addMethod(new QuantityDimension_RegisterQuantityDimension_MI());
  addProperty(new QuantityDimension_QuantityDimensionName_PIT());
  addProperty(new QuantityDimension_AMOUNT_PIT());
  addProperty(new QuantityDimension_MASS_PIT());
  addProperty(new QuantityDimension_LENGTH_PIT());
  addProperty(new QuantityDimension_TIME_PIT());
  addProperty(new QuantityDimension_TEMP_PIT());
  addProperty(new QuantityDimension_CURRENT_PIT());
  addProperty(new QuantityDimension_LUMINOUS_INTENSITY_PIT());
}

UDInterface* QuantityDimensionUDC::createClassSpecificObject(UDInterface*, void**, int) {
  return new UDInterface(new QuantityDimension(), this, nullptr);
}

void QuantityDimensionUDC::destroyObject(UDInterface* object) {
  delete quantityOf(object);
  object->setObject(nullptr);
}

QuantityDimensionUDC* SINGLETON_QuantityDimensionUDC = nullptr;

QuantityDimensionUDC* GetQuantityDimensionUDC() {
  static QuantityDimensionUDC* cls = addToUnitApplication(new QuantityDimensionUDC());
  return cls;
}

}  // namespace TwUnits
