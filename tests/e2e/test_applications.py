#!/usr/bin/python3
"""The pill appears, and the selection is right, in applications of every toolkit."""

import os
import time

import desktop
from desktop import DesktopTest, click, drag, geometry, key, repeat_until, wait_for

LINE = "Please proofread this sentences before friday thanks"


class Applications(DesktopTest):
    def expect_selection(self, title="Fix spelling & grammar"):
        """Opens the chips and runs one whose answer repeats the first selected words."""
        self.open_chips_by_pointer()
        self.wait_for_name(title)
        self.view.press(title)
        answer = wait_for("the answer", lambda: self.view.find_containing("Answer to:"), 15)
        return answer.get_name()

    def pill(self):
        return self.view.find_containing("actions available")

    def prompts(self):
        return self.model.log()

    def expect_prompt_with(self, text):
        wait_for(f"a prompt that holds {text!r}", lambda: text in self.prompts())

    def replace_and_wait(self, saved):
        self.wait_for_name("Replace", 15)
        self.view.press("Replace")
        self.wait_until_hidden()
        wait_for("the document to change", lambda: "Answer to:" in saved())

    def editor_case(self, command, class_name, line_y, env=None):
        """`line_y` gives the middle of the first line, from the editor's window."""
        path = self.write_file("note.txt", LINE + "\n\nAnother line stays.\n")
        editor = self.start_application(*command, path, class_name=class_name, env=env)
        x, y, width, height = geometry(editor.window)
        line = line_y(y)
        # Keyboard first: the whole text.
        repeat_until("the pill", lambda: (key("ctrl+Home"), key("shift+End")), self.pill)
        self.expect_selection()
        self.expect_prompt_with(LINE)
        self.view.press("Dismiss")
        self.wait_until_hidden()
        key("Right")
        # Then a real drag over the first line, and the answer in its place.
        drag(x + width - 30, line, x + 4, line)
        self.expect_selection()

        def saved():
            key("ctrl+s")
            time.sleep(0.2)
            with open(path, encoding="utf-8") as f:
                return f.read()

        self.replace_and_wait(saved)
        self.assertIn("Another line stays.", saved())

    def test_gtk3_editor(self):
        self.editor_case(["mousepad", "--disable-server"], "mousepad", lambda _: desktop.first_line_y("mousepad"))

    def test_gtk4_editor(self):
        self.editor_case(["gnome-text-editor", "--standalone"], "gnome-text-editor", lambda y: y + 70,
                         env={"GSK_RENDERER": "cairo"})

    def test_qt_editor(self):
        self.editor_case(["featherpad", "--standalone"], "featherpad", lambda y: y + 110)

    def test_vte_terminal(self):
        self.terminal_case(["xfce4-terminal", "--disable-server", "--hide-menubar", "-x", "sh", "-c",
                            f"printf '{LINE}\\n'; exec cat > {self.directory}/typed"], "xfce4-terminal")

    def test_xterm(self):
        self.terminal_case(["xterm", "-e", "sh", "-c",
                            f"printf '{LINE}\\n'; exec cat > {self.directory}/typed"], "xterm")

    def terminal_case(self, command, class_name):
        """Read only: nothing is ever typed into a terminal."""
        terminal = self.start_application(*command, class_name=class_name)
        x, y, width, height = geometry(terminal.window)
        wait_for("the terminal's program", lambda: os.path.exists(f"{self.directory}/typed"))
        repeat_until("the pill", lambda: click(x + 40, y + 10, repeat=3), self.pill)
        self.expect_selection()
        self.expect_prompt_with(LINE)
        self.wait_for_name("Replace", 15)
        self.view.press("Replace")
        self.wait_for_name("The selection is gone. The result is on the clipboard.")
        self.assertIn("Answer to:", desktop.clipboard())
        time.sleep(0.3)
        with open(f"{self.directory}/typed", encoding="utf-8") as f:
            self.assertEqual(f.read(), "")
        self.assertTrue(terminal.running(), "the terminal's program was interrupted")
        # Summoning reads the terminal's own offer, without a key.
        self.wait_until_hidden()
        repeat_until("the pill", lambda: click(x + 40, y + 10, repeat=3), self.pill)
        self.summon()
        self.wait_for_name("Explain simply")
        key("Escape")
        self.wait_until_hidden()
        self.assertTrue(terminal.running(), "the terminal's program was interrupted")


class LinkChip(DesktopTest):
    def test_opens_the_handler(self):
        opened = os.path.join(self.directory, "opened")
        applications = os.path.join(os.environ["XDG_DATA_HOME"], "applications")
        os.makedirs(applications, exist_ok=True)
        handler = self.write_file("handler", f"#!/bin/sh\nprintf '%s' \"$1\" > {opened}\n")
        os.chmod(handler, 0o755)
        with open(os.path.join(applications, "test-browser.desktop"), "w", encoding="utf-8") as f:
            f.write(f"[Desktop Entry]\nType=Application\nName=Test Browser\nExec={handler} %u\n"
                    "MimeType=x-scheme-handler/https;\n")
        with open(os.path.join(os.environ["XDG_CONFIG_HOME"], "mimeapps.list"), "w", encoding="utf-8") as f:
            f.write("[Default Applications]\nx-scheme-handler/https=test-browser.desktop\n")
        path = self.write_file("note.txt", "https://example.org/tide?table=3#top")
        self.start_application("mousepad", "--disable-server", path, class_name="mousepad")
        key("ctrl+a")
        self.open_chips_by_pointer()
        self.view.press("Open link")
        self.wait_until_hidden()
        wait_for("the link's handler", lambda: os.path.exists(opened) and os.path.getsize(opened))
        with open(opened, encoding="utf-8") as f:
            self.assertEqual(f.read(), "https://example.org/tide?table=3#top")


if __name__ == "__main__":
    desktop.main()
