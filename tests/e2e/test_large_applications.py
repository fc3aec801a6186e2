#!/usr/bin/python3
"""The main job in a browser with and without accessibility, and in a word processor."""

import os
import time

import desktop
from desktop import DesktopTest, drag, geometry, key, wait_for

LINE = "Please proofread this sentences before friday thanks"
PAGE = f"""<!doctype html><meta charset="utf-8"><title>Lumeno test page</title>
<body style="margin:40px;font:20px sans-serif"><p id="p">{LINE}</p>
<textarea id="t" style="width:700px;height:120px;font:20px sans-serif">{LINE}</textarea></body>"""


class LargeApplications(DesktopTest):
    def run_chip(self, title="Fix spelling & grammar"):
        self.open_chips_by_pointer()
        self.wait_for_name(title, 15)
        self.view.press(title)
        wait_for("the answer", lambda: self.view.find_containing("Answer to:"), 20)
        wait_for("a prompt with the selected text", lambda: LINE in self.model.log())

    def page_case(self, window, top):
        """On the page by drag, in the text area by keyboard, then the answer in its place."""
        x, y, _, _ = geometry(window)
        drag(x + 42, y + top + 54, x + 620, y + top + 54)
        self.run_chip()
        self.view.press("Dismiss")
        self.wait_until_hidden()
        desktop.click(x + 200, y + top + 160)
        key("ctrl+a")
        self.run_chip()
        self.wait_for_name("Replace", 15)
        self.view.press("Replace")
        self.wait_until_hidden()
        desktop.set_clipboard("")
        key("ctrl+a")
        key("ctrl+c")
        wait_for("the text area to hold the answer", lambda: "Answer to:" in (desktop.clipboard() or ""))

    def test_firefox(self):
        page = self.write_file("page.html", PAGE)
        profile = os.path.join(self.directory, "profile")
        os.makedirs(profile)
        with open(os.path.join(profile, "user.js"), "w", encoding="utf-8") as f:
            f.write('user_pref("browser.shell.checkDefaultBrowser", false);\n'
                    'user_pref("browser.aboutwelcome.enabled", false);\n'
                    'user_pref("datareporting.policy.dataSubmissionEnabled", false);\n'
                    'user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);\n'
                    'user_pref("browser.startup.homepage_override.mstone", "ignore");\n')
        firefox = self.start_application("firefox-esr", "--no-remote", "--profile", profile, "--new-window",
                                         f"file://{page}", class_name="firefox", timeout=90)
        desktop.wait_for("the page", lambda: "Lumeno test page" in desktop.xdotool("getwindowname", firefox.window), 60)
        time.sleep(3)
        self.page_case(firefox.window, self.content_top(firefox.window))

    def test_chromium(self):
        page = self.write_file("page.html", PAGE)
        chromium = self.start_application(
            "chromium", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking",
            "--disable-component-update", "--disable-sync", "--disable-quic", "--password-store=basic",
            f"--user-data-dir={self.directory}/chromium", f"file://{page}", class_name="chromium", timeout=90)
        desktop.wait_for("the page",
                         lambda: "Lumeno test page" in desktop.xdotool("getwindowname", chromium.window), 60)
        time.sleep(3)
        self.page_case(chromium.window, self.content_top(chromium.window))

    def content_top(self, window):
        """Where the white page begins, from the picture of the window: the bars above it differ by version."""
        x, y, width, height = geometry(window)
        column = desktop.run("sh", "-c", f"import -window root -crop 1x{height}+{x + 20}+{y} +repage txt:-")
        white = [("255,255,255" in line or "#FFFFFF" in line) for line in column.splitlines()[1:]]
        # The page is the long white stretch that reaches furthest down.
        for top in range(len(white)):
            if all(white[top:top + 300]) and len(white) - top > 300:
                return top
        raise AssertionError("no page in the window")

    def test_libreoffice_writer(self):
        path = self.write_file("note.txt", LINE + "\n")
        writer = self.start_application(
            "soffice", "--writer", "--norestore", "--nologo", "--nofirststartwizard",
            f"-env:UserInstallation=file://{self.directory}/office", path, class_name="libreoffice", timeout=120)
        time.sleep(3)
        key("Escape")
        key("ctrl+Home")
        key("shift+End")
        self.run_chip()
        self.wait_for_name("Replace", 15)
        self.view.press("Replace")
        self.wait_until_hidden()
        desktop.set_clipboard("")
        key("ctrl+a")
        key("ctrl+c")
        wait_for("the document to hold the answer", lambda: "Answer to:" in (desktop.clipboard() or ""))
        self.assertTrue(writer.running())


if __name__ == "__main__":
    desktop.main()
