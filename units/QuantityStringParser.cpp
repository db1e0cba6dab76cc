#include "units/QuantityStringParser.hpp"

#include <algorithm>
#include <boost/shared_ptr.hpp>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <string_view>
#include <tuple>

#include "host/ArgumentError.hpp"
#include "host/CParseTree.hpp"
#include "host/Exception.hpp"
#include "host/Numeric.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityDimension.hpp"
#include "units/RegistryLock.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

namespace {

// A composition holds a unit as many times as its power says, so "meter^2000000000"
// would exhaust memory: no composition, nor any part of one, holds more units than this.
// It bounds memory and time only; the limit on the names a composition writes is the
// host method's that lists them.
constexpr long long kMaxCompositionUnits = 10000;

double readNumber(const std::string& token) {
  return ut_strtod(utGetFpcContext(), token.c_str(), nullptr, 0);
}

// The value truncated toward zero, when a signed 32-bit integer can hold it.
bool truncatedToInt32(double value, std::int32_t& truncated) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) return false;
  truncated = static_cast<std::int32_t>(value);
  return true;
}

// A value counts as an integer when it equals its truncation within the tolerance.
bool readInteger(const std::string& token, std::int32_t& value) {
  double number = readNumber(token);
  return truncatedToInt32(number, value) && utEqualWithinEps(number, value);
}

// The same for a token of the host parser. An exponent is mostly a few digits, perhaps
// after a minus: those are read in place, any other literal as above.
bool readInteger(std::string_view token, std::int32_t& value) {
  std::size_t first = !token.empty() && token[0] == '-' ? 1 : 0;
  if (token.size() <= first || token.size() - first > 9) {
    return readInteger(std::string(token), value);
  }
  std::int32_t magnitude = 0;
  for (std::size_t i = first; i < token.size(); ++i) {
    if (token[i] < '0' || token[i] > '9') return readInteger(std::string(token), value);
    magnitude = magnitude * 10 + (token[i] - '0');
  }
  value = first == 1 ? -magnitude : magnitude;
  return true;
}

// getTokenEnum for a token of the host parser, which writes a number with a digit, a
// point or a minus first and a name with a letter or an underscore (isstrnumeric reads
// the names "Inf" and "NaN" as numbers too).
int tokenKind(std::string_view token) {
  const char first = token[0];
  const bool nameFirst =
      (first >= 'a' && first <= 'z') || (first >= 'A' && first <= 'Z') || first == '_';
  if (token.size() == 1 || (nameFirst && token.size() == 3)) {
    return QuantityStringParser::getTokenEnum(std::string(token));
  }
  return nameFirst ? QuantityStringParserApi::NAME : QuantityStringParserApi::NUMBER;
}

// Each thread keeps the room of its last list of tokens for the next parse.
std::vector<std::string_view>& keptTokens() {
  thread_local std::vector<std::string_view> tokens;
  return tokens;
}

// The host parser reads a C string: a NUL would end the text early.
void requireNoNul(const std::string& composition, const UnitErrorOf<>& failure) {
  if (composition.find('\0') != std::string::npos) raiseError(failure);
}

// Runs the host parser; its syntax error is freed and reported as `failure`.
std::vector<std::string> postfixTokens(const std::string& composition,
                                       const UnitErrorOf<>& failure) {
  requireNoNul(composition, failure);
  CParseTree tree(composition.c_str());
  try {
    tree.init(false);
  } catch (Exception* raised) {
    adoptError(raised);
    raiseError(failure);
  }
  std::vector<std::string> tokens;
  // Never more tokens than characters; a bound that saves the usual regrowths.
  tokens.reserve(std::min<std::size_t>(composition.size(), 16));
  tree.postFix(tokens);
  return tokens;
}

void requireWithinLimit(long long units) {
  if (units > kMaxCompositionUnits) {
    raiseArgumentError("composition", "must not hold more than " +
                                          std::to_string(kMaxCompositionUnits) + " units");
  }
}

