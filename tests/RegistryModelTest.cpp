// Model-based test of the registries. Each seed drives a reproducible random sequence of
// registrations, redefinitions and removals of units, prefixes, quantities and unit systems,
// valid and invalid, against a small model of what the registries must hold. After every
// step the names, indexes and counts of the registries must match the model, the units must
// convert to their quantity's SI composition by the model's factors and to each other and
// back, a refused operation must change nothing, and every change must reach our listeners
// and the change-event queue exactly once. Now and then the first of our listeners called
// raises (which refuses a removal it may refuse, and otherwise reaches the caller after the
// change), asks for a change (which must be refused) or adds listeners (which must not hear
// the change that added them).
//
// Each seed is a pristine test of its own.
// TW_MODEL_SEEDS and TW_MODEL_STEPS raise the 6 seeds of 200 steps; scripts/model.sh runs
// many seeds under the sanitizers: scripts/model.sh 200 1000.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/ErrorIdException.hpp"
#include "host/JavaBridge.hpp"
#include "tests/support/ErrorCapture.hpp"
#include "tests/support/Pristine.hpp"
#include "tests/support/RegistrySnapshot.hpp"
#include "units/HandOver.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/UnitSystem.hpp"
#include "units/UnitSystemManager.hpp"

namespace TwUnits {
namespace {

constexpr int kTemperature = 4;
constexpr int kBaseCount = 7;
const char* const kSiUnits[kBaseCount] = {"mole",   "kilogram", "meter",  "second",
                                          "kelvin", "ampere",   "candela"};
using Exponents = std::array<int, kBaseCount>;
using Event = std::pair<std::string, std::string>;  // a name and what befell it
using Events = std::vector<Event>;

int fromEnvironment(const char* name, int fallback) {
  const char* text = std::getenv(name);
  return text != nullptr && std::atoi(text) > 0 ? std::atoi(text) : fallback;
}

// Bijective base 26: 0 is "a", 25 "z", 26 "ba".
std::string letters(int n) {
  std::string text;
  do {
    text.insert(text.begin(), static_cast<char>('a' + n % 26));
    n /= 26;
  } while (n > 0);
  return text;
}

bool beginsWith(const std::string& text, const std::string& start) {
  return text.size() >= start.size() && text.compare(0, start.size(), start) == 0;
}

// Within rounding of the largest term that the conversion adds up.
bool near(double actual, double expected, double magnitude) {
  return std::fabs(actual - expected) <= 1e-9 * std::max(std::fabs(expected), magnitude) + 1e-12;
}

// ------------------------------------------------------------------ the model

struct ModelUnit {
  int quantity = 0;
  bool builtin = true;
  std::string text;  // the composition as written (user units)
  double multiplier = 1.0, offset = 0.0;
  // One unit is `scale * x + shift` in the quantity's SI composition.
  double scale = 1.0, shift = 0.0;
  // An upper bound of the units in the composition that the parser raises to a power.
  std::size_t size = 1;
};

struct ModelQuantity {
  std::string name;
  Exponents exponents{};
  std::vector<std::string> units;
};

struct ModelPrefix {
  std::string name;
  int exponent = 0;
  double multiplier() const { return std::pow(10.0, exponent); }
};

struct ModelSystem {
  std::string name;
  std::array<std::string, kBaseCount> units;
};

// The value of a written composition "a^2*b/c".
struct Valued {
  Exponents exponents{};
  double scale = 1.0, shift = 0.0;
  std::size_t size = 0;
  std::string missing;  // the unit that the registry reports as not found
};

struct Model {
  std::vector<ModelQuantity> quantities;
  std::map<std::string, ModelUnit> units;
  std::vector<ModelPrefix> prefixes;
  std::vector<ModelSystem> systems;
  int builtinQuantities = 0;
  int anonymousCount = 0;

