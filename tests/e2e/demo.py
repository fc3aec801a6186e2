#!/usr/bin/python3
"""Shows the main job on a private desktop with real input, and leaves a picture of each step."""

import time

import desktop
from desktop import DesktopTest, clipboard, key

TEXT = "can u send me the new tide tables before the meeting, the print shop needs them asap\n"


class Demo(DesktopTest):
    step = 0

    def picture(self, what):
        self.step += 1
        time.sleep(0.4)  # animations
        self.screenshot(f"{self.step:02d}-{what}")
        print(f"  {self.step:02d} {what.replace('-', ' ')}", flush=True)

    def runTest(self):
        print("Access to other programs was granted over D-Bus, as the tray menu's item does, in this private desktop.",
              flush=True)
        path = self.write_file("message.txt", TEXT)
        editor = self.start_application("mousepad", "--disable-server", path, class_name="mousepad")
        desktop.xdotool("windowsize", "--sync", editor.window, 900, 500)
        desktop.xdotool("windowmove", "--sync", editor.window, 190, 330)
        x, _, width, _ = desktop.geometry(editor.window)
        line = desktop.first_line_y("mousepad")
        self.picture("a-text-editor")
        desktop.drag(x + 6, line, x + width - 30, line)
        self.wait_for_pill()
        self.picture("selecting-text-shows-the-hint-pill")
        self.open_chips_by_pointer()
        self.wait_for_name("Make it professional")
        self.picture("the-pointer-opens-the-chips")
        self.view.press("Make it professional")
        desktop.wait_for("the answer to stream", lambda: self.view.find("Generating result"))
        self.picture("the-answer-streams-in")
        self.wait_for_name("Replace", 20)
        self.picture("the-result")
        self.view.press("Replace")
        self.wait_until_hidden()
        self.picture("replaced-in-the-document")
        key("ctrl+a")
        self.wait_for_pill()
        self.summon()
        self.wait_for_name("Explain simply")
        self.picture("the-summon-shortcut-opens-chips-for-the-keyboard")
        key("Down")
        key("Return")
        self.wait_for_name("Copy", 20)
        self.picture("a-chip-run-by-keyboard")
        key("Return")
        self.wait_until_hidden()
        assert clipboard(), "the result is not on the clipboard"
        self.picture("copied-with-return")


Demo.model_arguments = ("--delay-ms", "60")

if __name__ == "__main__":
    desktop.main()
