#include <gtest/gtest.h>

#include <memory>

#include "host/Exception.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/Pristine.hpp"
#include "units/QuantityDimension.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

class Parser : public testing::Test {
 protected:
  void SetUp() override { UnitManager::Instance(); }

  std::unique_ptr<UnitComposition> unitComposition(const std::string& text) {
    return std::unique_ptr<UnitComposition>(parser->createUnitCompFromString(text));
  }
  std::array<int, 7> exponentsOf(const std::string& text) {
    std::unique_ptr<QuantityDimension> q(parser->createQuantityDimensionFromString(text));
    std::array<int, 7> e{};
    for (unsigned b = 0; b < 7; ++b) e[b] = q->at(b);
    return e;
  }

  QuantityStringParser* parser = QuantityStringParser::Instance();
};

TEST_F(Parser, TokenKinds) {
  struct Case {
    const char* token;
    int kind;
  } cases[] = {{"*", 0}, {"/", 1},      {"+", 2},     {"-", 3}, {"^", 4},
               {"2", 5}, {"-1.5e3", 5}, {"meter", 6}, {"**", 6}};
  for (const Case& c : cases)
    EXPECT_EQ(QuantityStringParser::getTokenEnum(c.token), c.kind) << c.token;
}

TEST_F(Parser, ATextIsReadOnlyUpToItsLength) {
  EXPECT_UNIT_ERROR_ID(parser->createUnitCompFromString(std::string("meter\0junk", 10)),
                       "Unit:BadUnitCompositionParse");
  EXPECT_UNIT_ERROR(parser->createUnitCompFromString("kilofurlongs/second"), "Unit:NotFound",
                    "Referenced unit 'furlongs' does not exist.");
}

