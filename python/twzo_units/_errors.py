"""The base classes of the package's exceptions and warnings."""

from __future__ import annotations


class UnitsError(Exception):
    """An error of the units library.

    ``identifier`` is the library's identifier ("Unit:NotFound") and ``message`` its
    catalog text, which is also ``str(error)``. Each identifier has a subclass of its own
    (``UnitNotFoundError``); ``ERRORS`` maps identifiers to them.
    """

    identifier: str = ""

    def __init__(self, message: str, identifier: str | None = None) -> None:
        super().__init__(message)
        self.message = message
        if identifier is not None:
            self.identifier = identifier


class UnitsWarning(UserWarning):
    """A warning of the units library; each identifier has a subclass with ``identifier``
    set ("Unit:Deprecation" is ``UnitDeprecationWarning``), so ``warnings.simplefilter``
    can silence, show or raise one kind."""

    identifier: str = ""


def class_name(identifier: str, suffix: str) -> str:
    """"Unit:NotFound" gives "UnitNotFoundError" with the suffix "Error"; a name that ends
    in the suffix already keeps it once ("Units:InternalParseError")."""
    name = identifier.replace(":", "")
    return name if name.endswith(suffix) else name + suffix
