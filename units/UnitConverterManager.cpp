#include "units/UnitConverterManager.hpp"

#include <algorithm>
#include <array>
#include <boost/multiprecision/cpp_int.hpp>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>

#include "host/Numeric.hpp"
#include "units/CompositionCache.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityDimension.hpp"
#include "units/RegistryLock.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

namespace {

using boost::multiprecision::cpp_int;
using Fraction = boost::multiprecision::cpp_rational;

void checkUnitIndexes(int unitCount, int fromUnit, int toUnit) {
  if (fromUnit < 0 || toUnit < 0 || fromUnit >= unitCount || toUnit >= unitCount) {
    throw std::out_of_range("unit index outside the conversion table");
  }
}

double prefixMultiplier(const UnitBase& unit) {
  return UnitPrefixManager::Instance()->getPrefixMultiplier(unit.getPrefixIdx());
}

// The exact value of a decimal text such as "6.02214199e+23" or "-273.15".
Fraction exactDecimal(const char* text) {
  const char* c = text;
  bool negative = *c == '-';
  if (*c == '-' || *c == '+') ++c;
  cpp_int digits = 0;
  int exponent = 0;
  bool fraction = false;
  for (; std::isdigit(static_cast<unsigned char>(*c)) || *c == '.'; ++c) {
    if (*c == '.') {
      fraction = true;
      continue;
    }
    digits = digits * 10 + (*c - '0');
    if (fraction) --exponent;
  }
  if (*c == 'e' || *c == 'E') exponent += std::atoi(c + 1);
  cpp_int scale =
      boost::multiprecision::pow(cpp_int(10), static_cast<unsigned>(std::abs(exponent)));
  Fraction value = exponent >= 0 ? Fraction(digits * scale) : Fraction(digits, scale);
  return negative ? Fraction(-value) : value;
}

// The Float nearest to numerator / denominator (positive), ties to even: the one
// rounding of an exact chain.
template <typename Float>
Float nearest(cpp_int numerator, cpp_int denominator) {
  constexpr int kDigits = std::numeric_limits<Float>::digits;
  if (numerator == 0) return 0;
  bool negative = numerator < 0;
  if (negative) numerator = -numerator;
  // Scaled so that the quotient has one or two bits more than Float holds; the
  // remainder says whether anything lies beyond them.
  int shift = kDigits + 1 + static_cast<int>(boost::multiprecision::msb(denominator)) -
              static_cast<int>(boost::multiprecision::msb(numerator));
  if (shift > 0) {
    numerator <<= shift;
  } else {
    denominator <<= -shift;
  }
  cpp_int quotient, remainder;
  boost::multiprecision::divide_qr(numerator, denominator, quotient, remainder);
  int extra = static_cast<int>(boost::multiprecision::msb(quotient)) + 1 - kDigits;
  cpp_int dropped = quotient & ((cpp_int(1) << extra) - 1);
  cpp_int half = cpp_int(1) << (extra - 1);
  quotient >>= extra;
  if (dropped > half || (dropped == half && (remainder != 0 || (quotient & 1) != 0))) ++quotient;
  Float magnitude =
      std::ldexp(static_cast<Float>(quotient.convert_to<unsigned long long>()), extra - shift);
  return negative ? -magnitude : magnitude;
}

template <typename Float>
Float nearest(const Fraction& value) {
  return nearest<Float>(boost::multiprecision::numerator(value),
                        boost::multiprecision::denominator(value));
}

// Appends the new unit's converter into the quantity's first unit, given its converter
// into the reference unit, and returns how many units joined: the quantity's first
// converter introduces both units 0 and 1, either way round.
template <typename T, typename List>
int appendToFirst(List& toFirst, int newUnit, int referenceUnit,
                  const detail::Affine<T>& toReference) {
  int count = static_cast<int>(toFirst.size());
  if (count == 0) {
    bool forward = newUnit == 1 && referenceUnit == 0;
    if (!forward && !(newUnit == 0 && referenceUnit == 1))
      throw std::out_of_range("a quantity's first units are 0 and 1");
    toFirst.push_back({T(1), T(0)});
    toFirst.push_back(forward ? toReference
                              : detail::Affine<T>{T(1) / toReference.multiplier,
                                                  T(-toReference.offset / toReference.multiplier)});
    return 2;
  }
  if (newUnit != count || referenceUnit < 0 || referenceUnit >= count)
    throw std::out_of_range("a new unit's index is the quantity's unit count");
  const detail::Affine<T> reference = toFirst[static_cast<std::size_t>(referenceUnit)];
  toFirst.push_back({reference.multiplier * toReference.multiplier,
                     reference.multiplier * toReference.offset + reference.offset});
  return 1;
}

}  // namespace