void requirePowerWithinLimit(std::size_t units, std::int32_t exponent) {
  requireWithinLimit(static_cast<long long>(units) * std::llabs(exponent));
}

template <typename Term>
long long unitCount(const Term& term) {
  return static_cast<long long>(term.getNumerator().size()) +
         static_cast<long long>(term.getDenominator().size());
}

template <typename T>
std::unique_ptr<T> popOrFail(std::vector<std::unique_ptr<T>>& stack, const UnitErrorOf<>& failure) {
  if (stack.empty()) raiseError(failure);
  std::unique_ptr<T> top = std::move(stack.back());
  stack.pop_back();
  return top;
}

// The two operands of a binary step are the two top entries, combined in place.
void requireOperands(const QuantityStringParser::UnitStack& stack) {
  if (stack.compositions.size() < 2) raiseError(errors::BadUnitCompositionParse);
}

void popOperand(QuantityStringParser::UnitStack& stack) {
  stack.compositions.pop_back();
  stack.literals.pop_back();
}

// Pushes a composition built from the arguments in its place on the stack.
template <typename... Arguments>
void pushComposition(QuantityStringParser::UnitStack& stack, std::optional<std::int32_t> literal,
                     Arguments&&... arguments) {
  stack.compositions.emplace_back(std::forward<Arguments>(arguments)...);
  stack.literals.push_back(literal);
}

}  // namespace

QuantityStringParser* QuantityStringParser::Instance() {
  static QuantityStringParser* instance = new QuantityStringParser();
  return instance;
}

QuantityStringParser::~QuantityStringParser() = default;

int QuantityStringParser::getTokenEnum(const std::string& token) {
  if (token.size() == 1) {
    switch (token[0]) {
      case '*':
        return MULTIPLY;
      case '/':
        return DIVIDE;
      case '+':
        return PLUS;
      case '-':
        return MINUS;
      case '^':
        return POWER;
      default:
        break;
    }
  }
  if (isstrnumeric(token.c_str())) return NUMBER;
  return NAME;
}

// ---- Unit compositions ----

UnitComposition* QuantityStringParser::createUnitCompFromString(
    const std::string& composition, std::vector<std::string>* namedUserUnits) const {
  return new UnitComposition(parseUnitComposition(composition, namedUserUnits));
}

UnitComposition QuantityStringParser::parseUnitComposition(
    const std::string& composition, std::vector<std::string>* namedUserUnits) const {
  RegistryLock::Hold hold;
  requireNoNul(composition, errors::BadUnitCompositionParse);
  if (isstrnumeric(composition.c_str())) raiseError(errors::UnitCompositionNumeric);
  std::vector<std::string_view> tokens = std::move(keptTokens());
  try {
    CParseTree::parse(composition, tokens);
  } catch (Exception* raised) {
    delete raised;
    raiseError(errors::BadUnitCompositionParse);
  }
  UnitStack stack;
  stack.namedUserUnits = namedUserUnits;
  for (std::string_view token : tokens) {
    switch (tokenKind(token)) {
      case MULTIPLY:
        handleMultOnUnitComp(stack);
        break;
      case DIVIDE:
        handleDivOnUnitComp(stack);
        break;
      case PLUS:
      case MINUS:
        handlePlusMinusOnUnitComp(stack);
        break;
      case POWER:
        handlePowOnUnitComp(stack);
        break;
      case NUMBER:
        handleNumericOnUnitComp(stack, token);
        break;
      default:
        handleUnitEntryOnUnitComp(stack, token);
    }
  }
  keptTokens() = std::move(tokens);
  if (stack.compositions.size() != 1) raiseError(errors::BadUnitCompositionParse);
  if (stack.literals.back()) raiseError(errors::UnitCompositionNumeric);  // such as "2^3"
  return stack.compositions.back();
}

UnitCompositionApi* QuantityStringParser::createUnitCompApiFromString(
    const std::string& composition) const {
  return createUnitCompFromString(composition);
}

void QuantityStringParser::handleNumericOnUnitComp(UnitStack& stack, std::string_view token) const {
  std::int32_t value = 0;
  if (!readInteger(token, value)) raiseError(errors::IntegersOnlyInComposition);
  pushComposition(stack, value);
}

