"""twzo_units: the units-of-measure engine from Python.

Convert numbers and numpy arrays between units and compositions, register and remove
units, prefixes, physical quantities and unit systems, check dimensions, and follow changes:

>>> import twzo_units as u
>>> u.convert(1, 'mile', 'meter')
1609.344

Errors are ``UnitsError`` subclasses carrying the library's identifier; warnings are
``UnitsWarning`` subclasses, issued through the ``warnings`` module.
"""

from __future__ import annotations

import enum

from . import _native
from ._errors import UnitsError, UnitsWarning, class_name
from ._native import (
    Converter,
    Subscription,
    Unit,
    convert,
    dimensions,
    express,
    parse,
    prefixes,
    quantities,
    quantity,
    register_prefix,
    register_quantity,
    register_system,
    register_unit,
    subscribe,
    systems,
    units,
    unregister_prefix,
    unregister_quantity,
    unregister_system,
    unregister_unit,
    verify,
    verify_unit,
)


def _issue_classes(identifiers: list[str], base: type, suffix: str) -> dict[str, type]:
    return {
        identifier: type(
            class_name(identifier, suffix),
            (base,),
            {"identifier": identifier, "__module__": __name__, "__doc__": f'"{identifier}"'},
        )
        for identifier in identifiers
    }


#: The exception class of each error identifier ("Unit:NotFound" -> UnitNotFoundError).
ERRORS: dict[str, type[UnitsError]] = _issue_classes(_native.error_identifiers(), UnitsError, "Error")
#: The warning category of each warning identifier ("Unit:Deprecation" -> UnitDeprecationWarning).
WARNINGS: dict[str, type[UnitsWarning]] = _issue_classes(
    _native.warning_identifiers(), UnitsWarning, "Warning"
)
globals().update({cls.__name__: cls for cls in (*ERRORS.values(), *WARNINGS.values())})
_native._set_issue_classes(ERRORS, UnitsError, WARNINGS, UnitsWarning)


class DimensionCheck(enum.IntEnum):
    """The result codes of check_dimensions."""

    MATCH = 0
    DIFFERENT = 1
    FIRST_INVALID = 2
    SECOND_INVALID = 3


def check_dimensions(first: str, second: str) -> DimensionCheck:
    """Whether two compositions have the same dimensions, as a code rather than an error.

    >>> check_dimensions('kilogram/(meter*second^2)', 'pascal')
    <DimensionCheck.MATCH: 0>
    """
    return DimensionCheck(_native._check_dimensions(first, second))


__all__ = [
    "Converter",
    "DimensionCheck",
    "ERRORS",
    "Subscription",
    "Unit",
    "UnitsError",
    "UnitsWarning",
    "WARNINGS",
    "check_dimensions",
    "convert",
    "dimensions",
    "express",
    "parse",
    "prefixes",
    "quantities",
    "quantity",
    "register_prefix",
    "register_quantity",
    "register_system",
    "register_unit",
    "subscribe",
    "systems",
    "units",
    "unregister_prefix",
    "unregister_quantity",
    "unregister_system",
    "unregister_unit",
    "verify",
    "verify_unit",
    *(cls.__name__ for cls in (*ERRORS.values(), *WARNINGS.values())),
]
