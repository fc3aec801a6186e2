#!/usr/bin/python3
"""The accessibility bus is killed and comes back. Nothing here asks that bus: this process would lose it too."""

import os
import signal

import desktop
from desktop import DesktopTest, key, wait_for


class BusRestart(DesktopTest):
    def open_mousepad(self):
        path = self.write_file("note.txt", "can u send me the new tide tables before the meeting")
        return self.start_application("mousepad", "--disable-server", path, class_name="mousepad")

    def test_capture_resumes(self):
        editor = self.open_mousepad()
        key("ctrl+a")
        wait_for("the pill", self.hud_is_shown)
        key("Right")
        self.wait_until_hidden()
        editor.stop()
        os.kill(self.process_of("org.a11y.Bus"), signal.SIGKILL)
        wait_for("access to be granted again", self.access_granted)
        self.open_mousepad()
        key("ctrl+a")
        wait_for("the pill", self.hud_is_shown)

    def process_of(self, name):
        answer = desktop.run("gdbus", "call", "--session", "-d", "org.freedesktop.DBus", "-o", "/org/freedesktop/DBus",
                             "-m", "org.freedesktop.DBus.GetConnectionUnixProcessID", name)
        return int("".join(c for c in answer.split()[-1] if c.isdigit()))


if __name__ == "__main__":
    desktop.main()
