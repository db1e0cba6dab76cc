#include "units/messages/UnitsMessageCatalog.hpp"

#include <cstdint>

namespace TwUnits {

namespace {
// Row n of each array is message id 0x470000 + n; the order is the catalog's.
constexpr std::uint32_t kIds[kUnitsMessageCount] = {
    0x470001,  // UNIT_EMPTY_TIME_UNITS
    0x470002,  // UNIT_INVALID_TIME_UNITS
    0x470003,  // UNIT_MALLOC_ERROR
    0x470004,  // UNIT_REDEFINING2
    0x470005,  // UNIT_PARSE_COMPOSITION_LIMIT
    0x470006,  // UNIT_COMPOSITION_LIMIT
    0x470007,  // UNIT_DUPLICATE_NAME
    0x470008,  // UNIT_DIMENSIONS_DONT_MATCH
    0x470009,  // UNIT_NOT_FOUND
    0x47000A,  // UNIT_CANNOT_UNREGISTER_BUILTIN
    0x47000B,  // UNIT_BAD_UNIT_COMPOSITION_PARSE
    0x47000C,  // UNIT_INVALID_COMPOSITION_MATH_MULT
    0x47000D,  // UNIT_INVALID_COMPOSITION_MATH_DIV
    0x47000E,  // UNIT_COMPOSITION_EXPONENT_MUST_BE_INTEGER
    0x47000F,  // UNIT_INTEGERS_ONLY_IN_COMPOSITION
    0x470010,  // UNIT_INVALID_MATH_IN_UNIT_COMPOSITION
    0x470011,  // UNIT_SELF_REFERENCE_IN_COMPOSITION
    0x470012,  // UNIT_UNSET_NAME
    0x470013,  // UNIT_NAME_INVALID
    0x470014,  // UNIT_NAME_CLASHES_WITH_PREFIX
    0x470015,  // UNIT_NAME_CLASHES_WITH_PREFIX2
    0x470016,  // UNIT_OFFSET_UNITS_TEMPERATURE_ONLY
    0x470017,  // UNIT_BEING_USED
    0x470018,  // UNIT_REGISTERED_CANNOT_CHANGE
    0x470019,  // UNIT_COMPOSITION_NUMERIC
    0x47001A,  // QUANTITY_FRACTIONAL_EXPONENTS_FIXED2
    0x47001B,  // UNIT_QUANTITY_DUPLICATE_NAME
    0x47001C,  // UNIT_QUANTITY_DUPLICATE_DIMENSIONS
    0x47001D,  // UNIT_BAD_QUANT_ARGS
    0x47001E,  // UNIT_QUANTITY_NOT_FOUND
    0x47001F,  // UNIT_CANNOT_UNREGISTER_BUILTIN_QUANTITY
    0x470020,  // UNIT_CANNOT_ADD_SUBTRACT_DIFFERENT_QUANTITIES
    0x470021,  // UNIT_INVALID_MATH_IN_QUANTITY
    0x470022,  // UNIT_BAD_QUANTITY_PARSE
    0x470023,  // UNIT_INTEGERS_ONLY_IN_QUANTITY
    0x470024,  // UNIT_QUANTITY_NAME_INVALID
    0x470025,  // UNIT_CONVERSION_FUNCTION_ZERO
    0x470026,  // UNIT_CONVERSION_DIFFERENT_QUANTS
    0x470027,  // UNIT_UNSUPPORTED_CONVERSION_2
    0x470028,  // UNIT_CONVERSION_MIXED_OFFSET
    0x470029,  // UNIT_OFFSET_CONVERSION_WITH_PREFIX_NOT_ALLOWED
    0x47002A,  // UNIT_CONVERSION_DIVIDE_BY_ZERO
    0x47002B,  // UNIT_PREFIX_NOT_FOUND
    0x47002C,  // UNIT_PREFIX_CANNOT_UNREGISTER_BUILTIN
    0x47002D,  // UNIT_PREFIX_REGISTERED_CANNOT_CHANGE
    0x47002E,  // UNIT_PREFIX_UNSET_NAME
    0x47002F,  // UNIT_PREFIX_NAME_INVALID
    0x470030,  // UNIT_PREFIX_DUPLICATE_NAME
    0x470031,  // UNIT_PREFIX_UNIT_NAME_COLLISION
    0x470032,  // UNIT_PREFIX_MUST_BE_MULT_TEN
    0x470033,  // UNIT_PREFIX_ZERO_MULT_NOT_ALLOWED
    0x470034,  // UNIT_PREFIX_EXPONENT_TOO_LARGE
    0x470035,  // UNIT_PREFIX_EXPONENT_TOO_SMALL
    0x470036,  // UNIT_PREFIX_BEING_USED
    0x470037,  // UNIT_SYSTEM_NOT_FOUND
    0x470038,  // UNIT_SYSTEM_NAME_INVALID
    0x470039,  // UNIT_SYSTEM_DUPLICATE_NAME
    0x47003A,  // UNIT_SYSTEM_NOT_REGISTERED
    0x47003B,  // UNIT_SYSTEM_MASS_TYPE_NOT_SET
    0x47003C,  // UNIT_SYSTEM_AMOUNT_TYPE_NOT_SET
    0x47003D,  // UNIT_SYSTEM_LENGTH_TYPE_NOT_SET
    0x47003E,  // UNIT_SYSTEM_TIME_TYPE_NOT_SET
    0x47003F,  // UNIT_SYSTEM_TEMPERATURE_TYPE_NOT_SET
    0x470040,  // UNIT_SYSTEM_CURRENT_TYPE_NOT_SET
    0x470041,  // UNIT_SYSTEM_LUMINOUS_INTENSITY_TYPE_NOT_SET
    0x470042,  // UNIT_DEPRECATION
};

constexpr const char* kKeys[kUnitsMessageCount] = {
    "UNIT_EMPTY_TIME_UNITS",
    "UNIT_INVALID_TIME_UNITS",
    "UNIT_MALLOC_ERROR",
    "UNIT_REDEFINING2",
    "UNIT_PARSE_COMPOSITION_LIMIT",
    "UNIT_COMPOSITION_LIMIT",
    "UNIT_DUPLICATE_NAME",
    "UNIT_DIMENSIONS_DONT_MATCH",
    "UNIT_NOT_FOUND",
    "UNIT_CANNOT_UNREGISTER_BUILTIN",
    "UNIT_BAD_UNIT_COMPOSITION_PARSE",
    "UNIT_INVALID_COMPOSITION_MATH_MULT",
    "UNIT_INVALID_COMPOSITION_MATH_DIV",
    "UNIT_COMPOSITION_EXPONENT_MUST_BE_INTEGER",
    "UNIT_INTEGERS_ONLY_IN_COMPOSITION",
    "UNIT_INVALID_MATH_IN_UNIT_COMPOSITION",
    "UNIT_SELF_REFERENCE_IN_COMPOSITION",
    "UNIT_UNSET_NAME",
    "UNIT_NAME_INVALID",
    "UNIT_NAME_CLASHES_WITH_PREFIX",
    "UNIT_NAME_CLASHES_WITH_PREFIX2",
    "UNIT_OFFSET_UNITS_TEMPERATURE_ONLY",
    "UNIT_BEING_USED",
    "UNIT_REGISTERED_CANNOT_CHANGE",
    "UNIT_COMPOSITION_NUMERIC",
    "QUANTITY_FRACTIONAL_EXPONENTS_FIXED2",
    "UNIT_QUANTITY_DUPLICATE_NAME",
    "UNIT_QUANTITY_DUPLICATE_DIMENSIONS",
    "UNIT_BAD_QUANT_ARGS",
    "UNIT_QUANTITY_NOT_FOUND",
    "UNIT_CANNOT_UNREGISTER_BUILTIN_QUANTITY",
    "UNIT_CANNOT_ADD_SUBTRACT_DIFFERENT_QUANTITIES",
    "UNIT_INVALID_MATH_IN_QUANTITY",
    "UNIT_BAD_QUANTITY_PARSE",
    "UNIT_INTEGERS_ONLY_IN_QUANTITY",
    "UNIT_QUANTITY_NAME_INVALID",
    "UNIT_CONVERSION_FUNCTION_ZERO",
    "UNIT_CONVERSION_DIFFERENT_QUANTS",
    "UNIT_UNSUPPORTED_CONVERSION_2",
    "UNIT_CONVERSION_MIXED_OFFSET",
    "UNIT_OFFSET_CONVERSION_WITH_PREFIX_NOT_ALLOWED",
    "UNIT_CONVERSION_DIVIDE_BY_ZERO",
    "UNIT_PREFIX_NOT_FOUND",
    "UNIT_PREFIX_CANNOT_UNREGISTER_BUILTIN",
    "UNIT_PREFIX_REGISTERED_CANNOT_CHANGE",
    "UNIT_PREFIX_UNSET_NAME",
    "UNIT_PREFIX_NAME_INVALID",
    "UNIT_PREFIX_DUPLICATE_NAME",
    "UNIT_PREFIX_UNIT_NAME_COLLISION",
    "UNIT_PREFIX_MUST_BE_MULT_TEN",
    "UNIT_PREFIX_ZERO_MULT_NOT_ALLOWED",
    "UNIT_PREFIX_EXPONENT_TOO_LARGE",
    "UNIT_PREFIX_EXPONENT_TOO_SMALL",
    "UNIT_PREFIX_BEING_USED",
    "UNIT_SYSTEM_NOT_FOUND",
    "UNIT_SYSTEM_NAME_INVALID",
    "UNIT_SYSTEM_DUPLICATE_NAME",
    "UNIT_SYSTEM_NOT_REGISTERED",
    "UNIT_SYSTEM_MASS_TYPE_NOT_SET",
    "UNIT_SYSTEM_AMOUNT_TYPE_NOT_SET",
    "UNIT_SYSTEM_LENGTH_TYPE_NOT_SET",
    "UNIT_SYSTEM_TIME_TYPE_NOT_SET",
    "UNIT_SYSTEM_TEMPERATURE_TYPE_NOT_SET",
    "UNIT_SYSTEM_CURRENT_TYPE_NOT_SET",
    "UNIT_SYSTEM_LUMINOUS_INTENSITY_TYPE_NOT_SET",
    "UNIT_DEPRECATION",
};

// clang-format off
constexpr const char* kTexts[kUnitsMessageCount] = {
    "The empty string is not a valid time unit.",
    "'%s' is not a valid time unit.",
    "Memory allocation error.",
    "Warning: A unit with the name '%s' already exists.\n It will be re-registered with the new definition.",
    "When parsing a composition, 100 units is the current limit.",
    "Compositions are limited to 100 parts.",
    "Unable to register user-defined unit '%s' because a unit with that name already exists. Use ZOPHREMOVEFROMLIBRARY to remove the unit.",
    "Unable to register user-defined unit '%s' because its physical quantity and its numerator/denominator compositions do not match.\n Actual: %s\n Expected: %s",
    "Referenced unit '%s' does not exist.",
    "A built-in unit cannot be redefined or unregistered.",
    "An error occurred parsing the unit composition.",
    "Unit compositions cannot contain numeric multiplication.",
    "Unit compositions cannot contain numeric division.",
    "A unit exponent must be an integer value.",
    "A unit exponent must be an integer value.",
    "Invalid operator in unit composition. Valid operators are '*', '/' and '^'.",
    "Unable to register unit. A unit's composition cannot reference itself.",
    "Invalid unit name. Type 'help zophunit' for valid names.",
    "Invalid unit name. Type 'help zophunit' for valid names.",
    "Unable to register unit '%s'. The name of the unit begins with the same name as a registered prefix '%s'.",
    "Unable to register unit '%s'. Registering this unit would cause a redefinition of the reserved prefix '%s'.",
    "Only temperature units can have an offset.",
    "Cannot unregister unit because it is being used by unit '%s'.",
    "A registered unit cannot have its name, composition, multiplier or offset changed.",
    "A unit composition cannot be a numeric value. A valid composition can be any existing unit or any combination of existing units and prefixes. For example, mole, micromole, mole/second^2.",
    "Fractional exponents on physical quantities are not supported. Value will be fixed.",
    "Unable to register physical quantity '%s' because a physical quantity with that name already exists.",
    "Unable to register physical quantity '%s' because physical quantity '%s' has matching dimensions.",
    "The composition used to register a physical quantity must be a vector of size 1x7.",
    "Referenced physical quantity '%s' does not exist.",
    "Removal of built-in physical quantities is not allowed.",
    "Adding or subtracting quantities that are not equal is not allowed.",
    "Invalid operator found in unit composition. Valid operators in a physical quantity include '*', '/' and '^'.",
    "An error occurred parsing the physical quantities composition.",
    "Non-Integer powers are not currently supported for physical quantity compositions.",
    "Error registering physical quantity. See help for valid names.",
    "The multiplier for a unit cannot be zero.",
    "Unable to convert between units. Units are not of the same physical quantity.",
    "Unable to convert between units. Units of the same quantity type cannot cancel out unless they are the exact same unit type.",
    "Unable to convert between units. Units with more than one physical quantity where one of the physical quantities has an offset cannot be converted.",
    "Unable to convert between units. A unit with a prefix and an offset cannot be converted.",
    "A divide by zero occurred.",
    "Referenced prefix '%s' does not exist.",
    "Redefining or removing built-in prefixes is not allowed.",
    "A registered prefix cannot have its name or exponent changed.",
    "Unable to register user prefix because its name is not set.",
    "Invalid unit prefix name. Type 'help zophunitprefix' for valid names.",
    "Unable to register prefix '%s' because a prefix with that name already exists.",
    "Unable to register prefix '%s' because the registered unit '%s' begins with the same name.",
    "A prefix exponent must be an integer.",
    "A prefix exponent cannot be 0.",
    "Exponent too large for unit prefix. The maximum allowable exponent on this platform is %d.",
    "Exponent too small for unit prefix. The minimum allowable exponent on this platform is %d.",
    "Cannot unregister unit prefix because it is being used in the definition of unit '%s'.",
    "UnitSystem '%s' does not exist. Type 'showunitsystems' to see available list.",
    "Error registering unit system. See help for valid names.",
    "Unable to register UnitSystem '%s' because it already exists. Try removing the other instance with 'unregisterunitsystem' first or renaming this instance.",
    "Cannot unregister UnitSystem because it is not registered.",
    "The mass in the UnitSystem must be set before registering the UnitSystem.",
    "The amount in this UnitSystem must be set before registering the UnitSystem.",
    "The length in this UnitSystem must be set before registering the UnitSystem.",
    "The time in this UnitSystem must be set before registering the UnitSystem.",
    "The temperature in this UnitSystem must be set before registering the UnitSystem.",
    "The \"current\" in this UnitSystem must be set before registering the UnitSystem.",
    "The \"luminous intensity\" in this UnitSystem must be set before registering the UnitSystem.",
    "The temperature unit '%s' has been removed. Use kelvin instead.",
};
// clang-format on

const ut_message_table kCatalog = {
    kUnitsMessageCount, kUnitsFacility, kIds, kKeys, kTexts, "", {nullptr, nullptr, nullptr}};

bool catalogRegistered = false;

}  // namespace

const ut_message_table& unitsMessageCatalog() { return kCatalog; }

void registerUnitsMessageCatalog() {
  if (catalogRegistered) return;
  ut_mem_add_primary_message_table(utGetMemoryContext(), &kCatalog);
  catalogRegistered = true;
}

bool isUnitsMessageCatalogRegistered() { return catalogRegistered; }

}  // namespace TwUnits
