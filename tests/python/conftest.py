"""Shared fixtures. The registries are process-wide: a test undoes what it registers."""

import pytest
import twzo_units as u


def snapshot():
    """Everything the registries hold, comparable before and after an operation."""
    return (
        {name: repr(unit) for name, unit in u.units().items()},
        u.prefixes(),
        u.quantities(),
        u.systems(),
    )


@pytest.fixture
def undo():
    """undo(action, *args) runs at teardown, last first, whether the test passed or not."""
    actions = []
    yield lambda action, *args: actions.append((action, args))
    for action, args in reversed(actions):
        try:
            action(*args)
        except u.UnitsError:
            pass  # already undone by the test itself
