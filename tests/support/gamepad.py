"""Gamepads as a player holds them. Where there is no device, a library between the program and the system answers for
it: kernel_pads.c, or windows_pads.c."""

import os
import struct
import subprocess
import time
from pathlib import Path

import numpy as np

from support.desktop import wait_until

# As most pads number them.
A, B, X, Y, LEFT_SHOULDER, RIGHT_SHOULDER = range(6)
STICK, HAT = (0, 1), (6, 7)
FAR = 32767
PRESS_S, LONGEST_PRESS_S = 0.16, 0.25  # a longer one repeats


class Gamepads:
    """Where pads are plugged in."""

    def __init__(self, robot):
        self.robot, self.system = robot, robot.system
        self.folder = robot.installation.path("pads")
        self.folder.mkdir()

    def environment(self):
        library = self.robot.installation.path(self.system.pad_library)
        source = Path(__file__).with_name(self.system.pad_source)
        subprocess.run([*self.system.compiler, "-D_GNU_SOURCE", "-Wall", "-Wextra", "-o", library, source], check=True)
        return {"VELDOR_PADS": str(self.folder)} | self.system.pad_environment(library)

    def plug_in(self, number=0, axes=8, buttons=11):
        return Gamepad(self, number, axes, buttons)


class Gamepad:
    """One of two sticks, two levers and a hat."""

    def __init__(self, pads, number, axes, buttons):
        self._robot, self._node = pads.robot, pads.folder / f"js{number}"
        self._press_s = min(PRESS_S * pads.system.slowness, LONGEST_PRESS_S)
        self._axes, self._buttons = [0, 0, -FAR, 0, 0, -FAR, 0, 0][:axes], [0] * buttons
        new = pads.folder / "new"
        self._file = open(new, "wb", buffering=0)
        self._write()
        new.rename(self._node)

    def pull_out(self):
        self._node.rename(self._node.with_suffix(f".{time.monotonic_ns()}"))  # keeps its number from the next
        self._file.truncate(0)

    def push(self, axes, x, y):
        """Where to a stick or hat is pushed, -1 to 1 each."""
        for axis, value in zip(axes, (x, y)):
            self._axes[axis] = round(value * FAR)
        self._write()

    def nudge(self, axes, x, y):
        self.push(axes, x, y)
        time.sleep(self._press_s)
        self.push(axes, 0, 0)
        time.sleep(self._press_s)

    def step_to(self, axes, x, y, area):
        """Nudges until this part of the picture (x, y, width, height) shows the focus. A nudge ends when it is seen: on
        a busy machine a short one passes between two looks, a long one repeats."""
        left, top, width, height = area
        rest = None
        for _ in range(60):
            before = self._robot.standing_picture()
            seen = before[top:top + height, left:left + width]
            rest = seen if rest is None else rest
            if not np.array_equal(seen, rest):
                return
            self.push(axes, x, y)
            wait_until(lambda before=before: not np.array_equal(self._robot.picture(), before), "a step", 5)
            self.push(axes, 0, 0)
            time.sleep(self._press_s)
        raise TimeoutError(f"the focus does not come to {area}")

    def hold(self, button, held=True):
        self._buttons[button] = int(held)
        self._write()

    def press(self, button):
        self.hold(button)
        time.sleep(self._press_s)
        self.hold(button, False)
        time.sleep(self._press_s)

    def _write(self):
        axes, buttons = ([*values, *[0] * 12][:count] for values, count in ((self._axes, 8), (self._buttons, 12)))
        state = struct.pack("<BB20h", len(self._axes), len(self._buttons), *axes, *buttons)
        os.pwrite(self._file.fileno(), state, 0)
