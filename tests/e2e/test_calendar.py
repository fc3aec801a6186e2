#!/usr/bin/python3
"""From a date in an application's text to an event in the user's real calendar."""

import os
import signal

import desktop
from desktop import DesktopTest, key, wait_for
from gi.repository import Gio, GLib

EVOLUTION = "org.gnome.evolution.dataserver."
# The calendar library calls its own zones so.
BERLIN = "/freeassociation.sourceforge.net/Europe/Berlin"
PROMISE = "Käse-Runde am Fluss, March 3, 2031 from 2pm to 4pm"


class Calendar(DesktopTest):
    model_server = False
    environment = {"LC_ALL": "C.UTF-8", "TZ": "Europe/Berlin"}

    @classmethod
    def setUpClass(cls):
        # One connection for all calls: an opened calendar goes with the one that opened it.
        cls.bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def call(self, service, path, interface, method, arguments=None):
        return self.bus.call_sync(service, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 20000,
                                  None).unpack()

    def events(self):
        """The texts of all events in the calendar, unfolded."""
        path, service = self.call(EVOLUTION + "Calendar8", "/org/gnome/evolution/dataserver/CalendarFactory",
                                  EVOLUTION + "CalendarFactory", "OpenCalendar",
                                  GLib.Variant("(s)", ("system-calendar",)))
        self.call(service, path, EVOLUTION + "Calendar", "Open")
        (events,) = self.call(service, path, EVOLUTION + "Calendar", "GetObjectList", GLib.Variant("(s)", ("#t",)))
        return [event.replace("\r\n ", "").split("\r\n") for event in events]

    def process_of(self, name):
        (process,) = self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                               "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))
        return process

    def draft(self, text):
        """Selects the text in an editor and runs the chip, all by keyboard."""
        path = self.write_file("note.txt", text)
        self.editor = self.start_application("mousepad", "--disable-server", path, class_name="mousepad")
        key("ctrl+a")
        self.wait_for_pill()
        self.summon()
        self.wait_for_name("Create calendar event")
        names = [name for name in self.view.names() if name in ("Create calendar event", "Explain simply", "Summarize")]
        self.assertEqual(names[0], "Create calendar event", "the date comes first")
        key("1")

    def test_a_selected_date_becomes_an_event(self):
        for round_number in (1, 2):
            self.draft(PROMISE)
            self.wait_for_name("When: Monday, March 3, 2031 · 2:00 PM – 4:00 PM", 20)
            self.wait_for_name(f"Title: {PROMISE}")
            self.wait_for_name("Calendar: Personal")
            self.screenshot("calendar-confirm")
            key("Return")
            self.wait_for_name("Added to Calendar", 30)
            self.wait_for_view("the confirmation", lambda: self.view.find_containing(
                f"Added “{PROMISE}” to Personal on Mar 3, 2031 at 2:00 PM."), 5)
            self.screenshot("calendar-added")
            key("Escape")
            self.wait_until_hidden()
            self.editor.stop()
            # Saved again it is still one event.
            (event,) = self.events()
            self.assertIn(f"DTSTART;TZID={BERLIN}:20310303T140000", event, f"round {round_number}")
            self.assertIn(f"DTEND;TZID={BERLIN}:20310303T160000", event)
            self.assertIn("SUMMARY:" + PROMISE.replace(",", "\\,"), event)

    def test_back_saves_nothing_and_a_calendar_that_hangs_is_a_message(self):
        before = len(self.events())
        self.draft("Dentist on April 4, 2031 at 9am")
        self.wait_for_name("When: Friday, April 4, 2031 · 9:00 AM – 10:00 AM", 20)
        self.view.press("Back to suggestions")
        self.wait_for_name("Create calendar event")
        self.assertEqual(len(self.events()), before)

        registry = self.process_of(EVOLUTION + "Sources5")
        os.kill(registry, signal.SIGSTOP)
        self.addCleanup(os.kill, registry, signal.SIGCONT)
        key("1")
        self.wait_for_name("Couldn’t add event", 30)
        self.wait_for_view("what went wrong", lambda: self.view.find_containing(
            "The calendar service did not answer in time."), 5)
        key("Escape")
        self.wait_until_hidden()


if __name__ == "__main__":
    desktop.main()
