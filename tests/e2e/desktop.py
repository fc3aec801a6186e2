"""Drives the built program on a private desktop, as a person would: real input, real applications.

Lumeno's views are found by their accessible names and pressed over the accessibility bus; other applications are
driven with keys and the pointer. Nothing here sleeps for luck: everything waits for a condition, with a deadline.
"""

import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

Atspi.set_timeout(5000, 15000)  # milliseconds; a busy machine is no reason to believe that a view is not there

BINARIES = os.environ["LUMENO_BIN"]
SETTLE = 0.35


def wait_for(what, condition, timeout=30.0, interval=0.03):
    """The first true value of condition(); fails with `what` after the timeout."""
    deadline = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {timeout:g} s in vain for: {what}")
        time.sleep(interval)


def repeat_until(what, action, condition, every=2.0, timeout=30.0):
    """Does something until it has its effect: an application may not be ready for it at first."""
    deadline = time.monotonic() + timeout
    while True:
        action()
        try:
            return wait_for(what, condition, every)
        except AssertionError:
            if time.monotonic() > deadline:
                raise


def stays_false(condition, seconds):
    """Whether condition() stays false for so long."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if condition():
            return False
        time.sleep(0.05)
    return True


def run(*command, check=True, timeout=20):
    return subprocess.run(command, check=check, timeout=timeout, capture_output=True, text=True).stdout


def xdotool(*arguments):
    return run("xdotool", *[str(a) for a in arguments]).strip()


def key(*keys):
    xdotool("key", "--clearmodifiers", *keys)


def move(x, y):
    xdotool("mousemove", int(x), int(y))


def click(x, y, button=1, repeat=1):
    move(x, y)
    time.sleep(0.05)
    xdotool("click", "--repeat", repeat, "--delay", 60, button)


def drag(x1, y1, x2, y2, steps=8):
    """Press, move in steps, release; as a hand would, with a moment between. Gives the time of the release."""
    move(x1, y1)
    time.sleep(0.08)
    xdotool("mousedown", 1)
    for i in range(1, steps + 1):
        move(x1 + (x2 - x1) * i / steps, y1 + (y2 - y1) * i / steps)
        time.sleep(0.02)
    time.sleep(0.05)
    released = time.monotonic()
    xdotool("mouseup", 1)
    return released


def clipboard():
    result = subprocess.run(["xclip", "-o", "-selection", "clipboard"], capture_output=True, text=True, timeout=20)
    return result.stdout if result.returncode == 0 else None


def set_clipboard(text):
    subprocess.run(["xclip", "-i", "-selection", "clipboard"], input=text, text=True, check=True, timeout=20)


def window_ids(class_name):
    return [int(w) for w in run("xdotool", "search", "--onlyvisible", "--class", class_name, check=False).split()]


def geometry(window):
    """x, y, width, height of a window's content on the root window."""
    text = run("xwininfo", "-id", str(window))
    wanted = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
    return tuple(next(int(line.split(":")[1]) for line in text.splitlines() if line.strip().startswith(w + ":"))
                 for w in wanted)


def wide_windows(class_name, width):
    """The visible windows of a class that are at least so wide. One may close while it is looked at."""
    def is_wide(window):
        try:
            return geometry(window)[2] >= width
        except subprocess.CalledProcessError:
            return False

    return [w for w in window_ids(class_name) if is_wide(w)]


def active_window():
    text = run("xdotool", "getactivewindow", check=False).strip()
    return int(text) if text else 0


class Process:
    def __init__(self, *command, log, env=None):
        self.log_path = log
        with open(log, "wb") as out:
            self.process = subprocess.Popen(
                command, env={**os.environ, **(env or {})}, stdin=subprocess.DEVNULL, stdout=out,
                stderr=subprocess.STDOUT, start_new_session=True)

    def running(self):
        return self.process.poll() is None

    def log(self):
        with open(self.log_path, encoding="utf-8", errors="replace") as f:
            return f.read()

    def stop(self):
        if self.running():
            self.process.terminate()
            try:
                self.process.wait(30)
            except subprocess.TimeoutExpired:
                pass
        try:  # what it has started
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self.process.wait()