struct UnitConverterManager::ExactFactors {
  std::vector<std::vector<Affine<Fraction>>> units;  // per base quantity, by unit index
};

UnitConverterManager* UnitConverterManager::Instance() {
  static UnitConverterManager* instance = new UnitConverterManager();
  return instance;
}

UnitConverterManager::UnitConverterManager()
    : quantities_(PhysicalQuantityManager::kBuiltinQuantityCount),
      exact_(std::make_unique<ExactFactors>()),
      identity_(new UnitConverter(1.0, 0.0)) {
  exact_->units.resize(kLastBaseQuantity + 1);
  identity_->setIdentity(true);
}

UnitConverterManager::~UnitConverterManager() = default;

UnitConverter UnitConverterManager::tableEntry(int quantity, int fromUnit, int toUnit) const {
  const QuantityUnits& units = quantities_.at(static_cast<std::size_t>(quantity));
  checkUnitIndexes(static_cast<int>(units.size()), fromUnit, toUnit);
  if (fromUnit == toUnit) return *identity_;
  UnitConverter entry(1.0, 0.0);
  if (fromUnit < units.builtinCount && toUnit < units.builtinCount) {
    const auto row =
        static_cast<std::size_t>(fromUnit) * static_cast<std::size_t>(units.builtinCount);
    entry = units.builtinPairs[row + static_cast<std::size_t>(toUnit)];
  } else {
    // Into the first unit and out of it again; the offsets cancel exactly for units
    // that share one.
    const Affine<long double>& from = units[static_cast<std::size_t>(fromUnit)];
    const Affine<long double>& to = units[static_cast<std::size_t>(toUnit)];
    entry = UnitConverter(static_cast<double>(from.multiplier / to.multiplier),
                          static_cast<double>((from.offset - to.offset) / to.multiplier));
  }
  entry.setQuantityIdx(quantity);
  entry.setFromUnit(fromUnit);
  entry.setToUnit(toUnit);
  return entry;
}

std::size_t UnitConverterManager::getTableSize(int quantity) const {
  std::size_t units = quantities_.at(static_cast<std::size_t>(quantity)).size();
  return units * units;
}

UnitConverter* UnitConverterManager::getQuantityUnitConverter(int quantity, int fromUnit,
                                                              int toUnit) const {
  RegistryLock::Hold hold;
  if (quantity > kLastBaseQuantity) return nullptr;
  return new UnitConverter(tableEntry(quantity, fromUnit, toUnit));
}

UnitConverter* UnitConverterManager::getReverseUnitConverter(
    const UnitConverterApi* converter) const {
  double multiplier = 1.0 / converter->getMultiplier();
  double offset =
      utEqualWithinEps(converter->getOffset(), 0.0) ? 0.0 : -converter->getOffset() * multiplier;
  auto* reverse = new UnitConverter(multiplier, offset);
  if (auto* tableConverter = dynamic_cast<const UnitConverter*>(converter)) {
    reverse->setQuantityIdx(tableConverter->getQuantityIdx());
    reverse->setFromUnit(tableConverter->getToUnit());
    reverse->setToUnit(tableConverter->getFromUnit());
  }
  return reverse;
}

void UnitConverterManager::raiseUnitCount(int quantity, int joined) const {
  for (int i = 0; i < joined; ++i) UnitManager::Instance()->incrementNumUnits(quantity);
}

UnitConverterManager::QuantityUnits& UnitConverterManager::baseQuantity(int quantity) {
  if (quantity < 0 || quantity > kLastBaseQuantity)
    throw std::out_of_range("no conversion table for the quantity");
  return quantities_[static_cast<std::size_t>(quantity)];
}

void UnitConverterManager::addBaseUnitConverter(int quantity, int newUnit, int referenceUnit,
                                                UnitConverter* converter) {
  std::unique_ptr<UnitConverter> owned(converter);
  raiseUnitCount(quantity,
                 appendToFirst<long double>(baseQuantity(quantity), newUnit, referenceUnit,
                                            {owned->getMultiplier(), owned->getOffset()}));
}

