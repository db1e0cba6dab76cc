#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/ErrorIdException.hpp"
#include "host/HostArray.hpp"
#include "host/Memory.hpp"
#include "host/UDApplication.hpp"
#include "host/UDApplicationManager.hpp"
#include "host/UDClass.hpp"
#include "host/UDDataType.hpp"
#include "host/UDDatabaseClient.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UDPropInfoTemplate.hpp"
#include "host/UDTypeRepository.hpp"
#include "host/Vector.hpp"
#include "tests/support/ErrorCapture.hpp"

namespace {

// The library object behind a test host object.
struct Gauge {
  Gauge() { ++alive; }
  ~Gauge() { --alive; }
  static int alive;

  std::string label = "none";
  UDInterface* ownHandle = nullptr;  // a reference the library keeps until destroyObject
};
int Gauge::alive = 0;

Gauge& gaugeOf(void* object) {
  return *static_cast<Gauge*>(static_cast<UDInterface*>(object)->getObject());
}

UDDataType* typeNamed(const char* name) { return UDTypeRepository::getType(name, false); }

template <typename T>
void* hostAllocated(T value) {
  void* slot = utMallocWithCheck(sizeof(T));
  *static_cast<T*>(slot) = value;
  return slot;
}

// Class, size and contents in one line: "double 1x2 [1 -2]", "char 1x2 'ab'".
std::string show(const HostArray* array) {
  if (array == nullptr) return "null";
  std::ostringstream text;
  text << array->getClassName() << " " << array->getM() << "x" << array->getN() << " ";
  if (array->getClassId() == HostArray::ClassId::Char)
    return text.str() + "'" + array->getString() + "'";
  text << "[";
  for (std::size_t i = 0; i < array->getNumberOfElements(); ++i)
    text << (i > 0 ? " " : "") << array->getPr()[i];
  return text.str() + "]";
}

// A property whose value calls are given as functions; without a setter it is read-only.
class TestProperty : public UDPropInfoTemplate {
 public:
  TestProperty(const char* name, const char* type, std::function<void*(Gauge&)> get,
               std::function<void(Gauge&, void*)> set = nullptr,
               std::function<void(void*)> free = nullptr)
      : get_(std::move(get)), set_(std::move(set)), free_(std::move(free)) {
    setName(name, false);
    setDataType(typeNamed(type));
    setExternalSetAccess(set_ != nullptr);
    setInternalSetAccess(set_ != nullptr);
  }
  void* getValue(UDDatabaseClient*, UDInterface* object) override { return get_(gaugeOf(object)); }
  void setValue(UDDatabaseClient* client, UDInterface* object, void* value) override {
    if (set_) return set_(gaugeOf(object), value);
    UDPropInfoTemplate::setValue(client, object, value);
  }
  void releaseValue(UDDatabaseClient*, UDInterface*, void* value) override {
    if (free_) free_(value);
  }

