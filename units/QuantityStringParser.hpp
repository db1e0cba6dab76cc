#pragma once

// File: QuantityStringParser.hpp
// Evaluates the host parser's postfix tokens of a composition string, with stacks of
// its own, into a unit composition (units resolved through the unit registry's
// composition cache, prefixes split off where a whole name is not a unit) or into a
// quantity's dimensions. Numbers may stand only as integer exponents and as the 1
// of a leading 1/. The make-up parse lists the units as written with their net
// exponents, without expanding them.
//
// Example:
//   QuantityStringParser* parser = QuantityStringParser::Instance();
//   std::unique_ptr<UnitComposition> c(parser->createUnitCompFromString("millimole/liter"));
//   parser->getUnitMakeupAndExponentsFromString("meter^2/second");   // ([meter, second], [2, -1])
//   parser->createUnitCompFromString("meter*2");   // raises "Unit:InvalidCompositionMathMult"

#include <boost/container/small_vector.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "units/QuantityStringParserApi.hpp"
#include "units/UnitComposition.hpp"

namespace TwUnits {

class QuantityDimension;

class QuantityStringParser : public QuantityStringParserApi {
 public:
  // The evaluation stacks of a unit composition, by value: a short text's parse makes
  // no heap allocation for its tokens, and every error path frees what they hold. An
  // entry written as an integer literal keeps its value; any other entry has none.
  struct UnitStack {
    boost::container::small_vector<UnitComposition, 6> compositions;
    boost::container::small_vector<std::optional<std::int32_t>, 6> literals;
    // When set, receives each user unit that a name resolves to.
    std::vector<std::string>* namedUserUnits = nullptr;
  };
  using QuantityStack = std::vector<std::unique_ptr<QuantityDimension>>;
  using Makeup = std::pair<std::vector<std::string>, std::vector<int>>;

  // The stateless singleton, created on the first call.
  static QuantityStringParser* Instance();
  static int getTokenEnum(const std::string& token);

  int getTokenEnumApi(const std::string& token) const override { return getTokenEnum(token); }
  bool doesStringContainUnitApi(const std::string& composition,
                                const std::string& unitName) const override {
    return doesStringContainUnit(composition, unitName);
  }
  UnitCompositionApi* createUnitCompApiFromString(const std::string& composition) const override;
  std::pair<std::string, std::string> splitNumeratorAndDenomintorFromUnitComposition(
      const std::string& composition) const override;
  ~QuantityStringParser() override;

  // Returns a new composition of the string in base units; the caller owns it.
  // `namedUserUnits`, when given, receives the user units that the string names, as
  // doesStringContainUnit finds them, in the order it resolves them.
  UnitComposition* createUnitCompFromString(
      const std::string& composition, std::vector<std::string>* namedUserUnits = nullptr) const;
  // The same composition, by value.
  UnitComposition parseUnitComposition(const std::string& composition,
                                       std::vector<std::string>* namedUserUnits = nullptr) const;
  // Returns the new dimensions of a quantity composition ("mass*length/time^2"); the
  // caller owns them.
  QuantityDimension* createQuantityDimensionFromString(const std::string& composition) const;
  bool doesStringContainUnit(const std::string& composition, const std::string& unitName) const;
  // The names the string writes, each with a leading prefix stripped; none when it does
  // not parse.
  std::vector<std::string> getUnitNamesInString(const std::string& composition) const;
  // Whether the prefix registry strips the named prefix from a name of the text.
  bool doesStringContainPrefix(const std::string& composition, const std::string& prefixName) const;
  // Unit names in order of first appearance with their net exponents; names are not
  // expanded or checked (callers verify first). Raises "Units:InternalParseError".
  Makeup getUnitMakeupAndExponentsFromString(const std::string& composition) const;

  // The steps of a unit composition's evaluation.
  void handleMultOnUnitComp(UnitStack& stack) const;
  void handleDivOnUnitComp(UnitStack& stack) const;
  void handlePlusMinusOnUnitComp(UnitStack& stack) const;
  void handlePowOnUnitComp(UnitStack& stack) const;
  void handleNumericOnUnitComp(UnitStack& stack, std::string_view token) const;
  void handleUnitEntryOnUnitComp(UnitStack& stack, std::string_view token) const;
  // The steps of a quantity composition's evaluation.
  void handleMultOnQD(QuantityStack& stack) const;
  void handleDivOnQD(QuantityStack& stack) const;
  void handlePlusMinusOnQD(QuantityStack& stack) const;
  void handlePowOnQD(QuantityStack& stack, const std::string& previousToken) const;
  void handleNumericOnQD(QuantityStack& stack, const std::string& token) const;
  void handleDimensionEntryOnQD(QuantityStack& stack, const std::string& token) const;

 private:
  QuantityStringParser() = default;
};

}  // namespace TwUnits