void QuantityStringParser::handleUnitEntryOnUnitComp(UnitStack& stack,
                                                     std::string_view token) const {
  UnitManager* units = UnitManager::Instance();
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  // The registry marks user units' names and the texts that name them.
  if (CompositionCache::Found cached = units->findCached(token); cached.composition != nullptr) {
    if (cached.marked && stack.namedUserUnits != nullptr) {
      std::string name(token);
      stack.namedUserUnits->push_back(
          cached.unit != nullptr ? name : prefixes->stripPrefixFromSingleUnit(name));
    }
    pushComposition(stack, std::nullopt, *cached.composition);
    return;
  }
  // Only a unit takes a prefix. The cache also holds verified texts such as "kilogram";
  // read through them, "kilokilogram" would parse only after "kilogram" had.
  const UnitPrefix* prefix = prefixes->findLeadingPrefix(token);
  std::string_view rest = prefix != nullptr ? token.substr(prefix->getName().size()) : token;
  CompositionCache::Found unit = units->findCached(rest);
  if (prefix == nullptr || unit.unit == nullptr) raiseError(errors::NotFound, std::string(rest));
  if (unit.marked && stack.namedUserUnits != nullptr) stack.namedUserUnits->emplace_back(rest);

  const UnitComposition& found = *unit.composition;
  UnitComposition::UnitSet numerator = found.getNumerator();
  bool prefixAsFactor = numerator.empty();
  if (!numerator.empty()) {
    UnitBase first = *numerator.begin();
    numerator.erase(numerator.begin());
    if (first.getPrefixIdx() == -1) {
      first = UnitBase(first.getPQIdx(), first.getUnitIdx(),
                       prefixes->getPrefixIndex(prefix->getName()));
    } else {
      prefixAsFactor = true;
    }
    numerator.insert(first);
  }
  pushComposition(stack, std::nullopt, numerator, found.getDenominator());
  stack.compositions.back().setMultiplier(prefixAsFactor ? found.getMultiplier() * prefix->getMult()
                                                         : found.getMultiplier());
}

void QuantityStringParser::handleMultOnUnitComp(UnitStack& stack) const {
  requireOperands(stack);
  if (stack.literals.back() || stack.literals.end()[-2])
    raiseError(errors::InvalidCompositionMathMult);
  UnitComposition& left = stack.compositions.end()[-2];
  UnitComposition& right = stack.compositions.back();
  requireWithinLimit(unitCount(left) + unitCount(right));
  // In place: the left operand takes in the right one's units.
  left *= std::move(right);
  popOperand(stack);
}

void QuantityStringParser::handleDivOnUnitComp(UnitStack& stack) const {
  requireOperands(stack);
  const std::optional<std::int32_t> literal = stack.literals.end()[-2];
  if (stack.literals.back() || (literal && *literal != 1))
    raiseError(errors::InvalidCompositionMathDiv);
  UnitComposition& left = stack.compositions.end()[-2];
  UnitComposition& right = stack.compositions.back();
  requireWithinLimit(unitCount(left) + unitCount(right));
  left /= std::move(right);
  stack.literals.end()[-2] = std::nullopt;
  popOperand(stack);
}

void QuantityStringParser::handlePowOnUnitComp(UnitStack& stack) const {
  if (stack.literals.empty()) raiseError(errors::BadUnitCompositionParse);
  if (!stack.literals.back()) raiseError(errors::CompositionExponentMustBeInteger);
  requireOperands(stack);
  const std::int32_t exponent = *stack.literals.back();
  popOperand(stack);
  if (const std::optional<std::int32_t> literal = stack.literals.back()) {
    // A power of a number is a number (1 for a power of 1), which no composition holds.
    if (*literal == 1 || exponent == 0) stack.literals.back() = 1;
    return;
  }
  UnitComposition& base = stack.compositions.back();
  requirePowerWithinLimit(static_cast<std::size_t>(unitCount(base)), exponent);
  base ^= exponent;
}

