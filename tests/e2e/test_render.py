"""vcckit render makes the very pictures that the window shows."""

import subprocess

import numpy as np
import pytest
from PIL import Image

from support.installation import VCCKIT

PARKED = (799, 599)
POINTER = 32  # pixels around the pointer that are not compared
OPEN_OPTIONS = ("click", 74, 357)

CASES = [
    # command line, depth, language, what the player does: how, and where: in a slot that the command line names
    ("--screen menu --hover 5", 16, "de", [("point", 74, 257)]),
    ("--screen options --module 1 --row 2", 32, "de", [OPEN_OPTIONS, ("click", 36, 133), ("point", 212, 161)]),
    ("--screen options --row 8 --hover 83", 15, "en", [OPEN_OPTIONS, ("point", 212, 427), ("point", 62, 540)]),
    ("--screen help --hover 13", 24, "de", [("F1", 74, 357)]),
]


@pytest.mark.parametrize("command, depth, language, steps", CASES, ids=[f"{case[0]} {case[2]}" for case in CASES])
def test_rendered_picture_is_that_of_the_window(make_robot, installation, tmp_path, command, depth, language, steps):
    installation.write("tools/language.ini", "1\n" if language == "en" else "2\n")
    robot = make_robot(graphics={"screen_mode_range": 3, "bitmap_depth": [32, 24, 16, 15].index(depth)}).start()
    for how, *pointer in steps:
        robot.move(*pointer)
        robot.standing_picture()
        if how == "click":
            robot.click_here()
            robot.standing_picture()
        elif how == "F1":
            robot.key("F1")
    if "--hover" not in command or how == "F1":
        pointer = PARKED
        robot.move(*pointer)
    shown = robot.standing_picture(still_s=0.4)

    output = tmp_path / "rendered.png"
    options = ["--language", language, "--depth", str(depth), "-o", output]
    subprocess.run([VCCKIT, "render", installation.folder, *command.split(), *options], check=True)
    rendered = np.asarray(Image.open(output).convert("RGB"))
    # bits that a desktop of 24 bits fills up in its own way
    lost = {15: (3, 3, 3), 16: (3, 2, 3)}.get(depth, (0, 0, 0))
    different = (shown >> lost != rendered >> lost).any(axis=2)
    x, y = pointer
    different[max(y - POINTER, 0):y + POINTER, max(x - POINTER, 0):x + POINTER] = False
    assert not different.any(), f"{different.sum()} pixels, the first at {np.argwhere(different)[0]} (y, x)"