  ModelQuantity& quantity(int index) { return quantities.at(static_cast<std::size_t>(index)); }
  const ModelQuantity& quantity(int index) const {
    return quantities.at(static_cast<std::size_t>(index));
  }
  const ModelPrefix* prefix(const std::string& name) const {
    for (const ModelPrefix& p : prefixes) {
      if (p.name == name) return &p;
    }
    return nullptr;
  }
  int quantityWith(const Exponents& exponents) const {
    for (std::size_t q = 0; q < quantities.size(); ++q) {
      if (quantities[q].exponents == exponents) return static_cast<int>(q);
    }
    return -1;
  }
  // The quantity's dimensions written in SI units.
  std::string siText(int index) const {
    std::string up, down;
    for (int b = 0; b < kBaseCount; ++b) {
      const int e = quantity(index).exponents[b];
      if (e == 0) continue;
      std::string& side = e > 0 ? up : down;
      if (!side.empty()) side += "*";
      side += kSiUnits[b];
      if (std::abs(e) != 1) side += "^" + std::to_string(std::abs(e));
    }
    if (up.empty() && down.empty()) return "dimensionless";
    return (up.empty() ? "1" : up) + (down.empty() ? "" : "/(" + down + ")");
  }
  // The prefix that the registry strips from a name: the first in byte order of names that
  // leaves a unit, or else the longest.
  const ModelPrefix* leadingPrefix(const std::string& name) const {
    const ModelPrefix *found = nullptr, *longest = nullptr;
    for (const ModelPrefix& prefix : prefixes) {
      if (!beginsWith(name, prefix.name)) continue;
      if (units.count(name.substr(prefix.name.size())) != 0 &&
          (found == nullptr || prefix.name < found->name))
        found = &prefix;
      if (longest == nullptr || prefix.name.size() > longest->name.size()) longest = &prefix;
    }
    return found != nullptr ? found : longest;
  }
  std::string stripped(const std::string& token) const {
    const ModelPrefix* prefix = leadingPrefix(token);
    return prefix != nullptr ? token.substr(prefix->name.size()) : token;
  }
  // The prefix multiplier and unit that a name stands for; nothing when it names no unit.
  std::optional<std::pair<double, std::string>> resolve(const std::string& token) const {
    if (units.count(token) != 0) return std::make_pair(1.0, token);
    const ModelPrefix* prefix = leadingPrefix(token);
    if (prefix == nullptr || units.count(token.substr(prefix->name.size())) == 0)
      return std::nullopt;
    return std::make_pair(prefix->multiplier(), token.substr(prefix->name.size()));
  }
  // Values the compositions that the test writes: names with optional powers, joined by
  // '*' and one optional '/' before the last factor.
  Valued value(const std::string& text) const {
    Valued result;
    std::size_t start = 0;
    bool below = false;
    while (start <= text.size()) {
      std::size_t end = text.find_first_of("*/", start);
      if (end == std::string::npos) end = text.size();
      std::string factor = text.substr(start, end - start);
      int power = 1;
      if (std::size_t caret = factor.find('^'); caret != std::string::npos) {
        power = std::stoi(factor.substr(caret + 1));
        factor.erase(caret);
      }
      auto resolved = resolve(factor);
      if (!resolved) {
        result.missing = stripped(factor);
        return result;
      }
      const ModelUnit& unit = units.at(resolved->second);
      const int net = below ? -power : power;
      result.scale *= std::pow(resolved->first * unit.scale, net);
      result.shift = unit.shift;  // temperature units stand alone
      for (int b = 0; b < kBaseCount; ++b)
        result.exponents[b] += net * quantity(unit.quantity).exponents[b];
      result.size += unit.size * static_cast<std::size_t>(std::abs(power));
      if (end < text.size() && text[end] == '/') below = true;
      start = end + 1;
    }
    return result;
  }
  static std::vector<std::string> namesIn(const std::string& text) {
    static const std::regex kName("[A-Za-z_]\\w*");
    return {std::sregex_token_iterator(text.begin(), text.end(), kName), {}};
  }
  // The first unit, in quantity and unit order, whose composition names the unit. Units
  // of the seven base quantities are stored in built-in base units, so only derived units
  // keep the names they were written with.
  std::string firstUserOf(const std::string& name) const {
    for (const ModelQuantity& q : quantities) {
      for (const std::string& candidate : q.units) {
        const ModelUnit& unit = units.at(candidate);
        if (unit.builtin || unit.quantity < kBaseCount) continue;
        for (const std::string& written : namesIn(unit.text)) {
          if (stripped(written) == name) return candidate;
        }
      }
    }
    return "";
  }
  std::string firstUnitBeginningWith(const std::string& prefixName) const {
    for (const ModelQuantity& q : quantities) {
      for (const std::string& name : q.units) {
        if (beginsWith(name, prefixName)) return name;
      }
    }
    return "";
  }
  void removeUnit(const std::string& name) {
    auto& list = quantity(units.at(name).quantity).units;
    list.erase(std::find(list.begin(), list.end(), name));
    units.erase(name);
  }
  // SI value of one unit of a unit system for the base quantity.
  double systemScale(const ModelSystem& system, int base) const {
    const auto resolved = resolve(system.units[static_cast<std::size_t>(base)]);
    return resolved->first * units.at(resolved->second).scale;
  }
  // The first unit system that names the unit, with or without a prefix; or that names a
  // unit with the prefix.
  std::string systemUsing(const std::string& unit, const std::string& prefix = "") const {
    for (const ModelSystem& system : systems) {
      for (const std::string& name : system.units) {
        const auto resolved = resolve(name);
        const bool prefixed = units.count(name) == 0;
        if (!resolved) continue;  // the conversions of the system then fail the test
        if (prefix.empty() ? resolved->second == unit
                           : prefixed && leadingPrefix(name)->name == prefix) {
          return system.name;
        }
      }
    }
    return "";
  }
  // The first user of the unit that refuses its removal: a unit, then a unit system.
  std::string userOf(const std::string& name) const {
    const std::string unit = firstUserOf(name);
    return unit.empty() ? systemUsing(name) : unit;
  }
};

// ------------------------------------------------------------------ the test

// Each seed runs pristine: start() comes after runsPristineHere().
class RegistryModel : public testing::TestWithParam<int> {
 protected:
  void start() {
    hostSetUsingJava(true);  // before the registries create the change-event sender
    units = UnitManager::Instance();
    quantities = PhysicalQuantityManager::Instance();
    prefixes = UnitPrefixManager::Instance();
    systems = UnitSystemManager::Instance();
    units->addUnitRegisteredListener([this](const UnitRepresentationApi* u) {
      hear({u->getName(), "UNIT_CREATED"}, [&] { units->unregisterUnit(u->getName()); });
    });
    units->addUnitUnregisteredListener([this](const UnitRepresentationApi* u) {
      hear({u->getName(), "UNIT_REMOVED"}, [&] { units->unregisterUnit(u->getName()); });
    });
    prefixes->addUnitPrefixRegisteredListener([this](const UnitPrefixApi* p) {
      hear({p->getName(), "PREFIX_CREATED"}, [&] { prefixes->unregisterPrefix(p->getName()); });
    });
    prefixes->addUnitPrefixUnregisteredListener([this](const UnitPrefixApi* p) {
      hear({p->getName(), "PREFIX_REMOVED"}, [&] { prefixes->unregisterPrefix(p->getName()); });
    });
    quantities->addPhysicalQuantityRegisteredListener([this](const QuantityDimensionApi* q) {
      hear({q->getName(), "QUANTITY_CREATED"}, [&] { registerInside(); });
    });
    quantities->addPhysicalQuantityUnregisteredListener(
        [this](const QuantityDimensionApi* q, unsigned long) {
          hear({q->getName(), "QUANTITY_REMOVED"}, [&] { registerInside(); });
        });
    readBuiltins();
    rng.seed(static_cast<std::mt19937::result_type>(GetParam()));
  }

