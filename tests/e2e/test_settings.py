#!/usr/bin/python3
"""The settings window: every control over accessibility alone, and what it changes in the file and in the program."""

import ctypes
import json

import desktop
from desktop import Atspi, DesktopTest, key, stays_false, wait_for

SWITCHES = {
    "General": {"Enable the summon shortcut": "Lumeno.summonHotkeyEnabled",
                "Show actions for files selected in Finder": "Lumeno.fileActionsEnabled"},
    "Appearance": {"Play a sound when a result is ready": "Lumeno.resultSoundEnabled",
                   "Haptic tap when a result is ready": "Lumeno.hapticsEnabled",
                   "Arrow-key navigation when summoned": "Lumeno.keyboardNavEnabled"},
}
KINDS = {"Writing": "writing", "Explain": "explain", "Reply": "reply", "Grammar": "grammar", "Tone": "tone",
         "Translate": "translate", "Definition": "definition", "Code": "code", "Error": "error", "Date": "date",
         "Filename": "filename", "Address": "address", "Link": "link", "Email": "email", "Phone": "phone"}
OPTION, CONTROL = 0x80000, 0x40000


SUPER = 133  # X key code


class GrabbedKey:
    """A key that another program keeps for itself, as window managers do. While it is down they have the keyboard."""

    def __init__(self, keycode):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))
        any_modifier, asynchronous = 1 << 15, 1
        self.x11.XGrabKey(self.display, keycode, any_modifier, root, 0, asynchronous, asynchronous)
        self.x11.XSync(self.display, 0)

    def release(self):
        self.x11.XCloseDisplay(self.display)


class SettingsTest(DesktopTest):
    def stored(self):
        with open(self.preferences_path, encoding="utf-8") as f:
            return json.load(f)

    def open_settings(self, tab="General"):
        self.bus_call("ShowSettings")
        self.wait_for_name("General")
        self.view.press(tab)

    def is_checked(self, name):
        switch = wait_for(f"“{name}”", lambda: self.view.pressable(name))
        return switch.get_state_set().contains(Atspi.StateType.CHECKED)

    def open_editor(self, text):
        self.editor = self.start_application("mousepad", "--disable-server", self.write_file("note.txt", text),
                                             class_name="mousepad")
        key("ctrl+a")

    def shown_shortcut(self):
        recorder = wait_for("the recorder", lambda: self.view.pressable("Shortcut"))
        return recorder.get_description().split("\n")[0]

    def record(self):
        self.view.press("Shortcut")
        wait_for("the recorder to wait", lambda: self.shown_shortcut() == "Press keys…")

    def wait_for_keyboard(self):
        wait_for("the window to have the keyboard", lambda: desktop.active_window() in self.settings_windows())

    def settings_windows(self):
        return desktop.wide_windows("lumeno", 500)


