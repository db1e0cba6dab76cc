#pragma once

// File: UnitErrors.hpp
// Every error and warning of the units library, as the fixed pair of its identifier
// and its catalog message, and the calls that raise and issue them. Call sites name
// the pair and pass the names that fill the message, never a text of their own; the
// pair's type carries the types of its message's fill-ins, so a call with fill-ins
// missing, extra or of the wrong type does not compile.
//
// Example:
//   raiseError(errors::NotFound, std::string("furlongs"));
//   // ErrorIdException*: "Unit:NotFound", "Referenced unit 'furlongs' does not exist."
//   issueWarning(errors::Deprecation, std::string("celsius"));
//   raiseError(errors::NotFound);   // does not compile: the name is missing

#include <string>

#include "units/messages/UnitsMessageCatalog.hpp"

namespace TwUnits {

struct UnitError {
  const char* identifier;
  MessageId message;
};

// A UnitError whose message is filled with values of these types, in order.
template <typename... FillIns>
struct UnitErrorOf : UnitError {};

namespace detail {

template <MessageId message>
struct MessageFillIns;

#define TW_EXPAND(...) __VA_ARGS__
#define TW_MESSAGE(key, fillIns, text)            \
  template <>                                     \
  struct MessageFillIns<key> {                    \
    using Error = UnitErrorOf<TW_EXPAND fillIns>; \
  };
#include "units/messages/UnitsMessages.def"
#undef TW_EXPAND

// Fill-ins convert to the declared types (a text literal to std::string), but never
// decide them.
template <typename T>
struct Declared {
  using type = T;
};

[[noreturn]] void raise(UnitError error);
[[noreturn]] void raise(UnitError error, const std::string& name);
[[noreturn]] void raise(UnitError error, const std::string& first, const std::string& second);
[[noreturn]] void raise(UnitError error, int number);
void warn(UnitError warning);
void warn(UnitError warning, const std::string& name);

}  // namespace detail

namespace errors {
#define TW_ERROR(name, identifier, key) \
  inline constexpr detail::MessageFillIns<key>::Error name{{identifier, key}};
#define TW_WARNING(name, identifier, key) TW_ERROR(name, identifier, key)
#include "units/messages/UnitsMessages.def"
}  // namespace errors

// Every error the library raises and every warning it issues, for front-ends that give
// each identifier a type of their own (the Python package's exception classes).
inline constexpr UnitError kAllErrors[] = {
#define TW_ERROR(name, identifier, key) errors::name,
#include "units/messages/UnitsMessages.def"
};
inline constexpr UnitError kAllWarnings[] = {
#define TW_WARNING(name, identifier, key) errors::name,
#include "units/messages/UnitsMessages.def"
};

// Raises an ErrorIdException* with the identifier and the catalog text filled with the
// fill-ins. The catalog is registered first if nothing has done so yet.
template <typename... FillIns>
[[noreturn]] void raiseError(const UnitErrorOf<FillIns...>& error,
                             const typename detail::Declared<FillIns>::type&... fillIns) {
  detail::raise(error, fillIns...);
}

// Issues the message through the host's warning channel and returns; the text is
// formatted only when the channel shows it.
template <typename... FillIns>
void issueWarning(const UnitErrorOf<FillIns...>& warning,
                  const typename detail::Declared<FillIns>::type&... fillIns) {
  detail::warn(warning, fillIns...);
}

// issueWarning(errors::Deprecation, name), on the path of every conversion that uses a
// deprecated unit.
void warnOfDeprecatedUnit(const std::string& name);

}  // namespace TwUnits
