#pragma once

// File: UnitChangeEvent.hpp
// The change-event sender: turns every creation and removal of a unit, prefix or
// quantity into an event object of the host's Java layer, which delivers it to the
// host's event queue. The registries attach its post operations to their listener
// lists. Whether the Java layer is in use is decided once, when the sender is
// created; without it every post does nothing.
//
// Example:
//   UnitChangeEvent::Instance()->postUnitSystemCreated("cgs");   // ("cgs", "UNIT_SYSTEM_CREATED")

#include <memory>

#include "host/JavaBridge.hpp"

namespace TwUnits {

class QuantityDimensionApi;
class UnitPrefixApi;
class UnitRepresentationApi;

class UnitChangeEvent {
 public:
  // The sender, created by whichever registry first attaches its listeners.
  static UnitChangeEvent* _instance;
  static UnitChangeEvent* Instance();

  UnitChangeEvent();
  ~UnitChangeEvent();
  UnitChangeEvent(const UnitChangeEvent&) = delete;
  UnitChangeEvent& operator=(const UnitChangeEvent&) = delete;

  void postUnitCreated(const UnitRepresentationApi* unit);
  void postUnitRemoved(const UnitRepresentationApi* unit);
  void postPrefixCreated(const UnitPrefixApi* prefix);
  void postPrefixRemoved(const UnitPrefixApi* prefix);
  void postQuantityCreated(const QuantityDimensionApi* quantity);
  // The index is not used.
  void postQuantityRemoved(const QuantityDimensionApi* quantity, unsigned long index);
  void postUnitSystemCreated(const char* name);
  void postUnitSystemRemoved(const char* name);

 private:
  enum EventType {
    UNIT_CREATED,
    UNIT_REMOVED,
    PREFIX_CREATED,
    PREFIX_REMOVED,
    QUANTITY_CREATED,
    QUANTITY_REMOVED,
    UNIT_SYSTEM_CREATED,
    UNIT_SYSTEM_REMOVED,
    EVENT_TYPE_COUNT
  };

  struct JavaHandles;

  void post(EventType type, const char* name);

  std::unique_ptr<JavaHandles> java_;
};

}  // namespace TwUnits
