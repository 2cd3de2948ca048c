"""All that an application shows to readers, at one glance: the questions are sent together instead of one by one, since
a walk through the tree that waits for each answer takes seconds on a busy machine."""

import gi

gi.require_version("Atspi", "2.0")
gi.require_version("Gio", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

ACCESSIBLE = "org.a11y.atspi.Accessible"
PROPERTIES = "org.freedesktop.DBus.Properties"
REGISTRY = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
# Not the focus, which goes to what is clicked.
STATES = (Atspi.StateType.SHOWING, Atspi.StateType.ENABLED, Atspi.StateType.CHECKED, Atspi.StateType.SELECTED,
          Atspi.StateType.EXPANDED, Atspi.StateType.PRESSED, Atspi.StateType.INDETERMINATE, Atspi.StateType.MODAL)
TIMEOUT = 5000  # milliseconds


def states_of(words):
    bits = words[0] | words[1] << 32 if words else 0
    return tuple(state.value_nick for state in STATES if bits >> int(state) & 1)


class Glance:
    def __init__(self):
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                    Gio.DBusCallFlags.NONE, TIMEOUT, None).unpack()[0]
        self._context = GLib.MainContext()
        flags = Gio.DBusConnectionFlags
        self._bus = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)

    def _ask(self, questions):
        """questions: bus name, path, interface, method and arguments of each. Answers in their order, None for those
        that fail."""
        answers = [None] * len(questions)
        left = len(questions)

        def take(bus, result, at):
            nonlocal left
            left -= 1
            try:
                answers[at] = bus.call_finish(result).unpack()[0]
            except GLib.Error:
                pass  # an object that is gone

        self._context.push_thread_default()
        try:
            for at, (name, path, interface, method, arguments) in enumerate(questions):
                self._bus.call(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, TIMEOUT, None,
                               take, at)
            while left:
                self._context.iteration(True)
        finally:
            self._context.pop_thread_default()
        return answers

    def _application(self, process):
        applications = self._ask([(*REGISTRY, ACCESSIBLE, "GetChildren", None)])[0] or []
        processes = self._ask([("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                                GLib.Variant("(s)", (name,))) for name, _ in applications])
        return [where for where, number in zip(applications, processes) if number == process]

    def take(self, process):
        """Role, name, description and states of each object that is shown, without an order. Not what is only
        announced: that stays for a while without being seen."""
        found = []
        level = [(where, True) for where in self._application(process)]
        while level:
            questions = []
            for (name, path), _ in level:
                questions += [(name, path, ACCESSIBLE, "GetRoleName", None),
                              (name, path, PROPERTIES, "Get", GLib.Variant("(ss)", (ACCESSIBLE, "Name"))),
                              (name, path, PROPERTIES, "Get", GLib.Variant("(ss)", (ACCESSIBLE, "Description"))),
                              (name, path, ACCESSIBLE, "GetState", None),
                              (name, path, ACCESSIBLE, "GetChildren", None)]
            answers = self._ask(questions)
            below = []
            for at, (_, is_top) in enumerate(level):
                role, name, description, words, children = answers[5 * at:5 * at + 5]
                states = states_of(words)
                if role is None or role == "notification" or not (is_top or "showing" in states):
                    continue
                found.append((role, name, description, states))
                below += [(tuple(child), False) for child in children or []]
            level = below
        return sorted(found)
