#include "units/messages/UnitErrors.hpp"

#include "host/Warning.hpp"
#include "host/ZophError.hpp"

namespace TwUnits {

// Any registry can raise before the unit registry's set-up has registered the
// catalog, so every raise makes sure it is there.

void raiseError(UnitError error) {
  registerUnitsMessageCatalog();
  zoph_error(error.identifier, error.message);
}

void raiseError(UnitError error, const std::string& name) {
  registerUnitsMessageCatalog();
  zoph_error_str(error.identifier, error.message, name);
}

void raiseError(UnitError error, const std::string& first, const std::string& second) {
  registerUnitsMessageCatalog();
  zoph_error_str(error.identifier, error.message, first, second);
}

void raiseError(UnitError error, int number) {
  registerUnitsMessageCatalog();
  zoph_error(error.identifier, error.message, number);
}

void issueWarning(UnitError warning) {
  registerUnitsMessageCatalog();
  ut_warning_id(utGetWarningContext(), warning.identifier, warning.message);
}

void issueWarning(UnitError warning, const std::string& name) {
  registerUnitsMessageCatalog();
  ut_warning_id_str(utGetWarningContext(), warning.identifier, warning.message, name);
}

}  // namespace TwUnits