  // The built-in library is the model's start; other tests check it.
  void readBuiltins() {
    for (int q = 0; q < quantities->getNumQuantities(); ++q) {
      const QuantityDimension* quantity = quantities->getQuantityDimension(q);
      ModelQuantity entry{quantity->getName(), {}, units->getQuantityUnitStrings2(q)};
      for (int b = 0; b < kBaseCount; ++b) entry.exponents[b] = quantity->at(b);
      model.quantities.push_back(entry);
    }
    model.builtinQuantities = static_cast<int>(model.quantities.size());
    for (int p = 0; p < prefixes->getNumPrefixes(); ++p)
      model.prefixes.push_back(
          {prefixes->getUnitPrefixAsString(p), prefixes->getPrefixExponent(p)});
    for (const auto& system : systems->getUnitSystems()) {
      model.systems.push_back(
          {system->getUnitSystemName(),
           {system->getAmountType(), system->getMassType(), system->getLengthType(),
            system->getTimeType(), system->getTempType(), system->getCurrentType(),
            system->getLuminousIntensityType()}});
    }
    for (std::size_t q = 0; q < model.quantities.size(); ++q) {
      const std::string si = model.siText(static_cast<int>(q));
      for (const std::string& name : model.quantities[q].units) {
        ModelUnit unit;
        unit.quantity = static_cast<int>(q);
        unit.shift = units->convert(0.0, name, si);
        unit.scale = units->convert(1.0, name, si) - unit.shift;
        const UnitComposition* expansion = units->getCachedComposition(name);
        unit.size = expansion->getNumerator().size() + expansion->getDenominator().size();
        model.units[name] = unit;
      }
    }
  }

  // ---------------------------------------------------------------- random choices

  std::size_t pick(std::size_t n) { return static_cast<std::size_t>(rng() % n); }
  bool chance(int percent) { return static_cast<int>(rng() % 100) < percent; }
  template <typename T>
  T pickFrom(const std::vector<T>& list) {
    return list[pick(list.size())];
  }
  double pickMultiplier(double other = 0.0) {
    static const std::vector<double> kMultipliers = {2.5, 0.125, 1000.0, 3.0, 7.25, 1e-3, 12.0};
    double chosen = pickFrom(kMultipliers);
    return chosen == other ? chosen * 2 : chosen;
  }
  std::vector<std::string> unitNames(const std::function<bool(const ModelUnit&)>& wanted) const {
    std::vector<std::string> names;
    for (const ModelQuantity& q : model.quantities) {
      for (const std::string& name : q.units) {
        if (wanted(model.units.at(name))) names.push_back(name);
      }
    }
    return names;
  }
  std::vector<std::string> userUnits() const {
    return unitNames([](const ModelUnit& u) { return !u.builtin; });
  }
  std::vector<std::string> userPrefixes() const {
    std::vector<std::string> names;
    for (std::size_t p = UnitPrefixManager::kBuiltinPrefixCount; p < model.prefixes.size(); ++p)
      names.push_back(model.prefixes[p].name);
    return names;
  }

  // ---------------------------------------------------------------- listeners that act

  // What the first of our listeners called in a step does, besides listening.
  enum class Act { kListen, kRaise, kChangeInside, kAddListener };

  void hear(const Event& what, const std::function<void()>& changeInside) {
    heard.push_back(what);
    const Act now = act;
    act = Act::kListen;
    switch (now) {
      case Act::kRaise:
        throw new ErrorIdException("Model:ListenerError", "A listener raised.");
      case Act::kChangeInside:
        // Refused while the change is announced; the registries stay as the model says.
        try {
          changeInside();
        } catch (const std::logic_error&) {
          refusedInside = true;
        }
        break;
      case Act::kAddListener: {
        // Called from the next change on, never for the one that added it.
        const std::size_t step = steps.size();
        auto check = [this, what, step](const Event& change) {
          EXPECT_FALSE(steps.size() == step && change == what)
              << "a listener heard the change that added it";
        };
        units->addUnitRegisteredListener([check](const UnitRepresentationApi* u) {
          check({u->getName(), "UNIT_CREATED"});
        });
        units->addUnitUnregisteredListener([check](const UnitRepresentationApi* u) {
          check({u->getName(), "UNIT_REMOVED"});
        });
        break;
      }
      case Act::kListen:
        break;
    }
  }

  // A unit registration asked for inside a listener.
  void registerInside() {
    UnitRepresentation definition("inside", "meter", 2.0, 0.0, true);
    units->registerUnit(&definition);
  }

  // ---------------------------------------------------------------- running a step

  struct Expected {
    std::optional<std::string> error;  // the identifier of a refusal
    std::string messagePart;           // a text that the refusal's message contains
    bool unchanged = false;            // an accepted operation that must change nothing
    Events events;                     // the change-event queue
    int redefinitionWarnings = 0;
  };

  void run(const std::string& description, const std::function<void()>& operation,
           Expected expected) {
    static const char* const kActs[] = {"", " (a listener raises)",
                                        " (a listener changes the registries)",
                                        " (a listener adds listeners)"};
    const Act acting = act;
    const bool told = !expected.events.empty();
    const bool refusal = expected.error.has_value();
    // Where a listener cannot refuse, the change is carried out, then its error is raised.
    if (acting == Act::kRaise && told && !refusal) expected.error = "Model:ListenerError";
    refusedInside = false;
    steps.push_back(description + kActs[static_cast<int>(acting)]);
    RegistrySnapshot before = RegistrySnapshot::take();
    hostClearJavaEventQueue();
    heard.clear();
    const std::size_t warningsBefore = warnings.identifiers().size();
    std::optional<CapturedError> error = captureError(operation);
    if (expected.error) {
      if (!error) {
        ADD_FAILURE() << "accepted; expected " << *expected.error;
      } else {
        EXPECT_EQ(error->identifier, *expected.error) << error->message;
        EXPECT_NE(error->message.find(expected.messagePart), std::string::npos)
            << error->message << " (expected it to name '" << expected.messagePart << "')";
      }
    } else if (error) {
      ADD_FAILURE() << "refused: " << error->identifier << ": " << error->message;
    }
    if (refusal || expected.unchanged) {
      EXPECT_EQ(RegistrySnapshot::take(), before) << "a refused or empty operation changed them";
    }
    if (acting == Act::kChangeInside && told) {
      EXPECT_TRUE(refusedInside) << "a change asked for inside a listener was not refused";
    }
    Events events;
    for (const JavaEvent& event : hostJavaEventQueue()) events.emplace_back(event.name, event.type);
    EXPECT_EQ(events, expected.events) << "change events";
    // Our listeners hear what the change-event sender, called first, posts; but the unit
    // registry removes a quantity's units among the listeners before ours, so that they hear
    // of the quantity last.
    Events ours = expected.events;
    if (!ours.empty() && ours[0].second == "QUANTITY_REMOVED")
      std::rotate(ours.begin(), ours.begin() + 1, ours.end());
    EXPECT_EQ(heard, ours) << "listener calls";
    int redefinitions = 0;
    for (std::size_t w = warningsBefore; w < warnings.identifiers().size(); ++w)
      redefinitions += warnings.identifiers()[w] == "Unit:Redefining";
    EXPECT_EQ(redefinitions, expected.redefinitionWarnings) << "Unit:Redefining warnings";
  }

