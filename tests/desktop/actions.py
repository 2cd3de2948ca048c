"""The reader's action on every control does what a click does."""

import time

from glance import Glance
from product import PASSWORD, PLUGINS
from steps import expect, expect_equal, step, wait_for
from x11 import X11Desktop

DESKTOP = X11Desktop
NAMES = ("Aria", "Bravo", "Cello")
# Tables are acted upon by keys, their titles are one control as wide as the table, and the website is another program.
OTHER_ROLES = ("table cell", "table column header", "scroll bar", "split pane", "text", "label")
LEFT_OUT = ("Sort by ", "Import Profile", "Website")
SECTIONS = ("Profiles", "Actions", "Plugin Formats", "Manufacturers", "Statistics", "Recent Activity")


def controls(window):
    return [node for node in window.walk()
            if node.role not in OTHER_ROLES and node.acts and node.name and not node.name.startswith(LEFT_OUT)
            and node.has("sensitive")]


def numbered(nodes):
    """Each with what it is recognised by after the window has been built again. "Reset" last: it hides the others."""
    seen = {}
    found = []
    for node in sorted(nodes, key=lambda node: node.name == "Reset"):
        key = node.role, node.name
        seen[key] = seen.get(key, 0) + 1
        found.append((*key, seen[key]))
    return found


class Walk:
    """Acts on all controls of a view in one way, twice on those that stay, and notes the state after each. The view
    is a function that starts the product anew and returns the window with the controls."""

    def __init__(self, desktop, view, act):
        self._desktop = desktop
        self._view = view
        self._act = act
        self._glance = Glance()
        self._nodes = {}
        self._windows = 1
        self.trace = []

    def run(self):
        self._build()
        for key in list(self._nodes):
            node = self._find(key)
            self._note(key, node)
            if self._close_what_has_opened():
                continue
            if node.has("showing"):
                self._note(key, node)
                self._close_what_has_opened()
        return self.trace

    def _build(self):
        window = self._view(self._desktop)
        self._settled()
        self._windows = len(self._desktop.windows_of_product())
        nodes = controls(window)
        self._nodes = dict(zip(numbered(nodes), sorted(nodes, key=lambda node: node.name == "Reset")))

    def _find(self, key):
        if not self._nodes[key].has("showing"):
            self._build()
        expect(key in self._nodes, f"{key} is gone")
        return self._nodes[key]

    def _note(self, key, node):
        before = self._state()
        self._act(node)
        self.trace.append((key, self._settled(before)))

    def _close_what_has_opened(self):
        desktop = self._desktop
        if desktop.prompt():
            desktop.focus_prompt()
            desktop.key("Escape")
            desktop.await_no_prompt()
        elif len(desktop.windows_of_product()) > self._windows:
            desktop.key("Escape")
            wait_for("the end of what has opened", lambda: len(desktop.windows_of_product()) <= self._windows)
        else:
            return False
        self._settled()
        return True

    def _state(self):
        """Everything that an action may change: what is shown, the prompt, the files and the catalogue."""
        desktop = self._desktop
        prompts = [each for each in self._glance.take(desktop.agent.pid) if each[0] == "dialog"]
        return (self._glance.take(desktop.product.pid), prompts, sorted(PLUGINS.rglob("*")),
                sorted(desktop.product.states().items()))

    def _settled(self, before=None):
        """The state once it stays the same. One that is as before gets more time to change."""
        start = time.monotonic()
        last = self._state()
        while True:
            time.sleep(0.2)
            now = self._state()
            passed = time.monotonic() - start
            if (now == last and passed > (1.2 if now == before else 0.3)) or passed > 5:
                return now
            last = now


def compare(desktop, view, least):
    clicked = Walk(desktop, view, desktop.click).run()
    acted = Walk(desktop, view, lambda node: node.act()).run()
    count = len({key for key, _ in clicked})
    expect(count >= least, f"only {count} controls found")
    for (key, after_click), (acted_key, after_action) in zip(clicked, acted):
        expect_equal(acted_key, key, "control")
        for one, other in zip(after_action, after_click):
            expect(one == other, f"{key} differs, only after the action: {missing(one, other)}, only after the click: "
                   f"{missing(other, one)}")
    expect_equal(len(acted), len(clicked), "uses of controls")


def missing(these, those):
    return [each for each in these if each not in those][:5]


def start(desktop):
    return desktop.start_product(NAMES, shows_table=False).window


def sections_open(desktop):
    window = start(desktop)
    for name in SECTIONS:
        header = window.find(None, name, acts=True)
        if header and not header.has("checked") and not header.has("expanded"):
            desktop.click(header)
            time.sleep(0.4)
    return window


def plugin_picked(desktop):
    product = desktop.start_product(NAMES)
    desktop.click(product.cell("Aria"))
    product.window.get("push button", "Disable Selected")
    return product.window


def question_open(desktop):
    desktop.click(plugin_picked(desktop).get("push button", "Delete Selected"))
    return desktop.product.application.get("alert")


def export_open(desktop):
    desktop.click(start(desktop).get("push button", "Export"))
    return desktop.product.application.get("dialog")


@step("acts for readers as for clicks: the window at the start")
def at_start(desktop):
    compare(desktop, start, 8)


@step("acts for readers as for clicks: all sections of the sidebar")
def in_sidebar(desktop):
    compare(desktop, sections_open, 16)


@step("acts for readers as for clicks: the table and the bulk pane")
def in_bulk_pane(desktop):
    compare(desktop, plugin_picked, 12)


@step("acts for readers as for clicks: a question and the export")
def in_dialogs(desktop):
    compare(desktop, question_open, 2)
    compare(desktop, export_open, 4)


@step("disables a plugin by the reader's actions alone")
def disable_by_actions(desktop):
    product = desktop.start_product(NAMES, shows_table=False)
    product.window.get(None, "All Plugins", acts=True).act()
    product.cell("Aria").act()
    product.window.get("push button", "Disable Selected").act()
    prompt = desktop.await_prompt()
    prompt.get("password text").set_text(PASSWORD)
    prompt.get("push button", "Authenticate").act()
    desktop.await_no_prompt()
    product.expect_state(["Aria"], enabled=False)
    product.expect_state(["Bravo", "Cello"], enabled=True)
