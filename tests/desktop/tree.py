"""The accessibility tree, as a screen reader gets it."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from steps import wait_for  # noqa: E402

STATES = ("showing", "visible", "enabled", "sensitive", "focusable", "focused", "active", "checkable", "checked",
          "selectable", "selected", "expandable", "expanded", "pressed", "modal", "editable")


class Node:
    """One accessible object. A question to an object that is gone answers like an empty one."""

    def __init__(self, accessible):
        self.accessible = accessible

    def __eq__(self, other):
        return isinstance(other, Node) and self.accessible == other.accessible

    def _ask(self, function, otherwise):
        try:
            # What is cached is renewed by events, and nobody here listens to them.
            self.accessible.clear_cache()
            return function(self.accessible)
        except GLib.Error:
            return otherwise

    @property
    def name(self):
        return self._ask(Atspi.Accessible.get_name, "") or ""

    @property
    def description(self):
        return self._ask(Atspi.Accessible.get_description, "") or ""

    @property
    def role(self):
        return self._ask(Atspi.Accessible.get_role_name, "gone")

    @property
    def states(self):
        found = self._ask(lambda each: each.get_state_set().get_states(), [])
        return {state.value_nick for state in found} & set(STATES)

    def has(self, state):
        return state in self.states

    @property
    def text(self):
        return self._ask(lambda each: Atspi.Text.get_text(each, 0, -1), "")

    @property
    def value(self):
        return self._ask(Atspi.Value.get_current_value, None)

    @property
    def highest(self):
        return self._ask(Atspi.Value.get_maximum_value, None)

    @property
    def parent(self):
        found = self._ask(Atspi.Accessible.get_parent, None)
        return Node(found) if found else None

    def ancestors(self):
        """What it is part of, up to its window."""
        node = self.parent
        while node and node.role not in ("application", "menu item"):
            yield node
            node = node.parent

    @property
    def process(self):
        return self._ask(Atspi.Accessible.get_process_id, 0)

    @property
    def children(self):
        count = self._ask(Atspi.Accessible.get_child_count, 0)
        found = (self._ask(lambda each, at=at: each.get_child_at_index(at), None) for at in range(count))
        return [Node(each) for each in found if each]

    @property
    def box(self):
        """Left, top, width and height on the screen."""
        box = self._ask(lambda each: each.get_extents(Atspi.CoordType.SCREEN), None)
        return (box.x, box.y, box.width, box.height) if box else (0, 0, 0, 0)

    @property
    def actions(self):
        count = self._ask(Atspi.Action.get_n_actions, 0)
        return [self._ask(lambda each, at=at: Atspi.Action.get_action_name(each, at), "") for at in range(count)]

    @property
    def acts(self):
        return bool(self.actions)

    def act(self, index=0):
        """The reader's action."""
        return self._ask(lambda each: Atspi.Action.do_action(each, index), False)

    def focus(self):
        return self._ask(Atspi.Component.grab_focus, False)

    def set_text(self, text):
        return self._ask(lambda each: Atspi.EditableText.set_text_contents(each, text), False)

    def __str__(self):
        return f"{self.role} {self.name!r}"

    def _walk(self, hidden, role=None, states=None):
        """Pairs of object and what was asked to get there, as each question costs a message."""
        yield self, role or self.role, self.states if states is None else states
        for child in self.children:
            role, states = child.role, child.states
            if hidden or "showing" in states or role in ("panel", "application"):
                yield from child._walk(hidden, role, states)

    def walk(self, hidden=False):
        """The object and everything below it, in the order of a reader. Hidden branches are left out."""
        return (node for node, _, _ in self._walk(hidden))

    def find(self, role=None, name=None, hidden=False, **wanted):
        """The first object below with this role, name, and other properties; None without one."""
        for node, its_role, _ in self._walk(hidden):
            if role is not None and its_role != role:
                continue
            if name is not None and node.name != name:
                continue
            if all(getattr(node, key) == value for key, value in wanted.items()):
                return node
        return None

    def get(self, role=None, name=None, seconds=15, **wanted):
        """The same, as soon as there is one."""
        return wait_for(f"{role or 'object'} {name!r}", lambda: self.find(role, name, **wanted), seconds)

    def texts(self):
        """Everything that a reader could read in it. Not what is only announced: that stays for a while without being
        seen."""
        seen = [node for node, role, _ in self._walk(False) if role != "notification"]
        return [text for node in seen for text in (node.name, node.description) if text]

    def dump(self, depth=0):
        lines = [f"{'  ' * depth}{self} {self.description!r} {' '.join(sorted(self.states))} {self.box}"]
        for child in self.children:
            lines += child.dump(depth + 1)
        return lines


def applications():
    desktop = Node(Atspi.get_desktop(0))
    return desktop.children


def application(process):
    """The tree of the process, or None."""
    return next((each for each in applications() if each.process == process), None)
