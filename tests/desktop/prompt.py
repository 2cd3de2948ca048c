"""The password prompt: right, wrong and cancelled, without an agent, and what the window does meanwhile."""

from product import PASSWORD
from steps import expect, expect_equal, step, wait_for
from x11 import X11Desktop

DESKTOP = X11Desktop
NAMES = ("Aria", "Bravo", "Cello")
WAITING = "Waiting for the password…"
UNCHANGED = "Nothing was changed."


def ask(desktop):
    product = desktop.start_product(NAMES)
    desktop.click(product.switch("Aria"))
    desktop.await_prompt()
    return product


def status_line(product):
    """What the footer says about the operation; None if it says nothing."""
    return next((text for text in product.window.texts() if text == WAITING or UNCHANGED in text), None)


def expect_unchanged(desktop, reason):
    """Nothing has moved, the window says why, and the next try works."""
    product = desktop.product
    product.expect_state(NAMES, enabled=True)
    line = wait_for("the end of the wait for the password", lambda: status_line(product) not in (WAITING, None) and
                    status_line(product), 5)
    expect(UNCHANGED in line and reason in line, f"the reason is {line!r}, without {reason!r} and {UNCHANGED!r}")


def expect_next_works(desktop):
    product = desktop.product
    desktop.click(product.switch("Bravo"))
    desktop.await_prompt()
    desktop.answer_prompt(PASSWORD)
    product.expect_state(["Bravo"], enabled=False)
    product.expect_state(["Aria", "Cello"], enabled=True)
    wait_for("the end of the line", lambda: status_line(product) is None, 5)


@step("disables a plugin with the right password, and enables it again")
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


@step("says that it waits for the password, and when it has ended")
def waiting(desktop):
    product = ask(desktop)
    wait_for(f"the line {WAITING!r}", lambda: status_line(product) == WAITING, 5)
    desktop.answer_prompt(PASSWORD)
    product.expect_state(["Aria"], enabled=False)
    wait_for(f"the end of the line {WAITING!r}", lambda: status_line(product) is None, 5)


@step("changes nothing with a wrong password")
def wrong_password(desktop):
    ask(desktop)
    for _ in range(5):  # the agent asks again, three times
        prompt = desktop.prompt()
        if not prompt:
            break
        field = prompt.get("password text")
        desktop.answer_prompt("open says me")
        wait_for("the answer to a wrong password",
                 lambda: not desktop.prompt() or (field.has("sensitive") and not field.text), 20)
        desktop.picture("wrong-password")
    desktop.await_no_prompt()
    expect_unchanged(desktop, "denied")
    desktop.picture("after-wrong-password")
    expect_next_works(desktop)


@step("changes nothing when the prompt is cancelled")
def cancelled(desktop):
    ask(desktop)
    desktop.focus_prompt()
    desktop.key("Escape")
    desktop.await_no_prompt()
    expect_unchanged(desktop, "Cancelled")
    desktop.picture("cancelled")
    expect_next_works(desktop)


@step("changes nothing when the agent ends during the prompt")
def agent_ends(desktop):
    ask(desktop)
    desktop.stop_agent()
    expect_unchanged(desktop, "")
    desktop.picture("agent-ended")
    desktop.start_agent()
    expect_next_works(desktop)


@step("says that there is no agent to ask for the password")
def no_agent(desktop):
    product = desktop.start_product(NAMES)
    desktop.stop_agent()
    desktop.click(product.switch("Aria"))
    expect_unchanged(desktop, "agent")
    desktop.picture("no-agent")
    desktop.start_agent()
    expect_next_works(desktop)


@step("takes no input during the prompt: Alt+E, Escape and clicks")
def input_during_prompt(desktop):
    product = ask(desktop)
    desktop.focus_product()
    only_window = desktop.windows_of_product()
    expect_equal(len(only_window), 1, "windows of the product during the prompt")
    for key in ("alt+e", "Escape", "space", "ctrl+a", "Delete"):
        desktop.key(key)
    for name in ("Clear All", "Scan", "Export"):
        desktop.click(product.window.get("push button", name))
    desktop.click(product.switch("Cello"))
    desktop.click(product.window.get("menu item", "Edit"))
    desktop.click(product.switch("Bravo"), button=3)
    desktop.picture("input-during-prompt")
    expect_equal(desktop.windows_of_product(), only_window, "windows of the product during the prompt")
    expect(desktop.prompt(), "the prompt has ended")
    desktop.answer_prompt(PASSWORD)
    desktop.await_no_prompt()
    product.expect_state(["Aria"], enabled=False)
    product.expect_state(["Bravo", "Cello"], enabled=True)


@step("keeps the prompt in front when its own window is clicked")
def prompt_in_front(desktop):
    product = ask(desktop)
    desktop.click(product.cell("Cello"))
    desktop.picture("clicked-behind-prompt")
    prompt = desktop.place('"Authenticate"')
    above = [text for text in desktop.windows_of_product() if desktop.place(text) < prompt]
    expect_equal(above, [], "windows of the product above the prompt")
