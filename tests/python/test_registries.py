"""Registration, removal and listing of units, prefixes, quantities and systems; the
checks on texts; and refusals that leave every registry as it was."""

import pytest
import twzo_units as u
from conftest import snapshot

MKS = {
    "amount": "mole",
    "mass": "kilogram",
    "length": "meter",
    "time": "second",
    "temperature": "kelvin",
    "current": "ampere",
    "luminous_intensity": "candela",
}


def test_builtin_listings():
    assert list(u.prefixes())[:13] == [
        "tera", "giga", "mega", "kilo", "hecto", "deka", "deci", "centi", "milli", "micro",
        "nano", "pico", "femto",
    ]
    assert u.prefixes()["femto"] == -15
    assert list(u.quantities())[:3] == ["amount", "mass", "length"]
    assert u.quantities()["force"] == (0, 1, 1, -2, 0, 0, 0)
    assert u.systems()["MKS"] == MKS
    mile, celsius = u.units()["mile"], u.units()["celsius"]
    assert (mile.quantity, mile.builtin, mile.deprecated) == ("length", True, False)
    assert (celsius.quantity, celsius.deprecated) == ("temperature", True)


def test_unit_registered_listed_and_removed(undo):
    u.register_unit("zfurlong", "meter", 201.168)
    undo(u.unregister_unit, "zfurlong")
    unit = u.units(builtin=False)["zfurlong"]
    assert (unit.composition, unit.multiplier, unit.offset, unit.quantity, unit.builtin) == (
        "meter", 201.168, 0.0, "length", False,
    )
    assert u.convert(1, "mile", "zfurlong") == pytest.approx(8.0)
    assert "mile" not in u.units(builtin=False)
    u.unregister_unit("zfurlong")
    assert "zfurlong" not in u.units()
    with pytest.raises(u.UnitNotFoundError):
        u.convert(1, "mile", "zfurlong")


def test_redefinition_warns_and_the_same_definition_changes_nothing(undo, recwarn):
    u.register_unit("zlap", "meter", 400)
    undo(u.unregister_unit, "zlap")
    u.register_unit("zlap", "meter", 400)
    assert len(recwarn) == 0
    with pytest.warns(u.UnitRedefiningWarning):
        u.register_unit("zlap", "meter", 500)
    assert u.convert(1, "zlap", "meter") == 500


def test_prefix_quantity_and_system_round_trips(undo):
    before = snapshot()
    u.register_prefix("myria", 4)
    undo(u.unregister_prefix, "myria")
    assert u.convert(1, "myriameter", "kilometer") == pytest.approx(10.0)
    u.register_quantity("zjerk", "length/time^3")
    undo(u.unregister_quantity, "zjerk")
    u.register_quantity("zsnap", [0, 0, 1, -4, 0, 0, 0])
    undo(u.unregister_quantity, "zsnap")
    assert u.quantity("meter/second^3") == "zjerk"
    assert u.quantities()["zsnap"] == (0, 0, 1, -4, 0, 0, 0)
    u.register_system("zcgs", **{**MKS, "mass": "gram", "length": "centimeter"})
    undo(u.unregister_system, "zcgs")
    force = u.express("newton", "zcgs")
    assert (force.to_text, force.multiplier) == ("centimeter*gram/second^2", pytest.approx(1e5))
    for remove, name in [
        (u.unregister_system, "zcgs"),
        (u.unregister_quantity, "zsnap"),
        (u.unregister_quantity, "zjerk"),
        (u.unregister_prefix, "myria"),
    ]:
        remove(name)
    assert snapshot() == before


@pytest.mark.parametrize(
    "text, parts",
    [
        ("mole/liter", [("mole", 1), ("liter", -1)]),
        ("kilogram*meter^2/second^3", [("kilogram", 1), ("meter", 2), ("second", -3)]),
        ("meter*meter/meter^3", [("meter", -1)]),
    ],
)
def test_parse_names_and_exponents(text, parts):
    assert u.parse(text) == parts


@pytest.mark.parametrize(
    "text, exponents, quantity",
    [("newton", (0, 1, 1, -2, 0, 0, 0), "force"), ("mole/liter", (1, 0, -3, 0, 0, 0, 0), "concentration")],
)
def test_dimensions_and_quantity_of_a_text(text, exponents, quantity):
    assert u.dimensions(text) == exponents
    assert u.quantity(text) == quantity


@pytest.mark.parametrize(
    "first, second, code",
    [
        ("kilogram/(meter*second^2)", "pascal", u.DimensionCheck.MATCH),
        ("mole/liter", "mole", u.DimensionCheck.DIFFERENT),
        ("furlongs", "meter", u.DimensionCheck.FIRST_INVALID),
        ("meter", "meter/", u.DimensionCheck.SECOND_INVALID),
    ],
)
def test_check_dimensions_codes(first, second, code):
    assert u.check_dimensions(first, second) is code