void UnitConverterManager::addBuiltinBaseUnitConverter(int quantity, int newUnit, int referenceUnit,
                                                       const char* multiplier, const char* offset) {
  QuantityUnits& units = baseQuantity(quantity);
  if (static_cast<int>(units.size()) != units.builtinCount)
    throw std::logic_error("built-in units come before user units");
  std::vector<Affine<Fraction>>& exact = exact_->units[static_cast<std::size_t>(quantity)];
  int joined = appendToFirst<Fraction>(exact, newUnit, referenceUnit,
                                       {exactDecimal(multiplier), exactDecimal(offset)});
  for (std::size_t unit = units.size(); unit < exact.size(); ++unit) {
    units.push_back(
        {nearest<long double>(exact[unit].multiplier), nearest<long double>(exact[unit].offset)});
  }

  // Every pair of built-in units, each entry rounded once from its exact value; the
  // pairs of the units before are kept.
  const std::size_t before = static_cast<std::size_t>(units.builtinCount), count = exact.size();
  std::vector<UnitConverter> pairs;
  pairs.reserve(count * count);
  for (std::size_t from = 0; from < count; ++from) {
    for (std::size_t to = 0; to < count; ++to) {
      if (from < before && to < before) {
        pairs.push_back(units.builtinPairs[from * before + to]);
        continue;
      }
      const Affine<Fraction>& a = exact[from];
      const Affine<Fraction>& b = exact[to];
      using boost::multiprecision::denominator;
      using boost::multiprecision::numerator;
      pairs.emplace_back(nearest<double>(numerator(a.multiplier) * denominator(b.multiplier),
                                         denominator(a.multiplier) * numerator(b.multiplier)),
                         a.offset == b.offset
                             ? 0.0
                             : nearest<double>(Fraction((a.offset - b.offset) / b.multiplier)));
    }
  }
  units.builtinPairs = std::move(pairs);
  units.builtinCount = static_cast<int>(count);
  raiseUnitCount(quantity, joined);
}

void UnitConverterManager::removeConversionFunctionsForUnit(int quantity, int unit) {
  QuantityUnits& units = quantities_.at(static_cast<std::size_t>(quantity));
  checkUnitIndexes(static_cast<int>(units.size()), unit, unit);
  if (unit < units.builtinCount)
    throw std::invalid_argument("a built-in unit's converters stay in the table");
  units.erase(static_cast<std::size_t>(unit));
}

void UnitConverterManager::QuantityUnits::push_back(const Affine<long double>& converter) {
  if (freePlaces.empty()) {
    toFirst.push_back(converter);
    places.push_back(static_cast<std::uint32_t>(toFirst.size() - 1));
  } else {
    toFirst[freePlaces.back()] = converter;
    places.push_back(freePlaces.back());
    freePlaces.pop_back();
  }
}

void UnitConverterManager::QuantityUnits::erase(std::size_t unit) {
  freePlaces.push_back(places[unit]);
  places.erase(places.begin() + static_cast<std::ptrdiff_t>(unit));
}

bool UnitConverterManager::checkForConnectivity(const ConverterList* list, int unit) const {
  for (const auto& converter : *list) {
    if (converter && !converter->isIdentity() && converter->getToUnit() == unit) return true;
  }
  return false;
}

namespace {

// The converter between two compositions of the same dimensions whose repeats are
// cancelled; `offsets` tells whether their temperatures stood alone as written.
UnitConverter betweenCancelled(const UnitComposition& from, const UnitComposition& to,
                               bool offsets) {
  double multiplier = from.getMultiplier() / to.getMultiplier();
  double offset = 0.0;
  // Without offsets, no pair needs to know how many units surround it.
  int count = offsets ? static_cast<int>(from.getNumerator().size() + from.getDenominator().size())
                      : UCMNamespace::kOffsetsDoNotApply;
  UCMNamespace::iterateBaseForMultOffset(from.getNumerator(), to.getNumerator(), multiplier, offset,
                                         count, true);
  UCMNamespace::iterateBaseForMultOffset(from.getDenominator(), to.getDenominator(), multiplier,
                                         offset, count, false);
  return UnitConverter(multiplier, offset);
}

}  // namespace

// The converter between two texts as this thread last resolved it, good while the
// registries' generation is the one it was resolved at.
struct detail::RememberedPair {
  std::uint64_t generation = 0;  // 0: empty
  std::uint64_t hash = 0;
  std::string from, to;  // keep their capacity when the entry is reused
  double multiplier = 1.0, offset = 0.0;
  bool fromWarns = false, toWarns = false;
};

namespace {

constexpr std::size_t kRememberedPairs = 64;  // a power of two
using detail::RememberedPair;
using RememberedPairs = std::array<RememberedPair, kRememberedPairs>;

// This thread's pairs, made on its first conversion and freed when it ends. The plain
// pointer is read without the guard that a thread_local object with a constructor needs,
// and, eight bytes in the initial thread-local block, without a call to find it.
RememberedPairs& rememberedPairs() {
  [[gnu::tls_model("initial-exec")]] thread_local RememberedPairs* pairs = nullptr;
  if (pairs == nullptr) {
    thread_local std::unique_ptr<RememberedPairs> owner = std::make_unique<RememberedPairs>();
    pairs = owner.get();
  }
  return *pairs;
}

}  // namespace

