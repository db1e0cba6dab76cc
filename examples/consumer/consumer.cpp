// Uses the installed units library as the toolbox's other libraries do: through the
// registry singleton and the ...Api interfaces. Exits 1 when a result is not the
// expected one.
//
//   $ consumer
//   36 kilometer/hour = 10 meter/second
//   my listener saw furlong
//   furlong/fortnight against meter/second: 0 (same dimensions)
//   refused: Unit:CannotUnregisterBuiltin

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "host/ErrorIdException.hpp"
#include "units/DimensionalAnalysisManagerApi.hpp"
#include "units/UnitConverterApi.hpp"
#include "units/UnitConverterManagerApi.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitRepresentationApi.hpp"

int main() {
  using namespace TwUnits;
  int failures = 0;
  auto expect = [&](bool ok, const char* what) {
    if (!ok) {
      std::printf("FAILED: %s\n", what);
      ++failures;
    }
  };
  UnitManager* units = UnitManager::Instance();

  std::unique_ptr<UnitConverterApi> speed(
      units->getUnitConverterManagerApi()->getQuantityUnitConverterApi("kilometer/hour",
                                                                       "meter/second"));
  double converted = speed->doConversion(36.0);
  std::printf("36 kilometer/hour = %g meter/second\n", converted);
  expect(std::fabs(converted - 10.0) < 1e-12, "conversion");

  std::string seen;
  units->addUnitRegisteredListener([&seen](const UnitRepresentationApi* unit) {
    std::printf("my listener saw %s\n", unit->getName().c_str());
    seen = unit->getName();
  });
  UnitRepresentationApi* furlong = units->createUnitRepresentationApi();
  furlong->setName("furlong");
  furlong->setCompositionString("meter");
  furlong->setMultiplier(201.168);
  units->registerUnit(furlong);  // the registry owns it now
  expect(seen == "furlong", "listener");
  UnitRepresentationApi* fortnight = units->createUnitRepresentationApi();
  fortnight->setName("fortnight");
  fortnight->setCompositionString("day");
  fortnight->setMultiplier(14.0);
  units->registerUnit(fortnight);

  int code = units->getDimensionalAnalysisManagerApi()->checkDimensionsMatch("furlong/fortnight",
                                                                             "meter/second");
  std::printf("furlong/fortnight against meter/second: %d (same dimensions)\n", code);
  expect(code == 0, "dimensions");
  expect(units->getDimensionalAnalysisManagerApi()->checkDimensionsMatch("furlong", "second") == 1,
         "mismatch");

  try {
    units->unregisterUnit("meter");
    expect(false, "removing a built-in unit must fail");
  } catch (ErrorIdException* error) {
    std::printf("refused: %s\n", error->getIdentifier());
    expect(std::string(error->getIdentifier()) == "Unit:CannotUnregisterBuiltin",
           "error identifier");
    delete error;
  }
  return failures == 0 ? 0 : 1;
}
