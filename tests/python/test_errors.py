"""The package's exceptions and warnings: a class per identifier, Python's warning filters, and
stubs that name what the package has. Each error's text is in test_registries' refusals."""

import ast
import pathlib
import warnings

import pytest
import twzo_units as u
from twzo_units import _native


def test_every_identifier_has_its_class():
    assert set(u.ERRORS) == set(_native.error_identifiers())
    assert set(u.WARNINGS) == set(_native.warning_identifiers())
    for identifier, cls in {**u.ERRORS, **u.WARNINGS}.items():
        assert issubclass(cls, u.UnitsError if identifier in u.ERRORS else u.UnitsWarning)
        assert cls.identifier == identifier and getattr(u, cls.__name__) is cls
    assert u.ERRORS["Units:InternalParseError"].__name__ == "UnitsInternalParseError"
    assert u.WARNINGS["Quantity:FractionalExponentsFixed"].__name__ == "QuantityFractionalExponentsFixedWarning"
    assert u.UnitsError("text", "Some:Thing").identifier == "Some:Thing"


def test_warnings_go_through_the_warnings_module():
    with warnings.catch_warnings(record=True) as seen:
        warnings.simplefilter("always")
        assert u.convert(0, "celsius", "kelvin") == 273.15
        warnings.simplefilter("ignore", u.UnitDeprecationWarning)
        u.convert(0, "celsius", "kelvin")
    assert [(w.category, str(w.message), w.filename) for w in seen] == [
        (u.UnitDeprecationWarning, "The temperature unit 'celsius' has been removed. Use kelvin instead.", __file__)
    ]


def test_a_warning_made_an_error_is_raised_after_the_operation_and_after_its_error(undo):
    u.register_unit("zmark", "meter", 2)
    undo(u.unregister_unit, "zmark")
    with warnings.catch_warnings():
        warnings.simplefilter("error", u.UnitsWarning)
        with pytest.raises(u.UnitRedefiningWarning):
            u.register_unit("zmark", "meter", 3)
        assert u.convert(1, "zmark", "meter") == 3
        with pytest.raises(u.UnitConversionMixedOffsetError):
            u.convert(1, "celsius/second", "kelvin/second")


def test_stubs_name_what_the_package_has():
    stub = pathlib.Path(u.__file__).with_name("__init__.pyi")
    names = set()
    for node in ast.parse(stub.read_text()).body:
        if isinstance(node, (ast.ClassDef, ast.FunctionDef)):
            names.add(node.name)
        elif isinstance(node, ast.AnnAssign):
            names.add(node.target.id)
    assert names == set(u.__all__)
    assert all(hasattr(u, name) for name in u.__all__)
    assert stub.with_name("py.typed").exists()
