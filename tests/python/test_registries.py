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


def test_unit_registered_redefined_listed_and_removed(undo, recwarn):
    u.register_unit("zfurlong", "meter", 201.168)
    undo(u.unregister_unit, "zfurlong")
    u.register_unit("zfurlong", "meter", 201.168)  # the same definition: no warning
    assert len(recwarn) == 0
    unit = u.units(builtin=False)["zfurlong"]
    assert (unit.composition, unit.multiplier, unit.offset, unit.quantity, unit.builtin) == (
        "meter", 201.168, 0.0, "length", False,
    )
    assert "mile" not in u.units(builtin=False)
    mile, celsius = u.units()["mile"], u.units()["celsius"]
    assert (mile.builtin, mile.deprecated, celsius.deprecated) == (True, False, True)
    with pytest.warns(u.UnitRedefiningWarning):
        u.register_unit("zfurlong", "meter", 402.336)
    assert u.convert(1, "mile", "zfurlong") == pytest.approx(4.0)
    u.unregister_unit("zfurlong")
    assert "zfurlong" not in u.units()


def test_prefix_quantity_and_system_round_trips(undo):
    before = snapshot()
    u.register_prefix("myria", 4)
    undo(u.unregister_prefix, "myria")
    assert u.convert(1, "myriameter", "kilometer") == pytest.approx(10.0)
    u.register_quantity("zjerk", "length/time^3")
    undo(u.unregister_quantity, "zjerk")
    u.register_quantity("zsnap", [0, 0, 1, -4, 0, 0, 0])
    undo(u.unregister_quantity, "zsnap")
    assert (u.quantity("meter/second^3"), u.quantities()["zsnap"]) == ("zjerk", (0, 0, 1, -4, 0, 0, 0))
    u.register_system("zcgs", **{**MKS, "mass": "gram", "length": "centimeter"})
    undo(u.unregister_system, "zcgs")
    assert (u.prefixes()["myria"], u.systems()["zcgs"]["length"], u.systems()["MKS"]) == (4, "centimeter", MKS)
    force = u.express("newton", "zcgs")
    assert (force.to_text, force.multiplier) == ("centimeter*gram/second^2", pytest.approx(1e5))
    u.unregister_system("zcgs")
    u.unregister_quantity("zsnap")
    u.unregister_quantity("zjerk")
    u.unregister_prefix("myria")
    assert snapshot() == before


@pytest.mark.parametrize(
    "ask, text, expected",
    [
        (u.parse, "kilogram*meter^2/second^3", [("kilogram", 1), ("meter", 2), ("second", -3)]),
        (u.parse, "meter*meter/meter^3", [("meter", -1)]),
        (u.dimensions, "mole/liter", (1, 0, -3, 0, 0, 0, 0)),
        (u.quantity, "newton", "force"),
        (lambda text: u.check_dimensions(text, "pascal"), "kilogram/(meter*second^2)", u.DimensionCheck.MATCH),
        (lambda text: u.check_dimensions(text, "mole"), "mole/liter", u.DimensionCheck.DIFFERENT),
        (lambda text: u.check_dimensions(text, "meter"), "furlongs", u.DimensionCheck.FIRST_INVALID),
        (lambda text: u.check_dimensions("meter", text), "meter/", u.DimensionCheck.SECOND_INVALID),
        (u.verify, "millimole/liter", None),
        (lambda text: u.verify_unit(text, "meter", 1000), "kilometer", True),
        (lambda text: u.verify_unit(text, "meter", 2), "zunused", False),
    ],
    ids=lambda x: x if isinstance(x, str) else None,
)
def test_questions_about_a_text(ask, text, expected):
    assert ask(text) == expected


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
    (u.register_prefix, ("kilo", 3), u.UnitPrefixCannotUnregisterBuiltinError,
     "Redefining or removing built-in prefixes is not allowed."),
    (u.register_prefix, ("mo", 2), u.UnitPrefixUnitNameCollisionError,
     "Unable to register prefix 'mo' because the registered unit 'molecule' begins with the same name."),
    (u.register_prefix, ("zbig", 52), u.UnitsPrefixExponentTooLargeError,
     "Exponent too large for unit prefix. The maximum allowable exponent on this platform is 51."),
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
    (u.verify, ("furlongs/hour",), u.UnitNotFoundError, "Referenced unit 'furlongs' does not exist."),
    (u.express, ("newton", "mks"), u.UnitSystemNotFoundError,
     "UnitSystem 'mks' does not exist. Type 'showunitsystems' to see available list."),
    # Arguments of the wrong type.
    (u.register_unit, (None, "meter"), TypeError, None),
    (u.register_unit, ("zx", "meter", "two"), TypeError, None),
    (u.register_prefix, ("zx", 2.5), TypeError, None),
    (u.register_quantity, ("zx", [0, 0, 1]), TypeError, None),
    (u.register_quantity, ("zx", [0, 0, 1.5, 0, 0, 0, 0]), TypeError, None),
    (u.register_system, ("zx",), TypeError, None),
]


@pytest.mark.parametrize("action, args, error, message", REFUSALS, ids=lambda x: getattr(x, "__name__", None))
def test_refusals_raise_their_error_and_change_nothing(action, args, error, message):
    before = snapshot()
    with pytest.raises(error) as raised:
        action(*args)
    assert getattr(raised.value, "identifier", None) == getattr(error, "identifier", None)
    if message is not None:
        assert str(raised.value) == raised.value.message == message
    assert snapshot() == before
