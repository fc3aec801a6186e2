#!/usr/bin/python3
"""A window with a password field, for tests; with --plain the same with an ordinary field."""

import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402

window = Gtk.Window(title="Password", default_width=400, default_height=120)
window.set_wmclass("password-window", "password-window")
entry = Gtk.Entry(visibility="--plain" in sys.argv, text="correct horse battery staple")
window.add(entry)
window.connect("destroy", Gtk.main_quit)
window.show_all()
entry.grab_focus()
Gtk.main()
