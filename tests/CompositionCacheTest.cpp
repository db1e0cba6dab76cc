#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "units/CompositionCache.hpp"

namespace TwUnits {
namespace {

// A composition told apart by its multiplier, with up to 9 units a side (the entry holds
// those of a side too many to fit inside it).
std::unique_ptr<UnitComposition> tagged(double tag) {
  UnitMultiset numerator, denominator;
  for (int i = 0; i < static_cast<int>(tag) % 10; ++i) numerator.insert(UnitBase(0, i, -1));
  for (int i = 0; i < static_cast<int>(tag) % 7; ++i) denominator.insert(UnitBase(1, i, -1));
  auto composition = std::make_unique<UnitComposition>(numerator, denominator);
  composition->setMultiplier(tag);
  return composition;
}

double tagOf(const UnitComposition* composition) {
  if (composition == nullptr) return -1.0;
  return *composition == *tagged(composition->getMultiplier()) ? composition->getMultiplier()
                                                               : -2.0;
}

TEST(CompositionCache, InsertKeepsAssignReplaces) {
  CompositionCache cache;
  UnitComposition* meter = cache.insert("meter", tagged(1.0));
  EXPECT_EQ(cache.insert("meter", tagged(2.0)), meter);
  EXPECT_EQ(tagOf(cache.find("meter")), 1.0);
  EXPECT_EQ(tagOf(cache.assign("meter", tagged(3.0))), 3.0);
  EXPECT_EQ(tagOf(cache.assign("second", tagged(4.0))), 4.0) << "assign inserts a new text";
  EXPECT_TRUE(cache.contains("meter"));
  EXPECT_FALSE(cache.contains("mete"));
}

TEST(CompositionCache, TextsDifferingInOneByteOrInLengthAreDistinct) {
  // Every length up to two words, so each way of reading a tail is used.
  std::vector<std::string> texts = {"kilogram/(meter*second^2)",
                                    "kilogram/(meter*second^3)",
                                    "kilogram/(meter*second^2) ",
                                    "\tkilogram/(meter*second^2)",
                                    "b",
                                    "ba",
                                    "abd"};
  for (std::size_t n = 0; n <= 10; ++n) texts.push_back(std::string("abcdefghij", n));
  CompositionCache cache;
  double tag = 0.0;
  for (const std::string& text : texts) cache.insert(text, tagged(++tag));
  tag = 0.0;
  for (const std::string& text : texts) {
    SCOPED_TRACE("'" + text + "'");
    EXPECT_EQ(tagOf(cache.find(text)), ++tag);
  }
}

TEST(CompositionCache, EraseIfAndForEachSeeEveryCompositionOnce) {
  CompositionCache cache;
  for (int i = 0; i < 1000; ++i) cache.insert("unit" + std::to_string(i), tagged(i));
  int visits = 0;
  double sum = 0.0;
  cache.forEach([&](UnitComposition& composition) {
    ++visits;
    sum += composition.getMultiplier();
  });
  EXPECT_EQ(visits, 1000);
  EXPECT_EQ(sum, 999.0 * 1000.0 / 2.0);

  // Odd tags go, including entries moved into a freed place during the sweep.
  cache.eraseIf([](std::string_view, const UnitComposition& c) {
    return static_cast<int>(c.getMultiplier()) % 2;
  });
  EXPECT_EQ(cache.size(), 500u);
  for (int i = 0; i < 1000; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(tagOf(cache.find("unit" + std::to_string(i))), i % 2 ? -1.0 : i);
  }
}

// Random inserts, assigns and erases against std::map as the model, through many
// growths and probe runs broken by erasures.
TEST(CompositionCache, AgreesWithAnOrderedMapThroughRandomChanges) {
  std::mt19937 random(12345);
  std::uniform_int_distribution<int> pickText(0, 3000);
  std::uniform_int_distribution<int> pickOperation(0, 9);
  CompositionCache cache;
  std::map<std::string, double> model;
  for (int step = 0; step < 40000; ++step) {
    std::string text = "t" + std::to_string(pickText(random));
    int operation = pickOperation(random);
    if (operation < 5) {
      cache.insert(text, tagged(step));
      model.emplace(text, step);
    } else if (operation < 7) {
      cache.assign(text, tagged(step));
      model[text] = step;
    } else if (operation < 9) {
      EXPECT_EQ(cache.erase(text), model.erase(text) == 1);
    } else {
      int remainder = step % 7;
      cache.eraseIf([remainder](std::string_view, const UnitComposition& c) {
        return static_cast<int>(c.getMultiplier()) % 7 == remainder;
      });
      for (auto entry = model.begin(); entry != model.end();) {
        entry = static_cast<int>(entry->second) % 7 == remainder ? model.erase(entry)
                                                                 : std::next(entry);
      }
    }
    ASSERT_EQ(cache.size(), model.size()) << "step " << step;
  }
  for (int i = 0; i <= 3000; ++i) {
    std::string text = "t" + std::to_string(i);
    auto expected = model.find(text);
    ASSERT_EQ(tagOf(cache.find(text)), expected == model.end() ? -1.0 : expected->second) << text;
  }
}

}  // namespace
}  // namespace TwUnits