 private:
  std::function<void*(Gauge&)> get_;
  std::function<void(Gauge&, void*)> set_;
  std::function<void(void*)> free_;
};

// A data type that fails to make host values and counts the arguments it frees.
class FailingType : public UDDataType {
 public:
  FailingType() : UDDataType("failing") {}
  bool isEqual(const void*, const void*) const override { return false; }
  HostArray* toHostValue(const void*) const override {
    throw new ErrorIdException("Test:toHostValue", "No host value.");
  }
  bool acceptsHostValue(const HostArray*) const override { return true; }
  void* fromHostValue(const HostArray*) const override { return new int(0); }
  void releaseArgument(void* argument) const override {
    delete static_cast<int*>(argument);
    ++releasedArguments;
  }
  HostArray* takeResult(void*) const override { return nullptr; }
  mutable int releasedArguments = 0;
};

// Fills all its result slots, then throws what its argument names.
class Explode : public UDMethodInfo {
 public:
  Explode() : UDMethodInfo(false) {
    setName("explode", false);
    auto* signature = new UDMethodSignature;
    signature->addArgument("handle", "gauge");
    signature->addArgument("string", "kind");
    for (const char* type : {"double", "handle vector", "CALVEX array", "int32"})
      signature->addResult(type);
    addMethodSignature(signature);
  }
  void invokeMethod(UDMethodSignature*, int*, void** results, int, void** args) override {
    auto* objects = new Vector;
    objects->addElement(args[0]);
    results[0] = hostAllocated(1.0);
    results[1] = objects;
    results[2] = HostArray::createString("kept");
    results[3] = hostAllocated(3);
    std::string kind = static_cast<char*>(args[1]);
    if (kind == "ErrorIdException") throw new ErrorIdException("Test:Exploded", "Boom.");
    if (kind == "Exception") throw new Exception("Plain boom.");
    if (kind == "runtime_error") throw std::runtime_error("std boom");
    throw 42;
  }
};

class GaugeClass : public UDClass {
 public:
  GaugeClass() {
    setName("Gauge", false);
    addProperty(new TestProperty(
        "label", "string", [](Gauge& g) { return g.label.data(); },
        [](Gauge& g, void* v) { g.label = v ? static_cast<char*>(v) : "<null>"; }));
    auto* faulty = new TestProperty(
        "faulty", "double", [](Gauge&) { return new int(1); },
        [](Gauge&, void*) { throw new ErrorIdException("Test:setValue", "Refused."); },
        [this](void* v) {
          delete static_cast<int*>(v);
          ++releasedValues;
        });
    faulty->setDataType(&failingType);
    addProperty(faulty);
    addMethod(new Explode);
  }
  UDInterface* createClassSpecificObject(UDInterface*) override {
    return new UDInterface(new Gauge, this, UDDatabaseClient::getInternalClient());
  }
  void destroyObject(UDInterface* object) override {
    ++destroyed;
    UDInterface* own = gaugeOf(object).ownHandle;
    delete &gaugeOf(object);
    object->setObject(nullptr);
    if (own != nullptr) own->release();
  }

  FailingType failingType;
  int destroyed = 0;
  int releasedValues = 0;
};

GaugeClass& gaugeClass() {
  static GaugeClass* const cls = [] {
    auto* application = new UDApplication("gauges", false);
    auto* made = new GaugeClass;
    application->addClass(made);
    UDApplicationManager::addApplication(application);
    return made;
  }();
  return *cls;
}

class HostObjects : public testing::Test {
 protected:
  void SetUp() override {
    destroyedBefore_ = cls_.destroyed;
    a_.reset(hostConstruct("Gauge"));
    dead_.reset(hostConstruct("Gauge"));
    gaugeOf(a_.get()).label = "A";
    dead_->destroy(nullptr);
  }
  void TearDown() override {
    a_.reset();
    dead_.reset();
    EXPECT_EQ(Gauge::alive, 0);
  }

  int destroyed() const { return cls_.destroyed - destroyedBefore_ - 1; }  // dead_ aside

  // Calls explode on a_, which throws the kind named.
  void explode(const char* kind) {
    HostArrayPtr self(HostArray::createHandleArray({a_.get()})),
        name(HostArray::createString(kind));
    hostInvokeMethod("explode", 0, {self.get(), name.get()});
  }

