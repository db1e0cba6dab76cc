"""convert, Converter and express: values against the built-in tables, numpy arrays of
every shape and kind, and bad input refused with a clear exception."""

import math

import numpy as np
import pytest
import twzo_units as u

pytestmark = pytest.mark.filterwarnings("ignore::twzo_units.UnitDeprecationWarning")

# A few of the built-in tables, whose values the C++ tests check in full.
BUILTIN = [
    (1, "mile", "meter", 1609.344),
    (1, "pound", "gram", 453.59236992),
    (36, "kilometer/hour", "meter/second", 10),
    (1, "pascal", "kilogram/(meter*second^2)", 1),
    (100, "celsius", "fahrenheit", 212),
    (-40, "fahrenheit", "celsius", -40),
]


@pytest.mark.parametrize("value, source, target, expected", BUILTIN, ids=lambda x: str(x))
def test_builtin_conversions(value, source, target, expected):
    result = u.convert(value, source, target)
    assert type(result) is float
    assert result == expected  # the built-in factors are exact: the nearest double
    assert u.Converter(source, target)(value) == result


@pytest.mark.parametrize("value", [math.inf, -math.inf, math.nan])
def test_non_finite_values_convert_as_arithmetic(value):
    result = u.convert(value, "kilometer", "meter")
    assert math.isnan(result) if math.isnan(value) else result == value


DTYPES = [np.float64, np.float32, np.float16, np.int64, np.int32, np.uint8, np.bool_]
SHAPES = [(), (0,), (5,), (2, 3, 4)]


@pytest.mark.parametrize("dtype", DTYPES, ids=lambda d: np.dtype(d).name)
@pytest.mark.parametrize("shape", SHAPES, ids=str)
def test_arrays_keep_their_shape_in_one_conversion(dtype, shape):
    values = (np.arange(np.prod(shape)) % 7).astype(dtype).reshape(shape)
    kept = values.copy()
    c = u.Converter("celsius", "kelvin")
    result = u.convert(values, "celsius", "kelvin")
    expected_dtype = np.float32 if dtype == np.float32 else np.float64
    assert isinstance(result, np.ndarray) and result.shape == shape and result.dtype == expected_dtype
    expected = (values.astype(np.float64) * c.multiplier + c.offset).astype(expected_dtype)
    np.testing.assert_array_equal(result, expected)
    np.testing.assert_array_equal(c(values), expected)
    np.testing.assert_array_equal(values, kept)


@pytest.mark.parametrize(
    "values",
    [
        np.arange(12.0).reshape(3, 4)[:, ::2],
        np.arange(12.0).reshape(3, 4).T,
        np.arange(24.0)[::3],
        np.arange(6.0).astype(">f8"),
        [[1, 2], [3, 4]],
        (1.5, 2.5),
        np.float32(4.0),
        np.array([np.nan, np.inf, -np.inf]),
    ],
    ids=["strided", "transposed", "stepped", "big-endian", "list", "tuple", "numpy-scalar", "non-finite"],
)
def test_any_array_like_converts_like_numpy(values):
    expected = np.asarray(values, dtype=np.float64) * 1000.0
    result = u.convert(values, "kilometer", "meter")
    np.testing.assert_array_equal(result, expected.astype(result.dtype))
    assert result.shape == np.shape(values)


BAD_VALUES = [
    None,
    "5",
    b"5",
    {"a": 1},
    1 + 2j,
    [1, "a"],
    np.array(["1.5", "2"]),
    np.full(10**6, "meter"),
    np.array([1, 2], dtype=object),
    np.array([1 + 1j]),
]


@pytest.mark.parametrize("value", BAD_VALUES, ids=lambda v: type(v).__name__)
def test_values_that_are_not_numbers_are_refused(value):
    with pytest.raises(TypeError, match="a value to convert is a number or an array of numbers"):
        u.convert(value, "kilometer", "meter")
    with pytest.raises(TypeError):
        u.Converter("kilometer", "meter")(value)


@pytest.mark.parametrize("source, target", [(None, "meter"), ("meter", 5), ("meter", ["m"])])
def test_texts_that_are_not_strings_are_refused(source, target):
    with pytest.raises(TypeError):
        u.convert(1.0, source, target)


def test_integers_beyond_doubles_overflow():
    with pytest.raises(OverflowError):
        u.convert(10**400, "kilometer", "meter")


def test_converter_holds_its_factors_and_inverse():
    c = u.Converter("celsius", "fahrenheit")
    assert (c.multiplier, c.offset) == (1.8, 32.0)
    assert (c.from_text, c.to_text) == ("celsius", "fahrenheit")
    assert repr(c) == "Converter('celsius', 'fahrenheit')"
    back = c.inverse()
    assert (back.from_text, back.to_text) == ("fahrenheit", "celsius")
    assert back(212.0) == pytest.approx(100.0)
    assert back.offset == pytest.approx(-32.0 / 1.8)


def test_converter_keeps_the_factors_it_was_made_with(undo):
    u.register_unit("zdouble", "meter", 2)
    undo(u.unregister_unit, "zdouble")
    prepared = u.Converter("zdouble", "meter")
    with pytest.warns(u.UnitRedefiningWarning):
        u.register_unit("zdouble", "meter", 3)
    assert prepared(1.0) == 2.0
    assert u.convert(1.0, "zdouble", "meter") == 3.0


@pytest.mark.parametrize(
    "text, system, written, multiplier",
    [
        ("newton", "MKS", "kilogram*meter/second^2", 1.0),
        ("kilometer/hour", "MKS", "meter/second", 1 / 3.6),
        ("mile", "MKS", "meter", 1609.344),
    ],
)
def test_express_writes_a_composition_in_a_system(text, system, written, multiplier):
    c = u.express(text, system)
    assert (c.from_text, c.to_text) == (text, written)
    assert c.multiplier == pytest.approx(multiplier, rel=1e-14)
    assert c.offset == 0.0


def test_express_in_an_unknown_system():
    with pytest.raises(u.UnitSystemNotFoundError) as raised:
        u.express("newton", "mks")
    assert str(raised.value) == (
        "UnitSystem 'mks' does not exist. Type 'showunitsystems' to see available list."
    )
