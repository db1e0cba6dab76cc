#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "host/ErrorIdException.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "units/UnitPrefix.hpp"

namespace TwUnits {
namespace {

TEST(UnitPrefix, ARefusedExponentChangesNothing) {
  UnitPrefix prefix("p", 2, "");
  for (double exponent : {52.0, -52.0, 2.5, std::numeric_limits<double>::quiet_NaN()}) {
    SCOPED_TRACE(exponent);
    EXPECT_TRUE(captureError([&] { prefix.setExponent(exponent); }));
    EXPECT_EQ(prefix.getExponent(), 2);
    EXPECT_EQ(prefix.getMult(), 100.0);
  }
  prefix.setExponent(-51);
  EXPECT_EQ(prefix.getMult(), 1e-51);
}

TEST(UnitPrefix, TrimmingAndMultiplier) {
  UnitPrefix prefix;
  prefix.setName("  nano2 ");
  EXPECT_EQ(prefix.getName(), "nano2");
  EXPECT_UNIT_ERROR(prefix.setMult(0.0), "Unit:PrefixZeroMultNotAllowed",
                    "A prefix exponent cannot be 0.");
}

TEST(UnitPrefix, CloneKeepsADirectMultiplierButCopyRecomputesIt) {
  UnitPrefix kilo("kilo", 3, "k");
  kilo.setMult(5.0);
  std::unique_ptr<UnitPrefix> clone(kilo.clone());
  EXPECT_EQ(clone->getMult(), 5.0);
  EXPECT_EQ(clone->getAlias(), "k");
  UnitPrefix copy(kilo);
  EXPECT_EQ(copy.getMult(), 1e3);
  EXPECT_EQ(copy.getName(), "kilo");
}

TEST(UnitPrefix, ListenersSeeTheOldValueAndMayRefuse) {
  UnitPrefix prefix("old", 2, "");
  std::vector<std::string> seen;
  prefix.addChangeListener(
      [&](const UnitPrefixApi* p, UnitPrefixApi::UNIT_PREFIX_PROPERTY property) {
        seen.push_back(p->getName() + ":" + std::to_string(property));
      });
  prefix.setName("new");
  prefix.setExponent(3);
  prefix.setMult(7.0);  // the multiplier and alias are not guarded
  prefix.setAlias("n");
  EXPECT_EQ(seen, (std::vector<std::string>{"old:0", "new:1"}));

  prefix.addChangeListener([](const UnitPrefixApi*, UnitPrefixApi::UNIT_PREFIX_PROPERTY) {
    throw new ErrorIdException("Test:No", "refused");
  });
  EXPECT_UNIT_ERROR_ID(prefix.setName("other"), "Test:No");
  EXPECT_UNIT_ERROR_ID(prefix.setExponent(4), "Test:No");
  EXPECT_EQ(prefix.getName(), "new");
  EXPECT_EQ(prefix.getExponent(), 3);
  EXPECT_EQ(prefix.getMult(), 7.0);
}

}  // namespace
}  // namespace TwUnits
