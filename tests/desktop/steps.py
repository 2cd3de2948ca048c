"""The list of steps, and what a step uses to say how it went.

Python, because the accessibility tree is read through Atspi, whose bindings it has.
"""

import time

STEPS = []


class Failed(Exception):
    """The product does not do what the step expects."""


class NotRun(Exception):
    """This machine cannot run the step."""


def step(name):
    """Adds a step. Its function takes the desktop of its module."""

    def add(function):
        STEPS.append((name, function))
        return function

    return add


def expect(condition, text):
    if not condition:
        raise Failed(text)


def expect_equal(found, wanted, what):
    expect(found == wanted, f"{what}: {found!r} instead of {wanted!r}")


def wait_for(what, question, seconds=15):
    """Asks until the answer is neither false nor empty, and returns it."""
    end = time.monotonic() + seconds
    while True:
        answer = question()
        if answer:
            return answer
        expect(time.monotonic() < end, f"waited in vain for {what}")
        time.sleep(0.05)
