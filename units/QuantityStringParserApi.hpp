#pragma once

// File: QuantityStringParserApi.hpp
// The composition parser as other libraries see it: turns composition strings such
// as "kilogram/(meter*second^2)" into compositions over base units, and splits them
// into numerator and denominator texts.
//
// Example:
//   QuantityStringParserApi* parser = UnitManager::Instance()->getQuantityStringParserApi();
//   parser->splitNumeratorAndDenomintorFromUnitComposition("(kilogram*meter^2)/(ampere*second^3)");
//   // ("kilogram*meter^2", "ampere*second^3")

#include <string>
#include <utility>

namespace TwUnits {

class UnitCompositionApi;

class QuantityStringParserApi {
 public:
  // Token kinds of the postfix stream, tested in this order.
  enum TokenKind { MULTIPLY = 0, DIVIDE = 1, PLUS = 2, MINUS = 3, POWER = 4, NUMBER = 5, NAME = 6 };

  virtual int getTokenEnumApi(const std::string& token) const = 0;
  // Whether the composition names the unit (with or without a prefix).
  virtual bool doesStringContainUnitApi(const std::string& composition,
                                        const std::string& unitName) const = 0;
  // Returns a new composition of the string; the caller owns it. Raises the
  // parser's errors ("Unit:NotFound", "Unit:BadUnitCompositionParse", ...).
  virtual UnitCompositionApi* createUnitCompApiFromString(const std::string& composition) const = 0;
  // The units written above and below the line, as two texts, each verified.
  virtual std::pair<std::string, std::string> splitNumeratorAndDenomintorFromUnitComposition(
      const std::string& composition) const = 0;
  virtual ~QuantityStringParserApi() = default;
};

}  // namespace TwUnits
