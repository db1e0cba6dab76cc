#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "tests/support/ErrorCapture.hpp"
#include "tests/support/Pristine.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitSystem.hpp"

namespace TwUnits {
namespace {

class Composition : public testing::Test {
 protected:
  void SetUp() override { UnitManager::Instance(); }

  // Unit addresses of the built-in library (made per test: making a UnitBase reaches
  // the registries, which must not happen before a test has prepared the host).
  const UnitBase kMeter{2, 0, -1}, kKilometer{2, 0, 3}, kInch{2, 1, -1}, kSecond{3, 0, -1},
      kGram{1, 0, -1}, kKilogram{1, 0, 3}, kAmpere{5, 0, -1};

  static UnitComposition parse(const std::string& text) {
    std::unique_ptr<UnitComposition> parsed(
        QuantityStringParser::Instance()->createUnitCompFromString(text));
    return *parsed;
  }
  UnitComposition of(std::initializer_list<UnitBase> up,
                     std::initializer_list<UnitBase> down = {}) {
    return UnitComposition(UnitComposition::UnitSet(up), UnitComposition::UnitSet(down));
  }
};

TEST_F(Composition, CanonicalText) {
  struct Case {
    UnitComposition composition;
    const char* text;
  } cases[] = {
      {UnitComposition(), "dimensionless"},
      {of({kKilogram, kMeter}, {kSecond, kSecond}), "kilogram*meter/second^2"},
      {of({kAmpere, kAmpere, kSecond, kSecond, kSecond, kSecond}, {kKilogram, kMeter, kMeter}),
       "(ampere^2*second^4)/(kilogram*meter^2)"},
      {of({}, {kSecond}), "1/second"},
      {of({}, {kMeter, kSecond}), "1/(meter*second)"},
      {of({kMeter, kKilometer}), "kilometer*meter"},
      {of({kMeter, kMeter}, {kMeter}), "meter^2/meter"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(c.composition.getCompositionString(), c.text);
  }
  EXPECT_THROW(of({UnitBase(2, 99, -1)}).getCompositionString(), std::out_of_range);
}

TEST_F(Composition, NameAndExponentLists) {
  using Lists = UnitCompositionApi::MakeupVectors;
  EXPECT_EQ(UnitComposition().getUnitMakeupVectors(), (Lists{{"dimensionless"}, {1}}));
  EXPECT_EQ(of({kMeter}, {kMeter}).getUnitMakeupVectors(), (Lists{{"meter"}, {0}}));
  EXPECT_EQ(of({}, {kSecond}).getUnitMakeupVectors(), (Lists{{"second"}, {-1}}));
  EXPECT_EQ(of({kSecond}, {kKilogram, kMeter, kMeter}).getUnitMakeupVectors(),
            (Lists{{"kilogram", "meter", "second"}, {-1, -2, 1}}));
}

TEST_F(Composition, ProductsQuotientsAndPowersNeverCancel) {
  UnitComposition speed = of({kMeter}, {kSecond});
  speed.setMultiplier(1000.0);
  speed ^= -2;
  UnitComposition expected = of({kSecond, kSecond}, {kMeter, kMeter});
  expected.setMultiplier(1e-6);
  EXPECT_EQ(speed, expected);
  EXPECT_DOUBLE_EQ(speed.getMultiplier(), 1e-6);

  // A power repeats each unit next to itself (kilometer and meter are the same unit).
  UnitComposition power = of({kKilometer, kMeter, kInch}, {kSecond});
  power ^= 2;
  EXPECT_EQ(power, of({kKilometer, kKilometer, kMeter, kMeter, kInch, kInch}, {kSecond, kSecond}));

  UnitComposition zero = of({kMeter}, {kSecond});
  zero.setMultiplier(5.0);
  zero ^= 0;
  EXPECT_EQ(zero, UnitComposition());

  UnitComposition squared = of({kMeter}, {kSecond});
  squared *= squared;
  EXPECT_EQ(squared, parse("meter^2/second^2"));
  UnitComposition ratio = of({kMeter}, {kSecond});
  ratio /= ratio;
  EXPECT_EQ(ratio, of({kMeter, kSecond}, {kSecond, kMeter})) << "every unit stays until cancelled";
}

TEST_F(Composition, MovedOperandGivesTheSameSequenceAsACopiedOne) {
  // Meter and kilometer are the same unit: their order after a product shows where
  // each moved unit was placed (== compares prefixes position by position).
  UnitComposition left = of({kKilometer, kInch}, {kSecond});
  left.setMultiplier(2.0);
  UnitComposition right = of({kMeter, kKilometer, kGram}, {kKilogram, kSecond});
  right.setMultiplier(4.0);

  UnitComposition copiedProduct = left, movedProduct = left;
  copiedProduct *= right;
  UnitComposition consumed = right;
  const int quantity = consumed.getCombinedUnitsQuantityType();
  movedProduct *= std::move(consumed);
  EXPECT_EQ(movedProduct, copiedProduct);
  EXPECT_NE(quantity, 36);
  EXPECT_EQ(consumed.getCombinedUnitsQuantityType(), 36) << "what is moved out leaves it empty";
  UnitComposition expectedProduct =
      of({kGram, kKilometer, kMeter, kKilometer, kInch}, {kSecond, kKilogram, kSecond});
  expectedProduct.setMultiplier(8.0);
  EXPECT_EQ(movedProduct, expectedProduct);

  UnitComposition copiedQuotient = left, movedQuotient = left;
  copiedQuotient /= right;
  consumed = right;
  movedQuotient /= std::move(consumed);
  EXPECT_EQ(movedQuotient, copiedQuotient);
  EXPECT_DOUBLE_EQ(movedQuotient.getMultiplier(), 0.5);
  EXPECT_EQ(movedQuotient.getCompositionString(),
            "(inch*kilogram*kilometer*second)/(gram*kilometer*meter*second)");

  UnitComposition squared = of({kMeter});
  UnitComposition& same = squared;
  squared *= std::move(same);
  EXPECT_EQ(squared, parse("meter^2"));
  UnitComposition& alias = squared;
  squared /= std::move(alias);
  EXPECT_EQ(squared, parse("meter^2/meter^2"));
}

TEST_F(Composition, TheLowestIntPowerOfNothingIsNothing) {
  // The magnitude of INT_MIN does not fit an int: the power is taken without negating it.
  UnitComposition nothing;
  nothing ^= std::numeric_limits<int>::min();
  EXPECT_EQ(nothing, UnitComposition());
  EXPECT_EQ(parse("dimensionless^-2147483648").getCompositionString(), "dimensionless");
  EXPECT_EQ(parse("meter^0^-2147483648").getCompositionString(), "dimensionless");
}

TEST_F(Composition, EqualityComparesPrefixesAndMultipliersWithinTolerance) {
  EXPECT_NE(of({kKilometer}), of({kMeter}));
  UnitComposition a = of({kMeter}), b = of({kMeter});
  a.setMultiplier(0.3);
  b.setMultiplier(0.1 + 0.2);
  EXPECT_EQ(a, b);
  b.setMultiplier(0.3001);
  EXPECT_NE(a, b);
}

TEST_F(Composition, CancellationFoldsTheRatioIntoTheMultiplier) {
  struct Case {
    UnitComposition composition;
    const char* text;
    double multiplier;
  } cases[] = {
      {of({kKilometer}, {kMeter}), "dimensionless", 1000.0},
      {of({kMeter, kMeter}, {kMeter}), "meter", 1.0},
      {of({kMeter}, {kSecond}), "meter/second", 1.0},
      {of({kInch, kSecond}, {kMeter}), "second", 0.0254},
      {of({kKilogram}, {kGram}), "dimensionless", 1000.0},
  };
  for (Case& c : cases) {
    SCOPED_TRACE(c.text);
    c.composition.cancelRepeats();
    EXPECT_EQ(c.composition.getCompositionString(), c.text);
    EXPECT_DOUBLE_EQ(c.composition.getMultiplier(), c.multiplier);
  }
}

PRISTINE_TEST_F(Composition, QuantityIndexIsCachedUntilMarkedStale) {
  UnitComposition force = parse("kilogram*meter/second^2");
  EXPECT_EQ(force.getCombinedUnitsQuantityType(), 17);
  UnitComposition odd = parse("meter^5");
  EXPECT_EQ(odd.getCombinedUnitsQuantityType(), -1);
  int exponents[7] = {0, 0, 5, 0, 0, 0, 0};
  PhysicalQuantityManager::Instance()->registerPhysicalQuantity(
      new QuantityDimension(exponents, "hyper"));
  EXPECT_EQ(odd.getCombinedUnitsQuantityType(), -1) << "cached";
  odd.markQuantityStale();
  EXPECT_EQ(odd.getCombinedUnitsQuantityType(), 37);
}

TEST_F(Composition, ContainmentAndPrefixes) {
  UnitComposition c = of({kKilogram, kMeter}, {kSecond});
  EXPECT_TRUE(c.containsUnit(1, 0));
  EXPECT_TRUE(c.containsUnit(3, 0));
  EXPECT_FALSE(c.containsUnit(2, 1));
  EXPECT_TRUE(c.containsPrefix(3));
  EXPECT_FALSE(c.containsPrefix(8));
  EXPECT_EQ(c.getPrefixIdx("millimole"), 8);
  EXPECT_EQ(c.getPrefixIdx("mole"), -1);
  std::vector<int> quantities{42};
  c.getQuantityIdxVector(quantities, true);
  EXPECT_EQ(quantities, (std::vector<int>{1, 2}));
}

TEST_F(Composition, QuantityWrittenInAUnitSystem) {
  UnitSystem system("cgs");
  system.setMassType("gram");
  system.setLengthType("centimeter");
  system.setTimeType("hour");
  EXPECT_EQ(UnitComposition(17, &system).getCompositionString(), "centimeter*gram/hour^2");
  EXPECT_EQ(UnitComposition(36, &system).getCompositionString(), "dimensionless");
  // A unit that the quantity does not know stands for none of its units.
  system.setLengthType("furlong");
  EXPECT_UNIT_ERROR(UnitComposition(12, &system), "Unit:NotFound",
                    "Referenced unit 'furlong' does not exist.");
  system.setLengthType("second");
  EXPECT_UNIT_ERROR_ID(UnitComposition(12, &system), "CALVEX:badArgument");
}

}  // namespace
}  // namespace TwUnits
