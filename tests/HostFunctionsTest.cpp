// The host's function table. Calls through it (PhysicalQuantity's register) are in the
// transcripts; what they cannot reach is here.

#include <gtest/gtest.h>

#include <string>

#include "host/HostArray.hpp"
#include "host/HostFunctions.hpp"
#include "host/UserException.hpp"

namespace {

TEST(HostFunctions, AnUnknownNameIsAUserException) {
  EXPECT_FALSE(hostHasFunction("noSuchFunction"));
  for (const char* name : {"noSuchFunction", static_cast<const char*>(nullptr)}) {
    std::string shown = name != nullptr ? name : "";
    try {
      inCallFcn(0, nullptr, 0, nullptr, name);
      ADD_FAILURE() << "no exception for '" << shown << "'";
    } catch (const fl::except::IUserException& error) {
      EXPECT_STREQ(error.GetIdentifier(), "CALVEX:UndefinedFunction");
      EXPECT_EQ(std::string(error.GetMessageTxt()),
                "Undefined function or variable '" + shown + "'.");
    }
  }
}

// A function may replace itself while it runs: the running one stays alive until it returns.
TEST(HostFunctions, ReRegisteringReplacesEvenWhileRunning) {
  std::string calls;
  hostRegisterFunction("step", [&](int, HostArray**, int, HostArray**) { calls += "first "; });
  hostRegisterFunction(
      "step", [&, tag = std::string("second")](int, HostArray**, int, HostArray**) {
        hostRegisterFunction("step", [&](int, HostArray**, int, HostArray**) { calls += "third"; });
        calls += tag + " ";
      });
  ASSERT_TRUE(hostHasFunction("step"));
  inCallFcn(0, nullptr, 0, nullptr, "step");
  inCallFcn(0, nullptr, 0, nullptr, "step");
  EXPECT_EQ(calls, "second third");
}

}  // namespace
