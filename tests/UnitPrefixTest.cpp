#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "host/ErrorIdException.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "units/UnitPrefix.hpp"

namespace TwUnits {
namespace {

TEST(UnitPrefix, ExponentSettersAndTheirBounds) {
  struct Case {
    double exponent;
    const char* identifier;  // nullptr: accepted
    const char* message;
  } cases[] = {
      {52, "Units:PrefixExponentTooLarge",
       "Exponent too large for unit prefix. The maximum allowable exponent on this platform is "
       "51."},
      {-52, "Units:PrefixExponentTooSmall",
       "Exponent too small for unit prefix. The minimum allowable exponent on this platform is "
       "-51."},
      {1e300, "Units:PrefixExponentTooLarge",
       "Exponent too large for unit prefix. The maximum allowable exponent on this platform is "
       "51."},
      // not an integer: refused before any bound check
      {2.5, "Unit:UnitPrefixMustBeMultTen", "A prefix exponent must be an integer."},
      {99.5, "Unit:UnitPrefixMustBeMultTen", "A prefix exponent must be an integer."},
      {std::numeric_limits<double>::quiet_NaN(), "CALVEX:badArgument",
       "The exponent must be a finite number."},
      {-std::numeric_limits<double>::infinity(), "CALVEX:badArgument",
       "The exponent must be a finite number."},
      {51, nullptr, nullptr},
      {-51, nullptr, nullptr},
      {-3.0, nullptr, nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.exponent);
    UnitPrefix prefix("p", 2, "");
    if (c.identifier) {
      EXPECT_UNIT_ERROR(prefix.setExponent(c.exponent), c.identifier, c.message);
      EXPECT_EQ(prefix.getExponent(), 2);
      EXPECT_EQ(prefix.getMult(), 100.0);
    } else {
      prefix.setExponent(c.exponent);
      EXPECT_EQ(prefix.getExponent(), static_cast<int>(c.exponent));
      EXPECT_EQ(prefix.getMult(), std::pow(10.0, c.exponent));
    }
  }
  UnitPrefix prefix;
  EXPECT_UNIT_ERROR_ID(prefix.setExponent(52), "Units:PrefixExponentTooLarge");
  EXPECT_UNIT_ERROR_ID(prefix.setExponent(-52), "Units:PrefixExponentTooSmall");
}

TEST(UnitPrefix, TrimmingAndMultiplier) {
  UnitPrefix prefix;
  prefix.setName("  nano2 ");
  EXPECT_EQ(prefix.getName(), "nano2");
  EXPECT_UNIT_ERROR(prefix.setMult(0.0), "Unit:PrefixZeroMultNotAllowed",
                    "A prefix exponent cannot be 0.");
  prefix.setMult(5.0);
  EXPECT_EQ(prefix.getMult(), 5.0);
  EXPECT_EQ(prefix.getExponent(), 0);
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