def children(accessible):
    for i in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(i)
        if child is not None:
            yield child


def applications():
    desktop = Atspi.get_desktop(0)
    return list(children(desktop))


def first_line_y(application_name):
    """The middle of the first line of an application's text, on the root window: asked of the application itself."""
    def find_text(accessible, depth=0):
        states = accessible.get_state_set()
        if accessible.get_role() == Atspi.Role.TEXT and states.contains(Atspi.StateType.MULTI_LINE):
            return accessible
        for child in children(accessible) if depth < 12 else ():
            found = find_text(child, depth + 1)
            if found:
                return found
        return None

    def extents():
        try:
            text = next((find_text(a) for a in applications() if a.get_name() == application_name), None)
            found = text.get_character_extents(0, Atspi.CoordType.SCREEN) if text else None
        except GLib.GError:
            return None
        return found if found and found.y > 0 and found.height > 0 else None

    line = wait_for(f"the text of {application_name}", extents)
    return line.y + line.height / 2


class View:
    """What the HUD shows, as the accessibility bus tells it."""

    def __init__(self, process_id):
        self.process_id = process_id

    def application(self):
        for application in applications():
            try:
                if application.get_process_id() == self.process_id:
                    return application
            except GLib.GError:
                continue
        return None

    def all(self):
        """Every showing object of the program, depth first."""
        found = []

        def walk(accessible, depth):
            if depth > 30:
                return
            for child in children(accessible):
                try:
                    child.clear_cache()
                    if child.get_state_set().contains(Atspi.StateType.SHOWING):
                        found.append(child)
                        walk(child, depth + 1)
                except GLib.GError:
                    continue

        application = self.application()
        if application is not None:
            application.clear_cache()
            walk(application, 0)
        return found

    def names(self):
        return [a.get_name() for a in self.all() if a.get_name()]

    def find(self, name, role=None):
        for accessible in self.all():
            if accessible.get_name() == name and (role is None or accessible.get_role() == role):
                return accessible
        return None

    def find_containing(self, text):
        for accessible in self.all():
            if text in (accessible.get_name() or ""):
                return accessible
        return None

    def press_action(self, accessible):
        """The number of the action that presses it; None when it cannot be pressed."""
        names = [accessible.get_action_name(i).lower() for i in range(accessible.get_n_actions())]
        return next((i for i, name in enumerate(names) if name in ("press", "click", "toggle")), None)

    def pressable(self, name):
        """A control may share its name with the window or a text."""
        try:
            return next((a for a in self.all() if a.get_name() == name and self.press_action(a) is not None), None)
        except GLib.GError:  # it went while it was looked at
            return None

    def press(self, name):
        target = wait_for(f"a control named “{name}” that can be pressed", lambda: self.pressable(name))
        assert target.do_action(self.press_action(target))


