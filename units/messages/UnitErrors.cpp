#include "units/messages/UnitErrors.hpp"

#include "host/Warning.hpp"
#include "host/ZophError.hpp"

namespace TwUnits {

namespace {

// A deprecated unit warns on every use: the host's context is looked up once.
utWarningContext* const warningContext = utGetWarningContext();

}  // namespace

// Any registry can raise before the unit registry's set-up has registered the
// catalog, so every raise makes sure it is there.

namespace detail {

void raise(UnitError error) {
  registerUnitsMessageCatalog();
  zoph_error(error.identifier, error.message);
}

void raise(UnitError error, const std::string& name) {
  registerUnitsMessageCatalog();
  zoph_error_str(error.identifier, error.message, name);
}

void raise(UnitError error, const std::string& first, const std::string& second) {
  registerUnitsMessageCatalog();
  zoph_error_str(error.identifier, error.message, first, second);
}

void raise(UnitError error, int number) {
  registerUnitsMessageCatalog();
  zoph_error(error.identifier, error.message, number);
}

void warn(UnitError warning) {
  registerUnitsMessageCatalog();
  ut_warning_id(warningContext, warning.identifier, warning.message);
}

void warn(UnitError warning, const std::string& name) {
  registerUnitsMessageCatalog();
  ut_warning_id_str(warningContext, warning.identifier, warning.message, name);
}

}  // namespace detail

void warnOfDeprecatedUnit(const std::string& name) {
  // Only registered units warn, and the registry's set-up registered the catalog.
  ut_warning_id_str(warningContext, errors::Deprecation.identifier, errors::Deprecation.message,
                    name);
}

}  // namespace TwUnits
