// Quantity-composition texts ("mass*length/time^2") through the parser. Dimensions that
// parse write themselves as a base-quantity make-up that parses back to the same
// dimensions.

#include <cstdint>
#include <memory>
#include <string>

#include "tests/fuzz/FuzzSupport.hpp"
#include "units/QuantityDimension.hpp"
#include "units/QuantityStringParser.hpp"

using namespace TwUnits;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzzText(data, size);
  const QuantityStringParser* parser = QuantityStringParser::Instance();
  std::unique_ptr<QuantityDimension> dimensions;
  acceptLibraryErrors([&] { dimensions.reset(parser->createQuantityDimensionFromString(text)); });
  if (!dimensions || dimensions->isDimensionless()) return 0;

  const std::string makeup = dimensions->getBaseQuantityMakeup();
  std::unique_ptr<QuantityDimension> again;
  if (acceptLibraryErrors([&] { again.reset(parser->createQuantityDimensionFromString(makeup)); }))
    fuzzFault("the make-up '" + makeup + "' does not parse", text);
  if (*again != *dimensions) fuzzFault("the make-up '" + makeup + "' has other dimensions", text);
  return 0;
}
