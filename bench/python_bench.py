"""The Python package's speed: one scalar conversion (beside pint's, when pint is
installed) and a numpy array of 10 million doubles (beside numpy's own a * m + b).

CPU time (time.process_time), the best of several repetitions; prints a Markdown table.
Run by bench/python_bench.sh, which builds the package and installs pint.
"""

import sys
import time
import timeit

import numpy as np
import twzo_units as u

REPEATS = 7


def best(statement, number, namespace):
    timer = timeit.Timer(statement, globals=namespace, timer=time.process_time)
    return min(timer.repeat(repeat=REPEATS, number=number)) / number


def row(operation, seconds, reference=None, reference_seconds=None, target=""):
    def shown(s):
        return f"{s * 1e9:.0f} ns" if s < 1e-6 else f"{s * 1e6:.2f} µs" if s < 1e-3 else f"{s * 1e3:.1f} ms"

    ratio = f"{reference_seconds / seconds:.1f}×" if reference_seconds else ""
    print(f"| {operation} | {shown(seconds)} | {reference or ''} | "
          f"{shown(reference_seconds) if reference_seconds else ''} | {ratio} | {target} |")


def main():
    namespace = {"u": u, "convert": u.convert, "np": np}
    mile = u.Converter("mile", "meter")
    namespace["mile"] = mile
    scalar = best("convert(1.0, 'mile', 'meter')", 200_000, namespace)
    prepared = best("mile(1.0)", 200_000, namespace)
    compound = best("convert(36.0, 'kilometer/hour', 'meter/second')", 200_000, namespace)

    pint_scalar = pint_compound = None
    try:
        import pint

        registry = pint.UnitRegistry()
        namespace["Q"] = registry.Quantity
        pint_scalar = best("Q(1.0, 'mile').to('meter')", 20_000, namespace)
        pint_compound = best("Q(36.0, 'kilometer/hour').to('meter/second')", 20_000, namespace)
        pint_version = pint.__version__
    except ImportError:
        pint_version = None

    namespace["a"] = np.random.default_rng(1).random(10_000_000)
    namespace["m"], namespace["b"] = mile.multiplier, mile.offset
    array = best("convert(a, 'mile', 'meter')", 1, namespace)
    array_prepared = best("mile(a)", 1, namespace)
    numpy_own = best("a * m + b", 1, namespace)

    print(f"Python {sys.version.split()[0]}, numpy {np.__version__}, "
          f"pint {pint_version or 'not installed'}; CPU time, best of {REPEATS}\n")
    print("| Operation | twzo_units | beside | its time | ratio | target |")
    print("| --- | ---: | --- | ---: | ---: | --- |")
    row("`convert(1.0, 'mile', 'meter')`", scalar, "pint `Q(1.0, 'mile').to('meter')`",
        pint_scalar, "≤ 1 µs, ≥ 20× pint")
    row("`convert(36.0, 'kilometer/hour', 'meter/second')`", compound, "pint, same", pint_compound)
    row("prepared `Converter('mile', 'meter')(1.0)`", prepared)
    print(f"| `convert(a, 'mile', 'meter')`, 10⁷ float64 | {array * 1e3:.1f} ms | numpy `a * m + b` | "
          f"{numpy_own * 1e3:.1f} ms | {array / numpy_own:.2f}× numpy's time | ≤ 1.5× |")
    print(f"| prepared `Converter(...)(a)`, 10⁷ float64 | {array_prepared * 1e3:.1f} ms | numpy `a * m + b` | "
          f"{numpy_own * 1e3:.1f} ms | {array_prepared / numpy_own:.2f}× numpy's time | |")


if __name__ == "__main__":
    main()
