#!/usr/bin/python3
"""The main job in a browser with and without accessibility, and in a word processor."""

import os

import desktop
from desktop import Atspi, DesktopTest, applications, children, drag, geometry, key, wait_for

LINE = "Please proofread this sentences before friday thanks"
PAGE_COLOUR = "FFFBE6"  # nothing around the page has it
# The title tells what was put into the text area, also where accessibility is off.
PAGE = f"""<!doctype html><meta charset="utf-8"><title>Lumeno test page</title>
<body style="margin:40px;font:20px sans-serif;background:#{PAGE_COLOUR}"><p>{LINE}</p>
<textarea style="width:700px;height:120px;font:20px sans-serif" oninput="document.title = this.value">{LINE}</textarea>
</body>"""


def paragraphs(application_name):
    """The paragraphs of an application's documents."""
    def walk(accessible, depth=0):
        if accessible.get_role() == Atspi.Role.PARAGRAPH:
            yield accessible
        elif depth < 12 and accessible.get_child_count() < 100:
            for child in children(accessible):
                yield from walk(child, depth + 1)

    return [p for a in applications() if a.get_name() == application_name for p in walk(a)]


class LargeApplications(DesktopTest):
    def run_chip(self, title="Fix spelling & grammar"):
        self.open_chips_by_pointer()
        self.wait_for_name(title, 15)
        self.view.press(title)
        self.wait_for_view("the answer", lambda: self.view.find_containing("Answer to:"), 20)
        wait_for("a prompt with the selected text", lambda: LINE in self.model.log())

    def replace(self):
        self.wait_for_name("Replace", 15)
        self.view.press("Replace")
        self.wait_until_hidden()

    def page_case(self, window):
        """On the page by drag, in the text area by keyboard, then the answer in its place."""
        top = wait_for("the page to be drawn", lambda: self.page_top(window), 60, 0.2)
        x, y, _, _ = geometry(window)
        drag(x + 42, y + top + 54, x + 620, y + top + 54)
        self.run_chip()
        self.view.press("Dismiss")
        self.wait_until_hidden()
        desktop.click(x + 200, y + top + 160)
        key("ctrl+a")
        self.run_chip()
        self.replace()
        wait_for("the text area to hold the answer",
                 lambda: desktop.xdotool("getwindowname", window).startswith(f"Answer to: {LINE}"))

    def page_top(self, window):
        """Where the page begins in its window: the bars above it differ by version. None before it is drawn."""
        x, y, _, height = geometry(window)
        column = desktop.run("import", "-window", "root", "-crop", f"1x{height}+{x + 20}+{y}", "+repage", "-depth", "8",
                             "txt:-")
        rows = column.splitlines()[1:]
        return next((top for top, row in enumerate(rows) if f"#{PAGE_COLOUR}" in row), None)

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
        self.page_case(firefox.window)

    def test_chromium(self):
        page = self.write_file("page.html", PAGE)
        chromium = self.start_application(
            "chromium", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking",
            "--disable-component-update", "--disable-sync", "--disable-quic", "--password-store=basic",
            f"--user-data-dir={self.directory}/chromium", f"file://{page}", class_name="chromium", timeout=90)
        self.page_case(chromium.window)

    def test_libreoffice_writer(self):
        path = self.write_file("note.txt", LINE + "\n")
        writer = self.start_application(
            "soffice", "--writer", "--norestore", "--nologo", "--nofirststartwizard",
            f"-env:UserInstallation=file://{self.directory}/office", path, class_name="libreoffice", timeout=120)
        wait_for("the cursor in the document",
                 lambda: any(p.get_state_set().contains(Atspi.StateType.FOCUSED) for p in paragraphs("soffice")),
                 60, 0.2)
        key("ctrl+Home")
        key("shift+End")
        self.run_chip()
        self.replace()
        wait_for("the document to hold the answer",
                 lambda: any(Atspi.Text.get_text(p, 0, -1).startswith(f"Answer to: {LINE}")
                             for p in paragraphs("soffice")))
        self.assertTrue(writer.running())


if __name__ == "__main__":
    desktop.main()
