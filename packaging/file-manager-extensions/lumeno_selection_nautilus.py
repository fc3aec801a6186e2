"""Tells Lumeno which files are selected in the windows of Files (Nautilus).

Nautilus asks its extensions for menu items at every change of the selection, first for the files and then for their
folder; this one has none, and reports what it is asked about. It is not told which window that is about: with
several windows the folder must tell, and where it does not, all reports are taken back. Where Lumeno does not run
nothing is sent and nobody is started. Goes to ~/.local/share/nautilus-python/extensions or
/usr/share/nautilus-python/extensions.
"""

import gi

gi.require_version("Gtk", "4.0")
gi.require_version("GdkX11", "4.0")
from gi.repository import GdkX11, Gio, GLib, GObject, Gtk, Nautilus  # noqa: E402, F401

NAME = "org.lumeno.Lumeno"
MOST_WINDOWS = 50


class LumenoSelection(GObject.GObject, Nautilus.MenuProvider):
    def __init__(self):
        super().__init__()
        self._uris = []  # None when they could not be told
        self._reports = {}  # the latest, by window
        self._bus = None
        Gio.bus_watch_name(
            Gio.BusType.SESSION, NAME, Gio.BusNameWatcherFlags.NONE, self._appeared, self._vanished)

    def get_file_items(self, *arguments):
        try:
            self._uris = [file.get_uri() for file in arguments[-1]]
        except Exception:  # whatever goes wrong, the file manager must not suffer from it
            self._uris = None
        return []

    def get_background_items(self, *arguments):
        try:
            window = self._window_of(arguments[-1])
            if window is None or self._uris is None:
                self._forget()
            else:
                self._note(window.get_surface().get_xid(), self._uris)
        except Exception:
            self._forget()
        return []

    @staticmethod
    def _window_of(folder):
        windows = [w for w in Gtk.Application.get_default().get_windows() if w.get_title()]
        if len(windows) == 1:
            return windows[0]
        location = folder.get_location()
        # The titles of these are no names of folders.
        if location.get_path() in (None, "/", GLib.get_home_dir()):
            return None
        named = [w for w in windows if w.get_title() == location.get_basename()]
        return named[0] if len(named) == 1 else None

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
