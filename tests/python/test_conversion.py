"""convert and Converter: values against the built-in tables, numpy arrays of every
shape and kind, and bad input refused with a clear exception."""

import math

import numpy as np
import pytest
import twzo_units as u

pytestmark = pytest.mark.filterwarnings("ignore::twzo_units.UnitDeprecationWarning")


@pytest.mark.parametrize(
    "value, source, target, expected",
    [
        (1, "mile", "meter", 1609.344),
        (1, "pound", "gram", 453.59236992),
        (36, "kilometer/hour", "meter/second", 10),
        (1, "pascal", "kilogram/(meter*second^2)", 1),
        (100, "celsius", "fahrenheit", 212),
        (-40, "fahrenheit", "celsius", -40),
        (-math.inf, "kilometer", "meter", -math.inf),
        (math.nan, "kilometer", "meter", math.nan),
    ],
    ids=str,
)
def test_builtin_conversions_are_exact(value, source, target, expected):
    result = u.convert(value, source, target)
    assert type(result) is float
    assert result == expected or math.isnan(result) and math.isnan(expected)
    assert u.Converter(source, target)(value) == result or math.isnan(result)


DTYPES = [np.float64, np.float32, np.float16, np.int64, np.int32, np.uint8, np.bool_]


@pytest.mark.parametrize("dtype", DTYPES, ids=lambda d: np.dtype(d).name)
@pytest.mark.parametrize("shape", [(), (0,), (5,), (2, 3, 4)], ids=str)
def test_arrays_keep_their_shape_and_float32_stays_float32(dtype, shape):
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
        np.arange(6.0).astype(">f8"),
        [[1, 2], [3, 4]],
        (1.5, 2.5),
        np.float32(4.0),
    ],
    ids=["strided", "transposed", "big-endian", "list", "tuple", "numpy-scalar"],
)
def test_any_array_like_converts_like_numpy(values):
    result = u.convert(values, "kilometer", "meter")
    np.testing.assert_array_equal(result, (np.asarray(values, dtype=np.float64) * 1000.0).astype(result.dtype))
    assert result.shape == np.shape(values)


@pytest.mark.parametrize(
    "value, source, target, error",
    [
        (None, "kilometer", "meter", TypeError),
        ("5", "kilometer", "meter", TypeError),
        (b"5", "kilometer", "meter", TypeError),
        (1 + 2j, "kilometer", "meter", TypeError),
        ([1, "a"], "kilometer", "meter", TypeError),
        (np.full(10**6, "meter"), "kilometer", "meter", TypeError),
        (np.array([1, 2], dtype=object), "kilometer", "meter", TypeError),
        (np.array([1 + 1j]), "kilometer", "meter", TypeError),
        (10**400, "kilometer", "meter", OverflowError),
        (1.0, None, "meter", TypeError),
        (1.0, "meter", ["m"], TypeError),
    ],
    ids=lambda v: type(v).__name__,
)
def test_bad_input_is_refused(value, source, target, error):
    with pytest.raises(error) as raised:
        u.convert(value, source, target)
    if error is TypeError and source == "kilometer":
        assert "a value to convert is a number or an array of numbers" in str(raised.value)
        with pytest.raises(TypeError):
            u.Converter(source, target)(value)


def test_a_converter_holds_the_factors_it_was_made_with(undo):
    c = u.Converter("celsius", "fahrenheit")
    assert (c.multiplier, c.offset, c.from_text, c.to_text) == (1.8, 32.0, "celsius", "fahrenheit")
    assert repr(c) == "Converter('celsius', 'fahrenheit')"
    back = c.inverse()
    assert (back.from_text, back.to_text) == ("fahrenheit", "celsius")
    assert back(212.0) == pytest.approx(100.0)
    u.register_unit("zdouble", "meter", 2)
    undo(u.unregister_unit, "zdouble")
    prepared = u.Converter("zdouble", "meter")
    with pytest.warns(u.UnitRedefiningWarning):
        u.register_unit("zdouble", "meter", 3)
    assert (prepared(1.0), u.convert(1.0, "zdouble", "meter")) == (2.0, 3.0)