def test_verify_and_verify_unit():
    assert u.verify("millimole/liter") is None
    assert u.verify_unit("kilometer", "meter", 1000) is True
    assert u.verify_unit("zunused", "meter", 2) is False
    with pytest.raises(u.UnitNotFoundError):
        u.verify("furlongs/hour")


REFUSALS = [
    (u.register_unit, ("2bad", "meter"), u.UnitNameInvalidError,
     "Invalid unit name. Type 'help zophunit' for valid names."),
    (u.register_unit, ("meter", "foot"), u.UnitCannotUnregisterBuiltinError,
     "A built-in unit cannot be redefined or unregistered."),
    (u.register_unit, ("zoff", "meter", 1, 5), u.UnitOffsetUnitsTemperatureOnlyError,
     "Only temperature units can have an offset."),
    (u.register_unit, ("zzero", "meter", 0), u.UnitConversionFunctionZeroError,
     "The multiplier for a unit cannot be zero."),
    (u.register_unit, ("zbad", "meter*2"), u.UnitInvalidCompositionMathMultError, None),
    (u.unregister_unit, ("furlongs",), u.UnitNotFoundError,
     "Referenced unit 'furlongs' does not exist."),
    (u.unregister_unit, ("meter",), u.UnitCannotUnregisterBuiltinError, None),
    (u.register_prefix, ("kilo", 3), u.UnitPrefixCannotUnregisterBuiltinError,
     "Redefining or removing built-in prefixes is not allowed."),
    (u.register_prefix, ("mo", 2), u.UnitPrefixUnitNameCollisionError,
     "Unable to register prefix 'mo' because the registered unit 'molecule' begins with the same name."),
    (u.register_prefix, ("zbig", 52), u.UnitsPrefixExponentTooLargeError,
     "Exponent too large for unit prefix. The maximum allowable exponent on this platform is 51."),
    (u.unregister_prefix, ("kilo",), u.UnitPrefixCannotUnregisterBuiltinError, None),
    (u.unregister_prefix, ("zz",), u.UnitPrefixNotFoundError, "Referenced prefix 'zz' does not exist."),
    (u.register_quantity, ("zvel", (0, 0, 1, -1, 0, 0, 0)), u.UnitQuantityDuplicateDimensionsError,
     "Unable to register physical quantity 'zvel' because physical quantity 'velocity' has matching dimensions."),
    (u.register_quantity, ("time", "length^5"), u.UnitQuantityDuplicateNameError, None),
    (u.register_quantity, ("2q", "length^5"), u.UnitQuantityNameInvalidError, None),
    (u.unregister_quantity, ("time",), u.UnitCannotUnregisterBuiltinQuantityError,
     "Removal of built-in physical quantities is not allowed."),
    (u.unregister_quantity, ("zq",), u.UnitQuantityNotFoundError, None),
    (u.unregister_system, ("zsys",), u.UnitSystemNotRegisteredError,
     "Cannot unregister UnitSystem because it is not registered."),
    (lambda: u.register_system("MKS", **MKS), (), u.UnitSystemDuplicateNameError, None),
    (u.convert, (1, "meter", "second"), u.UnitConversionDifferentQuantsError,
     "Unable to convert between units. Units are not of the same physical quantity."),
    (u.convert, (1, "millikelvin", "kelvin"), u.UnitOffsetConversionWithPrefixNotAllowedError, None),
]


@pytest.mark.parametrize("action, args, error, message", REFUSALS, ids=lambda x: getattr(x, "__name__", None))
def test_refusals_raise_their_error_and_change_nothing(action, args, error, message):
    before = snapshot()
    with pytest.raises(error) as raised:
        action(*args)
    assert raised.value.identifier == error.identifier
    if message is not None:
        assert str(raised.value) == raised.value.message == message
    assert snapshot() == before


@pytest.mark.parametrize(
    "action, args",
    [
        (u.register_unit, (None, "meter")),
        (u.register_unit, ("zx", "meter", "two")),
        (u.register_prefix, ("zx", 2.5)),
        (u.register_quantity, ("zx", [0, 0, 1])),
        (u.register_quantity, ("zx", [0, 0, 1.5, 0, 0, 0, 0])),
        (u.register_system, ("zx",)),
    ],
)
def test_arguments_of_the_wrong_type_are_refused(action, args):
    before = snapshot()
    with pytest.raises(TypeError):
        action(*args)
    assert snapshot() == before