  // Whether the first of our listeners refuses the removal it hears of: then nothing
  // changes, and only the listeners called before it (the change-event sender) heard of it.
  bool listenerRefuses(Expected& expected) const {
    if (act != Act::kRaise) return false;
    expected.error = "Model:ListenerError";
    expected.events.resize(1);
    return true;
  }

  static Expected refusal(const std::string& identifier, const std::string& messagePart = "") {
    Expected expected;
    expected.error = identifier;
    expected.messagePart = messagePart;
    return expected;
  }

  // ---------------------------------------------------------------- units

  struct Definition {
    std::string name, text;
    double multiplier = 1.0, offset = 0.0;
    std::string describe() const {
      std::ostringstream out;
      out << "register '" << name << "' = " << multiplier << " " << text << " + " << offset;
      return out.str();
    }
  };

  void registerDefinition(const Definition& d) {
    auto definition =
        std::make_unique<UnitRepresentation>(d.name, d.text, d.multiplier, d.offset, true);
    UnitRepresentation* raw = definition.get();
    handOver(
        definition, [&] { units->registerUnit(raw); },
        [&] { return units->getUnitRepresentation(d.name) == raw; });
  }

  // One to three factors of non-temperature units with small powers, the first maybe
  // prefixed; empty when the chosen units are too large to raise.
  std::string writeComposition() {
    const std::vector<std::string> candidates =
        unitNames([](const ModelUnit& u) { return u.quantity != kTemperature; });
    static const std::vector<int> kPowers = {1, 1, 2, 3, -1, -2};
    const std::size_t factors = 1 + pick(3);
    std::string text;
    for (std::size_t f = 0; f < factors; ++f) {
      const std::string name = pickFrom(candidates);
      const std::size_t size = model.units.at(name).size;
      int power = factors == 1 ? 1 : pickFrom(kPowers);
      if (size > 30) return "";
      if (size * static_cast<std::size_t>(std::abs(power)) > 30) power = 1;
      std::string written = name;
      if (f == 0 && chance(30)) {
        const std::string prefixed = pickFrom(model.prefixes).name + name;
        if (auto resolved = model.resolve(prefixed); resolved && resolved->second == name)
          written = prefixed;
      }
      if (f > 0) text += f == 2 ? "/" : "*";
      text += written;
      if (power != 1) text += "^" + std::to_string(power);
    }
    return text;
  }

  void addUnit() {
    Definition d{"u" + letters(nextUnit++), "", pickMultiplier(), 0.0};
    if (chance(20)) {  // a temperature unit with an offset on a temperature unit
      static const std::vector<double> kOffsets = {0.0, 10.0, -40.5, 273.15};
      d.text = pickFrom(unitNames([](const ModelUnit& u) { return u.quantity == kTemperature; }));
      d.offset = pickFrom(kOffsets);
    } else {
      d.text = writeComposition();
      if (d.text.empty()) return;
    }
    const Valued valued = model.value(d.text);
    ASSERT_TRUE(valued.missing.empty()) << d.text;
    // Far from overflow, where the model's arithmetic and the registry's agree.
    if (!(std::fabs(std::log10(valued.scale * d.multiplier)) < 20.0)) return;
    Expected expected;
    int quantity = model.quantityWith(valued.exponents);
    if (quantity == -1) {
      const std::string name = "Unnamed_Quant_" + std::to_string(++model.anonymousCount);
      model.quantities.push_back({name, valued.exponents, {}});
      quantity = static_cast<int>(model.quantities.size()) - 1;
      expected.events.emplace_back(name, "QUANTITY_CREATED");
    }
    expected.events.emplace_back(d.name, "UNIT_CREATED");
    model.quantity(quantity).units.push_back(d.name);
    model.units[d.name] = {quantity,
                           false,
                           d.text,
                           d.multiplier,
                           d.offset,
                           valued.scale * d.multiplier,
                           valued.scale * d.offset + valued.shift,
                           valued.size};
    touched = quantity;
    run(
        d.describe(), [&] { registerDefinition(d); }, expected);
  }

