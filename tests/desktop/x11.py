"""A desktop on a virtual X11 display, with openbox as its window manager."""

import re
import subprocess
import time

from pictures import Picture
from programs import RUNTIME, Desktop, output_of
from steps import Failed, wait_for


def contains(box, x, y):
    left, top, width, height = box
    return left <= x < left + width and top <= y < top + height


class X11Desktop(Desktop):
    SIZE = "1600x1000x24"

    def __init__(self):
        super().__init__({"DISPLAY": ":1", "XDG_SESSION_TYPE": "x11"})
        self._pixels = RUNTIME / "pixels"

    def open(self):
        self._pixels.mkdir(exist_ok=True)
        self.run("Xvfb", ":1", "-screen", "0", self.SIZE, "-fbdir", str(self._pixels), "-nolisten", "tcp", "-noreset")
        wait_for("the display", lambda: subprocess.run(["xprop", "-root"],
                                                       env=self.environment, stdout=subprocess.DEVNULL,
                                                       stderr=subprocess.DEVNULL, check=False).returncode == 0)
        self.run("openbox", "--sm-disable")
        wait_for("the window manager", lambda: "_NET_SUPPORTING_WM_CHECK(WINDOW)" in self.root_property())
        self.start_services()

    def root_property(self, name="_NET_SUPPORTING_WM_CHECK"):
        return output_of("xprop", "-root", name, env=self.environment)

    # Input.
    def _xdotool(self, *arguments):
        return output_of("xdotool", *arguments, env=self.environment)

    def click_at(self, x, y, button=1):
        self._xdotool("mousemove", str(x), str(y), "click", str(button))

    def click(self, node, button=1):
        x, y = self._bring_into_view(node)
        self.click_at(x, y, button)

    def _bring_into_view(self, node):
        """The middle of a control, which the wheel scrolls into view."""
        for _ in range(30):
            left, top, width, height = node.box
            x, y = left + width // 2, top + height // 2
            clip = next((each for each in node.ancestors() if not contains(each.box, x, y)), None)
            if not clip:
                return x, y
            left, top, width, height = clip.box
            self.click_at(left + width // 2, top + height // 2, 4 if y < top else 5)
            time.sleep(0.1)
        raise Failed(f"{node} cannot be scrolled into view")

    def key(self, *names):
        self._xdotool("key", "--clearmodifiers", *names)

    def type(self, text):
        self._xdotool("type", "--clearmodifiers", "--delay", "20", text)

    # Windows.
    def top_windows(self):
        """All viewable windows of the top level, topmost first: number, and title and class of it or of what is in it."""
        found = []
        for line in output_of("xwininfo", "-root", "-tree", env=self.environment).splitlines():
            line = line.expandtabs()
            match = re.match(r"^( +)(0x[0-9a-f]+) (.*)$", line)
            if not match or "Parent window id" in line:
                continue
            named = "" if "(has no name)" in match[3] else match[3]
            if len(match[1]) == 5:
                found.append([match[2], named])
            elif found and named:
                found[-1][1] += named
        return [(number, text) for number, text in found if self._is_viewable(number)]

    def _is_viewable(self, number):
        report = subprocess.run(["xwininfo", "-id", number], env=self.environment, text=True, check=False,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
        return "IsViewable" in report

    def place(self, text):
        """How many windows are above the one with this text in its title or class; None without one."""
        return next((at for at, (_, texts) in enumerate(self.top_windows()) if text in texts), None)

    def windows_of_product(self):
        return [texts for _, texts in self.top_windows() if '"plugin-manager"' in texts]

    def _activate(self, process):
        found = self._xdotool("search", "--onlyvisible", "--pid", str(process)).split()
        self._xdotool("windowactivate", "--sync", found[-1])

    def await_window(self):
        self._xdotool("search", "--sync", "--onlyvisible", "--pid", str(self.product.pid), "--name", "Orvanlite")

    def focus_product(self):
        self._activate(self.product.pid)

    def focus_prompt(self):
        self._activate(self.agent.pid)

    # Pictures.
    def _read(self):
        return Picture(self._pixels / "Xvfb_screen0")

    def stable_picture(self):
        """Once nothing changes any more, or after a while: something may move for as long as it likes."""
        before = self._read()
        for _ in range(10):
            time.sleep(0.2)
            now = self._read()
            if now == before:
                break
            before = now
        return before

    def save_picture(self, path):
        self.stable_picture().save(path)
