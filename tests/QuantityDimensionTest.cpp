#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>

#include "tests/support/ErrorCapture.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityDimension.hpp"
#include "units/UnitManager.hpp"

namespace TwUnits {
namespace {

QuantityDimension dims(std::array<int, 7> e, const char* name = "") {
  return QuantityDimension(e.data(), name);
}

TEST(QuantityDimension, ConstructorsFromExponentsAndIndexLists) {
  QuantityDimension none;
  EXPECT_TRUE(none.isDimensionless());
  EXPECT_STREQ(none.getName(), "");
  int zeros[7] = {};
  EXPECT_STREQ(QuantityDimension(zeros, nullptr).getName(), "");

  // mass*length/time^2 written as base-index lists, indexes repeating
  QuantityDimension force(std::vector<int>{1, 2}, std::vector<int>{3, 3});
  EXPECT_EQ(force, dims({0, 1, 1, -2, 0, 0, 0}));
  EXPECT_THROW(QuantityDimension(std::vector<int>{7}, std::vector<int>{}), std::out_of_range);

  // the product of registered quantities at quantity indexes: velocity * mass
  std::vector<int> indexes{10, 1};
  EXPECT_EQ(QuantityDimension(&indexes), dims({0, 1, 1, -1, 0, 0, 0}));
  EXPECT_TRUE(QuantityDimension(static_cast<const std::vector<int>*>(nullptr)).isDimensionless());
}

TEST(QuantityDimension, ArithmeticKeepsLeftNameAndIgnoresNamesInEquality) {
  QuantityDimension mass = dims({0, 1, 0, 0, 0, 0, 0}, "mass");
  QuantityDimension length = dims({0, 0, 1, 0, 0, 0, 0}, "length");
  QuantityDimension product = mass * length;
  EXPECT_STREQ(product.getName(), "mass");
  EXPECT_EQ(product, dims({0, 1, 1, 0, 0, 0, 0}, "other"));
  EXPECT_EQ(mass / length, dims({0, 1, -1, 0, 0, 0, 0}));

  QuantityDimension energy = dims({0, 1, 2, -2, 0, 0, 0}, "energy");
  energy ^= -2;
  EXPECT_EQ(energy, dims({0, -2, -4, 4, 0, 0, 0}));
  energy ^= 0;
  EXPECT_TRUE(energy.isDimensionless());

  int signature[7] = {0, 1, 0, 0, 0, 0, 0};
  EXPECT_TRUE(mass.matchesSignature(signature));
  EXPECT_FALSE(length.matchesSignature(signature));
}

TEST(QuantityDimension, ExponentsBeyondAnIntAreRefusedAndChangeNothing) {
  // Exponents that overflow an int are refused, never wrapped (signed overflow is undefined).
  UnitManager::Instance();
  const int big = 2000000000, lowest = std::numeric_limits<int>::min();
  struct Case {
    const char* name;
    QuantityDimension start;
    std::function<void(QuantityDimension&)> operation;
  } cases[] = {
      {"square", dims({0, 0, big, 0, 0, 0, 0}), [](QuantityDimension& q) { q ^= 2; }},
      {"negated lowest", dims({0, 0, 0, lowest, 0, 0, 0}), [](QuantityDimension& q) { q ^= -1; }},
      {"product", dims({0, 0, big, 0, 0, 0, 0}),
       [&](QuantityDimension& q) {
         q *= dims({0, 0, big, 0, 0, 0, 0});
       }},
      {"quotient", dims({0, 0, big, 0, 0, 0, 0}),
       [&](QuantityDimension& q) {
         q /= dims({0, 0, -big, 0, 0, 0, 0});
       }},
      {"quotient by lowest", dims({0, 0, 0, 0, 0, 0, 0}),
       [&](QuantityDimension& q) {
         q /= dims({0, 0, 0, lowest, 0, 0, 0});
       }},
  };
  for (Case& c : cases) {
    SCOPED_TRACE(c.name);
    const QuantityDimension before = c.start;
    EXPECT_UNIT_ERROR(c.operation(c.start), "Unit:IntegersOnlyInQuantity",
                      "Non-Integer powers are not currently supported for physical quantity "
                      "compositions.");
    EXPECT_EQ(c.start, before);
  }
  QuantityDimension largest = dims({0, 0, 0, std::numeric_limits<int>::max() - 1, 0, 0, 0});
  largest *= dims({0, 0, 0, 1, 0, 0, 0});
  EXPECT_EQ(largest[3], std::numeric_limits<int>::max()) << "the last int is still an exponent";
}

TEST(QuantityDimension, AddingOnlyEqualDimensionsAndResultIsRightOperand) {
  QuantityDimension a = dims({0, 0, 1, 0, 0, 0, 0}, "a");
  QuantityDimension b = dims({0, 0, 1, 0, 0, 0, 0}, "b");
  EXPECT_STREQ((a + b).getName(), "b");
  EXPECT_STREQ((a - b).getName(), "b");
  a += b;
  EXPECT_STREQ(a.getName(), "a");
  QuantityDimension time = dims({0, 0, 0, 1, 0, 0, 0});
  const char* message = "Adding or subtracting quantities that are not equal is not allowed.";
  EXPECT_UNIT_ERROR(a += time, "Unit:CannotAddSubtractDifferentQuantities", message);
  EXPECT_UNIT_ERROR(a - time, "Unit:CannotAddSubtractDifferentQuantities", message);
  EXPECT_EQ(a, b) << "a failed addition changes nothing";
}

TEST(QuantityDimension, BaseMakeup) {
  UnitManager::Instance();
  struct Case {
    std::array<int, 7> exponents;
    const char* makeup;
  } cases[] = {
      {{0, 1, 2, -2, 0, 0, 0}, "mass*length^2*time^-2"},
      {{0, -1, -2, 4, 0, 2, 0}, "mass^-1*length^-2*time^4*current^2"},
      {{0, 0, 0, 0, 0, 0, 0}, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.makeup);
    EXPECT_EQ(dims(c.exponents).getBaseQuantityMakeup(), c.makeup);
  }
}

}  // namespace
}  // namespace TwUnits