class Window(SettingsTest):
    def test_every_switch_is_stored_at_once_and_back(self):
        for tab, switches in SWITCHES.items():
            self.open_settings(tab)
            for label, stored_key in switches.items():
                before = self.is_checked(label)
                for expected in (not before, before):
                    self.view.press(label)
                    wait_for(f"{stored_key} to be {expected}",
                             lambda k=stored_key, e=expected: self.stored().get(k) is e)
                    wait_for("the switch to show it", lambda la=label, e=expected: self.is_checked(la) is e)
            self.screenshot(f"settings-{tab}")
        self.open_settings("Actions")
        for label, kind in KINDS.items():
            self.view.press(label)
            wait_for(f"{kind} to be switched off", lambda k=kind: k in self.stored()["Lumeno.disabledActionKinds"])
        self.screenshot("settings-Actions")
        self.view.press("Grammar")
        wait_for("grammar to be on again", lambda: "grammar" not in self.stored()["Lumeno.disabledActionKinds"])

    def test_only_one_window_and_the_keys_that_close_it(self):
        for closing in ("Escape", "ctrl+w"):
            self.open_settings()
            self.bus_call("ShowSettings")
            self.assertEqual(len(self.settings_windows()), 1)
            self.wait_for_keyboard()
            key(closing)
            wait_for("the window to close", lambda: not self.settings_windows())

    def test_the_shortcuts_of_the_menu_work_in_our_windows(self):
        self.bus_call("ShowWelcome")
        self.wait_for_name("Get started")
        self.wait_for_keyboard()
        key("ctrl+comma")
        self.wait_for_name("Launch Lumeno at login")
        wait_for("Settings to have the keyboard",
                 lambda: desktop.run("xdotool", "getactivewindow", "getwindowname", check=False).startswith("General"))
        self.record()
        key("ctrl+q")
        wait_for("it to be recorded", lambda: self.shown_shortcut() == "⌃Q")
        self.assertTrue(self.lumeno.running())
        # Right after a recording a key may still count as part of it.
        wait_for("the program to end", lambda: key("ctrl+q") or not self.lumeno.running(), 30, 0.2)
        self.assertEqual(self.lumeno.process.wait(30), 0)

    def test_login_switch_tells_the_truth(self):
        import os
        entry = os.path.join(os.environ["XDG_CONFIG_HOME"], "autostart/lumeno.desktop")
        self.open_settings()
        self.view.press("Launch Lumeno at login")
        wait_for("the autostart entry", lambda: os.path.exists(entry))
        self.view.press("Launch Lumeno at login")
        wait_for("the entry to go", lambda: not os.path.exists(entry))
        # Where nothing can be written, the switch goes back.
        folder = os.path.dirname(entry)
        os.rmdir(folder)
        with open(folder, "w", encoding="utf-8") as f:
            f.write("in the way")
        self.addCleanup(os.remove, folder)
        self.view.press("Launch Lumeno at login")
        wait_for("the switch to go back", lambda: not self.is_checked("Launch Lumeno at login"))