TEST_F(Parser, UnitCompositions) {
  struct Case {
    const char* text;
    const char* canonical;
    double multiplier;
  } cases[] = {
      {"1/second", "1/second", 1.0},
      {"1/second*meter", "meter/second", 1.0},
      {"millimole", "millimole", 1.0},
      {"kilogram", "kilogram", 1.0},
      {"kilonewton", "kilogram*meter/second^2",
       1000.0},                           // newton's first unit already has a prefix
      {"kilohertz", "1/second", 1000.0},  // nothing to carry the prefix
      {"centiliter", "decimeter^3", 0.01},
      {"pascal", "kilogram/(meter*second^2)", 1.0},
      {"meter^3/meter", "meter^3/meter", 1.0},
      {"((meter))/((second^2))", "meter/second^2", 1.0},
      {"second^-1", "1/second", 1.0},
      {"acre", "foot^2", 43560.0},
      {"meter^101", "meter^101", 1.0},  // no limit of 100 here
      {"1^2/second", "1/second", 1.0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    auto composition = unitComposition(c.text);
    EXPECT_EQ(composition->getCompositionString(), c.canonical);
    EXPECT_DOUBLE_EQ(composition->getMultiplier(), c.multiplier);
  }
  EXPECT_EQ(unitComposition("millimole")->getNumerator().begin()->getPrefixIdx(), 8);
}

TEST_F(Parser, ANameCarriesOnePrefixWhateverWasVerifiedBefore) {
  // A name carries at most one prefix, whichever texts the cache holds.
  EXPECT_UNIT_ERROR(parser->createUnitCompFromString("kilokilogram"), "Unit:NotFound",
                    "Referenced unit 'kilogram' does not exist.");
  UnitManager::Instance()->verifyUnitCompositionString("kilogram");
  EXPECT_UNIT_ERROR(parser->createUnitCompFromString("kilokilogram"), "Unit:NotFound",
                    "Referenced unit 'kilogram' does not exist.");
}

TEST_F(Parser, QuantityCompositions) {
  EXPECT_EQ(exponentsOf("mass*length/time^2"), (std::array<int, 7>{0, 1, 1, -2, 0, 0, 0}));
  EXPECT_EQ(exponentsOf("2*length"), (std::array<int, 7>{0, 0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(exponentsOf("energy/time^-1"), (std::array<int, 7>{0, 1, 2, -1, 0, 0, 0}));
}

TEST_F(Parser, ContainmentLooksThroughPrefixes) {
  EXPECT_TRUE(parser->doesStringContainUnit("kilogram*meter/second^2", "gram"));
  EXPECT_FALSE(parser->doesStringContainUnit("kilogram*meter/second^2", "meter2"));
  EXPECT_TRUE(parser->doesStringContainUnit("millimole/liter", "mole"));
  EXPECT_TRUE(parser->doesStringContainUnit("millimole/liter", "liter"));
  EXPECT_FALSE(parser->doesStringContainUnit("meter^2", "2"));
  EXPECT_FALSE(parser->doesStringContainUnit("meter*(", "meter"))
      << "a text that does not parse names nothing";
  EXPECT_TRUE(parser->doesStringContainPrefix("mole/millisecond^2", "milli"));
  EXPECT_FALSE(parser->doesStringContainPrefix("mole/millisecond^2", "micro"));
  EXPECT_FALSE(parser->doesStringContainPrefix("mile", "milli"));
  EXPECT_FALSE(parser->doesStringContainPrefix("kilomillimeter", "milli")) << "only the first";
  EXPECT_FALSE(parser->doesStringContainPrefix("millimeter*(", "milli"));
}

TEST_F(Parser, EveryInternalParseErrorPath) {
  const char* cases[] = {
      "meter+second",  // plus token
      "meter-second",  // minus token
      "meter^meter",   // a power whose exponent is not a literal reaches its own handler
      "2",             // a number that is the last token
      "1",             // a 1 that is the last token
      "(2)*meter",     // an exponent with nothing to apply it to
      "meter*2",       // a number that is not followed by a power
  };
  for (const char* text : cases) {
    SCOPED_TRACE(text);
    EXPECT_UNIT_ERROR(parser->getUnitMakeupAndExponentsFromString(text), "Units:InternalParseError",
                      "An error occurred parsing the unit composition.");
  }
  // the host parser's own error passes unchanged
  EXPECT_UNIT_ERROR_ID(parser->getUnitMakeupAndExponentsFromString("meter*"), "<Exception>");
  EXPECT_UNIT_ERROR_ID(
      parser->getUnitMakeupAndExponentsFromString("meter^0^2000000000*meter^90000"),
      "CALVEX:badArgument");
}

PRISTINE_TEST_F(Parser, SplitIntoVerifiedNumeratorAndDenominator) {
  using Split = std::pair<std::string, std::string>;
  EXPECT_EQ(parser->splitNumeratorAndDenomintorFromUnitComposition(
                "(kilogram*meter^2)/(ampere*second^3)"),
            (Split{"kilogram*meter^2", "ampere*second^3"}));
  EXPECT_EQ(parser->splitNumeratorAndDenomintorFromUnitComposition("1/second"),
            (Split{"", "second"}));
  EXPECT_EQ(parser->splitNumeratorAndDenomintorFromUnitComposition("meter"), (Split{"meter", ""}));
  EXPECT_EQ(parser->splitNumeratorAndDenomintorFromUnitComposition("liter/meter*meter"),
            (Split{"liter", "meter^0"}));
  EXPECT_UNIT_ERROR(parser->splitNumeratorAndDenomintorFromUnitComposition("meter/kilofurlongs"),
                    "Unit:NotFound", "Referenced unit 'furlongs' does not exist.");
}

TEST_F(Parser, ApiCreatesCompositionsForTheCaller) {
  std::unique_ptr<UnitCompositionApi> composition(
      parser->createUnitCompApiFromString("meter^2/second"));
  EXPECT_EQ(composition->getUnitMakeupVectors(),
            (UnitCompositionApi::MakeupVectors{{"meter", "second"}, {2, -1}}));
  EXPECT_TRUE(parser->doesStringContainUnitApi("kilometer", "meter"));
  EXPECT_EQ(parser->getTokenEnumApi("^"), 4);
}

}  // namespace
}  // namespace TwUnits
