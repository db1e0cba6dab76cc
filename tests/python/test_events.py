"""Change events for Python callables: order, filtering, cancelling, refusing a unit's
removal, and listeners that raise or try to change the registries."""

import contextlib
import sys

import pytest
import twzo_units as u
from conftest import snapshot


class Refusal(Exception):
    pass


@contextlib.contextmanager
def unraisable():
    """The errors reported through sys.unraisablehook meanwhile, by type."""
    seen, hook = [], sys.unraisablehook
    sys.unraisablehook = lambda report: seen.append(report.exc_type)
    try:
        yield seen
    finally:
        sys.unraisablehook = hook


def record(kinds=None):
    heard = []
    subscription = u.subscribe(lambda kind, name: heard.append((kind, name)), kinds)
    return heard, subscription


def test_every_change_is_heard_in_order(undo):
    heard, subscription = record()
    undo(subscription.cancel)
    u.register_quantity("zflux", "length^5")
    u.register_unit("zspan", "meter^5", 2)
    u.register_prefix("zetta", 21)
    u.unregister_prefix("zetta")
    u.unregister_quantity("zflux")
    assert heard == [
        ("QUANTITY_CREATED", "zflux"),
        ("UNIT_CREATED", "zspan"),
        ("PREFIX_CREATED", "zetta"),
        ("PREFIX_REMOVED", "zetta"),
        ("UNIT_REMOVED", "zspan"),
        ("QUANTITY_REMOVED", "zflux"),
    ]


def test_kinds_filter_and_cancel(undo):
    heard, subscription = record("UNIT_REMOVED")
    others, every = record({"UNIT_CREATED", "UNIT_REMOVED"})
    undo(every.cancel)
    with subscription:
        u.register_unit("zpace", "meter", 0.75)
        u.unregister_unit("zpace")
    assert not subscription.active
    subscription.cancel()
    u.register_unit("zpace", "meter", 0.75)
    u.unregister_unit("zpace")
    assert heard == [("UNIT_REMOVED", "zpace")]
    assert len(others) == 4


@pytest.mark.parametrize("callback, kinds, error", [(42, None, TypeError), (print, ["UNIT_ADDED"], ValueError)])
def test_bad_subscriptions_are_refused(callback, kinds, error):
    with pytest.raises(error):
        u.subscribe(callback, kinds)


def refuse(kind, name):
    raise Refusal(name)


@pytest.mark.parametrize(
    "change", [lambda: u.unregister_unit("zkept"), lambda: u.register_unit("zkept", "meter", 4)],
    ids=["removal", "redefinition"],
)
def test_a_unit_removal_can_be_refused(change, undo, recwarn):
    u.register_unit("zkept", "meter", 3)
    undo(u.unregister_unit, "zkept")
    before = snapshot()
    with u.subscribe(refuse, "UNIT_REMOVED"):
        with pytest.raises(Refusal):
            change()
    assert snapshot() == before
    assert u.convert(1, "zkept", "meter") == 3


def test_errors_where_no_refusal_is_allowed_are_reported(undo):
    heard, subscription = record()
    undo(subscription.cancel)
    with unraisable() as reported, u.subscribe(refuse):
        u.register_quantity("zwave", "length^6")
        u.register_unit("zswell", "meter^6", 2)
        u.register_prefix("zotta", 24)
        u.unregister_prefix("zotta")
        u.unregister_quantity("zwave")  # its unit goes with it, however its listeners answer
    assert reported == [Refusal] * 6
    assert [kind for kind, _ in heard] == [
        "QUANTITY_CREATED", "UNIT_CREATED", "PREFIX_CREATED", "PREFIX_REMOVED", "UNIT_REMOVED", "QUANTITY_REMOVED",
    ]
    assert "zwave" not in u.quantities() and "zswell" not in u.units()


def test_a_listener_looks_up_but_does_not_change(undo):
    looked_up = []

    def meddle(kind, name):
        looked_up.append(u.units()[name].multiplier)
        u.unregister_unit(name)

    with unraisable() as reported, u.subscribe(meddle, "UNIT_CREATED"):
        u.register_unit("zmeddle", "meter", 7)
    undo(u.unregister_unit, "zmeddle")
    assert looked_up == [7.0]
    assert reported == [RuntimeError]
    assert u.convert(1, "zmeddle", "meter") == 7
