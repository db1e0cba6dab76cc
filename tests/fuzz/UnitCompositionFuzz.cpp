// Unit-composition texts through the unit registry (verified and cached, new dimensions
// registered as anonymous quantities) and through the parser alone. A composition that
// verifies belongs to a registered quantity, a fresh parse of the same text has the same
// dimensions as the cached one, and its canonical text parses back to those dimensions
// unless it holds a power beyond the parser's limit.

#include <cstdint>
#include <memory>
#include <string>

#include "tests/fuzz/FuzzSupport.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"

using namespace TwUnits;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzzText(data, size);
  UnitManager* units = UnitManager::Instance();
  const QuantityStringParser* parser = QuantityStringParser::Instance();

  std::unique_ptr<UnitComposition> fresh;
  acceptLibraryErrors([&] { fresh.reset(parser->createUnitCompFromString(text)); });

  const UnitComposition* verified = nullptr;
  acceptLibraryErrors([&] { verified = units->verifyUnitCompositionString(text); });
  if (verified == nullptr) return 0;
  if (verified->getCombinedUnitsQuantityType() == -1)
    fuzzFault("a verified composition has no quantity", text);
  if (fresh && fresh->getDimensions() != verified->getDimensions())
    fuzzFault("the cached composition's dimensions differ from a fresh parse", text);

  // The parser limits a power to 100 units, and a product can hold more ("second^100*
  // second^19" writes itself "second^119"): such a text is known not to parse back.
  const std::string canonical = verified->getCompositionString();
  std::unique_ptr<UnitComposition> reparsed;
  const std::string error =
      libraryErrorOf([&] { reparsed.reset(parser->createUnitCompFromString(canonical)); });
  if (error == "Unit:CompositionLimit") return 0;
  if (!error.empty())
    fuzzFault("the canonical text '" + canonical + "' does not parse: " + error, text);
  if (reparsed->getDimensions() != verified->getDimensions())
    fuzzFault("the canonical text '" + canonical + "' has other dimensions", text);

  // The conversion paths (tables, prefixes, offsets) on a pair of the same dimensions.
  acceptLibraryErrors([&] { units->convert(1.0, text, canonical); });
  return 0;
}
