// The make-up parse (units as written, with net exponents) and the split into numerator
// and denominator. The make-up names each unit once; the split puts the units with
// positive exponents above the line and the others below it.

#include <cstdint>
#include <set>
#include <string>

#include "tests/fuzz/FuzzSupport.hpp"
#include "units/QuantityStringParser.hpp"

using namespace TwUnits;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzzText(data, size);
  const QuantityStringParser* parser = QuantityStringParser::Instance();

  QuantityStringParser::Makeup makeup;
  if (acceptLibraryErrors([&] { makeup = parser->getUnitMakeupAndExponentsFromString(text); }))
    return 0;
  if (makeup.first.size() != makeup.second.size())
    fuzzFault("make-up names and exponents differ in number", text);
  if (std::set<std::string>(makeup.first.begin(), makeup.first.end()).size() != makeup.first.size())
    fuzzFault("the make-up names a unit twice", text);

  std::pair<std::string, std::string> split;
  if (acceptLibraryErrors(
          [&] { split = parser->splitNumeratorAndDenomintorFromUnitComposition(text); }))
    return 0;
  for (std::size_t i = 0; i < makeup.first.size(); ++i) {
    const std::string& side = makeup.second[i] > 0 ? split.first : split.second;
    if (side.find(makeup.first[i]) == std::string::npos)
      fuzzFault("the split lost '" + makeup.first[i] + "'", text);
  }
  return 0;
}