class DesktopTest(unittest.TestCase):
    """A private desktop with Lumeno and helpers; everything started is ended again."""

    model_server = True
    preferences = {"Lumeno.aiBackend": "ollama", "Lumeno.hasCompletedOnboarding": True}
    model_arguments = ()
    environment = {}

    def setUp(self):
        self.directory = tempfile.mkdtemp(prefix="lumeno-e2e-")
        self.started = []
        self.addCleanup(shutil.rmtree, self.directory, ignore_errors=True)
        self.addCleanup(self.stop_all)
        move(5, 890)
        configuration = os.path.join(os.environ["XDG_CONFIG_HOME"], "lumeno")
        shutil.rmtree(configuration, ignore_errors=True)
        os.makedirs(configuration)
        self.preferences_path = os.path.join(configuration, "preferences.json")
        with open(self.preferences_path, "w", encoding="utf-8") as f:
            json.dump(self.preferences, f)
        self.model = None
        if self.model_server:
            self.start_model_server(*self.model_arguments)
        self.before_lumeno()
        self.start_lumeno()

    def before_lumeno(self):
        """What must be there when the program starts."""

    def stop_all(self):
        for process in reversed(self.started):
            process.stop()
        self.started.clear()

    def start(self, *command, env=None):
        log = os.path.join(self.directory, f"{len(self.started)}-{os.path.basename(command[0])}.log")
        process = Process(*command, env=env, log=log)
        self.started.append(process)
        return process

    def start_model_server(self, *arguments):
        self.model = self.start(os.path.join(BINARIES, "model-server"), *arguments)
        wait_for("the model server", lambda: "listening" in self.model.log())

    def start_lumeno(self):
        self.lumeno = self.start(os.path.join(BINARIES, "lumeno"), env=self.environment)
        self.view = View(self.lumeno.process.pid)
        wait_for("Lumeno on the session bus", lambda: self.bus_call("GrantAccess") is not None)
        wait_for("access to be granted", lambda: self.access_granted())

    def bus_call(self, method):
        result = subprocess.run(
            ["gdbus", "call", "--session", "-d", "org.lumeno.Lumeno", "-o", "/org/lumeno/Lumeno", "-m",
             f"org.lumeno.Lumeno.{method}"], capture_output=True, text=True, timeout=30)
        return result.stdout if result.returncode == 0 else None

    def access_granted(self):
        result = subprocess.run(
            ["gdbus", "call", "--session", "-d", "org.lumeno.Lumeno", "-o", "/org/lumeno/Lumeno", "-m",
             "org.freedesktop.DBus.Properties.Get", "org.lumeno.Lumeno", "AccessGranted"],
            capture_output=True, text=True, timeout=30)
        return "true" in result.stdout

    # -- other applications -------------------------------------------------------------------------------------------

    def start_application(self, *command, class_name, env=None, timeout=30):
        """Starts an application and waits for its window to be active. Gives the window."""
        before = set(window_ids(class_name))
        process = self.start(*command, env=env)
        window = wait_for(f"a window of {command[0]}",
                          lambda: next((w for w in window_ids(class_name) if w not in before), None), timeout)
        def activated():
            run("xdotool", "windowactivate", str(window), check=False)
            return active_window() == window
        wait_for(f"{command[0]} to be active", activated, 30, 0.2)
        process.window = window
        return process

    def write_file(self, name, text):
        path = os.path.join(self.directory, name)
        with open(path, "w", encoding="utf-8") as f:
            f.write(text)
        return path

    # -- the HUD ------------------------------------------------------------------------------------------------------

    def hud_windows(self):
        """The visible HUD windows, as the X server knows them."""
        text = run("xdotool", "search", "--onlyvisible", "--pid", str(self.lumeno.process.pid), "--name", "^Lumeno$",
                   check=False)
        return [int(w) for w in text.split()]

    def hud_is_shown(self):
        return bool(self.hud_windows())

    def wait_for_pill(self, timeout=30):
        return self.wait_for_view("the hint pill", lambda: self.view.find_containing("actions available"), timeout)

    def wait_for_name(self, name, timeout=30):
        return self.wait_for_view(f"“{name}” in the HUD", lambda: self.view.find(name), timeout)

    def wait_for_view(self, what, condition, timeout=30):
        """As wait_for; a failure leaves a picture and says what there was instead."""
        try:
            return wait_for(what, condition, timeout)
        except AssertionError as error:
            self.screenshot(f"missed-{self.id().split('.')[-1]}")
            raise AssertionError(f"{error}; it shows {self.view.names()}") from None

    def wait_until_hidden(self, timeout=20):
        self.wait_for_view("the HUD to go", lambda: not self.hud_is_shown(), timeout)

    def open_chips_by_pointer(self):
        """Moves the pointer onto the pill, which opens it."""
        self.wait_for_pill()
        x, y, width, height = geometry(self.hud_windows()[0])
        move(x + width / 2 - 6, y + height / 2)
        time.sleep(0.05)
        move(x + width / 2, y + height / 2)

    def summon(self):
        key("alt+super+space")

    def screenshot(self, name):
        folder = os.environ.get("LUMENO_SCREENSHOTS")
        if folder:
            os.makedirs(folder, exist_ok=True)
            run("import", "-window", "root", os.path.join(folder, f"{name}.png"))


def main():
    warnings.simplefilter("ignore", DeprecationWarning)  # the bindings deprecate what they have no replacement for
    unittest.main(verbosity=2, warnings="ignore", argv=[sys.argv[0], *sys.argv[1:]])
