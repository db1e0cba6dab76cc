#include <gtest/gtest.h>

#include "host/JavaBridge.hpp"
#include "tests/support/Pristine.hpp"
#include "units/UnitChangeEvent.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

using Events = std::vector<std::pair<std::string, std::string>>;

Events queued() {
  Events events;
  for (const JavaEvent& event : hostJavaEventQueue()) events.emplace_back(event.name, event.type);
  return events;
}

// Pristine tests: the event queue is switched on before any registry creates the
// change-event sender.
class ChangeEvents : public testing::Test {
 protected:
  void SetUp() override {
    hostSetUsingJava(true);
    units = UnitManager::Instance();
    builtinEvents = queued();
    hostClearJavaEventQueue();
  }

  Events builtinEvents;

  UnitManager* units = nullptr;
};

PRISTINE_TEST_F(ChangeEvents, BuiltinSetUpPostsOnlyThePrefixes) {
  // Built-in units are set up while the host-object listener is the only one; the
  // prefix registry has its change-event listener from its construction on.
  ASSERT_EQ(builtinEvents.size(), 13u);
  EXPECT_EQ(builtinEvents.front(), (std::pair<std::string, std::string>{"tera", "PREFIX_CREATED"}));
  EXPECT_EQ(builtinEvents.back(), (std::pair<std::string, std::string>{"femto", "PREFIX_CREATED"}));
  EXPECT_EQ(hostLiveJavaObjectCount(), 1u) << "only the event class handle";
}

PRISTINE_TEST_F(ChangeEvents, RegistrationCallsTheSenderBeforeLaterListeners) {
  std::vector<std::string> order;
  units->addUnitRegisteredListener([&](const UnitRepresentationApi* u) {
    order.push_back("first saw " + std::to_string(queued().size()) + " " + u->getName());
  });
  units->addUnitRegisteredListener(
      [&](const UnitRepresentationApi*) { order.push_back("second"); });
  units->registerUnit(new UnitRepresentation("furlong", "meter", 201.168, 0.0, true));
  EXPECT_EQ(order, (std::vector<std::string>{"first saw 1 furlong", "second"}));
  EXPECT_EQ(queued(), (Events{{"furlong", "UNIT_CREATED"}}));
  EXPECT_EQ(hostLiveJavaObjectCount(), 1u) << "event objects and strings are released";
}

PRISTINE_TEST_F(ChangeEvents, UnitSystemsLeaveNoJavaObjectBehind) {
  UnitChangeEvent::Instance()->postUnitSystemCreated("cgs");
  UnitChangeEvent::Instance()->postUnitSystemRemoved("cgs");
  EXPECT_EQ(queued(), (Events{{"cgs", "UNIT_SYSTEM_CREATED"}, {"cgs", "UNIT_SYSTEM_REMOVED"}}));
  EXPECT_EQ(hostLiveJavaObjectCount(), 1u);
}

PRISTINE_TEST(ChangeEventsWithoutJava, NothingIsCreated) {
  UnitManager* units = UnitManager::Instance();
  units->registerUnit(new UnitRepresentation("furlong", "meter", 201.168, 0.0, true));
  units->unregisterUnit("furlong");
  hostSetUsingJava(true);  // too late: the sender decided when it was created
  UnitChangeEvent::Instance()->postUnitSystemCreated("cgs");
  EXPECT_TRUE(hostJavaEventQueue().empty());
  EXPECT_EQ(hostLiveJavaObjectCount(), 0u);
}

}  // namespace
}  // namespace TwUnits
