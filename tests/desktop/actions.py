"""The reader's action on every control does what a click does."""

import time

from product import PASSWORD, PLUGINS
from steps import Failed, expect, step
from x11 import X11Desktop

DESKTOP = X11Desktop
NAMES = ("Aria", "Bravo", "Cello")
# A cell of a table is acted upon by keys; what opens other windows of the system would cover ours.
OTHER_ROLES = ("table cell", "table column header", "scroll bar", "split pane", "text", "label")
LEFT_OUT = ("Import Profile", "Website")
SECTIONS = ("Profiles", "Actions", "Plugin Formats", "Manufacturers", "Statistics", "Recent Activity")


def controls(product):
    return [node for node in product.application.walk()
            if node.role not in OTHER_ROLES and node.acts and node.name and node.name not in LEFT_OUT
            and node.has("sensitive")]


def identity(node):
    """What a control is recognised by after the window has been built again."""
    return node.role, node.name, node.parent.name if node.parent else ""


def state(desktop):
    """Everything that an action may change: what is shown, the prompt, the files and the catalogue. Not the focus,
    which a click takes."""
    product = desktop.product
    texts = [(role, name, description, tuple(sorted(states - {"focused", "active"})))
             for role, name, description, states in product.application.snapshot()]
    return texts, bool(desktop.prompt()), sorted(PLUGINS.rglob("*")), sorted(product.states().items())


def settled(desktop, before):
    """The state once it has changed and stays, or the same after a while."""
    end = time.monotonic() + 1.5
    last = state(desktop)
    while time.monotonic() < end:
        time.sleep(0.2)
        now = state(desktop)
        if now == last and now != before:
            break
        last = now
    return last


def difference(left, right):
    for one, other in zip(left, right):
        if one != other and isinstance(one, list):
            return f"only after the action: {[x for x in one if x not in other][:4]}, only after the click: " \
                   f"{[x for x in other if x not in one][:4]}"
    return "prompt, files or catalogue differ"


class Comparison:
    """All controls of a window in one of its views. view: brings the product there from a fresh start."""

    def __init__(self, desktop, view):
        self._desktop = desktop
        self._view = view
        self._base = None
        self._controls = []
        self.findings = []
        self.count = 0

    def _rebuild(self):
        self._view(self._desktop)
        time.sleep(0.5)
        self._base = state(self._desktop)
        self._controls = controls(self._desktop.product)

    def _find(self, wanted, at):
        same = [node for node in self._controls if identity(node) == wanted and node.has("showing")]
        expect(len(same) > at, f"{wanted} is gone")
        return same[at]

    def _back(self, wanted, at):
        """To the view, in the cheapest way that works."""
        desktop = self._desktop
        if desktop.prompt():
            desktop.focus_prompt()
            desktop.key("Escape")
            desktop.await_no_prompt()
        elif len(desktop.windows_of_product()) > 1:
            desktop.key("Escape")
        else:
            desktop.click(self._find(wanted, at))
        if settled(desktop, None) != self._base:
            self._rebuild()

    def _after(self, wanted, at, act):
        act(self._find(wanted, at))
        found = settled(self._desktop, self._base)
        if found != self._base:
            self._back(wanted, at)
        return found

    def run(self):
        self._rebuild()
        seen = {}
        for wanted in [identity(node) for node in self._controls]:
            at = seen[wanted] = seen.get(wanted, -1) + 1
            self.count += 1
            try:
                clicked = self._after(wanted, at, self._desktop.click)
                acted = self._after(wanted, at, lambda node: node.act())
                if clicked != acted:
                    self.findings.append(f"{wanted}: {difference(acted, clicked)}")
            except Failed as reason:
                self.findings.append(f"{wanted}: {reason}")
                self._rebuild()


def compare(desktop, view, least):
    comparison = Comparison(desktop, view)
    comparison.run()
    expect(comparison.count >= least, f"only {comparison.count} controls found")
    expect(not comparison.findings, f"{len(comparison.findings)} of {comparison.count} controls differ:\n        | "
           + "\n        | ".join(comparison.findings))


def start(desktop):
    desktop.start_product(NAMES, shows_table=False)


def sections_open(desktop):
    start(desktop)
    window = desktop.product.window
    for name in SECTIONS:
        header = window.find(None, name, acts=True)
        if header and not header.has("checked") and not header.has("expanded"):
            desktop.click(header)
            time.sleep(0.4)


def plugin_picked(desktop):
    desktop.start_product(NAMES)
    desktop.click(desktop.product.cell("Aria"))
    desktop.product.window.get("push button", "Disable Selected")


def question_open(desktop):
    plugin_picked(desktop)
    desktop.click(desktop.product.window.get("push button", "Delete Selected"))
    desktop.product.application.get("push button", "Cancel")


def export_open(desktop):
    start(desktop)
    desktop.click(desktop.product.window.get("push button", "Export"))
    desktop.product.application.get("push button", "Cancel")


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
