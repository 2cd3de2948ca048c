"""The progress panel: 60 plugins with one password."""

import subprocess

from product import PASSWORD, PLUGINS, as_root
from programs import RUNTIME
from steps import expect, expect_equal, step, wait_for
from x11 import X11Desktop

DESKTOP = X11Desktop
NAMES = [f"Plugin {number:02}" for number in range(1, 61)]
PANEL = '"Progress"'
PROMPT = '"Authenticate"'
HELD = RUNTIME / "held"


def ask_for_all(desktop):
    """Everything picked and confirmed, so that the prompt is open."""
    # The disabled plugins are on another disk, and moving takes its time.
    product = desktop.start_product(NAMES, payload=1_000_000)
    as_root(f"mkdir -p '{PLUGINS}/Disabled'; mount -t tmpfs disabled '{PLUGINS}/Disabled'")
    desktop.click(product.cell(NAMES[0]))
    desktop.key("ctrl+a")
    product.window.get("label", "60 plugin(s)")
    desktop.click(product.window.get("push button", "Disable Selected"))
    desktop.click(product.application.get("push button", "Continue"))
    desktop.await_prompt()
    return product


@step("keeps the progress panel away from the prompt")
def prompt_is_on_top(desktop):
    ask_for_all(desktop)
    desktop.picture("sixty-prompt")
    prompt, panel = desktop.place(PROMPT), desktop.place(PANEL)
    expect(prompt is not None, "no window of the prompt")
    expect(panel is None or prompt < panel, f"the panel is above the prompt: places {panel} and {prompt}")


def run_into_the_middle(desktop):
    """60 plugins of which between 20 and 59 have been moved, with the runner stopped there."""
    product = ask_for_all(desktop)
    HELD.unlink(missing_ok=True)
    holder = subprocess.Popen(["sudo", "-S", "-p", "", "python3", "/steps/hold.py", "20", str(HELD)],
                              stdin=subprocess.PIPE, text=True)
    holder.stdin.write(PASSWORD + "\n")
    holder.stdin.close()
    desktop.answer_prompt(PASSWORD)
    wait_for("the middle of the run", HELD.exists, 60)
    return product, holder


def let_go(holder):
    if HELD.exists():
        as_root(f"rm '{HELD}'")
    holder.wait(10)


@step("shows the progress of 60 plugins, and moves them all")
def progress(desktop):
    product, holder = run_into_the_middle(desktop)
    try:
        desktop.await_no_prompt()
        wait_for("the window of the panel", lambda: desktop.place(PANEL) is not None, 5)
        product.application.get("label", "Disabling 60 plugins…")
        bar = product.application.get("progress bar")
        wait_for(f"progress between a third and the end, now {bar.value} of {bar.highest}",
                 lambda: 0.3 < share(bar) < 1, 5)
        desktop.picture("sixty-progress")
        expect_equal(desktop.place(PANEL), 0, "windows above the panel")
    finally:
        let_go(holder)
    wait_for("the end of the panel", lambda: desktop.place(PANEL) is None, 30)
    product.expect_state(NAMES, enabled=False)
    desktop.picture("sixty-disabled")


def share(bar):
    """Of the whole, whatever the range."""
    highest = bar.highest or 100
    return (bar.value or 0) / highest
