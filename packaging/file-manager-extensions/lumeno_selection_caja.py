"""Tells Lumeno which files are selected in Caja's windows.

Caja asks its extensions for menu items at every change of the selection; this one has none, and reports what it is
asked about. Where Lumeno does not run nothing is sent and nobody is started. Goes to
~/.local/share/caja-python/extensions or /usr/share/caja-python/extensions.
"""

import gi

gi.require_version("Caja", "2.0")
gi.require_version("GdkX11", "3.0")
from gi.repository import Caja, GdkX11, Gio, GLib, GObject  # noqa: E402, F401

NAME = "org.lumeno.Lumeno"
MOST_WINDOWS = 50


class LumenoSelection(GObject.GObject, Caja.MenuProvider):
    def __init__(self):
        super().__init__()
        self._reports = {}  # the latest, by window
        self._bus = None
        Gio.bus_watch_name(
            Gio.BusType.SESSION, NAME, Gio.BusNameWatcherFlags.NONE, self._appeared, self._vanished)

    def get_file_items(self, window, files):
        try:
            self._note(window.get_toplevel().get_window().get_xid(), [file.get_uri() for file in files])
        except Exception:  # whatever goes wrong, the file manager must not suffer from it
            self._forget()
        return []

    def get_background_items(self, window, folder):
        return []

    def _note(self, window, uris):
        if len(self._reports) >= MOST_WINDOWS:
            self._reports.clear()
        self._reports[window] = uris
        self._send(window, uris)

    def _forget(self):
        """What was reported is not known to hold any more: window 0 tells so."""
        self._reports.clear()
        self._send(0, [])

    def _send(self, window, uris):
        if self._bus is None:
            return
        self._bus.call(
            NAME, "/org/lumeno/FileSelection", "org.lumeno.FileSelection", "ReportFiles",
            GLib.Variant("(ast)", (uris, window)), None, Gio.DBusCallFlags.NO_AUTO_START, -1, None, None)

    def _appeared(self, bus, _name, _owner):
        self._bus = bus
        for window, uris in self._reports.items():
            self._send(window, uris)

    def _vanished(self, _bus, _name):
        self._bus = None