UnitConverter* UnitConverterManager::getQuantityUnitConverter(int, UnitComposition* from,
                                                              UnitComposition* to) const {
  RegistryLock::Hold hold;
  // Decided as written, before anything cancels.
  const bool offsets =
      UCMNamespace::isLoneTemperature(*from) && UCMNamespace::isLoneTemperature(*to);
  from->cancelRepeats();
  to->cancelRepeats();
  return new UnitConverter(betweenCancelled(*from, *to, offsets));
}

UnitConverter UnitConverterManager::getConverter(const UnitComposition& from,
                                                 const UnitComposition& to) const {
  RegistryLock::Hold hold;
  from.requireCurrentPrefixes();
  to.requireCurrentPrefixes();
  const bool offsets = UCMNamespace::isLoneTemperature(from) && UCMNamespace::isLoneTemperature(to);
  if (!from.hasRepeats() && !to.hasRepeats()) return betweenCancelled(from, to, offsets);
  UnitComposition fromCancelled(from), toCancelled(to);
  fromCancelled.cancelRepeats();
  toCancelled.cancelRepeats();
  return betweenCancelled(fromCancelled, toCancelled, offsets);
}

namespace UCMNamespace {

void iterateBaseForMultOffset(const UnitMultiset& from, const UnitMultiset& to, double& multiplier,
                              double& offset, int count, bool numerator) {
  UnitConverterManager* converters = UnitConverterManager::Instance();
  auto a = from.begin();
  for (auto b = to.begin(); b != to.end() && a != from.end(); ++a, ++b) {
    const UnitConverter pair =
        converters->tableEntry(static_cast<int>(b->getPQIdx()), static_cast<int>(a->getUnitIdx()),
                               static_cast<int>(b->getUnitIdx()));
    bool hasOffset = count != kOffsetsDoNotApply && !utEqualWithinEps(pair.getOffset(), 0.0);
    if (hasOffset) {
      if (count > 1) raiseError(errors::ConversionMixedOffset);
      if (a->getPrefixIdx() != -1 || b->getPrefixIdx() != -1) {
        raiseError(errors::OffsetConversionWithPrefixNotAllowed);
      }
    } else if (numerator) {
      if (a->getPrefixIdx() != -1) mult(multiplier, prefixMultiplier(*a));
      if (b->getPrefixIdx() != -1) div(multiplier, prefixMultiplier(*b));
    } else {
      if (a->getPrefixIdx() != -1) div(multiplier, prefixMultiplier(*a));
      if (b->getPrefixIdx() != -1) mult(multiplier, prefixMultiplier(*b));
    }
    if (numerator) {
      mult(multiplier, pair.getMultiplier());
    } else {
      div(multiplier, pair.getMultiplier());
    }
    if (hasOffset) offset += pair.getOffset();
  }
}

bool isLoneTemperature(const UnitComposition& composition) {
  auto temperatures = [](const UnitMultiset& units) {
    return std::count_if(units.begin(), units.end(), [](const UnitBase& unit) {
      return static_cast<int>(unit.getPQIdx()) == UnitConverterManager::kTemperatureIndex;
    });
  };
  return temperatures(composition.getNumerator()) == 1 &&
         temperatures(composition.getDenominator()) == 0;
}

}  // namespace UCMNamespace

UnitConverter UnitConverterManager::temperatureConverter(
    const std::string& from, const std::string& to, const UnitComposition& fromComposition,
    const UnitComposition& toComposition) const {
  UnitManager* units = UnitManager::Instance();
  int fromUnit = units->getUnitIndex(kTemperatureIndex, from);
  int toUnit = units->getUnitIndex(kTemperatureIndex, to);
  for (const UnitComposition* composition : {&fromComposition, &toComposition}) {
    const auto& numerator = composition->getNumerator();
    if (!numerator.empty() && numerator.begin()->getPrefixIdx() != -1) {
      raiseError(errors::OffsetConversionWithPrefixNotAllowed);
    }
  }
  // A temperature written as a composition (kelvin*meter/meter) has no table entry of
  // its own; the composition converter applies the same offset and prefix rules.
  if (fromUnit == -1 || toUnit == -1) return getConverter(fromComposition, toComposition);
  UnitConverter entry = tableEntry(kTemperatureIndex, fromUnit, toUnit);
  return UnitConverter(entry.getMultiplier(), entry.getOffset());
}

