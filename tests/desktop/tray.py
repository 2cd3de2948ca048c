"""The helper's icon and count in a real tray: the panel of a desktop, which hosts StatusNotifier items."""

import shutil
import subprocess

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from product import HOME, PASSWORD  # noqa: E402
from steps import expect, step, wait_for  # noqa: E402
from x11 import X11Desktop  # noqa: E402

NAMES = ("Aria", "Bravo", "Cello")
WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
PANEL_HEIGHT = 48
LAYOUT = f"""<?xml version="1.0"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array"><value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="{PANEL_HEIGHT}"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty"><property name="plugin-1" type="string" value="systray"/></property>
</channel>
"""


class TrayDesktop(X11Desktop):
    """With a panel that has nothing but a tray."""

    def open(self):
        super().open()
        folder = HOME / ".config/xfce4/xfconf/xfce-perchannel-xml"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "xfce4-panel.xml").write_text(LAYOUT, encoding="utf-8")
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.run("xfce4-panel", "--disable-wm-check")
        wait_for("the host of the tray",
                 lambda: self.property_of(WATCHER, "/StatusNotifierWatcher", WATCHER, "IsStatusNotifierHostRegistered"),
                 30)

    def clear(self):
        super().clear()
        subprocess.run(["pkill", "-u", "tester", "-x", "OrvanliteHelper"], check=False)
        shutil.rmtree(HOME / ".config/autostart", ignore_errors=True)

    def call(self, name, path, interface, method, arguments):
        try:
            return self._bus.call_sync(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 3000,
                                       None).unpack()
        except GLib.Error:
            return None

    def property_of(self, name, path, interface, key):
        answer = self.call(name, path, "org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (interface, key)))
        return answer[0] if answer else None

    def items(self):
        """Bus names of the items in the tray."""
        known = self.property_of(WATCHER, "/StatusNotifierWatcher", WATCHER, "RegisteredStatusNotifierItems") or []
        return [item.split("/")[0] for item in known]

    def of_item(self, key):
        return self.property_of(self.items()[0], "/StatusNotifierItem", ITEM, key)

    def menu_texts(self):
        path = self.of_item("Menu")
        answer = self.call(self.items()[0], path, "com.canonical.dbusmenu", "GetLayout",
                           GLib.Variant("(iias)", (0, -1, ["label"])))
        return [entry[1].get("label", "") for entry in answer[1][2]] if answer else []


DESKTOP = TrayDesktop


def colours_in_tray(desktop):
    picture = desktop.stable_picture()
    return {picture.rgb(x, y) for x in range(200) for y in range(PANEL_HEIGHT)}


def switch_helper(desktop):
    desktop.click(desktop.product.window.get(None, "Launch at Login", acts=True))


@step("shows the helper's icon and count in the tray")
def count_in_tray(desktop):
    empty = colours_in_tray(desktop)
    product = desktop.start_product(NAMES)
    switch_helper(desktop)
    wait_for("the helper's item in the tray", desktop.items, 30)
    wait_for("the count of 3", lambda: "3 plugins enabled" in (desktop.of_item("ToolTip") or ("", "", "", ""))[2:])
    expect("3 plugins enabled" in desktop.menu_texts(), f"the menu has {desktop.menu_texts()}")
    three = desktop.of_item("IconPixmap")
    wait_for("the icon in the panel", lambda: len(colours_in_tray(desktop) - empty) > 3)
    desktop.picture("tray-three")
    desktop.click(product.switch("Aria"))
    desktop.await_prompt()
    desktop.answer_prompt(PASSWORD)
    product.expect_state(["Aria"], enabled=False)
    wait_for("the count of 2", lambda: "2 plugins enabled" in (desktop.of_item("ToolTip") or ("", "", "", ""))[2:])
    expect(desktop.of_item("IconPixmap") != three, "the icon has not changed with the count")
    desktop.picture("tray-two")
    expect(list((HOME / ".config/autostart").glob("*.desktop")), "no entry for the next login")


@step("takes the helper out of the tray and the next login")
def off(desktop):
    desktop.start_product(NAMES)
    if not desktop.items():
        switch_helper(desktop)
        wait_for("the helper's item in the tray", desktop.items, 30)
    switch_helper(desktop)
    wait_for("the end of the item", lambda: not desktop.items(), 30)
    expect(not list((HOME / ".config/autostart").glob("*.desktop")), "the entry for the next login is still there")