void QuantityStringParser::handlePlusMinusOnUnitComp(UnitStack&) const {
  raiseError(errors::InvalidMathInUnitComposition);
}

// ---- Quantity compositions ----

QuantityDimension* QuantityStringParser::createQuantityDimensionFromString(
    const std::string& composition) const {
  RegistryLock::Hold hold;
  std::vector<std::string> tokens = postfixTokens(composition, errors::BadQuantityParse);
  QuantityStack stack;
  std::string previous;
  for (const std::string& token : tokens) {
    switch (getTokenEnum(token)) {
      case NAME:
        handleDimensionEntryOnQD(stack, token);
        break;
      case NUMBER:
        handleNumericOnQD(stack, token);
        break;
      case MULTIPLY:
        handleMultOnQD(stack);
        break;
      case DIVIDE:
        handleDivOnQD(stack);
        break;
      case POWER:
        handlePowOnQD(stack, previous);
        break;
      default:
        handlePlusMinusOnQD(stack);
    }
    previous = token;
  }
  if (stack.empty()) raiseError(errors::BadQuantityParse);
  return stack.back().release();  // anything left below the top is discarded
}

void QuantityStringParser::handleDimensionEntryOnQD(QuantityStack& stack,
                                                    const std::string& token) const {
  PhysicalQuantityManager* quantities = PhysicalQuantityManager::Instance();
  int index = quantities->getQuantityIdx(token);
  if (index == -1) raiseError(errors::QuantityNotFound, token);
  stack.push_back(std::make_unique<QuantityDimension>(*quantities->getQuantityDimension(index)));
}

void QuantityStringParser::handleNumericOnQD(QuantityStack& stack, const std::string& token) const {
  std::int32_t value = 0;
  if (!readInteger(token, value)) raiseError(errors::IntegersOnlyInQuantity);
  stack.push_back(std::make_unique<QuantityDimension>());
}

void QuantityStringParser::handleMultOnQD(QuantityStack& stack) const {
  auto right = popOrFail(stack, errors::BadQuantityParse);
  auto left = popOrFail(stack, errors::BadQuantityParse);
  *right *= *left;
  stack.push_back(std::move(right));
}

void QuantityStringParser::handleDivOnQD(QuantityStack& stack) const {
  auto right = popOrFail(stack, errors::BadQuantityParse);
  auto left = popOrFail(stack, errors::BadQuantityParse);
  *left /= *right;
  stack.push_back(std::move(left));
}

void QuantityStringParser::handlePowOnQD(QuantityStack& stack,
                                         const std::string& previousToken) const {
  popOrFail(stack, errors::BadQuantityParse);  // the exponent's placeholder
  auto base = popOrFail(stack, errors::BadQuantityParse);
  if (!isstrnumeric(previousToken.c_str())) raiseError(errors::IntegersOnlyInQuantity);
  double value = readNumber(previousToken);
  double rounded = utRound(value);
  std::int32_t exponent = 0;
  if (!utEqualWithinEps(rounded, value) || !truncatedToInt32(rounded, exponent)) {
    raiseError(errors::IntegersOnlyInQuantity);
  }
  *base ^= exponent;
  stack.push_back(std::move(base));
}

void QuantityStringParser::handlePlusMinusOnQD(QuantityStack&) const {
  raiseError(errors::InvalidMathInQuantity);
}

// ---- Containment ----

namespace {

// The tokens of the text, as views into it; none when it does not parse.
std::vector<std::string_view> tokensOf(const std::string& composition) {
  std::vector<std::string_view> tokens;
  try {
    CParseTree::parse(composition, tokens);
  } catch (Exception* raised) {
    adoptError(raised);  // a text that does not parse names no unit
    tokens.clear();
  }
  return tokens;
}

}  // namespace

