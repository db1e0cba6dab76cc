#pragma once

// File: UnitErrors.hpp
// Every error and warning of the units library, as the fixed pair of its identifier
// and its catalog message, and the calls that raise and issue them. Call sites name
// the pair and pass the names that fill the message, never a text of their own.
//
// Example:
//   raiseError(errors::NotFound, std::string("furlongs"));
//   // ErrorIdException*: "Unit:NotFound", "Referenced unit 'furlongs' does not exist."
//   issueWarning(errors::Deprecation, std::string("celsius"));

#include <string>

#include "units/messages/UnitsMessageCatalog.hpp"

namespace TwUnits {

struct UnitError {
  const char* identifier;
  MessageId message;
};

namespace errors {
inline constexpr UnitError EmptyTimeUnits{"Unit:EmptyTimeUnits", UNIT_EMPTY_TIME_UNITS};
inline constexpr UnitError InvalidTimeUnits{"Unit:InvalidTimeUnits", UNIT_INVALID_TIME_UNITS};
inline constexpr UnitError Redefining{"Unit:Redefining", UNIT_REDEFINING2};
inline constexpr UnitError CompositionLimit{"Unit:CompositionLimit", UNIT_COMPOSITION_LIMIT};
inline constexpr UnitError DuplicateName{"Unit:DuplicateName", UNIT_DUPLICATE_NAME};
inline constexpr UnitError NotFound{"Unit:NotFound", UNIT_NOT_FOUND};
inline constexpr UnitError CannotUnregisterBuiltin{"Unit:CannotUnregisterBuiltin",
                                                   UNIT_CANNOT_UNREGISTER_BUILTIN};
inline constexpr UnitError BadUnitCompositionParse{"Unit:BadUnitCompositionParse",
                                                   UNIT_BAD_UNIT_COMPOSITION_PARSE};
inline constexpr UnitError InternalParseError{"Units:InternalParseError",
                                              UNIT_BAD_UNIT_COMPOSITION_PARSE};
inline constexpr UnitError InvalidCompositionMathMult{"Unit:InvalidCompositionMathMult",
                                                      UNIT_INVALID_COMPOSITION_MATH_MULT};
inline constexpr UnitError InvalidCompositionMathDiv{"Unit:InvalidCompositionMathDiv",
                                                     UNIT_INVALID_COMPOSITION_MATH_DIV};
inline constexpr UnitError CompositionExponentMustBeInteger{
    "Unit:CompositionExponentMustBeInteger", UNIT_COMPOSITION_EXPONENT_MUST_BE_INTEGER};
inline constexpr UnitError IntegersOnlyInComposition{"Unit:IntegersOnlyInComposition",
                                                     UNIT_INTEGERS_ONLY_IN_COMPOSITION};
inline constexpr UnitError InvalidMathInUnitComposition{"Unit:InvalidMathInUnitComposition",
                                                        UNIT_INVALID_MATH_IN_UNIT_COMPOSITION};
inline constexpr UnitError SelfReferenceInComposition{"Unit:SelfReferenceInComposition",
                                                      UNIT_SELF_REFERENCE_IN_COMPOSITION};
inline constexpr UnitError NameInvalid{"Unit:NameInvalid", UNIT_NAME_INVALID};
inline constexpr UnitError NameClashesWithPrefix{"Unit:NameClashesWithPrefix",
                                                 UNIT_NAME_CLASHES_WITH_PREFIX};
inline constexpr UnitError NameClashesWithPrefix2{"Unit:NameClashesWithPrefix2",
                                                  UNIT_NAME_CLASHES_WITH_PREFIX2};
inline constexpr UnitError OffsetUnitsTemperatureOnly{"Unit:OffsetUnitsTemperatureOnly",
                                                      UNIT_OFFSET_UNITS_TEMPERATURE_ONLY};
inline constexpr UnitError BeingUsed{"Unit:BeingUsed", UNIT_BEING_USED};
inline constexpr UnitError RegisteredUnitCannotChange{"Unit:RegisteredUnitCannotChange",
                                                      UNIT_REGISTERED_CANNOT_CHANGE};
inline constexpr UnitError UnitCompositionNumeric{"Unit:UnitCompositionNumeric",
                                                  UNIT_COMPOSITION_NUMERIC};
inline constexpr UnitError FractionalExponentsFixed{"Quantity:FractionalExponentsFixed",
                                                    QUANTITY_FRACTIONAL_EXPONENTS_FIXED2};
inline constexpr UnitError QuantityDuplicateName{"Unit:QuantityDuplicateName",
                                                 UNIT_QUANTITY_DUPLICATE_NAME};
inline constexpr UnitError QuantityDuplicateDimensions{"Unit:QuantityDuplicateDimensions",
                                                       UNIT_QUANTITY_DUPLICATE_DIMENSIONS};
inline constexpr UnitError BadQuantArgs{"Unit:BadQuantArgs", UNIT_BAD_QUANT_ARGS};
inline constexpr UnitError QuantityNotFound{"Unit:QuantityNotFound", UNIT_QUANTITY_NOT_FOUND};
inline constexpr UnitError CannotUnregisterBuiltinQuantity{"Unit:CannotUnregisterBuiltinQuantity",
                                                           UNIT_CANNOT_UNREGISTER_BUILTIN_QUANTITY};
inline constexpr UnitError CannotAddSubtractDifferentQuantities{
    "Unit:CannotAddSubtractDifferentQuantities", UNIT_CANNOT_ADD_SUBTRACT_DIFFERENT_QUANTITIES};
inline constexpr UnitError InvalidMathInQuantity{"Unit:InvalidMathInQuantity",
                                                 UNIT_INVALID_MATH_IN_QUANTITY};
inline constexpr UnitError BadQuantityParse{"Unit:BadQuantityParse", UNIT_BAD_QUANTITY_PARSE};
inline constexpr UnitError IntegersOnlyInQuantity{"Unit:IntegersOnlyInQuantity",
                                                  UNIT_INTEGERS_ONLY_IN_QUANTITY};
inline constexpr UnitError QuantityNameInvalid{"Unit:QuantityNameInvalid",
                                               UNIT_QUANTITY_NAME_INVALID};
inline constexpr UnitError ConversionFunctionZero{"Unit:ConversionFunctionZero",
                                                  UNIT_CONVERSION_FUNCTION_ZERO};
inline constexpr UnitError ConversionDifferentQuants{"Unit:ConversionDifferentQuants",
                                                     UNIT_CONVERSION_DIFFERENT_QUANTS};
inline constexpr UnitError ConversionMixedOffset{"Unit:ConversionMixedOffset",
                                                 UNIT_CONVERSION_MIXED_OFFSET};
inline constexpr UnitError OffsetConversionWithPrefixNotAllowed{
    "Unit:OffsetConversionWithPrefixNotAllowed", UNIT_OFFSET_CONVERSION_WITH_PREFIX_NOT_ALLOWED};
inline constexpr UnitError ConversionDivideByZero{"Units:ConversionDivideByZero",
                                                  UNIT_CONVERSION_DIVIDE_BY_ZERO};
inline constexpr UnitError PrefixNotFound{"Unit:PrefixNotFound", UNIT_PREFIX_NOT_FOUND};
inline constexpr UnitError PrefixCannotUnregisterBuiltin{"Unit:PrefixCannotUnregisterBuiltin",
                                                         UNIT_PREFIX_CANNOT_UNREGISTER_BUILTIN};
inline constexpr UnitError RegisteredPrefixCannotChange{"Unit:RegisteredPrefixCannotChange",
                                                        UNIT_PREFIX_REGISTERED_CANNOT_CHANGE};
inline constexpr UnitError PrefixUnsetName{"Unit:PrefixUnsetName", UNIT_PREFIX_UNSET_NAME};
inline constexpr UnitError PrefixNameInvalid{"Unit:PrefixNameInvalid", UNIT_PREFIX_NAME_INVALID};
inline constexpr UnitError PrefixDuplicateName{"Unit:PrefixDuplicateName",
                                               UNIT_PREFIX_DUPLICATE_NAME};
inline constexpr UnitError PrefixUnitNameCollision{"Unit:PrefixUnitNameCollision",
                                                   UNIT_PREFIX_UNIT_NAME_COLLISION};
inline constexpr UnitError PrefixMustBeMultTen{"Unit:PrefixMustBeMultTen",
                                               UNIT_PREFIX_MUST_BE_MULT_TEN};
inline constexpr UnitError UnitPrefixMustBeMultTen{"Unit:UnitPrefixMustBeMultTen",
                                                   UNIT_PREFIX_MUST_BE_MULT_TEN};
inline constexpr UnitError PrefixZeroMultNotAllowed{"Unit:PrefixZeroMultNotAllowed",
                                                    UNIT_PREFIX_ZERO_MULT_NOT_ALLOWED};
inline constexpr UnitError PrefixExponentTooLarge{"Units:PrefixExponentTooLarge",
                                                  UNIT_PREFIX_EXPONENT_TOO_LARGE};
inline constexpr UnitError PrefixExponentTooSmall{"Units:PrefixExponentTooSmall",
                                                  UNIT_PREFIX_EXPONENT_TOO_SMALL};
inline constexpr UnitError PrefixBeingUsed{"Unit:PrefixBeingUsed", UNIT_PREFIX_BEING_USED};
inline constexpr UnitError SystemNotFound{"Unit:SystemNotFound", UNIT_SYSTEM_NOT_FOUND};
inline constexpr UnitError SystemNameInvalid{"Unit:SystemNameInvalid", UNIT_SYSTEM_NAME_INVALID};
inline constexpr UnitError SystemDuplicateName{"Unit:SystemDuplicateName",
                                               UNIT_SYSTEM_DUPLICATE_NAME};
inline constexpr UnitError SystemNotRegistered{"Unit:SystemNotRegistered",
                                               UNIT_SYSTEM_NOT_REGISTERED};
inline constexpr UnitError SystemMassTypeNotSet{"Unit:SystemMassTypeNotSet",
                                                UNIT_SYSTEM_MASS_TYPE_NOT_SET};
inline constexpr UnitError SystemAmountTypeNotSet{"Unit:SystemAmountTypeNotSet",
                                                  UNIT_SYSTEM_AMOUNT_TYPE_NOT_SET};
inline constexpr UnitError SystemLengthTypeNotSet{"Unit:SystemLengthTypeNotSet",
                                                  UNIT_SYSTEM_LENGTH_TYPE_NOT_SET};
inline constexpr UnitError SystemTimeTypeNotSet{"Unit:SystemTimeTypeNotSet",
                                                UNIT_SYSTEM_TIME_TYPE_NOT_SET};
inline constexpr UnitError SystemTemperatureTypeNotSet{"Unit:SystemTemperatureTypeNotSet",
                                                       UNIT_SYSTEM_TEMPERATURE_TYPE_NOT_SET};
inline constexpr UnitError SystemCurrentTypeNotSet{"Unit:SystemCurrentTypeNotSet",
                                                   UNIT_SYSTEM_CURRENT_TYPE_NOT_SET};
inline constexpr UnitError SystemLuminousIntensityTypeNotSet{
    "Unit:SystemLuminousIntensityTypeNotSet", UNIT_SYSTEM_LUMINOUS_INTENSITY_TYPE_NOT_SET};
inline constexpr UnitError Deprecation{"Unit:Deprecation", UNIT_DEPRECATION};
}  // namespace errors

// Every error the library raises and every warning it issues, for front-ends that give
// each identifier a type of their own (the Python package's exception classes).
inline constexpr UnitError kAllErrors[] = {
    errors::EmptyTimeUnits,
    errors::InvalidTimeUnits,
    errors::CompositionLimit,
    errors::DuplicateName,
    errors::NotFound,
    errors::CannotUnregisterBuiltin,
    errors::BadUnitCompositionParse,
    errors::InternalParseError,
    errors::InvalidCompositionMathMult,
    errors::InvalidCompositionMathDiv,
    errors::CompositionExponentMustBeInteger,
    errors::IntegersOnlyInComposition,
    errors::InvalidMathInUnitComposition,
    errors::SelfReferenceInComposition,
    errors::NameInvalid,
    errors::NameClashesWithPrefix,
    errors::NameClashesWithPrefix2,
    errors::OffsetUnitsTemperatureOnly,
    errors::BeingUsed,
    errors::RegisteredUnitCannotChange,
    errors::UnitCompositionNumeric,
    errors::QuantityDuplicateName,
    errors::QuantityDuplicateDimensions,
    errors::BadQuantArgs,
    errors::QuantityNotFound,
    errors::CannotUnregisterBuiltinQuantity,
    errors::CannotAddSubtractDifferentQuantities,
    errors::InvalidMathInQuantity,
    errors::BadQuantityParse,
    errors::IntegersOnlyInQuantity,
    errors::QuantityNameInvalid,
    errors::ConversionFunctionZero,
    errors::ConversionDifferentQuants,
    errors::ConversionMixedOffset,
    errors::OffsetConversionWithPrefixNotAllowed,
    errors::ConversionDivideByZero,
    errors::PrefixNotFound,
    errors::PrefixCannotUnregisterBuiltin,
    errors::RegisteredPrefixCannotChange,
    errors::PrefixUnsetName,
    errors::PrefixNameInvalid,
    errors::PrefixDuplicateName,
    errors::PrefixUnitNameCollision,
    errors::PrefixMustBeMultTen,
    errors::UnitPrefixMustBeMultTen,
    errors::PrefixZeroMultNotAllowed,
    errors::PrefixExponentTooLarge,
    errors::PrefixExponentTooSmall,
    errors::PrefixBeingUsed,
    errors::SystemNotFound,
    errors::SystemNameInvalid,
    errors::SystemDuplicateName,
    errors::SystemNotRegistered,
    errors::SystemMassTypeNotSet,
    errors::SystemAmountTypeNotSet,
    errors::SystemLengthTypeNotSet,
    errors::SystemTimeTypeNotSet,
    errors::SystemTemperatureTypeNotSet,
    errors::SystemCurrentTypeNotSet,
    errors::SystemLuminousIntensityTypeNotSet,
};
inline constexpr UnitError kAllWarnings[] = {errors::Redefining, errors::FractionalExponentsFixed,
                                             errors::Deprecation};

// Each raises an ErrorIdException* with the identifier and the catalog text filled
// with the arguments. The catalog is registered first if nothing has done so yet.
[[noreturn]] void raiseError(UnitError error);
[[noreturn]] void raiseError(UnitError error, const std::string& name);
[[noreturn]] void raiseError(UnitError error, const std::string& first, const std::string& second);
[[noreturn]] void raiseError(UnitError error, int number);

// Issues the message through the host's warning channel and returns; the text is
// formatted only when the channel shows it.
void issueWarning(UnitError warning);
void issueWarning(UnitError warning, const std::string& name);
// issueWarning(errors::Deprecation, name), on the path of every conversion that uses a
// deprecated unit.
void warnOfDeprecatedUnit(const std::string& name);

}  // namespace TwUnits
