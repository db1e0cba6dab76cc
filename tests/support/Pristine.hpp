#pragma once

// Tests and the process-wide state. The registries are singletons that never reset, and so
// are the listeners added to them, the anonymous-quantity count and the change-event sender
// with its queue. A test either leaves them as it found them, or is a PRISTINE_TEST: it runs
// in a fresh process whose registries hold only the built-ins, and may change anything.
//
//   PRISTINE_TEST(UnitRegistry, NewUnitsAreAnnouncedInOrder) {
//     UnitManager::Instance()->addUnitRegisteredListener(...);  // ends with its process
//   }
//   PRISTINE_TEST_F(Fixture, Name) { ... }  // beside the fixture's TEST_Fs
//
// A process that runs one test once (as ctest does) runs it in place; otherwise (the whole
// binary, a filter, shuffled, repeated) the test runs in a child, the binary filtered to that
// test. The binary's main() checks every other test: one that leaves the registries, the
// event queue or the Java switch changed fails.

#include <gtest/gtest.h>

// True when the current test may run here; otherwise runs it in a child process of its own,
// reports the child's failures as this test's, and returns false.
bool runsPristineHere();

#define PRISTINE_TEST(Suite, Name) \
  PRISTINE_TEST_(Suite, Name, ::testing::Test, ::testing::internal::GetTestTypeId())
#define PRISTINE_TEST_F(Fixture, Name) \
  PRISTINE_TEST_(Fixture, Name, Fixture, ::testing::internal::GetTypeId<Fixture>())

// The test that gtest runs is a plain one, so that the fixture is made and set up only where
// the body runs; it carries the fixture's id, so that it may sit among the fixture's tests.
#define PRISTINE_TEST_(Suite, Name, Fixture, FixtureId)            \
  class Suite##_##Name##_Pristine : public Fixture {               \
   public:                                                         \
    void TestBody() override;                                      \
    void runHere() {                                               \
      SetUp();                                                     \
      if (!HasFatalFailure() && !IsSkipped()) TestBody();          \
      TearDown();                                                  \
    }                                                              \
  };                                                               \
  GTEST_TEST_(Suite, Name, ::testing::Test, FixtureId) {           \
    if (runsPristineHere()) Suite##_##Name##_Pristine().runHere(); \
  }                                                                \
  void Suite##_##Name##_Pristine::TestBody()
