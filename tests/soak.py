#!/usr/bin/python3
"""Endurance runs of the real program, by hand: they take minutes to hours.

usage: soak.py passes [COUNT]      a module that returns at once, and window and full screen in turn (default 2000)
       soak.py monkey [EVENTS] [SEED]   random keys, clicks and moves, see monkey.py (default 1000000)

VELDOR_WRAPPER names a command that becomes the program, such as "valgrind -q --error-exitcode=99". Prints memory,
threads and open files on the way; they must be flat at the end. Exit status 1 when the program ended with an error,
hung, or grew by more than 10 %.
"""
import os
import signal
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from monkey import monkey  # noqa: E402
from support import menu  # noqa: E402
from support.robot import Robot  # noqa: E402


def state(pid):
    """Memory in KiB, threads, open files."""
    status = dict(line.split(":", 1) for line in Path(f"/proc/{pid}/status").read_text().splitlines() if ":" in line)
    return int(status["VmRSS"].split()[0]), int(status["Threads"]), len(os.listdir(f"/proc/{pid}/fd"))


def enter_module(robot, _button):
    robot.key("Home")
    robot.key("Return")


def passes(count=2000):
    states = []
    with Robot() as robot:
        robot.installation.use_recording_modules()
        robot.start()
        for done in range(1, count + 1):
            menu.enter(robot, "HQ", enter_module)
            robot.wait_for_menu(60, placed_s=0)
            robot.key("w", "Alt_L")
            robot.forget_window()
            robot.wait_for_menu(60, placed_s=0)
            if done % max(1, count // 10) == 0:
                time.sleep(1)  # until all is loaded
                states.append(state(robot.pid))
                print(f"{done:8d} of {count}: %d KiB, %d threads, %d files" % states[-1], flush=True)
        robot.key("x", "Alt_L")  # what it is run under may have something to say only then
        status = robot.wait_for_end(60)
        early, last = states[0], states[-1]
        flat = last[0] <= early[0] * 1.1 and last[1:] == early[1:]
        print("flat" if flat else "GROWN", f"and ended with {status} {robot.errors()[-4000:]}")
        return 0 if flat and status == 0 else 1


def main():
    runs = {"passes": passes, "monkey": monkey}
    if len(sys.argv) < 2 or sys.argv[1] not in runs:
        print(__doc__)
        return 2
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # program and desktop end with us
    return runs[sys.argv[1]](*map(int, sys.argv[2:]))


if __name__ == "__main__":
    sys.exit(main())
