"""A start, a batch and pictures under a Wayland compositor, at scale 1 and 2."""

import json
import os
from pathlib import Path

import batch
from programs import RUNTIME, Desktop, output_of
from steps import expect, expect_equal, step, wait_for

CONFIG = """
output HEADLESS-1 resolution 1600x1000 position 0,0 scale 1
default_border normal
focus_on_window_activation focus
seat * hide_cursor 0
"""


class SwayDesktop(Desktop):
    """sway without a screen: its output is only kept in memory."""

    def __init__(self):
        super().__init__({"WAYLAND_DISPLAY": "wayland-1", "XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "sway",
                          "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1"})
        self.environment.pop("DISPLAY", None)

    def open(self):
        config = RUNTIME / "sway-config"
        config.write_text(CONFIG, encoding="utf-8")
        for old in RUNTIME.glob("wayland-*"):
            old.unlink()
        program = self.run("sway", "--config", str(config), log="sway")
        socket = RUNTIME / f"sway-ipc.{os.getuid()}.{program.pid}.sock"
        self.environment["SWAYSOCK"] = str(socket)
        wait_for("the compositor", lambda: socket.exists() and (RUNTIME / "wayland-1").exists(), 30)
        # Applications look for a keyboard when one arrives: this one is there all the time.
        self.run("wtype", "-s", "3600000")
        self.start_services()

    def message(self, *command):
        return json.loads(output_of("swaymsg", "--raw", *command, env=self.environment))

    def scale(self, number):
        self.message("output HEADLESS-1 scale", str(number))
        wait_for(f"scale {number}", lambda: self.message("-t", "get_outputs")[0]["scale"] == number)

    def windows(self, process):
        """Title and inner frame of each window of the process."""
        found = []

        def visit(node):
            if node.get("pid") == process:
                found.append((node["name"], node["window_rect"]))
            for child in node["nodes"] + node["floating_nodes"]:
                visit(child)

        visit(self.message("-t", "get_tree"))
        return found

    # Input. Places on the screen are unknown to applications here, so there is nothing to click at.
    def click(self, node):
        expect(node.act(), f"{node} has no action")

    def key(self, *names):
        for name in names:
            *modifiers, key = name.split("+")
            held = [word for each in modifiers for word in ("-M", each)]
            released = [word for each in modifiers for word in ("-m", each)]
            self._wtype(*held, "-k", key, *released)

    def type(self, text):
        self._wtype("-d", "20", text)

    def _wtype(self, *arguments):
        # Each call brings a keyboard of its own, which applications have to notice before it is used.
        output_of("wtype", "-s", "200", *arguments, "-s", "200", env=self.environment)

    def await_window(self):
        wait_for("the window", lambda: self.windows(self.product.pid))

    def focus_product(self):
        self.message(f"[pid={self.product.pid}] focus")

    def focus_prompt(self):
        self.message(f"[pid={self.agent.pid}] focus")

    def answer_prompt(self, password):
        self.focus_prompt()
        self.type(password)
        # Return from a keyboard that comes and goes does not reach the agent's toolkit.
        self.prompt().get("push button", "Authenticate").act()

    def save_picture(self, path):
        output_of("grim", str(path), env=self.environment)


DESKTOP = SwayDesktop


def platform_of(product):
    """Which plugin for the display the product has loaded."""
    text = Path(f"/proc/{product.pid}/maps").read_text(encoding="utf-8")
    return [name for name in ("qwayland", "qxcb") if name in text]


def disable_all(desktop, scale):
    desktop.scale(scale)
    product = batch.start(desktop)
    expect("qwayland" in platform_of(product), f"the window is not native, but {platform_of(product)}")
    desktop.picture(f"wayland-{scale}-start")
    desktop.focus_product()
    desktop.focus_table()
    desktop.key("ctrl+a")
    product.window.get("label", "60 plugin(s)")
    product.window.get("push button", "Disable Selected").act()
    product.application.get("push button", "Continue").act()
    desktop.await_prompt()
    desktop.picture(f"wayland-{scale}-prompt")
    with batch.HeldRun(desktop):
        in_the_middle(desktop, product, scale)
    product.expect_state(batch.NAMES, enabled=False)
    desktop.picture(f"wayland-{scale}-disabled")


def in_the_middle(desktop, product, scale):
    batch.await_middle(product)
    desktop.picture(f"wayland-{scale}-progress")
    expect_equal(len(desktop.windows(product.pid)), 1, "windows of the product")
    panel = product.window.find("label", batch.LABEL)
    expect(panel, "the panel is no part of the main window")
    left, _, width, _ = panel.box
    middle = product.window.box[2] / 2
    expect(abs(left + width / 2 - middle) <= 2, f"the panel's middle is {left + width / 2}, the window's {middle}")


@step("runs under Wayland at scale 1: start, prompt, 60 plugins")
def scale_1(desktop):
    disable_all(desktop, 1)


@step("runs under Wayland at scale 2: start, prompt, 60 plugins")
def scale_2(desktop):
    disable_all(desktop, 2)


@step("fits its window to a smaller screen than that of the last session")
def frame(desktop):
    desktop.scale(1)
    product = desktop.start_product(("Aria",))
    desktop.message(f"[pid={product.pid}] floating enable")
    desktop.message(f"[pid={product.pid}] resize set 1500 950")
    wait_for(f"the larger frame, now {desktop.windows(product.pid)}",
             lambda: desktop.windows(product.pid)[0][1]["width"] >= 1490)
    desktop.product.stop()
    desktop.scale(2)
    product = desktop.restart_product()
    desktop.message(f"[pid={product.pid}] floating enable")
    desktop.picture("wayland-smaller-screen")
    _, rect = desktop.windows(product.pid)[0]
    expect(rect["width"] <= 800 and rect["height"] <= 500, f"the window is {rect} on a screen of 800 by 500")
