"""Waiting for a condition: the only way a test lets time pass."""

import time


def wait_until(condition, timeout=20.0, what="the condition holds", interval=0.004):
    """Poll `condition` until it returns something true, and return that.

    `timeout` (seconds) only bounds a failing test; it is generous because the machine may be
    busy. `what`, a text or what gives one in the end, completes the sentence "waited in vain
    until ...".
    """
    deadline = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            what = what() if callable(what) else what
            raise AssertionError(f"waited in vain for {timeout:g} s until {what} (last value: {value!r})")
        time.sleep(interval)


def holds_for(condition, seconds, what, interval=0.004):
    """Assert that `condition` stays true for `seconds`, sampled all the time.

    For the facts whose subject is time itself ("nothing opens meanwhile").
    """
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        value = condition()
        assert value, f"did not hold: {what} (value: {value!r})"
        time.sleep(interval)


def holds_until(condition, moment, what):
    """Assert that `condition` is true at every look that is over before `moment` (monotonic).

    A look that ends later proves nothing, so a busy machine can't make this fail.
    """
    while True:
        value = condition()
        if time.monotonic() >= moment:
            return
        assert value, f"did not hold: {what} (value: {value!r})"
        time.sleep(0.004)
