"""The password prompt: right, wrong and cancelled, without an agent, and what the window does meanwhile."""

from product import PASSWORD
from steps import expect, step, wait_for
from x11 import X11Desktop

DESKTOP = X11Desktop
NAMES = ("Aria", "Bravo", "Cello")
WAITING = "Waiting for the password…"


def ask(desktop, name="Aria"):
    product = desktop.start_product(NAMES)
    desktop.click(product.switch(name))
    desktop.await_prompt()
    return product


@step("disables a plugin with the right password")
def right_password(desktop):
    product = ask(desktop)
    desktop.picture("prompt")
    desktop.answer_prompt(PASSWORD)
    desktop.await_no_prompt()
    product.expect_state(["Aria"], enabled=False)
    product.expect_state(["Bravo", "Cello"], enabled=True)
    desktop.picture("disabled")
    desktop.click(product.switch("Aria"))
    desktop.await_prompt()
    desktop.answer_prompt(PASSWORD)
    product.expect_state(NAMES, enabled=True)


@step("says that it waits for the password, and that it has ended")
def footer(desktop):
    product = ask(desktop)
    wait_for(f"the line {WAITING!r}", lambda: WAITING in product.window.texts())
    desktop.answer_prompt(PASSWORD)
    wait_for(f"the end of the line {WAITING!r}", lambda: WAITING not in product.window.texts())


@step("changes nothing with a wrong password")
def wrong_password(desktop):
    product = ask(desktop)
    for _ in range(3):
        if not desktop.prompt():
            break
        desktop.answer_prompt("wrong")
        wait_for("the answer to a wrong password", lambda: not desktop.prompt() or refused(desktop), 20)
    desktop.picture("wrong-password")
