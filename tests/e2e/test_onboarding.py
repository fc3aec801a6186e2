#!/usr/bin/python3
"""A newcomer's first run: five scenes by keyboard, and quiet ever after."""

import json
import os

import desktop
from desktop import BINARIES, DesktopTest, View, geometry, key, stays_false, wait_for

SCENES = [("Select text.\nAct instantly.", "Get started"), ("One HUD for text,\nfiles, and dates.", "Set permissions"),
          ("Permission-light,\nprivacy clear.", "Personalize"), ("Choose how Lumeno appears.", "Finish setup"),
          ("Lumeno is ready.", "Start using Lumeno")]


class Onboarding(DesktopTest):
    preferences = {}
    model_server = False

    def stored(self):
        with open(self.preferences_path, encoding="utf-8") as f:
            return json.load(f)

    def start_lumeno(self):
        """As a newcomer does: without granting anything."""
        self.lumeno = self.start(os.path.join(BINARIES, "lumeno"))
        self.view = View(self.lumeno.process.pid)
        wait_for("Lumeno on the session bus", lambda: self.bus_call("ShowWelcome") is not None
                 if self.stored().get("Lumeno.hasCompletedOnboarding") else self.view.application())

    def windows(self):
        return desktop.wide_windows("lumeno", 900)

    def wait_for_scene(self, index):
        heading, button = SCENES[index]
        self.wait_for_name(heading)
        self.wait_for_name(button)
        # The scene that went is gone.
        wait_for("one scene alone", lambda: sum(self.view.find(b) is not None for _, b in SCENES) == 1)
        self.screenshot(f"onboarding-{index}")

    def test_first_run_by_keyboard_then_quiet(self):
        self.wait_for_scene(0)
        window = wait_for("the window to have the keyboard",
                          lambda: desktop.active_window() in self.windows() and desktop.active_window())
        self.assertEqual(geometry(window)[2:], (1120, 740))
        self.assertIsNone(self.view.find("Back"))
        key("Return")
        self.wait_for_scene(1)
        key("Return")
        self.wait_for_scene(2)
        self.assertFalse(self.access_granted())
        self.view.press("Grant Accessibility Access")
        self.wait_for_name("Granted. Selections, HUD placement, and Replace are ready.")
        self.assertTrue(self.access_granted())
        self.view.press("Prime")
        self.wait_for_name("Primed. If macOS needed confirmation, it has already asked.")
        self.view.press("Back")
        self.wait_for_scene(1)
        key("Return")
        self.wait_for_scene(2)
        key("Return")
        self.wait_for_scene(3)
        self.view.press("Result sound")
        wait_for("the sound to be stored", lambda: "Lumeno.resultSoundEnabled" in self.stored())
        self.bus_call("ShowWelcome")
        self.assertEqual(len(self.windows()), 1)
        key("Return")
        self.wait_for_scene(4)
        self.assertIsNone(self.view.find("Set up later"))
        key("Return")
        wait_for("the window to close", lambda: not self.windows())
        self.assertIs(self.stored()["Lumeno.hasCompletedOnboarding"], True)

        self.lumeno.stop()
        self.lumeno = self.start(os.path.join(BINARIES, "lumeno"))
        self.view = View(self.lumeno.process.pid)
        wait_for("Lumeno on the session bus", lambda: self.bus_call("GrantAccess") is not None)
        self.assertTrue(stays_false(self.windows, 1.5))
        self.bus_call("ShowWelcome")
        self.wait_for_scene(0)
        self.view.press("Set up later")
        wait_for("the window to close", lambda: not self.windows())


if __name__ == "__main__":
    desktop.main()
