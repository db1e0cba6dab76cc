#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/DebugQuitException.hpp"
#include "host/ErrorIdException.hpp"
#include "host/HostArray.hpp"
#include "host/HostFunctions.hpp"
#include "host/InterruptException.hpp"
#include "host/UserException.hpp"

namespace {

// What the action threw, as type and texts; frees errors thrown by pointer.
std::string thrownBy(const std::function<void()>& action) {
  try {
    action();
  } catch (ErrorIdException* raised) {
    std::unique_ptr<ErrorIdException> error(raised);
    return std::string("ErrorIdException* ") + error->getIdentifier() + " " + error->getMessage();
  } catch (Exception* raised) {
    std::unique_ptr<Exception> error(raised);
    return std::string("Exception* ") + error->getMessage();
  } catch (const fl::except::IUserException& error) {
    return std::string("IUserException ") + error.GetIdentifier() + " " + error.GetMessageTxt();
  } catch (const Tarnwick::System::DebugQuitException&) {
    return "DebugQuitException";
  } catch (const Tarnwick::System::InterruptException&) {
    return "InterruptException";
  } catch (...) {
    return "something else";
  }
  return "nothing";
}

TEST(HostFunctions, CallsTheRegisteredFunctionWhichFillsTheResults) {
  hostRegisterFunction("sumAndCount", [](int nlhs, HostArray** plhs, int nrhs, HostArray** prhs) {
    double sum = 0;
    for (int i = 0; i < nrhs; ++i) sum += prhs[i]->getPr()[0];
    plhs[0] = HostArray::createDoubleScalar(sum);
    if (nlhs > 1) plhs[1] = HostArray::createDoubleScalar(nrhs);
  });
  HostArrayPtr two(HostArray::createDoubleScalar(2)), three(HostArray::createDoubleScalar(3));
  HostArray* args[] = {two.get(), three.get()};  // stay ours
  HostArray* results[2] = {};
  EXPECT_EQ(inCallFcn(2, results, 2, args, "sumAndCount"), 0);
  HostArrayPtr sum(results[0]), count(results[1]);
  EXPECT_EQ(sum->getPr()[0], 5);
  EXPECT_EQ(count->getPr()[0], 2);
  EXPECT_EQ(two->getPr()[0], 2);
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
  inCallFcn(0, nullptr, 0, nullptr, "step");
  inCallFcn(0, nullptr, 0, nullptr, "step");
  EXPECT_EQ(calls, "second third");
}

TEST(HostFunctions, FailuresPassThroughUnchangedAndAnUnknownNameIsAUserException) {
  struct Case {
    const char* called;
    std::function<void()> raise;
    const char* seen;
  } cases[] = {
      {"noSuchFunction", nullptr,
       "IUserException CALVEX:UndefinedFunction Undefined function or variable 'noSuchFunction'."},
      {nullptr, nullptr,
       "IUserException CALVEX:UndefinedFunction Undefined function or variable ''."},
      {"failing", [] { throw new ErrorIdException("Test:Id", "With id."); },
       "ErrorIdException* Test:Id With id."},
      {"failing", [] { throw new Exception("Without id."); }, "Exception* Without id."},
      {"failing", [] { throw fl::except::UserException("Test:User", "From code."); },
       "IUserException Test:User From code."},
      {"failing", [] { throw Tarnwick::System::DebugQuitException(); }, "DebugQuitException"},
      {"failing", [] { throw Tarnwick::System::InterruptException(); }, "InterruptException"},
      {"failing", [] { throw std::runtime_error("std"); }, "something else"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.seen);
    if (c.raise)
      hostRegisterFunction("failing", [&](int, HostArray**, int, HostArray**) { c.raise(); });
    EXPECT_EQ(thrownBy([&] { inCallFcn(0, nullptr, 0, nullptr, c.called); }), c.seen);
  }
  EXPECT_FALSE(hostHasFunction("noSuchFunction"));
}

}  // namespace