  // A definition with one fault, refused with the registry's error.
  void addInvalidUnit() {
    const std::vector<std::string> users = userUnits();
    const std::string fresh = "u" + letters(nextUnit++);
    Definition d{fresh, "meter", 1.0, 0.0};
    Expected expected;
    struct Fault {
      std::string name, text;
      double multiplier, offset;
      const char* identifier;
      std::string messagePart;
    };
    const Fault simple[] = {
        {"2" + fresh, "meter", 1, 0, "Unit:NameInvalid", ""},
        {"", "meter", 1, 0, "Unit:NameInvalid", ""},
        {"kilo" + fresh, "meter", 1, 0, "Unit:NameClashesWithPrefix2", "'kilo'"},
        {fresh, "nosuch" + fresh, 1, 0, "Unit:NotFound", "'nosuch" + fresh + "'"},
        {fresh, "meter*2", 1, 0, "Unit:InvalidCompositionMathMult", ""},
        {fresh, "meter", 1, 5, "Unit:OffsetUnitsTemperatureOnly", ""},
        {fresh, "meter", 0, 0, "Unit:ConversionFunctionZero", ""}};
    const std::size_t kind = pick(users.empty() ? 9 : 12);
    switch (kind) {
      case 7: {
        d.name = pickFrom(unitNames([](const ModelUnit& u) { return u.builtin; }));
        d.text = d.name == "meter" ? "foot" : "meter";
        expected = refusal("Unit:CannotUnregisterBuiltin");
        break;
      }
      case 8: {
        const std::vector<std::string> own = userPrefixes();
        if (own.empty()) return;
        d.name = pickFrom(own) + fresh;
        const ModelPrefix* prefix = model.leadingPrefix(d.name);
        d.multiplier = prefix->multiplier();
        expected = refusal("Unit:NameClashesWithPrefix", "'" + prefix->name + "'");
        break;
      }
      case 9: {  // a name taken in another quantity
        d.name = pickFrom(users);
        d.text = model.units.at(d.name).quantity == 3 ? "meter" : "second";
        expected = refusal("Unit:DuplicateName", "'" + d.name + "'");
        break;
      }
      case 10: {
        d.name = pickFrom(users);
        d.text = d.name + "*second/second";
        expected = refusal("Unit:SelfReferenceInComposition");
        break;
      }
      case 11: {  // redefining a unit that another unit uses
        std::vector<std::string> used;
        for (const std::string& name : users) {
          if (!model.userOf(name).empty()) used.push_back(name);
        }
        if (used.empty()) return;
        const ModelUnit& unit = model.units.at(d.name = pickFrom(used));
        d.text = unit.text;
        d.multiplier = pickMultiplier(unit.multiplier);
        d.offset = unit.offset;
        // A unit of its composition may be gone (or no longer prefixed as written): the
        // parse refuses before the redefinition is noticed.
        if (const Valued valued = model.value(d.text); !valued.missing.empty()) {
          expected = refusal("Unit:NotFound", "'" + valued.missing + "'");
          break;
        }
        expected = refusal("Unit:BeingUsed", "'" + model.userOf(d.name) + "'");
        expected.redefinitionWarnings = 1;
        break;
      }
      default:  // kinds 0 to 6
        d = {simple[kind].name, simple[kind].text, simple[kind].multiplier, simple[kind].offset};
        expected = refusal(simple[kind].identifier, simple[kind].messagePart);
    }
    run(
        d.describe(), [&] { registerDefinition(d); }, expected);
  }

  void redefineUnit() {
    std::vector<std::string> free;
    for (const std::string& name : userUnits()) {
      if (model.userOf(name).empty()) free.push_back(name);
    }
    if (free.empty()) return;
    const std::string name = pickFrom(free);
    ModelUnit unit = model.units.at(name);
    Definition d{name, unit.text, pickMultiplier(unit.multiplier), unit.offset};
    const Valued valued = model.value(d.text);
    if (!valued.missing.empty()) {
      run(
          d.describe(), [&] { registerDefinition(d); },
          refusal("Unit:NotFound", "'" + valued.missing + "'"));
      return;
    }
    if (!(std::fabs(std::log10(valued.scale * d.multiplier)) < 20.0)) return;
    Expected expected;
    expected.redefinitionWarnings = 1;
    expected.events = {{name, "UNIT_REMOVED"}, {name, "UNIT_CREATED"}};
    if (listenerRefuses(expected)) {
      run(
          d.describe() + " (redefinition)", [&] { registerDefinition(d); }, expected);
      return;
    }
    unit.multiplier = d.multiplier;
    unit.scale = valued.scale * d.multiplier;
    unit.shift = valued.scale * d.offset + valued.shift;
    model.removeUnit(name);
    model.quantity(unit.quantity).units.push_back(name);
    model.units[name] = unit;
    touched = unit.quantity;
    run(
        d.describe() + " (redefinition)", [&] { registerDefinition(d); }, expected);
  }

  void removeUnit() {
    const std::vector<std::string> users = userUnits();
    std::string name;
    Expected expected;
    const std::size_t kind = pick(10);
    if (kind < 7 && !users.empty()) {
      name = pickFrom(users);
      const std::string user = model.userOf(name);
      if (!user.empty()) {
        expected = refusal("Unit:BeingUsed", "'" + user + "'");
      } else {
        expected.events = {{name, "UNIT_REMOVED"}};
        if (!listenerRefuses(expected)) {
          touched = model.units.at(name).quantity;
          model.removeUnit(name);
          removedUnits.push_back(name);
        }
      }
    } else if (kind < 8) {
      name = pickFrom(unitNames([](const ModelUnit& u) { return u.builtin; }));
      expected = refusal("Unit:CannotUnregisterBuiltin");
    } else if (kind < 9 || users.empty()) {
      name = "nosuch" + letters(nextUnit++);
      expected = refusal("Unit:NotFound", "'" + name + "'");
    } else {
      name = "kilo" + pickFrom(users);
      expected = refusal("Unit:NotFound", "'" + name + "'");
    }
    run(
        "unregister '" + name + "'", [&] { units->unregisterUnit(name); }, expected);
  }

  // ---------------------------------------------------------------- prefixes

  void addPrefix() {
    static const std::vector<int> kExponents = {4, 5, 7, 8, 10, -4, -5, -7, -8, -10};
    std::string name = "wz" + letters(nextPrefix++);
    int exponent = pickFrom(kExponents);
    Expected expected;
    const std::vector<std::string> users = userUnits(), own = userPrefixes();
    switch (pick(10)) {
      case 0:
        name = "2" + name;
        expected = refusal("Unit:PrefixNameInvalid");
        break;
      case 1:
        name = "kilo";
        expected = refusal("Unit:PrefixCannotUnregisterBuiltin");
        break;
      case 2:  // the beginning of a unit's name
        if (users.empty()) return;
        name = pickFrom(users).substr(0, 2);
        expected = refusal("Unit:PrefixUnitNameCollision", model.firstUnitBeginningWith(name));
        break;
      case 3: {
        if (own.empty()) return;
        name = pickFrom(own);
        const int registered = model.prefix(name)->exponent;
        if (chance(50)) {
          exponent = registered;
          expected.unchanged = true;  // the same prefix again: accepted, not stored
        } else {
          exponent = registered == 4 ? 5 : 4;
          expected = refusal("Unit:PrefixDuplicateName", "'" + name + "'");
        }
        break;
      }
      case 4:  // the beginning of a registered prefix's name, which takes only what it leaves a
               // unit of
        if (own.empty()) return;
        name = pickFrom(own);
        name.pop_back();
        if (model.prefix(name) != nullptr) return;
        [[fallthrough]];
      default:
        if (std::string unit = model.firstUnitBeginningWith(name); !unit.empty()) {
          expected = refusal("Unit:PrefixUnitNameCollision", "'" + unit + "'");
          break;
        }
        expected.events = {{name, "PREFIX_CREATED"}};
        model.prefixes.push_back({name, exponent});
    }
    run(
        "register prefix '" + name + "' 10^" + std::to_string(exponent),
        [&] {
          auto prefix = std::make_unique<UnitPrefix>(name, exponent, "");
          UnitPrefix* raw = prefix.get();
          handOver(
              prefix, [&] { prefixes->registerPrefix(raw); },
              [&] { return prefixes->getUnitPrefixApi(name) == raw; });
        },
        expected);
  }

