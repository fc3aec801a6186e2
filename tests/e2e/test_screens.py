#!/usr/bin/python3
"""Several screens: the pill stands on the screen of the selection, inside it."""

import desktop
from desktop import DesktopTest, geometry, key, run, xdotool


class Screens(DesktopTest):
    def setUp(self):
        run("xrandr", "--setmonitor", "LEFT", "640/210x900/240+0+0", "screen")
        run("xrandr", "--setmonitor", "RIGHT", "640/210x900/240+640+0", "none")
        self.addCleanup(run, "xrandr", "--delmonitor", "RIGHT", check=False)
        self.addCleanup(run, "xrandr", "--delmonitor", "LEFT", check=False)
        super().setUp()

    def test_pill_stays_on_the_screen_of_its_selection(self):
        path = self.write_file("note.txt", "serendipity")
        editor = self.start_application("mousepad", "--disable-server", path, class_name="mousepad")
        xdotool("windowsize", "--sync", editor.window, 300, 200)
        for left, right, position in ((0, 640, 330), (640, 1280, 645), (640, 1280, 970)):
            xdotool("windowmove", "--sync", editor.window, position, 400)
            key("ctrl+a")
            self.wait_for_pill()
            x, _, width, _ = geometry(self.hud_windows()[0])
            self.assertGreaterEqual(x, left)
            self.assertLessEqual(x + width, right)
            key("Right")
            self.wait_until_hidden()


if __name__ == "__main__":
    desktop.main()