bool QuantityStringParser::doesStringContainUnit(const std::string& composition,
                                                 const std::string& unitName) const {
  // Every token is written in the text, and a unit name ends a token: a name that is
  // nowhere in the text needs no parse. Registry scans ask this of every definition.
  if (composition.find(unitName) == std::string::npos) return false;
  RegistryLock::Hold hold;
  std::vector<std::string> names = getUnitNamesInString(composition);
  return std::find(names.begin(), names.end(), unitName) != names.end();
}

std::vector<std::string> QuantityStringParser::getUnitNamesInString(
    const std::string& composition) const {
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  std::vector<std::string> names;
  for (std::string_view token : tokensOf(composition)) {
    if (tokenKind(token) != NAME) continue;
    const UnitPrefix* prefix = prefixes->findLeadingPrefix(token);
    std::string_view unit = prefix != nullptr ? token.substr(prefix->getName().size()) : token;
    if (!unit.empty() && tokenKind(unit) == NAME) names.emplace_back(unit);
  }
  return names;
}

bool QuantityStringParser::doesStringContainPrefix(const std::string& composition,
                                                   const std::string& prefixName) const {
  if (composition.find(prefixName) == std::string::npos) return false;
  RegistryLock::Hold hold;
  UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
  for (std::string_view token : tokensOf(composition)) {
    const UnitPrefix* prefix = prefixes->findLeadingPrefix(token);
    if (prefix != nullptr && prefix->getName() == prefixName && tokenKind(token) == NAME)
      return true;
  }
  return false;
}

// ---- Make-up: the units as written, with net exponents ----

namespace {

// Make-up terms order their units by quantity, unit and prefix, compared signed.
struct SignedUnitOrder {
  bool operator()(const UnitBase& a, const UnitBase& b) const {
    auto key = [](const UnitBase& u) {
      return std::make_tuple(static_cast<std::int32_t>(u.getPQIdx()),
                             static_cast<std::int32_t>(u.getUnitIdx()), u.getPrefixIdx());
    };
    return key(a) < key(b);
  }
};

using TermUnits = std::multiset<UnitBase, SignedUnitOrder>;

struct MakeupTerm {
  TermUnits numerator;
  TermUnits denominator;
};

using TermStack = std::vector<MakeupTerm>;

// The 1 of "1/second": quantity and unit at the largest index a unit can hold, no prefix.
const UnitBase& literalOne() {
  static const UnitBase marker(UnitBase::kIndexLimit - 1, UnitBase::kIndexLimit - 1, -1);
  return marker;
}

struct Cursor {
  const std::vector<std::string>& tokens;
  std::size_t position;
  bool atEnd() const { return position >= tokens.size(); }
};

MakeupTerm popTerm(TermStack& stack) {
  if (stack.empty()) raiseError(errors::InternalParseError);
  MakeupTerm term = std::move(stack.back());
  stack.pop_back();
  return term;
}

long long termSize(const MakeupTerm& term) {
  return static_cast<long long>(term.numerator.size()) +
         static_cast<long long>(term.denominator.size());
}

void multiplyInto(MakeupTerm& result, const MakeupTerm& factor) {
  result.numerator.insert(factor.numerator.begin(), factor.numerator.end());
  result.denominator.insert(factor.denominator.begin(), factor.denominator.end());
}

void divideInto(MakeupTerm& result, const MakeupTerm& divisor) {
  result.numerator.insert(divisor.denominator.begin(), divisor.denominator.end());
  result.denominator.insert(divisor.numerator.begin(), divisor.numerator.end());
}

// One handler per token kind. handleToken answers true when the caller moves on to
// the next token, false when it has moved the cursor itself.
class ExpressionHelperTop {
 public:
  virtual ~ExpressionHelperTop() = default;
  virtual bool handleToken(TermStack&, Cursor&) const { raiseError(errors::InternalParseError); }
};

template <int Kind>
class ExpressionHelper : public ExpressionHelperTop {};

template <>
class ExpressionHelper<QuantityStringParserApi::MULTIPLY> : public ExpressionHelperTop {
 public:
  bool handleToken(TermStack& stack, Cursor&) const override {
    MakeupTerm right = popTerm(stack);
    MakeupTerm left = popTerm(stack);
    requireWithinLimit(termSize(left) + termSize(right));
    multiplyInto(right, left);
    stack.push_back(std::move(right));
    return true;
  }
};

template <>
class ExpressionHelper<QuantityStringParserApi::DIVIDE> : public ExpressionHelperTop {
 public:
  bool handleToken(TermStack& stack, Cursor&) const override {
    MakeupTerm right = popTerm(stack);
    MakeupTerm left = popTerm(stack);
    requireWithinLimit(termSize(left) + termSize(right));
    divideInto(left, right);
    stack.push_back(std::move(left));
    return true;
  }
};

template <>
class ExpressionHelper<QuantityStringParserApi::NUMBER> : public ExpressionHelperTop {
 public:
  bool handleToken(TermStack& stack, Cursor& cursor) const override {
    double value = readNumber(cursor.tokens[cursor.position]);
    std::int32_t n = 0;
    if (!truncatedToInt32(value, n))
      n = std::isnan(value) ? 0 : (value > 0 ? 2147483647 : -2147483647);
    bool moved = false;
    if (n == 1) {
      ++cursor.position;
      moved = true;
      if (cursor.atEnd()) raiseError(errors::InternalParseError);
      if (getTokenKind(cursor) != QuantityStringParserApi::POWER) {
        stack.push_back(MakeupTerm{{literalOne()}, {}});
        return false;
      }
    }
    MakeupTerm base = popTerm(stack);
    requirePowerWithinLimit(base.numerator.size() + base.denominator.size(), n);
    MakeupTerm result;
    bool emptyBase = base.numerator.empty() && base.denominator.empty();
    if (n != 0 && !emptyBase) {
      result = base;
      if (n < 0) std::swap(result.numerator, result.denominator);
      for (std::int32_t i = 1; i < std::abs(n); ++i) {
        if (n > 0) {
          multiplyInto(result, base);
        } else {
          divideInto(result, base);
        }
      }
    }
    stack.push_back(std::move(result));
    if (!moved) {
      ++cursor.position;
      if (cursor.atEnd() || getTokenKind(cursor) != QuantityStringParserApi::POWER) {
        raiseError(errors::InternalParseError);
      }
    }
    return true;
  }

