"""A real panel with a tray, and the tray item in it as the panel sees it: over the D-Bus interfaces of both."""

import os
import shutil
import subprocess

from desktop import run, wait_for

from gi.repository import Gio, GLib

CONFIGURATION = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="26"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
"""


class Panel:
    """xfce4-panel with nothing but its tray."""

    def __init__(self, test):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        folder = os.path.join(os.environ["XDG_CONFIG_HOME"], "xfce4/xfconf/xfce-perchannel-xml")
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(folder)
        with open(os.path.join(folder, "xfce4-panel.xml"), "w", encoding="utf-8") as f:
            f.write(CONFIGURATION)
        self.process = test.start("xfce4-panel", "--disable-wm-check")
        wait_for("the panel's tray", self.has_host)

    def set_dark(self, dark):
        run("xfconf-query", "-c", "xfce4-panel", "-p", "/panels/dark-mode", "-n", "-t", "bool", "-s", str(dark).lower())

    def shades(self):
        """The darkest and the lightest of the tray item, and of the panel beside it: 0 to 255."""
        def pixels(place):
            return subprocess.run(["import", "-silent", "-window", "root", "-crop", place, "-depth", "8", "gray:-"],
                                  capture_output=True, check=True, timeout=20).stdout
        item, beside = pixels("24x24+1+1"), pixels("24x24+600+1")
        return min(item), max(item), min(beside), max(beside)

    def get(self, owner, path, interface, name):
        try:
            return self.bus.call_sync(owner, path, "org.freedesktop.DBus.Properties", "Get",
                                      GLib.Variant("(ss)", (interface, name)), None, 0, 20000, None).unpack()[0]
        except GLib.GError:
            return None

    def watcher(self, name):
        return self.get("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher", "org.kde.StatusNotifierWatcher",
                        name)

    def has_host(self):
        return self.watcher("IsStatusNotifierHostRegistered")

    def item(self):
        """Our item, once it is there."""
        registered = wait_for("the tray item to register", lambda: self.watcher("RegisteredStatusNotifierItems"))
        return TrayItem(self, registered[0])


class TrayItem:
    def __init__(self, panel, address):
        self.panel = panel
        self.owner, slash, path = address.partition("/")
        self.path = slash + path or "/StatusNotifierItem"

    def property(self, name):
        return self.panel.get(self.owner, self.path, "org.kde.StatusNotifierItem", name)

    def menu_call(self, method, arguments):
        menu = wait_for("the item's menu", lambda: self.property("Menu"))
        return self.panel.bus.call_sync(self.owner, menu, "com.canonical.dbusmenu", method, arguments, None, 0, 20000,
                                        None).unpack()

    def entries(self):
        """(id, label, properties) of the visible entries, top to bottom."""
        self.menu_call("AboutToShow", GLib.Variant("(i)", (0,)))
        _, (_, _, children) = self.menu_call("GetLayout", GLib.Variant("(iias)", (0, -1, [])))
        rows = [(child[0], child[1].get("label", "").replace("_", ""), child[1]) for child in children]
        return [row for row in rows if row[2].get("visible", True)]

    def labels(self):
        """From top to bottom; a separator is None."""
        return [None if properties.get("type") == "separator" else label for _, label, properties in self.entries()]

    def choose(self, label):
        entry = next(i for i, text, _ in self.entries() if text == label)
        self.menu_call("Event", GLib.Variant("(isvu)", (entry, "clicked", GLib.Variant("s", ""), 0)))

    def shortcut(self, label):
        return next(p for _, text, p in self.entries() if text == label).get("shortcut")
