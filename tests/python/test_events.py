"""Change events for Python callables: order, filtering, cancelling, and subscribers that
raise or try to change the registries."""

import pytest
import twzo_units as u
from conftest import snapshot


class Complaint(Exception):
    pass


def record(kinds=None):
    heard = []
    return heard, u.subscribe(lambda kind, name: heard.append((kind, name)), kinds)


def test_every_change_is_heard_in_order_kinds_filter_and_cancel_ends_it(undo):
    heard, subscription = record()
    removals, filtered = record({"UNIT_REMOVED", "QUANTITY_REMOVED"})
    undo(subscription.cancel)
    with filtered:
        u.register_quantity("zflux", "length^5")
        u.register_unit("zspan", "meter^5", 2)
        u.register_prefix("zetta", 21)
        u.unregister_prefix("zetta")
        u.unregister_quantity("zflux")
    assert not filtered.active
    filtered.cancel()
    u.register_unit("zpace", "meter", 0.75)
    u.unregister_unit("zpace")
    assert heard[:6] == [
        ("QUANTITY_CREATED", "zflux"),
        ("UNIT_CREATED", "zspan"),
        ("PREFIX_CREATED", "zetta"),
        ("PREFIX_REMOVED", "zetta"),
        ("UNIT_REMOVED", "zspan"),
        ("QUANTITY_REMOVED", "zflux"),
    ]
    assert heard[6:] == [("UNIT_CREATED", "zpace"), ("UNIT_REMOVED", "zpace")]
    assert removals == heard[4:6]


@pytest.mark.parametrize("callback, kinds, error", [(42, None, TypeError), (print, ["UNIT_ADDED"], ValueError)])
def test_bad_subscriptions_are_refused(callback, kinds, error):
    with pytest.raises(error):
        u.subscribe(callback, kinds)


def complain(kind, name):
    raise Complaint(kind, name)


# Each change, the event a raising subscriber hears, and whether it refuses the change.
CHANGES = [
    (lambda: u.register_quantity("zwave", "length^6"), "QUANTITY_CREATED", False),
    (lambda: u.register_unit("zswell", "meter^6", 2), "UNIT_CREATED", False),
    (lambda: u.register_prefix("zotta", 24), "PREFIX_CREATED", False),
    (lambda: u.unregister_prefix("zotta"), "PREFIX_REMOVED", True),
    (lambda: u.unregister_unit("zswell"), "UNIT_REMOVED", True),
    # Once a quantity's removal is under way, neither it nor its units' removal is refused.
    (lambda: u.unregister_quantity("zwave"), "UNIT_REMOVED", False),
]


def test_a_raising_subscriber_vetoes_a_removal_while_it_can_and_never_silences_others():
    heard, subscription = record()
    try:
        with u.subscribe(complain):
            for change, kind, refused in CHANGES:
                before = snapshot()
                with pytest.raises(Complaint) as raised:
                    change()
                assert raised.value.args[0] == kind
                assert (snapshot() == before) is refused
    finally:
        subscription.cancel()
        u.unregister_prefix("zotta")
    assert [kind for kind, _ in heard][-2:] == ["UNIT_REMOVED", "QUANTITY_REMOVED"]


def test_a_subscriber_looks_up_but_does_not_change(undo):
    looked_up = []

    def meddle(kind, name):
        looked_up.append(u.units()[name].multiplier)
        u.unregister_unit(name)

    with u.subscribe(meddle, "UNIT_CREATED"), pytest.raises(RuntimeError):
        u.register_unit("zmeddle", "meter", 7)
    undo(u.unregister_unit, "zmeddle")
    assert looked_up == [7.0]
    assert u.convert(1, "zmeddle", "meter") == 7
