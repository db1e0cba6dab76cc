#include "units/UnitChangeEvent.hpp"

#include "host/StringDataType.hpp"
#include "host/UDTypeRepository.hpp"
#include "units/QuantityDimensionApi.hpp"
#include "units/UnitPrefixApi.hpp"
#include "units/UnitRepresentationApi.hpp"

namespace TwUnits {

namespace {

constexpr const char* kEventTypeTexts[] = {
    "UNIT_CREATED",     "UNIT_REMOVED",     "PREFIX_CREATED",      "PREFIX_REMOVED",
    "QUANTITY_CREATED", "QUANTITY_REMOVED", "UNIT_SYSTEM_CREATED", "UNIT_SYSTEM_REMOVED",
};

constexpr const char* kConstructorSignature = "(Ljava/lang/String;Ljava/lang/String;)V";

}  // namespace

struct UnitChangeEvent::JavaHandles {
  jclass eventClass = nullptr;
  jmethodID constructors[EVENT_TYPE_COUNT] = {};
  // The host's "string" type turns texts into Java strings.
  const StringDataType* strings = nullptr;
};

UnitChangeEvent* UnitChangeEvent::_instance = nullptr;

UnitChangeEvent* UnitChangeEvent::Instance() {
  if (_instance == nullptr) _instance = new UnitChangeEvent();
  return _instance;
}

UnitChangeEvent::UnitChangeEvent() {
  if (!isZophixUsingJava()) return;
  java_ = std::make_unique<JavaHandles>();
  java_->eventClass = hostFindJavaClass(kUnitChangeEventClass);
  for (jmethodID& constructor : java_->constructors) {
    constructor = hostGetJavaConstructor(java_->eventClass, kConstructorSignature);
  }
  java_->strings = static_cast<const StringDataType*>(UDTypeRepository::getType("string", true));
}

UnitChangeEvent::~UnitChangeEvent() {
  if (java_) hostReleaseJavaObject(java_->eventClass);
}

void UnitChangeEvent::post(EventType type, const char* name) {
  if (!isZophixUsingJava() || !java_) return;
  jobject javaName = java_->strings->toJavaObject(name);
  if (javaName == nullptr) return;
  jobject javaType = java_->strings->toJavaObject(kEventTypeTexts[type]);
  // Creating the object is what delivers the event to the queue.
  hostReleaseJavaObject(hostNewJavaObject(java_->constructors[type], javaName, javaType));
  hostReleaseJavaObject(javaName);
  hostReleaseJavaObject(javaType);
}

void UnitChangeEvent::postUnitCreated(const UnitRepresentationApi* unit) {
  post(UNIT_CREATED, unit->getName().c_str());
}

void UnitChangeEvent::postUnitRemoved(const UnitRepresentationApi* unit) {
  post(UNIT_REMOVED, unit->getName().c_str());
}

void UnitChangeEvent::postPrefixCreated(const UnitPrefixApi* prefix) {
  post(PREFIX_CREATED, prefix->getName().c_str());
}

void UnitChangeEvent::postPrefixRemoved(const UnitPrefixApi* prefix) {
  post(PREFIX_REMOVED, prefix->getName().c_str());
}

void UnitChangeEvent::postQuantityCreated(const QuantityDimensionApi* quantity) {
  post(QUANTITY_CREATED, quantity->getName());
}

void UnitChangeEvent::postQuantityRemoved(const QuantityDimensionApi* quantity, unsigned long) {
  post(QUANTITY_REMOVED, quantity->getName());
}

void UnitChangeEvent::postUnitSystemCreated(const char* name) { post(UNIT_SYSTEM_CREATED, name); }

void UnitChangeEvent::postUnitSystemRemoved(const char* name) { post(UNIT_SYSTEM_REMOVED, name); }

}  // namespace TwUnits
