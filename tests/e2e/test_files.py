#!/usr/bin/python3
"""The file command bar over real file managers: select by real clicks, ask, review, run."""

import json
import os
import time

import desktop
from desktop import Atspi, DesktopTest, applications, children, click, clipboard, key, repeat_until, stays_false, \
    wait_for

from gi.repository import GLib

NAMES = ["drei ä.txt", "one.txt", "two words.txt"]
PROMPT = "User request: "
COMMANDS = [["gather", "mkdir gathered && mv 'drei ä.txt' one.txt 'two words.txt' gathered/ && echo Moved 3 items"],
            ["blocked", "touch ran; killall nothing-of-that-name"],
            ["careful", "rm -r one.txt && touch ran"],
            ["fail", "echo gone wrong >&2; exit 3"],
            ["slow", "until [ -e go ]; do sleep 0.1; done; touch finished"]]


def center(accessible):
    extents = accessible.get_extents(Atspi.CoordType.SCREEN)
    return extents.x + extents.width / 2, extents.y + extents.height / 2


class FileManagerTest(DesktopTest):
    preferences = {"Lumeno.aiBackend": "ollama", "Lumeno.hasCompletedOnboarding": True}
    delay = 0

    def setUp(self):
        self.answers = [[PROMPT + request, answer] for request, answer in COMMANDS]
        super().setUp()
        self.folder = os.path.join(self.directory, "the folder")
        os.mkdir(self.folder)
        for name in NAMES:
            self.write_in_folder(name)

    def start_model_server(self, *arguments):
        path = self.write_file("answers.json", json.dumps(self.answers))
        super().start_model_server("--answers-file", path, "--delay-ms", str(self.delay), *arguments)

    def write_in_folder(self, name):
        with open(os.path.join(self.folder, name), "w", encoding="utf-8") as f:
            f.write(name)

    def is_there(self, name):
        return os.path.exists(os.path.join(self.folder, name))

    # -- the file managers --------------------------------------------------------------------------------------------

    def open_thunar(self, details=True):
        manager = self.start_application("thunar", self.folder, class_name="thunar")
        if details:
            key("ctrl+2")
        return manager

    def open_pcmanfm(self):
        return self.start_application("pcmanfm-qt", "--new-window", self.folder, class_name="pcmanfm-qt",
                                      env={"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})

    def open_caja(self):
        return self.start_application("caja", "--no-desktop", self.folder, class_name="caja")

    def item(self, name):
        """Where an item of the file manager is, as accessibility tells it."""
        def find(accessible, depth=0):
            if accessible.get_name() == name and accessible.get_role() in (
                    Atspi.Role.ICON, Atspi.Role.TABLE_CELL, Atspi.Role.LIST_ITEM):
                return accessible
            for child in children(accessible) if depth < 20 else ():
                found = find(child, depth + 1)
                if found:
                    return found
            return None

        def anywhere():
            for application in applications():
                if application.get_name() in ("thunar", "Thunar", "caja", "pcmanfm-qt"):
                    found = find(application)
                    if found:
                        return found
            return None

        return wait_for(f"“{name}” in the file manager", anywhere)

    def click_item(self, name):
        def clicked():
            try:
                click(*center(self.item(name)))
                return True
            except GLib.GError:  # the view was still changing
                return False

        wait_for(f"“{name}” to be where it is said to be", clicked)

    def select(self, names):
        """By real clicks."""
        def add(name):
            if self.is_selected(name):
                return
            desktop.xdotool("keydown", "ctrl")
            self.click_item(name)
            desktop.xdotool("keyup", "ctrl")

        repeat_until(f"“{names[0]}” to be selected", lambda: self.click_item(names[0]),
                     lambda: self.is_selected(names[0]))
        for name in names[1:]:
            repeat_until(f"“{name}” to be selected", lambda n=name: add(n), lambda n=name: self.is_selected(n))

    def is_selected(self, name):
        try:
            item = self.item(name)
            item.clear_cache()
            if item.get_state_set().contains(Atspi.StateType.SELECTED):
                return True
            # Caja's icons do not say it themselves.
            selection = item.get_parent().get_selection_iface()
            return bool(selection) and selection.is_child_selected(item.get_index_in_parent())
        except GLib.GError:
            return False

    # -- the bar ------------------------------------------------------------------------------------------------------

    def ask(self, request):
        """Types into the bar as a person does who has to click into it first."""
        def click_field():
            try:
                click(*center(self.wait_for_name("Request")))
            except GLib.GError:  # it is being moved
                pass

        repeat_until("the bar to have the keyboard", click_field, self.bar_has_keyboard)
        desktop.xdotool("type", request)
        key("Return")

    def summon_all(self, wanted):
        """Selects everything and summons until the bar says so: the folder may still be being read."""
        notice = "No selection found. Select some text, then press ⌥⌘Space."

        def answer():
            return next((n for n in self.view.names() if n == notice or n.endswith(" items")), None)

        for _ in range(5):
            key("ctrl+a")
            self.summon()
            said = self.wait_for_view("an answer", answer)
            if said == wanted:
                return
            key("Escape")
            self.wait_until_hidden()
        self.fail(f"the bar says {said}")

    def bar_has_keyboard(self):
        field = self.view.find("Request")
        return field and field.get_state_set().contains(Atspi.StateType.FOCUSED)

    def wait_for_preview(self, command):
        self.wait_for_view("the command", lambda: self.view.find_containing(command))

    def gather_in(self, manager):
        manager()
        self.select(NAMES)
        self.wait_for_name("3 items")
        self.screenshot(f"files-{manager.__name__}")
        self.ask("gather")
        self.wait_for_preview("mkdir gathered")
        self.screenshot(f"files-preview-{manager.__name__}")
        self.view.press("Run")
        self.wait_for_name("Moved 3 items")
        self.screenshot(f"files-result-{manager.__name__}")
        for name in NAMES:
            self.assertTrue(self.is_there(os.path.join("gathered", name)))
        self.view.press("Done")
        self.wait_for_view("the result to go", lambda: not self.view.find("Moved 3 items"))


class RealFileManagers(FileManagerTest):
    def test_thunar(self):
        self.gather_in(self.open_thunar)

    def test_pcmanfm(self):
        self.gather_in(self.open_pcmanfm)

    def test_caja(self):
        self.gather_in(self.open_caja)

    def test_what_accessibility_cannot_read_is_copied_on_summon(self):
        desktop.set_clipboard("precious")
        self.open_thunar(details=False)
        key("ctrl+1")
        key("ctrl+a")
        self.assertTrue(stays_false(self.hud_is_shown, 1.5))
        self.summon_all("3 items")
        wait_for("the bar to have the keyboard", self.bar_has_keyboard)
        self.assertEqual(clipboard(), "precious")
        desktop.xdotool("type", "gather")
        key("Return")
        self.wait_for_preview("mkdir gathered")
        key("Escape")
        self.wait_until_hidden()
        self.assertFalse(self.is_there("gathered"))

    def test_hundreds_of_items_are_read_on_summon(self):
        for i in range(600 - len(NAMES)):
            self.write_in_folder(f"item {i:03}.txt")
        self.open_thunar()
        self.item(NAMES[0])  # the list is there
        self.summon_all("600 items")
        wait_for("the bar to have the keyboard", self.bar_has_keyboard)
        key("Escape")
        self.wait_until_hidden()


class Reviewing(FileManagerTest):
    def plan(self, request, expected):
        self.open_caja()
        self.select(NAMES[:2])
        self.wait_for_name("2 items")
        self.ask(request)
        self.wait_for_preview(expected)

    def test_a_blocked_command_cannot_be_run(self):
        self.plan("blocked", "touch ran; killall")
        self.wait_for_name("This command was blocked because it force-quits running apps.")
        self.screenshot("files-blocked")
        run = self.wait_for_name("Run")
        if run.get_n_actions():
            run.do_action(0)
        click(*center(run))
        for _ in range(6):
            key("Tab")
            key("space")
            key("Return")
        time.sleep(0.5)
        self.assertFalse(self.is_there("ran"))
        self.assertIsNone(self.view.find("Running…"))

    def test_cautions_are_shown_before_the_command_runs(self):
        self.plan("careful", "rm -r one.txt")
        self.wait_for_view("a caution", lambda: self.view.find_containing("Deletes"))
        self.assertTrue(self.is_there("one.txt"))
        self.screenshot("files-careful")
        self.view.press("Edit request")
        field = self.wait_for_view("the request", lambda: self.view.find("Request"))
        self.assertEqual(field.get_text_iface().get_text(0, -1) if field.get_text_iface() else "careful", "careful")

    def test_a_failing_command_says_so(self):
        self.plan("fail", "exit 3")
        self.view.press("Run")
        self.wait_for_name("Command failed")
        self.wait_for_name("gone wrong")
        self.screenshot("files-failed")
        self.view.press("Copy output")
        wait_for("the output on the clipboard", lambda: clipboard() == "gone wrong")
        self.view.press("Another")
        self.wait_for_name("Generate command")

    def test_a_confirmed_command_outlives_the_program(self):
        self.plan("slow", "touch finished")
        self.view.press("Run")
        self.wait_for_name("Running…")
        self.lumeno.process.terminate()
        self.assertEqual(self.lumeno.process.wait(30), 0)
        self.assertFalse(self.is_there("finished"))
        self.write_in_folder("go")
        wait_for("the command to finish", lambda: self.is_there("finished"))

    def test_without_a_server_the_bar_says_so_and_keeps_the_request(self):
        self.model.stop()
        self.open_caja()
        self.select(NAMES[:1])
        self.wait_for_name(NAMES[0])
        self.ask("gather")
        self.wait_for_name("The AI backend isn't available. Start Ollama or enable Apple Intelligence in the menu.")
        self.screenshot("files-error")
        self.start_model_server()
        self.view.press("Try again")
        wait_for("the bar to have the keyboard", self.bar_has_keyboard)
        key("Return")
        self.wait_for_preview("mkdir gathered")


class Races(FileManagerTest):
    delay = 3000

    def test_another_selection_while_planning_starts_afresh(self):
        self.open_caja()
        self.select(NAMES[:2])
        self.wait_for_name("2 items")
        self.ask("gather")
        self.wait_for_name("Generating a command")
        self.screenshot("files-planning")
        self.click_item(NAMES[2])
        self.wait_for_name(NAMES[2])
        self.wait_for_name("Generate command")
        self.assertTrue(stays_false(lambda: self.view.find("Run"), 3.5), "the old plan was shown")


class Leaving(FileManagerTest):
    delay = 60000

    def test_escape_while_planning_closes_for_good(self):
        self.open_caja()
        self.select(NAMES[:2])
        self.wait_for_name("2 items")
        self.ask("gather")
        self.wait_for_name("Generating a command")
        key("Escape")
        self.wait_until_hidden()
        wait_for("the request to be given up", lambda: '"cancelled":true' in self.model.log())
        self.assertTrue(stays_false(self.hud_is_shown, 2))


class Switches(FileManagerTest):
    def test_text_selected_elsewhere_closes_the_bar(self):
        self.open_caja()
        self.select(NAMES[:2])
        self.wait_for_name("2 items")
        self.start_application("mousepad", "--disable-server", self.write_file("note.txt", "serendipity"),
                               class_name="mousepad")
        self.wait_until_hidden()
        key("ctrl+a")
        self.wait_for_pill()

    def test_switched_off_means_off(self):
        caja = self.open_caja()
        self.select(NAMES[:2])
        self.wait_for_name("2 items")
        self.bus_call("ShowSettings")
        self.view.press("Show actions for files selected in Finder")
        wait_for("the bar to close", lambda: not self.view.find("2 items"))
        desktop.xdotool("windowactivate", "--sync", caja.window)
        self.click_item(NAMES[2])
        self.assertTrue(stays_false(lambda: self.view.find("Generate command"), 1.5))


if __name__ == "__main__":
    desktop.main()
