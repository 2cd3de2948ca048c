"""The words of a screen reader: what someone hears who finds, picks and switches plugins with the screen off."""

import re
import shutil
import time

from product import DATA, HOME, PASSWORD, SETTINGS, Product
from programs import RESULTS
from steps import Failed, expect, step, wait_for
from x11 import X11Desktop

NAMES = ("Aria", "Bravo", "Cello")
LOG = RESULTS / "orca.txt"
TRANSCRIPT = RESULTS / "spoken.txt"
SPEECH = """LogLevel 3
CommunicationMethod "unix_socket"
AddModule "dummy" "sd_dummy" ""
DefaultModule dummy
"""


class SpeechDesktop(X11Desktop):
    """With a screen reader that speaks into its log: the module for speech has no voice."""

    def __init__(self):
        super().__init__()
        self._heard = 0

    def open(self):
        super().open()
        folder = HOME / ".config/speech-dispatcher"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "speechd.conf").write_text(SPEECH, encoding="utf-8")
        self.setting("org.gnome.desktop.a11y.applications", "screen-reader-enabled", "true")
        self.run("python3", "/steps/orca_by_line.py", "--replace", f"--debug-file={LOG}", log="orca-output")
        self.hear("Screen reader on", seconds=60)

    def close(self):
        self._write_transcript()
        self.setting("org.gnome.desktop.a11y.applications", "screen-reader-enabled", "false")
        super().close()
        shutil.rmtree(HOME / ".local/share/orca", ignore_errors=True)

    def _spoken(self):
        if not LOG.exists():
            return []
        lines = LOG.read_text(encoding="utf-8", errors="replace").splitlines()
        return [match[1] for match in (re.search(r"SPEECH OUTPUT: '(.*?)'(?: |\{|$)", line) for line in lines) if match]

    def listen(self, what):
        """From here on. The transcript gets what was spoken so far, and what is done next."""
        before, now = None, len(self._spoken())
        end = time.monotonic() + 10
        while before != now and time.monotonic() < end:
            time.sleep(1.2)
            before, now = now, len(self._spoken())
        self._write_transcript(f"-- {what}")
        self._heard = now

    def _write_transcript(self, *lines):
        with open(TRANSCRIPT, "a", encoding="utf-8") as file:
            file.writelines(f"   {words}\n" for words in self._spoken()[self._heard:])
            file.writelines(f"{line}\n" for line in lines)

    def hear(self, *patterns, seconds=20):
        """Waits until all patterns were spoken since listen(), in any order."""
        def missing():
            words = "\n".join(self._spoken()[self._heard:])
            return [pattern for pattern in patterns if not re.search(pattern, words, re.IGNORECASE)]

        try:
            wait_for("speech", lambda: not missing(), seconds)
        except Failed:
            expect(False, f"not spoken: {missing()}; spoken: {self._spoken()[self._heard:]}")

    def press(self, *keys):
        self.listen("presses " + ", ".join(keys))
        self.key(*keys)


DESKTOP = SpeechDesktop


def into_table(desktop, names=NAMES):
    """The keyboard in the first row of the table."""
    product = desktop.start_product(names)
    desktop.focus_table()
    return product


@step("speaks the pages of the first start")
def first_start(desktop):
    desktop.stop_product()
    Product.wipe()
    shutil.rmtree(SETTINGS)
    desktop.listen("starts for the first time")
    desktop.restart_product()
    desktop.hear("Welcome to Orvanlite")
    page = desktop.product.application.get("dialog")
    before = set(page.texts())
    desktop.press("Right")
    new = wait_for("the second page", lambda: [text for text in page.texts() if text not in before and len(text) > 8])
    desktop.hear(*[re.escape(text[:30]) for text in new[:2]])


@step("speaks what is found, and the row that gets the focus")
def find(desktop):
    desktop.start_product(NAMES)
    desktop.press("ctrl+f")
    desktop.hear("Search plugins")
    desktop.listen("types Bravo")
    desktop.type("Bravo")
    desktop.hear("1 (of 3 )?plugins?")
    desktop.listen("goes into the table")
    desktop.focus_table()
    desktop.hear("Bravo", "Enabled")


@step("speaks what is picked, and how many")
def pick(desktop):
    into_table(desktop)
    desktop.press("Down")
    desktop.hear("selected", r"1 plugin\(s\)")
    desktop.press("Down")
    desktop.hear("Bravo", "selected", r"2 plugin\(s\)")
    desktop.press("ctrl+a")
    desktop.hear(r"3 plugin\(s\)")


@step("speaks the prompt, and the new state of a plugin")
def disable(desktop):
    product = into_table(desktop)
    desktop.press("space")
    desktop.await_prompt()
    desktop.hear("Waiting for the password", "Authenticat", "password text")
    desktop.listen("types the password")
    desktop.answer_prompt(PASSWORD)
    product.expect_state(["Aria"], enabled=False)
    desktop.hear("Aria, Disabled")
    desktop.press("space")
    desktop.await_prompt()
    desktop.focus_prompt()
    desktop.press("Escape")
    desktop.hear("Cancelled")


@step("speaks the start and the end of a batch")
def many(desktop):
    names = [f"Plugin {number:02}" for number in range(1, 24)]
    product = into_table(desktop, names)
    desktop.key("ctrl+a")
    product.window.get("label", "23 plugin(s)")
    desktop.click(product.window.get("push button", "Disable Selected"))
    product.application.get("push button", "Continue")
    desktop.listen("confirms")
    desktop.click(product.application.get("push button", "Continue"))
    desktop.await_prompt()
    desktop.hear("Waiting for the password")
    desktop.listen("types the password")
    desktop.answer_prompt(PASSWORD)
    product.expect_state(names, enabled=False)
    desktop.hear("Moving 23 plugins", "Disabled, 23 plugins")


@step("speaks the preview and the end of applying a profile")
def profile(desktop):
    product = desktop.start_product(NAMES, shows_table=False)
    window = product.window
    desktop.click(window.get(None, "Profiles", acts=True))
    save = window.get("push button", "Save Current State")
    desktop.listen("saves a profile")
    desktop.click(save)
    desktop.hear("Save Profile", "Profile name")
    desktop.type("Mixing")
    desktop.key("Return")
    row = window.get(None, "Mixing", acts=True)
    desktop.show_table()
    desktop.click(product.switch("Aria"))
    desktop.await_prompt()
    desktop.answer_prompt(PASSWORD)
    product.expect_state(["Aria"], enabled=False)
    row.focus()
    desktop.press("Tab")
    desktop.hear("Apply")
    desktop.press("space")
    desktop.hear("Apply Profile", "will enable 1 and disable 0 plugins")
    desktop.listen("confirms")
    desktop.click(product.application.get("push button", "Apply"))
    desktop.await_prompt()
    desktop.answer_prompt(PASSWORD)
    product.expect_state(NAMES, enabled=True)
    desktop.hear("1 plugin|Enabled")


@step("speaks the banner of a new plugin")
def banner(desktop):
    product = desktop.start_product(NAMES, shows_table=False)
    desktop.click(product.window.get(None, "Profiles", acts=True))
    desktop.click(product.window.get("push button", "Save Current State"))
    desktop.type("Mixing")
    desktop.key("Return")
    wait_for("the profile", lambda: (DATA / "profiles.json").exists())
    desktop.stop_product()
    Product.add_plugins(["Delta"])
    desktop.listen("starts with a new plugin")
    desktop.restart_product()
    desktop.hear("1 new plugin detected: Delta")