  void removePrefix() {
    const std::vector<std::string> own = userPrefixes();
    std::string name;
    Expected expected;
    const std::size_t kind = pick(10);
    if (kind < 8 && !own.empty()) {
      name = pickFrom(own);
      // Whether a unit holds the prefix in its stored composition, where the parser put it
      // on the unit rather than into the multiplier: that much the model takes from the
      // registry; the consequences are checked against the model.
      const int index = prefixes->getPrefixIndex(name);
      std::string user;
      for (int q = 0; q < units->getNumQuantityLists() && user.empty(); ++q) {
        for (int u = 0; u < static_cast<int>(units->getNumUnits(q)) && user.empty(); ++u) {
          if (units->getUnitComposition(q, u)->containsPrefix(index))
            user = units->getQuantityUnitStrings2(q)[static_cast<std::size_t>(u)];
        }
      }
      if (user.empty()) user = model.systemUsing("", name);
      if (!user.empty()) {
        expected = refusal("Unit:PrefixBeingUsed", "'" + user + "'");
      } else {
        expected.events = {{name, "PREFIX_REMOVED"}};
        if (!listenerRefuses(expected)) {
          model.prefixes.erase(std::find_if(model.prefixes.begin(), model.prefixes.end(),
                                            [&](const ModelPrefix& p) { return p.name == name; }));
          removedPrefixes.push_back(name);
        }
      }
    } else if (kind < 9) {
      name = model.prefixes[pick(UnitPrefixManager::kBuiltinPrefixCount)].name;
      expected = refusal("Unit:PrefixCannotUnregisterBuiltin");
    } else {
      name = "wy" + letters(nextPrefix++);
      expected = refusal("Unit:PrefixNotFound", "'" + name + "'");
    }
    run(
        "unregister prefix '" + name + "'", [&] { prefixes->unregisterPrefix(name); }, expected);
  }

  // ---------------------------------------------------------------- quantities

  void addQuantity() {
    std::string name = "qz" + letters(nextQuantity++);
    Exponents exponents{};
    do {
      for (int& e : exponents) e = static_cast<int>(pick(7)) - 3;
    } while (model.quantityWith(exponents) != -1);
    Expected expected;
    switch (pick(6)) {
      case 0:
        name = "2" + name;
        expected = refusal("Unit:QuantityNameInvalid");
        break;
      case 1: {
        exponents = pickFrom(model.quantities).exponents;
        expected = refusal("Unit:QuantityDuplicateDimensions",
                           "'" + model.quantity(model.quantityWith(exponents)).name + "'");
        break;
      }
      case 2:
        name = pickFrom(model.quantities).name;
        expected = refusal("Unit:QuantityDuplicateName", "'" + name + "'");
        break;
      default:
        expected.events = {{name, "QUANTITY_CREATED"}};
        model.quantities.push_back({name, exponents, {}});
    }
    std::string description = "register quantity '" + name + "' [";
    for (int e : exponents) description += " " + std::to_string(e);
    run(
        description + " ]",
        [&] {
          auto quantity = std::make_unique<QuantityDimension>(exponents.data(), name.c_str());
          QuantityDimension* raw = quantity.get();
          handOver(
              quantity, [&] { quantities->registerPhysicalQuantity(raw); },
              [&] {
                return quantities->getQuantityDimension(quantities->getNumQuantities() - 1) == raw;
              });
        },
        expected);
  }

  void removeQuantity() {
    std::string name;
    Expected expected;
    const int count = static_cast<int>(model.quantities.size());
    const std::size_t kind = pick(10);
    if (kind < 8 && count > model.builtinQuantities) {
      const int index =
          model.builtinQuantities +
          static_cast<int>(pick(static_cast<std::size_t>(count - model.builtinQuantities)));
      name = model.quantity(index).name;
      // The units go from the last to the first; one that a unit outside still uses
      // refuses the whole removal.
      Model after = model;
      std::string user;
      const std::vector<std::string> doomed = model.quantity(index).units;
      for (auto unit = doomed.rbegin(); unit != doomed.rend() && user.empty(); ++unit) {
        user = after.firstUserOf(*unit);
        if (user.empty()) after.removeUnit(*unit);
      }
      if (!user.empty()) {
        expected = refusal("Unit:BeingUsed", "'" + user + "'");
      } else {
        // Its units go first, among the listeners before ours, which can no longer refuse.
        expected.events = {{name, "QUANTITY_REMOVED"}};
        for (auto unit = doomed.rbegin(); unit != doomed.rend(); ++unit) {
          expected.events.emplace_back(*unit, "UNIT_REMOVED");
          removedUnits.push_back(*unit);
        }
        after.quantities.erase(after.quantities.begin() + index);
        for (auto& [unitName, unit] : after.units) {
          if (unit.quantity > index) --unit.quantity;
        }
        model = after;
      }
    } else if (kind < 9) {
      name =
          model.quantity(static_cast<int>(pick(static_cast<std::size_t>(model.builtinQuantities))))
              .name;
      expected = refusal("Unit:CannotUnregisterBuiltinQuantity");
    } else {
      name = "qy" + letters(nextQuantity++);
      expected = refusal("Unit:QuantityNotFound", "'" + name + "'");
    }
    run(
        "unregister quantity '" + name + "'", [&] { quantities->unregisterPhysicalQuantity(name); },
        expected);
  }

