#!/usr/bin/python3
"""The tray item and its menu, through the D-Bus interfaces that a panel uses."""

import json
import threading

import desktop
from desktop import DesktopTest, wait_for

from gi.repository import Gio, GLib

WATCHER = """<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
<signal name="StatusNotifierHostRegistered"/></interface></node>"""


class Tray(DesktopTest):
    preferences = {"Lumeno.aiBackend": "appleIntelligence"}
    model_server = False

    def setUp(self):
        """A tray host: as much of a panel as an item needs."""
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.items = []
        interface = Gio.DBusNodeInfo.new_for_xml(WATCHER).interfaces[0]
        values = {"IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                  "RegisteredStatusNotifierItems": GLib.Variant("as", []),
                  "ProtocolVersion": GLib.Variant("i", 0)}

        def called(_connection, sender, _path, _interface, _method, parameters, invocation):
            self.items.append((sender, parameters.unpack()[0]))
            invocation.return_value(None)

        def read(_connection, _sender, _path, _interface, name):
            return values[name]

        self.bus.register_object("/StatusNotifierWatcher", interface, called, read, None)
        Gio.bus_own_name_on_connection(self.bus, "org.kde.StatusNotifierWatcher", 0, None, None)
        loop = GLib.MainLoop()
        threading.Thread(target=loop.run, daemon=True).start()
        self.addCleanup(loop.quit)
        super().setUp()

    def call(self, path, interface, method, arguments):
        return self.bus.call_sync(self.items[0][0], path, interface, method, arguments, None, 0, 2000, None).unpack()

    def property(self, name):
        return self.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                         GLib.Variant("(ss)", ("org.kde.StatusNotifierItem", name)))[0]

    def entries(self):
        """(id, label, properties) of the visible entries, top to bottom."""
        menu = self.property("Menu")
        self.call(menu, "com.canonical.dbusmenu", "AboutToShow", GLib.Variant("(i)", (0,)))
        _, (_, _, children) = self.call(menu, "com.canonical.dbusmenu", "GetLayout",
                                        GLib.Variant("(iias)", (0, -1, [])))
        rows = [(child[0], child[1].get("label", "").replace("_", ""), child[1]) for child in children]
        return [row for row in rows if row[2].get("visible", True)]

    def labels(self):
        return [label for _, label, properties in self.entries() if properties.get("type") != "separator"]

    def choose(self, label):
        entry = next(i for i, text, _ in self.entries() if text == label)
        self.call(self.property("Menu"), "com.canonical.dbusmenu", "Event",
                  GLib.Variant("(isvu)", (entry, "clicked", GLib.Variant("s", ""), 0)))

    def test_menu_is_live_and_true(self):
        wait_for("the item to register", lambda: self.items)
        self.assertEqual(self.property("Status"), "Active")
        wait_for("the access line", lambda: self.labels() == [
            "Watching for selections", "Smart AI", "Apple Intelligence", "Ollama (your models)", "Quit Lumeno"])
        self.choose("Ollama (your models)")
        wait_for("the model line", lambda: "Using Ollama model: llama3.2" in self.labels())
        with open(self.preferences_path, encoding="utf-8") as f:
            self.assertEqual(json.load(f)["Lumeno.aiBackend"], "ollama")
        self.choose("Apple Intelligence")
        wait_for("the model line to go", lambda: "Using Ollama model: llama3.2" not in self.labels())
        self.choose("Quit Lumeno")
        self.assertEqual(self.lumeno.process.wait(5), 0)


if __name__ == "__main__":
    desktop.main()
