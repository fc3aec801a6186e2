#!/usr/bin/python3
"""The main job in ordinary applications: select, pill, chips, answer, use it."""

import time

import desktop
from desktop import DesktopTest, Atspi, clipboard, click, drag, geometry, key, stays_false, wait_for

SENTENCE = "can u send me the new tide tables before the meeting"


class Mousepad(DesktopTest):
    """A GTK 3 editor: exact text and bounds over accessibility."""

    def open_editor(self, text):
        self.path = self.write_file("note.txt", text)
        self.editor = self.start_application("mousepad", "--disable-server", self.path, class_name="mousepad")
        self.text_x = geometry(self.editor.window)[0] + 8
        self.text_y = desktop.first_line_y("mousepad")
        return self.editor

    def select_first_line(self):
        _, _, width, _ = geometry(self.editor.window)
        return drag(self.text_x, self.text_y, self.text_x + width - 40, self.text_y)

    def saved_text(self):
        key("ctrl+s")
        time.sleep(0.2)
        with open(self.path, encoding="utf-8") as f:
            return f.read()


class MainJob(Mousepad):
    def test_drag_pill_hover_stream_replace(self):
        self.open_editor(SENTENCE + "\nThe second line stays.\n")
        released = self.select_first_line()
        self.wait_for_pill()
        self.assertGreater(time.monotonic() - released, desktop.SETTLE - 0.05)
        self.screenshot("pill")
        # The pill stands above the line, inside the screen, and the editor keeps the focus.
        x, y, width, height = geometry(self.hud_windows()[0])
        self.assertLess(y + height, self.text_y + 10)
        self.assertEqual(desktop.active_window(), self.editor.window)
        self.open_chips_by_pointer()
        self.wait_for_name("Fix spelling & grammar")
        self.screenshot("chips")
        self.view.press("Fix spelling & grammar")
        self.wait_for_name("Replace", 15)
        self.screenshot("result")
        answer = wait_for("the answer", lambda: self.view.find_containing("Answer to:"))
        self.view.press("Replace")
        self.wait_until_hidden()
        wait_for("the document to hold the answer", lambda: "Answer to:" in self.saved_text())
        self.assertIn("The second line stays.", self.saved_text())
        self.assertNotIn(SENTENCE + "\n", self.saved_text())

    def test_copy_puts_the_result_on_the_clipboard(self):
        self.open_editor(SENTENCE)
        key("ctrl+a")
        self.open_chips_by_pointer()
        self.view.press("Fix spelling & grammar")
        self.wait_for_name("Copy", 15)
        self.view.press("Copy")
        self.wait_until_hidden()
        self.assertIn("Answer to:", clipboard())

    def test_summon_by_keyboard_only(self):
        self.open_editor("serendipity")
        desktop.set_clipboard("precious")
        key("ctrl+a")
        self.wait_for_pill()
        self.summon()
        self.wait_for_name("Define")
        wait_for("chips, not a pill", lambda: not self.view.find_containing("actions available"))
        self.screenshot("keyboard")

        def selected(name):
            chip = self.view.find(name)
            return chip and chip.get_state_set().contains(Atspi.StateType.SELECTED)

        wait_for("the first chip to be highlighted", lambda: selected("Define"))
        key("Down")
        wait_for("the second chip to be highlighted", lambda: selected("Explain simply"))
        key("Down")
        wait_for("the highlight to wrap", lambda: selected("Define"))
        key("2")
        self.wait_for_name("Copy", 15)
        key("Return")
        self.wait_until_hidden()
        self.assertIn("Answer to:", clipboard())
        # The keyboard is back where it was.
        wait_for("the editor to have the focus again", lambda: desktop.active_window() == self.editor.window)
        key("End")
        desktop.xdotool("type", "X")
        self.assertTrue(wait_for("typing to reach the editor", lambda: "X" in self.saved_text()))

    def test_escape_closes_a_summoned_hud(self):
        self.open_editor("serendipity")
        key("ctrl+a")
        self.wait_for_pill()
        self.summon()
        self.wait_for_name("Define")
        key("Escape")
        self.wait_until_hidden()

    def test_outside_click_and_escape_close_an_unfocused_hud(self):
        self.open_editor(SENTENCE + "\n\n\n\n\n\n\n\n\n\n")
        for close in (lambda: key("Escape"), lambda: click(self.text_x + 60, self.text_y + 120)):
            self.select_first_line()
            self.open_chips_by_pointer()
            self.wait_for_name("Explain simply")
            close()
            self.wait_until_hidden()
            key("ctrl+End")

    def test_nothing_selected_gives_a_notice(self):
        self.open_editor("")
        self.summon()
        self.wait_for_name("No selection found. Select some text, then press ⌥⌘Space.")
        self.screenshot("notice")
        self.wait_until_hidden()


class WithoutServer(Mousepad):
    """No model anywhere: the built-in templates answer."""

    model_server = False

    def test_template_result(self):
        self.open_editor("serendipity")
        key("ctrl+a")
        self.open_chips_by_pointer()
        self.view.press("Define")
        self.wait_for_name("Built-in", 15)
        self.assertIsNotNone(self.view.find_containing("serendipity: a term or phrase selected in Mousepad"))


class DisabledApplication(DesktopTest):
    preferences = {**DesktopTest.preferences, "Lumeno.disabledApps": ["mousepad"]}

    def test_stays_silent(self):
        path = self.write_file("note.txt", SENTENCE)
        self.start_application("mousepad", "--disable-server", path, class_name="mousepad")
        key("ctrl+a")
        self.assertTrue(stays_false(self.hud_is_shown, 1.5))


if __name__ == "__main__":
    desktop.main()