class Behaviour(SettingsTest):
    def test_a_kind_that_is_switched_off_disappears(self):
        self.open_settings("Actions")
        self.view.press("Definition")
        wait_for("definitions to be off", lambda: self.stored().get("Lumeno.disabledActionKinds") == ["definition"])
        self.open_editor("serendipity")
        self.wait_for_pill()
        self.summon()
        self.wait_for_name("Explain simply")
        self.assertIsNone(self.view.find("Define"))

    def test_a_disabled_application_is_left_alone(self):
        self.open_settings()
        self.view.press("Add App…")
        self.wait_for_name("Choose an app where Lumeno should stay silent.")
        self.screenshot("settings-add-app")
        self.view.press("Mousepad")
        self.view.press("Disable")
        wait_for("the name to be stored", lambda: self.stored().get("Lumeno.disabledApps") == ["mousepad"])
        key("Escape")
        self.open_editor("serendipity")
        self.assertTrue(stays_false(self.hud_is_shown, 1.2))
        self.open_settings()
        self.wait_for_name("Mousepad")
        self.view.press("Remove Mousepad" if self.view.find("Remove Mousepad") else "Remove")
        wait_for("the list to be empty", lambda: self.stored().get("Lumeno.disabledApps") == [])
        self.wait_for_name("Lumeno runs everywhere. Add an app to silence it there.")
        key("Escape")
        desktop.xdotool("windowactivate", "--sync", self.editor.window)
        key("Right")
        key("ctrl+a")
        self.wait_for_pill()

    def test_the_shortcut_is_recorded_and_works(self):
        self.open_settings()
        self.wait_for_keyboard()
        self.assertEqual(self.shown_shortcut(), "⌥⌘Space")
        self.record()
        self.screenshot("settings-recording")
        key("a")  # no modifier: a beep, still recording
        self.assertTrue(stays_false(lambda: self.shown_shortcut() != "Press keys…", 0.3))
        key("Escape")
        wait_for("the recording to end", lambda: self.shown_shortcut() == "⌥⌘Space")
        self.record()
        key("ctrl+alt+k")
        wait_for("the new shortcut to be shown", lambda: self.shown_shortcut() == "⌃⌥K")
        stored = self.stored()["Lumeno.summonHotkey"]
        stored = json.loads(stored) if isinstance(stored, str) else stored
        self.assertEqual(stored, {"keyCode": 40, "modifiers": CONTROL | OPTION})
        key("Escape")
        self.open_editor("serendipity")
        self.wait_for_pill()
        self.summon()
        self.assertTrue(stays_false(lambda: self.view.find("Define"), 0.8), "the old shortcut still works")
        key("ctrl+alt+k")
        self.wait_for_name("Define")

    def test_a_shortcut_is_recorded_where_the_window_manager_keeps_its_key(self):
        self.open_settings()
        self.wait_for_keyboard()
        self.record()
        grabbed = GrabbedKey(SUPER)
        self.addCleanup(desktop.xdotool, "keyup", SUPER)
        desktop.xdotool("keydown", SUPER)
        # Longer than it takes the toolkit to think that the window has lost the keyboard.
        self.assertTrue(stays_false(lambda: self.shown_shortcut() != "Press keys…", 0.6))
        desktop.xdotool("key", "space")
        wait_for("it to be recorded", lambda: self.shown_shortcut() == "⌘Space")
        desktop.xdotool("keyup", SUPER)
        grabbed.release()
        self.record()
        self.open_editor("serendipity")  # that has the keyboard now
        wait_for("the recording to end", lambda: self.shown_shortcut() == "⌘Space")

    def test_the_shortcut_that_is_switched_off_does_nothing(self):
        self.open_editor("serendipity")
        self.wait_for_pill()
        for wanted in (False, True):
            self.open_settings()
            self.view.press("Enable the summon shortcut")
            wait_for("it to be stored", lambda w=wanted: self.stored().get("Lumeno.summonHotkeyEnabled") is w)
            self.wait_for_keyboard()
            key("Escape")
            desktop.xdotool("windowactivate", "--sync", self.editor.window)
            self.summon()
            if not wanted:
                self.assertTrue(stays_false(lambda: self.view.find("Define"), 0.8))
        self.wait_for_name("Define")

    def test_the_look_changes_while_the_hud_is_open(self):
        self.open_settings("Appearance")
        self.open_editor("serendipity")
        self.wait_for_pill()
        self.summon()
        self.wait_for_name("Define")

        def pixels():
            windows = self.hud_windows()
            return windows and desktop.subprocess.run(
                ["import", "-silent", "-window", str(windows[0]), "rgb:-"], capture_output=True, check=False).stdout

        def at_rest():
            first = pixels()
            return first if first and first == pixels() else None

        for picker, choice, stored in (("Accent", "Orange", {"Lumeno.accentTheme": "orange"}),
                                       ("Glass", "Clear", {"Lumeno.glassIntensity": "clear"})):
            before = wait_for("the HUD to be at rest", at_rest)
            self.view.press(picker)
            self.view.press(choice)
            wait_for("it to be stored", lambda s=stored: s.items() <= self.stored().items())
            wait_for(f"{choice} to be seen in the HUD", lambda b=before: at_rest() not in (None, b))
        self.assertTrue(self.view.find("Define"))

    def test_without_keyboard_navigation_the_keyboard_stays_where_it_is(self):
        self.open_settings("Appearance")
        self.view.press("Arrow-key navigation when summoned")
        key("Escape")
        self.open_editor("serendipity")
        self.wait_for_pill()
        self.summon()
        self.wait_for_name("Define")
        self.assertEqual(desktop.active_window(), self.editor.window)


class Models(SettingsTest):
    model_server = False
    preferences = {"Lumeno.aiBackend": "ollama", "Lumeno.ollamaModel": "missing", "Lumeno.hasCompletedOnboarding": True}

    def test_server_down_then_without_models_then_with_two(self):
        unreachable = "Couldn't reach Ollama at 127.0.0.1:11434. Start it with `ollama serve`."
        self.open_settings("AI")
        self.wait_for_name(unreachable)
        self.screenshot("settings-AI-down")
        self.assertEqual(self.stored()["Lumeno.ollamaModel"], "missing")
        self.start_model_server("--models", "")
        self.view.press("Refresh models")
        self.assertTrue(stays_false(lambda: self.stored()["Lumeno.ollamaModel"] != "missing", 1))
        self.wait_for_name(unreachable)
        self.model.stop()
        self.start_model_server("--models", "qwen3,mistral")
        self.view.press("Refresh models")
        wait_for("the first model to be taken", lambda: self.stored()["Lumeno.ollamaModel"] == "mistral")
        wait_for("the caption to go", lambda: not self.view.find(unreachable))


if __name__ == "__main__":
    desktop.main()
