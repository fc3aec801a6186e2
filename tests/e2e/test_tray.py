#!/usr/bin/python3
"""The tray item and its menu in a real panel, and a program started once more."""

import json
import os
import subprocess

import desktop
from desktop import BINARIES, DesktopTest, stays_false, wait_for
from panel import Panel


class Tray(DesktopTest):
    preferences = {"Lumeno.aiBackend": "appleIntelligence", "Lumeno.hasCompletedOnboarding": True}
    model_server = False

    def before_lumeno(self):
        self.panel = Panel(self)

    def stored(self, key):
        with open(self.preferences_path, encoding="utf-8") as f:
            return json.load(f).get(key)

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
        item.choose("Quit Lumeno")
        self.assertEqual(self.lumeno.process.wait(5), 0)

    def test_starting_again_opens_settings_and_no_second_program(self):
        self.panel.item()
        for arguments, name in (((), "Launch Lumeno at login"), (("--settings",), "Launch Lumeno at login")):
            second = subprocess.run([os.path.join(BINARIES, "lumeno"), *arguments], timeout=10, check=False)
            self.assertEqual(second.returncode, 0)
            self.wait_for_name(name)
            desktop.key("Escape")
            wait_for("Settings to close", lambda name=name: not self.view.find(name))
        subprocess.run([os.path.join(BINARIES, "lumeno"), "--summon"], timeout=10, check=True)
        self.wait_for_name("No selection found. Select some text, then press ⌥⌘Space.")
        nonsense = subprocess.run([os.path.join(BINARIES, "lumeno"), "--nonsense"], timeout=10, check=False,
                                  capture_output=True, text=True)
        self.assertEqual(nonsense.returncode, 2)
        self.assertIn("Usage", nonsense.stderr)

    def test_started_by_the_bus_it_stays_in_the_tray(self):
        self.lumeno.stop()
        self.lumeno = self.start(os.path.join(BINARIES, "lumeno"), "--service")
        self.view = desktop.View(self.lumeno.process.pid)
        self.panel.item()
        activate = ["gdbus", "call", "--session", "-d", "org.lumeno.Lumeno", "-o", "/org/lumeno/Lumeno", "-m",
                    "org.freedesktop.Application.Activate", "{}"]
        desktop.run(*activate)
        self.assertTrue(stays_false(lambda: self.view.find("Launch Lumeno at login"), 1))
        desktop.run(*activate)
        self.wait_for_name("Launch Lumeno at login")

    def test_without_a_session_bus_there_is_still_only_one(self):
        second = self.start(os.path.join(BINARIES, "lumeno"), env={"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"})
        self.assertEqual(second.process.wait(10), 1)
        self.assertIn("already running", second.log())
        self.assertTrue(self.lumeno.running())

    def test_the_panel_may_go_and_come_back(self):
        self.panel.item()
        self.panel.process.stop()
        wait_for("the tray to be gone", lambda: not self.panel.has_host())
        self.assertTrue(stays_false(lambda: not self.lumeno.running(), 1))
        subprocess.run([os.path.join(BINARIES, "lumeno")], timeout=10, check=True)
        self.wait_for_name("Launch Lumeno at login")
        self.panel = Panel(self)
        wait_for("the item in the new panel", lambda: "Settings…" in self.panel.item().labels(), 15)


if __name__ == "__main__":
    desktop.main()
