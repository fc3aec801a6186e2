#!/usr/bin/python3
"""The tray item and its menu in a real panel, and a program started once more."""

import json
import os
import shutil
import socket
import subprocess

import desktop
from desktop import BINARIES, DesktopTest, key, stays_false, wait_for
from panel import Panel


class Tray(DesktopTest):
    preferences = {"Lumeno.aiBackend": "appleIntelligence", "Lumeno.hasCompletedOnboarding": True}
    model_server = False

    def before_lumeno(self):
        self.panel = Panel(self)

    def stored(self, key):
        with open(self.preferences_path, encoding="utf-8") as f:
            return json.load(f).get(key)

    def welcome_windows(self):
        return desktop.wide_windows("lumeno", 900)

    def test_menu_is_live_and_true(self):
        item = self.panel.item()
        self.assertEqual(item.property("Status"), "Active")
        usual = ["Watching for selections", None, "Smart AI", "Apple Intelligence", "Ollama (your models)",
                 "File actions on in Finder", None, "Show Welcome...", "Settings…", "Quit Lumeno"]
        wait_for("the usual menu", lambda: item.labels() == usual)
        self.assertEqual(item.shortcut("Settings…"), [["Control", ","]])
        self.assertEqual(item.shortcut("Quit Lumeno"), [["Control", "Q"]])
        self.screenshot("tray")
        item.choose("Ollama (your models)")
        wait_for("the model line", lambda: "Using Ollama model: llama3.2" in item.labels())
        self.assertEqual(self.stored("Lumeno.aiBackend"), "ollama")
        item.choose("Apple Intelligence")
        wait_for("the model line to go", lambda: item.labels() == usual)

        item.choose("Settings…")
        self.wait_for_name("Show actions for files selected in Finder")
        self.view.press("Show actions for files selected in Finder")
        wait_for("the line about files to go", lambda: "File actions on in Finder" not in item.labels())
        item.choose("Show Welcome...")
        self.wait_for_name("Get started")
        # On another desktop it is asked for again: it comes there.
        desktop.xdotool("set_desktop", 1)
        wait_for("the other desktop", lambda: not self.welcome_windows())
        item.choose("Show Welcome...")
        wait_for("the welcome to come", self.welcome_windows)
        self.assertEqual(desktop.xdotool("get_desktop"), "1")
        desktop.xdotool("set_desktop", 0)
        item.choose("Quit Lumeno")
        self.assertEqual(self.lumeno.process.wait(30), 0)

    def check_contrast(self):
        """The icon can be seen on a dark panel and on a light one."""
        def stands_out(dark):
            darkest, lightest, panel_darkest, panel_lightest = self.panel.shades()
            return (panel_lightest < 128 and lightest > panel_lightest + 80 if dark
                    else panel_darkest > 128 and darkest < panel_darkest - 80)

        for dark in (True, False):
            self.panel.set_dark(dark)
            wait_for("the panel to change", lambda d=dark: (self.panel.shades()[3] < 128) is d)
            # Items that are there already the panel does not always draw anew.
            self.lumeno.stop()
            self.start_lumeno()
            self.wait_for_view("the icon to stand out on a " + ("dark" if dark else "light") + " panel",
                               lambda d=dark: stands_out(d))

    def test_the_icon_tells_the_state(self):
        self.check_contrast()
        idle = wait_for("the usual icon", lambda: self.panel.item().property("IconPixmap"))
        item = self.panel.item()
        self.start_application("mousepad", "--disable-server", self.write_file("note.txt", "serendipity"),
                               class_name="mousepad")
        key("ctrl+a")
        self.wait_for_pill()
        self.summon()
        self.view.press("Define")
        wait_for("another icon while there is a result", lambda: item.property("IconPixmap") not in (None, idle))
        key("Escape")
        wait_for("the usual icon", lambda: item.property("IconPixmap") == idle)

    def test_where_it_is_installed_the_desktop_draws_the_symbols(self):
        self.lumeno.stop()
        icons = os.path.join(os.environ["XDG_DATA_HOME"], "icons/hicolor/symbolic")
        shutil.copytree(os.path.join(BINARIES, "../packaging/symbolic"), os.path.join(icons, "apps"))
        self.addCleanup(shutil.rmtree, icons)
        self.check_contrast()
        item = self.panel.item()
        wait_for("the icon's name", lambda: item.property("IconName") == "org.lumeno.Lumeno-scope-symbolic")
        names = {text: properties.get("icon-name") for _, text, properties in item.entries()}
        self.assertEqual(names["Settings…"], "org.lumeno.Lumeno-gearshape-symbolic")
        self.assertFalse([text for _, text, properties in item.entries() if "icon-data" in properties])

    def test_of_many_starts_at_once_one_runs(self):
        self.lumeno.stop()
        starts = [self.start(os.path.join(BINARIES, "lumeno")) for _ in range(3)]
        wait_for("all but one to end", lambda: sum(start.running() for start in starts) == 1, 30)
        self.assertEqual(sorted(s.process.returncode for s in starts if not s.running()), [0, 0])
        self.lumeno = next(start for start in starts if start.running())
        self.view = desktop.View(self.lumeno.process.pid)
        self.wait_for_name("Launch Lumeno at login")  # what the others were told to do

    def test_a_start_while_another_one_ends_is_not_lost(self):
        ending = self.lumeno
        ending.process.terminate()
        wait_for("it to give its name up", lambda: "false" in desktop.run(
            "gdbus", "call", "--session", "-d", "org.freedesktop.DBus", "-o", "/", "-m",
            "org.freedesktop.DBus.NameHasOwner", "org.lumeno.Lumeno"), interval=0.01)
        self.start_lumeno()
        self.assertEqual(ending.process.wait(30), 0)
        self.lumeno.stop()
        # One that takes its time still has the lock.
        ending = self.start("sleep", "2")
        with open(os.path.join(os.environ["XDG_RUNTIME_DIR"], "lumeno.lock"), "w", encoding="utf-8") as f:
            f.write(f"{ending.process.pid}\nsleep\n{socket.gethostname()}\n")
        self.start_lumeno()
        self.assertFalse(ending.running())
        self.assertTrue(self.lumeno.running())

    def test_starting_again_opens_settings_and_no_second_program(self):
        self.panel.item()
        for arguments, name in (((), "Launch Lumeno at login"), (("--settings",), "Launch Lumeno at login")):
            second = subprocess.run([os.path.join(BINARIES, "lumeno"), *arguments], timeout=30, check=False)
            self.assertEqual(second.returncode, 0)
            self.wait_for_name(name)
            wait_for("Settings to have the keyboard",
                     lambda: desktop.active_window() in desktop.wide_windows("lumeno", 500))
            desktop.key("Escape")
            wait_for("Settings to close", lambda name=name: not self.view.find(name))
        subprocess.run([os.path.join(BINARIES, "lumeno"), "--summon"], timeout=30, check=True)
        self.wait_for_name("No selection found. Select some text, then press ⌥⌘Space.")
        nonsense = subprocess.run([os.path.join(BINARIES, "lumeno"), "--nonsense"], timeout=30, check=False,
                                  capture_output=True, text=True)
        self.assertEqual(nonsense.returncode, 2)
        self.assertIn("Usage", nonsense.stderr)

    def test_started_by_the_bus_it_stays_in_the_tray(self):
        self.lumeno.stop()
        self.lumeno = self.start(os.path.join(BINARIES, "lumeno"), "--service")
        self.view = desktop.View(self.lumeno.process.pid)
        wait_for("Lumeno on the session bus", self.access_granted)
        self.panel.item()
        activate = ["gdbus", "call", "--session", "-d", "org.lumeno.Lumeno", "-o", "/org/lumeno/Lumeno", "-m",
                    "org.freedesktop.Application.Activate", "{}"]
        desktop.run(*activate)
        self.assertTrue(stays_false(lambda: self.view.find("Launch Lumeno at login"), 1))
        desktop.run(*activate)
        self.wait_for_name("Launch Lumeno at login")

    def test_without_a_session_bus_there_is_still_only_one(self):
        second = self.start(os.path.join(BINARIES, "lumeno"), env={"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"})
        self.assertEqual(second.process.wait(30), 1)
        self.assertIn("already running", second.log())
        self.assertTrue(self.lumeno.running())

    def test_the_panel_may_go_and_come_back(self):
        self.panel.item()
        self.panel.process.stop()
        wait_for("the tray to be gone", lambda: not self.panel.has_host())
        self.assertTrue(stays_false(lambda: not self.lumeno.running(), 1))
        subprocess.run([os.path.join(BINARIES, "lumeno")], timeout=30, check=True)
        self.wait_for_name("Launch Lumeno at login")
        self.panel = Panel(self)
        wait_for("the item in the new panel", lambda: "Settings…" in self.panel.item().labels())


class WithoutAccess(DesktopTest):
    preferences = {"Lumeno.aiBackend": "appleIntelligence", "Lumeno.hasCompletedOnboarding": True}
    model_server = False

    def start_lumeno(self):
        state = os.environ.get("XDG_STATE_HOME") or os.path.expanduser("~/.local/state")
        shutil.rmtree(os.path.join(state, "lumeno"), ignore_errors=True)
        self.panel = Panel(self)
        self.lumeno = self.start(os.path.join(BINARIES, "lumeno"))
        self.view = desktop.View(self.lumeno.process.pid)

    def test_the_menu_asks_for_access(self):
        item = self.panel.item()
        asking = ["Enable Accessibility Access…", "Required to read selected text and show suggestions."]
        wait_for("the menu to ask", lambda: item.labels()[:3] == [*asking, None])
        item.choose(asking[0])
        wait_for("access", lambda: item.labels()[:2] == ["Watching for selections", None])
        self.assertTrue(self.access_granted())


if __name__ == "__main__":
    desktop.main()
