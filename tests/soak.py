#!/usr/bin/python3
"""Endurance runs of the real program, by hand: they take minutes to hours.

usage: soak.py passes [COUNT]      enter a module that returns at once, come back (default 2000)
       soak.py switches [COUNT]    window and full screen in turn (default 1000)
       soak.py monkey [EVENTS] [SEED]   random keys, clicks and moves (default 1000000)

VELDOR_WRAPPER names a command to run the program under, such as "valgrind -q". Prints memory, threads and open files on the way; they
must be flat at the end. Exit status 1 when the program ended by itself with an error or memory grew by more than 10 %.
"""
import os
import random
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from support.desktop import wait_until  # noqa: E402
from support.robot import Robot  # noqa: E402

GROWTH_LIMIT = 1.10


def state(pid):
    status = dict(line.split(":", 1) for line in Path(f"/proc/{pid}/status").read_text().splitlines() if ":" in line)
    return int(status["VmRSS"].split()[0]), int(status["Threads"]), len(os.listdir(f"/proc/{pid}/fd"))


class Watch:
    """Prints the program's state now and then; tells whether it has grown."""

    def __init__(self, robot, count):
        self.robot, self.count, self.early, self.started = robot, count, None, time.monotonic()

    def see(self, done):
        if done % max(1, self.count // 10):
            return
        memory, threads, files = now = state(self.robot.pid)
        print(f"{done:8d} of {self.count}: {memory} KiB, {threads} threads, {files} files, {time.monotonic() - self.started:.0f} s", flush=True)
        if done >= self.count // 10 and not self.early:
            self.early = now
        self.last = now

    def verdict(self):
        flat = self.last[0] <= self.early[0] * GROWTH_LIMIT and self.last[1:] == self.early[1:]
        print("flat" if flat else f"GROWN from {self.early} to {self.last}")
        return 0 if flat else 1


def passes(robot, count):
    robot.installation.use_recording_modules()
    robot.start()
    watch = Watch(robot, count)
    for done in range(1, count + 1):
        robot.desktop.key("Down", hold_s=0.05)
        for attempt in range(10):  # a key that comes while the screen is drawn is forgotten
            robot.desktop.key("Return", hold_s=0.05)
            try:
                wait_until(lambda: len(robot.installation.module_calls()) >= done or not robot.running(), "the module's call", 2)
                break
            except TimeoutError:
                if attempt == 9:
                    raise
        if not robot.running():
            break
        robot.wait_for_menu(60)
        watch.see(done)
    return watch.verdict()


def switches(robot, count):
    robot.start()
    watch = Watch(robot, count)
    for done in range(1, count + 1):
        robot.key("w", "Alt_L")
        robot.forget_window()
        robot.wait_for_menu(60)
        watch.see(done)
    return watch.verdict()


def monkey(robot, count, seed):
    """Random input. When it leaves the program, the program is started again; an error status or a crash ends the run."""
    keys = ["Return", "Escape", "Up", "Down", "Left", "Right", "Home", "End", "F1", "F4", "F12", "Tab", "BackSpace", "Insert", "Delete", "a", "7", "space",
            "Page_Up", "Page_Down"]
    dice = random.Random(seed)
    robot.installation.use_recording_modules()
    robot.installation.remove("docs/veldor_manual.pdf")
    robot.start()
    starts, desktop = 1, robot.desktop
    for done in range(1, count + 1):
        if not robot.running():
            status = robot.wait_for_end()
            if status != 0:
                print(f"event {done}: ended with {status}; {robot.errors()[-2000:]}")
                return 1
            try:
                robot.start()
            except TimeoutError:
                print(f"event {done}: no menu; {robot.save_picture('monkey')}, settings {robot.installation.settings()}, log {robot.installation.log_messages()}")
                return 1
            starts += 1
        what = dice.random()
        if what < 0.5:
            try:
                left, top = desktop.origin(robot.window())
            except Exception:  # it has just left, or is changing its window
                robot.forget_window()
                time.sleep(0.3)
                continue
            desktop.move(left + dice.randrange(800), top + dice.randrange(600))
        elif what < 0.75:
            desktop.click_here(dice.choice([1, 1, 1, 3]), hold_s=0.012)
        else:
            desktop.key(dice.choice(keys), hold_s=0.012)
        if done % (count // 10 or 1) == 0:
            print(f"{done:8d} of {count}: {starts} starts, {state(robot.pid) if robot.running() else 'just left'}", flush=True)
    return 0


def main():
    kind = sys.argv[1] if len(sys.argv) > 1 else ""
    numbers = [int(text) for text in sys.argv[2:]]
    with Robot() as robot:
        if kind == "passes":
            return passes(robot, *(numbers or [2000]))
        if kind == "switches":
            return switches(robot, *(numbers or [1000]))
        if kind == "monkey":
            return monkey(robot, *(numbers + [1_000_000, 1][len(numbers):]))
    print(__doc__)
    return 2


if __name__ == "__main__":
    sys.exit(main())