  // ---------------------------------------------------------------- unit systems

  void addSystem() {
    ModelSystem system{"sz" + letters(nextSystem++), {}};
    for (int b = 0; b < kBaseCount; ++b) {
      std::string unit = pickFrom(model.quantity(b).units);
      if (b != kTemperature && chance(25)) {
        const std::string prefixed = pickFrom(model.prefixes).name + unit;
        if (auto resolved = model.resolve(prefixed); resolved && resolved->second == unit)
          unit = prefixed;
      }
      system.units[static_cast<std::size_t>(b)] = unit;
    }
    Expected expected;
    switch (pick(5)) {
      case 0:
        system.name = "2" + system.name;
        expected = refusal("Unit:SystemNameInvalid");
        break;
      case 1:
        if (model.systems.empty()) return;
        system.name = pickFrom(model.systems).name;
        expected = refusal("Unit:SystemDuplicateName", "'" + system.name + "'");
        break;
      default:
        model.systems.push_back(system);
    }
    std::string description = "register unit system '" + system.name + "':";
    for (const std::string& unit : system.units) description += " " + unit;
    run(
        description,
        [&] {
          auto created = std::make_unique<UnitSystem>(system.name.c_str());
          created->setAmountType(system.units[0]);
          created->setMassType(system.units[1]);
          created->setLengthType(system.units[2]);
          created->setTimeType(system.units[3]);
          created->setTempType(system.units[4]);
          created->setCurrentType(system.units[5]);
          created->setLuminousIntensityType(system.units[6]);
          systems->registerUnitSystem(created.get());
          if (systems->getUnitSystems().back().get() == created.get()) created.release();
        },
        expected);
  }

  void removeSystem() {
    std::string name;
    Expected expected;
    if (!model.systems.empty() && chance(80)) {
      const std::size_t index = pick(model.systems.size());
      name = model.systems[index].name;
      model.systems.erase(model.systems.begin() + static_cast<std::ptrdiff_t>(index));
    } else {
      name = "sy" + letters(nextSystem++);
      expected = refusal("Unit:SystemNotRegistered");
    }
    run(
        "unregister unit system '" + name + "'", [&] { systems->unregisterUnitSystem(name); },
        expected);
  }

  // ---------------------------------------------------------------- the checks

  void expectConversion(double value, const std::string& from, const std::string& to,
                        double expected, double magnitude = 0.0) {
    double converted = 0.0;
    auto error = captureError([&] { converted = units->convert(value, from, to); });
    if (error) {
      ADD_FAILURE() << from << " -> " << to << ": " << error->identifier << ": " << error->message;
    } else {
      EXPECT_TRUE(near(converted, expected, magnitude))
          << value << " " << from << " -> " << to << ": " << converted << ", model " << expected;
    }
  }

  void expectNotFound(const std::string& from, const std::string& to) {
    auto error = captureError([&] { units->convert(1.0, from, to); });
    EXPECT_TRUE(error && error->identifier == "Unit:NotFound")
        << from << " should no longer resolve: " << (error ? error->identifier : "it converted");
  }

  // A prefixed built-in unit against the unit: the prefix's multiplier, or not found when
  // the model's prefixes do not make a unit of the text.
  void expectResolved(const std::string& prefixed, const std::string& unit) {
    if (auto resolved = model.resolve(prefixed)) {
      expectConversion(1.0, prefixed, unit, resolved->first);
    } else {
      expectNotFound(prefixed, unit);
    }
  }

  void checkRegistries() {
    ASSERT_EQ(quantities->getNumQuantities(), static_cast<int>(model.quantities.size()));
    ASSERT_EQ(units->getNumQuantityLists(), static_cast<int>(model.quantities.size()));
    for (int q = 0; q < static_cast<int>(model.quantities.size()); ++q) {
      const ModelQuantity& expected = model.quantity(q);
      SCOPED_TRACE("quantity " + std::to_string(q) + " " + expected.name);
      const QuantityDimension* quantity = quantities->getQuantityDimension(q);
      EXPECT_EQ(quantity->getName(), expected.name);
      EXPECT_EQ(quantities->getQuantityTypeNames().at(static_cast<std::size_t>(q)), expected.name);
      for (int b = 0; b < kBaseCount; ++b) EXPECT_EQ(quantity->at(b), expected.exponents[b]);
      ASSERT_EQ(units->getQuantityUnitStrings2(q), expected.units);
      EXPECT_EQ(units->getNumUnits(q), expected.units.size());
      for (int u = 0; u < static_cast<int>(expected.units.size()); ++u) {
        const std::string& name = expected.units[static_cast<std::size_t>(u)];
        EXPECT_EQ(units->getUnitIndex(q, name), u) << name;
        EXPECT_EQ(units->getUnitIndexAndPhysQuantIndex(name), UnitManager::UnitAddress(q, u));
        EXPECT_EQ(units->getUnitPhysicalQuantityType(name), q) << name;
        EXPECT_EQ(units->isUnitBuiltin(name), model.units.at(name).builtin) << name;
      }
    }
    ASSERT_EQ(prefixes->getNumPrefixes(), static_cast<int>(model.prefixes.size()));
    for (int p = 0; p < prefixes->getNumPrefixes(); ++p) {
      EXPECT_EQ(prefixes->getUnitPrefixAsString(p),
                model.prefixes[static_cast<std::size_t>(p)].name);
      EXPECT_EQ(prefixes->getPrefixExponent(p),
                model.prefixes[static_cast<std::size_t>(p)].exponent);
    }
    ASSERT_EQ(systems->getUnitSystems().size(), model.systems.size());
    for (std::size_t s = 0; s < model.systems.size(); ++s)
      EXPECT_EQ(systems->getUnitSystems()[s]->getUnitSystemName(), model.systems[s].name);
  }

