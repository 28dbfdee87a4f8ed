#!/usr/bin/python3
"""Endurance runs of the real program, by hand: they take minutes to hours.

usage: soak.py passes [COUNT]      enter a module that returns at once, come back (default 2000)
       soak.py switches [COUNT]    window and full screen in turn (default 1000)
       soak.py monkey [EVENTS] [SEED]   random keys, clicks and moves, see monkey.py (default 1000000)

VELDOR_WRAPPER names a command to run the program under, such as "valgrind -q --error-exitcode=99 --log-file=/tmp/valgrind.%p". Prints
memory, threads and open files on the way; they must be flat at the end. Exit status 1 when the program ended with an error, hung, or
grew by more than 10 %.
"""
import os
import signal
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from monkey import desktop_for, monkey  # noqa: E402
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
        time.sleep(1)  # until all is loaded
        memory, threads, files = self.last = state(self.robot.pid)
        print(f"{done:8d} of {self.count}: {memory} KiB, {threads} threads, {files} files, {time.monotonic() - self.started:.0f} s", flush=True)
        self.early = self.early or self.last

    def verdict(self):
        """Leaves the program: what it is run under may have something to say only then."""
        if self.robot.running():
            self.robot.key("x", "Alt_L")
        status = self.robot.wait_for_end(60)
        flat = self.last[0] <= self.early[0] * GROWTH_LIMIT and self.last[1:] == self.early[1:]
        print("flat" if flat else f"GROWN from {self.early} to {self.last}", f"and ended with {status}")
        if status != 0:
            print(self.robot.errors()[-4000:])
        return 0 if flat and status == 0 else 1


def passes(robot, count):
    robot.installation.use_recording_modules()
    robot.start()
    watch, calls = Watch(robot, count), robot.installation.path("module_calls.txt")
    for done in range(1, count + 1):
        before = calls.stat().st_size if calls.exists() else 0
        robot.key("Down")
        for attempt in range(10):  # a key that comes while the screen is drawn is forgotten
            robot.key("Return")
            try:
                wait_until(lambda: calls.exists() and calls.stat().st_size > before or not robot.running(), "the module's call", 2)
                break
            except TimeoutError:
                if attempt == 9:
                    raise
        if not robot.running():
            break
        robot.wait_for_menu(60, placed_s=0)
        watch.see(done)
    return watch.verdict()


def switches(robot, count):
    robot.start()
    watch = Watch(robot, count)
    for done in range(1, count + 1):
        robot.key("w", "Alt_L")
        robot.forget_window()
        robot.wait_for_menu(60, placed_s=0)
        watch.see(done)
    return watch.verdict()


def main():
    runs = {"passes": (passes, [2000]), "switches": (switches, [1000]), "monkey": (monkey, [1_000_000, 1])}
    if len(sys.argv) < 2 or sys.argv[1] not in runs:
        print(__doc__)
        return 2
    run, defaults = runs[sys.argv[1]]
    numbers = [int(text) for text in sys.argv[2:]]
    numbers += defaults[len(numbers):]
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # program and desktop end with us
    with Robot(**(desktop_for(*numbers) if run is monkey else {})) as robot:
        return run(robot, *numbers)


if __name__ == "__main__":
    sys.exit(main())