UnitConverter UnitConverterManager::resolve(const std::string& from, const std::string& to) const {
  UnitManager* units = UnitManager::Instance();
  UnitComposition* fromComposition = units->verifyUnitCompositionString(from);
  UnitComposition* toComposition = units->verifyUnitCompositionString(to);
  int fromQuantity = fromComposition->getCombinedUnitsQuantityType();
  int toQuantity = toComposition->getCombinedUnitsQuantityType();
  if (fromQuantity == -1 || toQuantity == -1) {
    if (fromComposition->getDimensions() != toComposition->getDimensions()) {
      raiseError(errors::ConversionDifferentQuants);
    }
    fromComposition->markQuantityStale();
    toComposition->markQuantityStale();
    fromQuantity = fromComposition->getCombinedUnitsQuantityType();
  } else if (fromQuantity != toQuantity) {
    raiseError(errors::ConversionDifferentQuants);
  }
  if (fromQuantity == kTemperatureIndex && UCMNamespace::isLoneTemperature(*fromComposition) &&
      UCMNamespace::isLoneTemperature(*toComposition)) {
    return temperatureConverter(from, to, *fromComposition, *toComposition);
  }
  return getConverter(*fromComposition, *toComposition);
}

UnitConverter UnitConverterManager::getConverter(const std::string& from,
                                                 const std::string& to) const {
  const std::uint64_t hash =
      CompositionCache::hashOf(from) ^ (CompositionCache::hashOf(to) * 0x9e3779b97f4a7c15ULL);
  RememberedPair& pair = rememberedPairs()[hash & (kRememberedPairs - 1)];
  if (pair.generation == RegistryLock::generation() && pair.hash == hash && pair.from == from &&
      pair.to == to) {
    // A deprecated unit's name warns on every use, as its verification does.
    if (pair.fromWarns) warnOfDeprecatedUnit(from);
    if (pair.toWarns) warnOfDeprecatedUnit(to);
    return UnitConverter(pair.multiplier, pair.offset);
  }
  return resolveAndRemember(pair, hash, from, to);
}

UnitConverter UnitConverterManager::resolveAndRemember(RememberedPair& pair, std::uint64_t hash,
                                                       const std::string& from,
                                                       const std::string& to) const {
  RegistryLock::Hold hold;
  // Read first: a change made while the pair is resolved (by a listener of a warning,
  // say) leaves it stale.
  const std::uint64_t generation = RegistryLock::generation();
  UnitConverter converter = resolve(from, to);
  UnitManager* units = UnitManager::Instance();
  pair.generation = generation;
  pair.hash = hash;
  pair.from = from;
  pair.to = to;
  pair.multiplier = converter.getMultiplier();
  pair.offset = converter.getOffset();
  pair.fromWarns = units->warnsOnUse(from);
  pair.toWarns = units->warnsOnUse(to);
  return converter;
}

UnitConverter* UnitConverterManager::getQuantityUnitConverter(const std::string& from,
                                                              const std::string& to) const {
  return new UnitConverter(getConverter(from, to));
}

UnitConverter* UnitConverterManager::getQuantityUnitConverter(const std::string& composition,
                                                              const UnitSystemApi* system) const {
  RegistryLock::Hold hold;
  UnitComposition* source = UnitManager::Instance()->verifyUnitCompositionString(composition);
  UnitComposition inSystem(source->getCombinedUnitsQuantityType(), system);
  return new UnitConverter(getConverter(*source, inSystem));
}

UnitConverterApi* UnitConverterManager::getQuantityUnitConverterApi(int quantity, int fromUnit,
                                                                    int toUnit) const {
  return getQuantityUnitConverter(quantity, fromUnit, toUnit);
}

UnitConverterApi* UnitConverterManager::getQuantityUnitConverterApi(const std::string& from,
                                                                    const std::string& to) const {
  return getQuantityUnitConverter(from, to);
}

UnitConverterApi* UnitConverterManager::getQuantityUnitConverterApi(
    const std::string& composition, const UnitSystemApi* system) const {
  return getQuantityUnitConverter(composition, system);
}

UnitConverterApi* UnitConverterManager::createUnitConverterApi(double multiplier,
                                                               double offset) const {
  return new UnitConverter(multiplier, offset);
}

UnitConverterApi* UnitConverterManager::getReverseUnitConverterApi(
    UnitConverterApi* converter) const {
  return getReverseUnitConverter(converter);
}

}  // namespace TwUnits