  void checkConversions() {
    for (const std::string& name : userUnits()) {
      const ModelUnit& unit = model.units.at(name);
      const std::string si = model.siText(unit.quantity);
      SCOPED_TRACE(name + " in " + si);
      expectConversion(0.0, name, si, unit.shift);
      expectConversion(1.0, name, si, unit.scale + unit.shift,
                       std::fabs(unit.scale) + std::fabs(unit.shift));
      if (unit.quantity != kTemperature)
        expectConversion(1.0, "kilo" + name, si, 1000 * unit.scale);
    }
    for (const std::string& name : userPrefixes()) {
      expectResolved(name + "hertz", "1/second");
      expectResolved(name + "meter", "meter");
    }
    for (const std::string& name : removedUnits) {
      if (model.units.count(name) != 0) continue;
      EXPECT_FALSE(units->isUnitRegistered(name)) << name;
      EXPECT_EQ(units->getCachedComposition(name), nullptr) << name;
      expectNotFound(name, "meter");
      expectNotFound("kilo" + name, "meter");
    }
    for (const std::string& name : removedPrefixes) {
      expectResolved(name + "hertz", "1/second");
      expectResolved(name + "meter", "meter");
    }
  }

  // Every unit of the quantity to every other and back.
  void checkPairs(int quantity) {
    const std::vector<std::string>& names = model.quantity(quantity).units;
    for (const std::string& from : names) {
      for (const std::string& to : names) {
        const ModelUnit &a = model.units.at(from), &b = model.units.at(to);
        if (a.builtin && b.builtin) continue;
        const double x = 1.5, y = (a.scale * x + a.shift - b.shift) / b.scale;
        const double terms = std::fabs(a.scale * x) + std::fabs(a.shift) + std::fabs(b.shift);
        SCOPED_TRACE(from + " -> " + to);
        expectConversion(x, from, to, y, terms / std::fabs(b.scale));
        expectConversion(y, to, from, x, terms / std::fabs(a.scale));
      }
    }
  }

  // The quantity's last unit, the one a registration adds, refuses every change.
  void checkGuarded(int quantity) {
    const std::vector<std::string>& names = model.quantity(quantity).units;
    if (names.empty() || model.units.at(names.back()).builtin) return;
    UnitRepresentation* unit = units->getUnitRepresentation(names.back());
    const double multiplier = unit->getMultiplier();
    EXPECT_TRUE(captureError([&] { unit->setMultiplier(99.0); })) << names.back() << " unguarded";
    EXPECT_EQ(unit->getMultiplier(), multiplier);
  }

  // Each user unit without temperature in a unit system: the converter's multiplier is
  // the unit's SI value over the system units' SI values.
  void checkSystems() {
    UnitConverterManager* converters = UnitConverterManager::Instance();
    const std::vector<std::string> candidates = unitNames([&](const ModelUnit& u) {
      return !u.builtin && model.quantity(u.quantity).exponents[kTemperature] == 0;
    });
    for (const ModelSystem& system : model.systems) {
      for (int sample = 0; sample < 3 && !candidates.empty(); ++sample) {
        const std::string name = pickFrom(candidates);
        const ModelUnit& unit = model.units.at(name);
        double expected = unit.scale;
        for (int b = 0; b < kBaseCount; ++b) {
          expected /=
              std::pow(model.systemScale(system, b), model.quantity(unit.quantity).exponents[b]);
        }
        // A quantity with large exponents in a system of large units overflows.
        if (!(std::fabs(std::log10(expected)) < 200.0)) continue;
        SCOPED_TRACE(name + " in system " + system.name);
        std::unique_ptr<UnitConverter> converter;
        auto error = captureError([&] {
          converter.reset(
              converters->getQuantityUnitConverter(name, systems->getNamedUnitSystem(system.name)));
        });
        ASSERT_FALSE(error) << error->identifier << ": " << error->message;
        EXPECT_TRUE(near(converter->getMultiplier(), expected, 0.0))
            << converter->getMultiplier() << ", model " << expected;
      }
    }
  }

  std::string history() const {
    std::string text;
    for (std::size_t s = 0; s < steps.size(); ++s)
      text += "\n  " + std::to_string(s + 1) + ". " + steps[s];
    return text;
  }

  UnitManager* units = nullptr;
  PhysicalQuantityManager* quantities = nullptr;
  UnitPrefixManager* prefixes = nullptr;
  UnitSystemManager* systems = nullptr;
  WarningCapture warnings;
  Events heard;
  Act act = Act::kListen;
  bool refusedInside = false;

  std::mt19937 rng;
  Model model;
  std::vector<std::string> steps, removedUnits, removedPrefixes;
  int nextUnit = 0, nextPrefix = 0, nextQuantity = 0, nextSystem = 0;
  int touched = -1;
};

TEST_P(RegistryModel, RandomChangesKeepTheRegistriesAsTheModelSays) {
  if (!runsPristineHere()) return;
  start();
  const int stepCount = fromEnvironment("TW_MODEL_STEPS", 200);
  for (int step = 0; step < stepCount; ++step) {
    touched = -1;
    act = chance(15) ? static_cast<Act>(1 + pick(3)) : Act::kListen;
    const std::size_t kind = pick(100);
    if (kind < 30) {
      addUnit();
    } else if (kind < 42) {
      addInvalidUnit();
    } else if (kind < 52) {
      redefineUnit();
    } else if (kind < 66) {
      removeUnit();
    } else if (kind < 74) {
      addPrefix();
    } else if (kind < 80) {
      removePrefix();
    } else if (kind < 87) {
      addQuantity();
    } else if (kind < 92) {
      removeQuantity();
    } else if (kind < 96) {
      addSystem();
    } else {
      removeSystem();
    }
    checkRegistries();
    checkConversions();
    if (touched >= 0) {
      checkPairs(touched);
      checkGuarded(touched);
    }
    checkSystems();
    if (HasFailure()) {
      ADD_FAILURE() << "seed " << GetParam() << ", after step " << steps.size() << ":" << history();
      return;
    }
  }
  for (int q = 0; q < static_cast<int>(model.quantities.size()); ++q) checkPairs(q);
  if (HasFailure()) ADD_FAILURE() << "seed " << GetParam() << ":" << history();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RegistryModel,
                         testing::Range(1, 1 + fromEnvironment("TW_MODEL_SEEDS", 6)));

}  // namespace
}  // namespace TwUnits