 private:
  static int getTokenKind(const Cursor& cursor) {
    return QuantityStringParser::getTokenEnum(cursor.tokens[cursor.position]);
  }
};

template <>
class ExpressionHelper<QuantityStringParserApi::NAME> : public ExpressionHelperTop {
 public:
  bool handleToken(TermStack& stack, Cursor& cursor) const override {
    UnitManager* units = UnitManager::Instance();
    std::string name = cursor.tokens[cursor.position];
    int prefix = -1;
    if (units->isPrefixStringOnUnit(name)) {
      std::string prefixName;
      UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
      prefixes->stripPrefixAndGetMultiplier(name, prefixName);
      prefix = prefixes->getPrefixIndex(prefixName);
    }
    int quantity = units->getUnitPhysicalQuantityType(name);
    int unit = units->getUnitIndex(quantity, name);
    // Callers verify first; a name that is no unit still gets the registry's error.
    if (unit == -1) raiseError(errors::NotFound, name);
    stack.push_back(MakeupTerm{
        {UnitBase(static_cast<std::uint32_t>(quantity), static_cast<std::uint32_t>(unit), prefix)},
        {}});
    return true;
  }
};

using HandlerTable = std::vector<boost::shared_ptr<ExpressionHelperTop>>;

// Created on first use and kept for the life of the process.
const HandlerTable& handlerTable() {
  static const HandlerTable* table = new HandlerTable{
      boost::shared_ptr<ExpressionHelperTop>(new ExpressionHelper<0>()),
      boost::shared_ptr<ExpressionHelperTop>(new ExpressionHelper<1>()),
      boost::shared_ptr<ExpressionHelperTop>(new ExpressionHelper<2>()),
      boost::shared_ptr<ExpressionHelperTop>(new ExpressionHelper<3>()),
      boost::shared_ptr<ExpressionHelperTop>(new ExpressionHelper<4>()),
      boost::shared_ptr<ExpressionHelperTop>(new ExpressionHelper<5>()),
      boost::shared_ptr<ExpressionHelperTop>(new ExpressionHelper<6>()),
  };
  return *table;
}

std::string nameOf(const UnitBase& unit) {
  std::string name;
  UnitManager::Instance()->createUnitStringFromUnitBase(unit, name);
  return name;
}

// Groups of units equal in all three fields, in the term's order, with their sizes.
std::vector<std::pair<UnitBase, int>> groupsOf(const TermUnits& units) {
  std::vector<std::pair<UnitBase, int>> groups;
  for (const UnitBase& unit : units) {
    if (unit.sameAs(literalOne())) continue;
    if (!groups.empty() && groups.back().first.sameAs(unit)) {
      ++groups.back().second;
    } else {
      groups.emplace_back(unit, 1);
    }
  }
  return groups;
}

}  // namespace

