"""The progress panel: 60 plugins with one password."""

import batch
from steps import expect, expect_equal, step, wait_for
from x11 import X11Desktop

DESKTOP = X11Desktop
PANEL = '"Progress"'
PROMPT = '"Authenticate"'


def ask_for_all(desktop):
    """Everything picked and confirmed, so that the prompt is open."""
    product = batch.start(desktop)
    desktop.click(product.cell(batch.NAMES[0]))
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


@step("shows the progress of 60 plugins, and moves them all")
def progress(desktop):
    product = ask_for_all(desktop)
    with batch.HeldRun(desktop):
        desktop.await_no_prompt()
        wait_for("the window of the panel", lambda: desktop.place(PANEL) is not None, 5)
        product.application.get("label", batch.LABEL)
        batch.await_middle(product)
        desktop.picture("sixty-progress")
        expect_equal(desktop.place(PANEL), 0, "windows above the panel")
    wait_for("the end of the panel", lambda: desktop.place(PANEL) is None, 30)
    product.expect_state(batch.NAMES, enabled=False)
    desktop.picture("sixty-disabled")