  GaugeClass& cls_ = gaugeClass();
  UDInterfacePtr a_, dead_;
  int destroyedBefore_ = 0;
};

// Destroying is final, and the library may drop the creator's reference while it destroys.
TEST_F(HostObjects, DestroyIsFinalAndMayDropTheLastReference) {
  a_->destroy(nullptr);
  a_->destroy(nullptr);
  EXPECT_EQ(destroyed(), 1);
  a_->internalToExternal();
  EXPECT_EQ(a_->getLifecycleState(), UDInterface::kDestroyed);
  UDInterface* object = cls_.createObject(nullptr, nullptr);
  gaugeOf(object).ownHandle = object;
  object->destroy(nullptr);
  EXPECT_EQ(destroyed(), 2);
}

// [] reaches a setter as a null text; a deleted object gives no values.
TEST_F(HostObjects, PropertyValuesAndErrors) {
  hostSetProperty(a_.get(), "label", HostArrayPtr(HostArray::createDoubleMatrix(0, 0)).get());
  EXPECT_EQ(show(HostArrayPtr(hostGetProperty(a_.get(), "label")).get()), "char 1x6 '<null>'");
  EXPECT_UNIT_ERROR_ID(dead_->get(nullptr, cls_.findProperty("label")), "CALVEX:InvalidObject");
}

// A property value, or an argument made for it, is freed when converting or storing it fails.
TEST_F(HostObjects, PropertyValuesAreFreedWhenConversionOrStoringFails) {
  int releasedValues = cls_.releasedValues;
  int releasedArguments = cls_.failingType.releasedArguments;
  EXPECT_UNIT_ERROR_ID(HostArrayPtr(hostGetProperty(a_.get(), "faulty")), "Test:toHostValue");
  EXPECT_EQ(cls_.releasedValues - releasedValues, 1);
  EXPECT_UNIT_ERROR_ID(
      hostSetProperty(a_.get(), "faulty", HostArrayPtr(HostArray::createDoubleScalar(1)).get()),
      "Test:setValue");
  EXPECT_EQ(cls_.failingType.releasedArguments - releasedArguments, 1);
}

// Empty and deleted handles among the arguments are in the errors transcript.
TEST_F(HostObjects, NullArgumentsAndUnknownClassesAreRefused) {
  EXPECT_THROW(hostInvokeMethod("explode", 0, {nullptr}), std::invalid_argument);
  EXPECT_UNIT_ERROR(hostConstruct("Gadget"), "CALVEX:UndefinedFunction",
                    "Undefined function or variable 'Gadget'.");
}

// Whatever a method throws reaches the caller unchanged, and the results it had filled are freed.
TEST_F(HostObjects, WhatAMethodThrowsPassesThroughAndEverythingIsFreed) {
  EXPECT_UNIT_ERROR(explode("ErrorIdException"), "Test:Exploded", "Boom.");
  EXPECT_UNIT_ERROR(explode("Exception"), "<Exception>", "Plain boom.");
  EXPECT_THROW(explode("runtime_error"), std::runtime_error);
  EXPECT_THROW(explode("int"), int);
  a_.reset();  // no handle result kept a reference
  EXPECT_EQ(destroyed(), 1);
}

TEST(HostDataTypes, UnknownTypesAreRefusedAndNullValuesShowAsEmptyArrays) {
  EXPECT_EQ(typeNamed("float"), nullptr);
  EXPECT_EQ(typeNamed(nullptr), nullptr);
  UDMethodSignature declared;
  EXPECT_THROW(declared.setLastArgumentRepeats(true), std::logic_error);
  EXPECT_THROW(declared.addArgument("float", "x"), std::logic_error);
  EXPECT_THROW(declared.addResult("float"), std::logic_error);
  // A result slot a method leaves empty shows as an empty array of its type's class.
  EXPECT_EQ(show(HostArrayPtr(typeNamed("bool")->toHostValue(nullptr)).get()), "logical 0x0 []");
  // A text with a NUL byte is refused, not cut at it.
  HostArrayPtr withNul(HostArray::createString(std::string("ab\0cd", 5)));
  EXPECT_UNIT_ERROR(typeNamed("string")->fromHostValue(withNul.get()), "CALVEX:badArgument",
                    "The text must not hold a NUL byte.");
}

// What no statement gives: an int32 value, a text where objects are taken, and what compare
// sees of null and logical values (a module's property is never null, and the units' and
// prefixes' builtin follows from their names). NaN equal to NaN is in the classes transcript.
TEST(HostDataTypes, ValuesNoStatementGives) {
  HostArrayPtr int32(HostArray::createInt32Matrix(1, 1)), name(HostArray::createString("A"));
  EXPECT_TRUE(typeNamed("int32")->acceptsHostValue(int32.get()));
  EXPECT_FALSE(typeNamed("handle vector")->acceptsHostValue(name.get()));
  double one = 1;
  unsigned char yes = 1, no = 0;
  EXPECT_FALSE(typeNamed("double")->isEqual(&one, nullptr));
  EXPECT_FALSE(typeNamed("bool")->isEqual(&yes, &no));
  EXPECT_TRUE(typeNamed("string")->isEqual(nullptr, ""));
  EXPECT_FALSE(typeNamed("string")->isEqual(nullptr, "ab"));
}

}  // namespace