QuantityStringParser::Makeup QuantityStringParser::getUnitMakeupAndExponentsFromString(
    const std::string& composition) const {
  RegistryLock::Hold hold;
  const HandlerTable& handlers = handlerTable();
  requireNoNul(composition, errors::InternalParseError);
  CParseTree tree(composition.c_str());
  tree.init(false);  // the host's syntax error reaches the caller unchanged
  std::vector<std::string> tokens;
  tree.postFix(tokens);

  std::vector<std::string> writtenNames;
  TermStack stack;
  Cursor cursor{tokens, 0};
  while (!cursor.atEnd()) {
    int kind = getTokenEnum(tokens[cursor.position]);
    if (kind == NAME) writtenNames.push_back(tokens[cursor.position]);
    if (handlers[static_cast<std::size_t>(kind)]->handleToken(stack, cursor)) ++cursor.position;
  }
  if (stack.size() != 1) raiseError(errors::InternalParseError);
  const MakeupTerm& term = stack.back();

  std::vector<std::pair<std::string, int>> unitList;
  for (const auto& [unit, count] : groupsOf(term.numerator))
    unitList.emplace_back(nameOf(unit), count);
  for (const auto& [unit, count] : groupsOf(term.denominator)) {
    std::string name = nameOf(unit);
    auto listed = std::find_if(unitList.begin(), unitList.end(),
                               [&](const auto& entry) { return entry.first == name; });
    if (listed != unitList.end()) {
      listed->second -= count;
    } else {
      unitList.emplace_back(name, -count);
    }
  }

  // In the order in which the names are first written.
  Makeup result;
  std::set<std::string> seen;
  for (const std::string& written : writtenNames) {
    if (!seen.insert(written).second) continue;
    for (const auto& [name, exponent] : unitList) {
      if (name != written) continue;
      result.first.push_back(name);
      result.second.push_back(exponent);
    }
  }
  return result;
}

std::pair<std::string, std::string>
QuantityStringParser::splitNumeratorAndDenomintorFromUnitComposition(
    const std::string& composition) const {
  RegistryLock::Hold hold;
  Makeup makeup = getUnitMakeupAndExponentsFromString(composition);
  std::string numerator, denominator;
  for (std::size_t i = 0; i < makeup.first.size(); ++i) {
    int exponent = makeup.second[i];
    if (exponent > 0) {
      numerator += makeup.first[i] + (exponent != 1 ? "^" + std::to_string(exponent) : "") + "*";
    } else {
      denominator +=
          makeup.first[i] + (exponent != -1 ? "^" + std::to_string(-exponent) : "") + "*";
    }
  }
  for (std::string* text : {&numerator, &denominator}) {
    if (!text->empty()) text->erase(text->rfind('*'));
  }
  // An empty side has nothing to verify: "meter" splits into ("meter", "").
  UnitManager* units = UnitManager::Instance();
  if (!numerator.empty()) units->errForInvalidUnitComposition(numerator);
  if (!denominator.empty()) units->errForInvalidUnitComposition(denominator);
  return {numerator, denominator};
}

}  // namespace TwUnits
