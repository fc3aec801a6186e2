#!/usr/bin/python3
"""Speed and size of the running program on a private desktop. Prints each figure, its limit and the ratio.

Run through bench/run, which starts the desktop.
"""

import json
import os
import statistics
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "e2e"))

import desktop  # noqa: E402
from desktop import DesktopTest, geometry, key, run  # noqa: E402

LINE = "Please proofread this sentences before friday thanks"


def report(what, figure, limit, unit):
    print(f"{what:<62} {figure:>9.2f} {unit:<4} limit {limit:>6g}  ratio {figure / limit:5.2f}", flush=True)


def pss(process_id):
    with open(f"/proc/{process_id}/smaps_rollup", encoding="ascii") as f:
        return next(int(line.split()[1]) for line in f if line.startswith("Pss:")) / 1024


def cpu_and_wakeups(process_id):
    """Milliseconds on a CPU and times scheduled in, over all threads."""
    cpu = switches = 0
    for thread in os.listdir(f"/proc/{process_id}/task"):
        with open(f"/proc/{process_id}/task/{thread}/schedstat", encoding="ascii") as f:
            values = f.read().split()
        cpu += int(values[0]) / 1e6
        switches += int(values[2])
    return cpu, switches


class Bench(DesktopTest):
    runs = int(os.environ.get("LUMENO_BENCH_RUNS", "100"))

    def runTest(self):
        process_id = self.lumeno.process.pid
        path = self.write_file("note.txt", LINE + "\n")
        editor = self.start_application("mousepad", "--disable-server", path, class_name="mousepad")
        x, _, width, _ = geometry(editor.window)
        y = int(desktop.first_line_y("mousepad"))
        line = [str(v) for v in (x + 6, y, x + width - 30, y)]

        def latency(mode, runs):
            return json.loads(run(os.path.join(desktop.BINARIES, "hud-latency"), str(process_id), mode, str(runs), *line,
                                  timeout=runs * 6 + 30))

        latency("drag", 5)
        memory = []
        for _ in range(3):
            time.sleep(1)
            memory.append(pss(process_id))
        report("resident after the first HUD (PSS)", statistics.median(memory), 45, "MB")

        figures = latency("drag", self.runs)
        report(f"gesture end to pill, beyond the settle, p95 of {self.runs}", figures["p95"] - 350, 50, "ms")
        report("  median", figures["median"] - 350, 50, "ms")
        print(f"  missed: {figures['missed']}")
        figures = latency("summon", self.runs)
        report(f"summon to chips, p95 of {self.runs}", figures["p95"], 120, "ms")
        report("  median", figures["median"], 120, "ms")
        print(f"  missed: {figures['missed']}")

        self.idle(process_id, "idle for 20 s with a selection on screen")
        self.every_window_once()
        time.sleep(2)
        report("every window opened and closed once (PSS)", pss(process_id), 60, "MB")
        desktop.xdotool("windowactivate", "--sync", editor.window)
        self.idle(process_id, "idle again for 20 s")
        key("Escape")

        times = []
        for _ in range(10):
            self.lumeno.stop()
            self.started.remove(self.lumeno)
            desktop.wait_for("the bus name to be free", lambda: self.bus_call("GrantAccess") is None)
            begin = time.monotonic()
            self.lumeno = self.start(os.path.join(desktop.BINARIES, "lumeno"))
            desktop.wait_for("Lumeno on the bus", self.answers_on_the_bus, interval=0.002)
            times.append((time.monotonic() - begin) * 1000)
        report("start to monitors installed and observer started, median of 10", statistics.median(times), 400, "ms")

    def idle(self, process_id, what):
        key("Escape")
        self.wait_until_hidden()
        key("Right")
        key("ctrl+a")
        self.wait_for_pill()
        time.sleep(2)
        cpu, wakeups = cpu_and_wakeups(process_id)
        time.sleep(20)
        cpu_after, wakeups_after = cpu_and_wakeups(process_id)
        report(f"{what}: CPU of all threads", cpu_after - cpu, 10, "ms")
        report("  wake-ups a second", (wakeups_after - wakeups) / 20, 5, "")

    def every_window_once(self):
        self.bus_call("ShowSettings")
        for tab in ("General", "Actions", "Appearance", "AI"):
            self.wait_for_name(tab)
            self.view.press(tab)
            time.sleep(0.5)
        key("Escape")
        desktop.wait_for("Settings to close", lambda: not self.view.find("Appearance"))
        self.bus_call("ShowWelcome")
        for button in ("Get started", "Set permissions", "Personalize", "Finish setup", "Start using Lumeno"):
            self.wait_for_name(button)
            time.sleep(0.5)
            self.view.press(button)
        desktop.wait_for("the welcome to close", lambda: not self.view.find("Start using Lumeno"))

    def answers_on_the_bus(self):
        import gi.repository.Gio as Gio
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        try:
            answer = bus.call_sync("org.lumeno.Lumeno", "/org/lumeno/Lumeno", "org.freedesktop.DBus.Properties", "Get",
                                   gi_variant("(ss)", ("org.lumeno.Lumeno", "AccessGranted")), None, 0, 1000, None)
            return answer.unpack()[0]
        except Exception:  # not there yet
            return False


def gi_variant(signature, values):
    from gi.repository import GLib
    return GLib.Variant(signature, values)


if __name__ == "__main__":
    desktop.main()
