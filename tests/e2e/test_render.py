"""vcckit render makes the very pictures that the window shows."""

import os
import subprocess

import numpy as np
import pytest
from PIL import Image

from support.desktop import wait_until
from support.installation import PROJECT

VCCKIT = os.environ.get("VCCKIT", PROJECT / "build/release/tools/vcckit/vcckit")
PARKED = (799, 599)
POINTER = 32  # pixels around the pointer that are not compared
OPTIONS_SLOT = 13


def slot_place(installation, name, index):
    return list(installation.slot_places(name))[index]


CASES = [
    # command line, depth, language, what the player does: (slot, how) on the menu, then on the options screen
    (["--screen", "menu"], 32, "en", [], []),
    (["--screen", "menu", "--hover", "5"], 32, "de", [(5, "point")], []),
    (["--screen", "menu", "--hover", "7"], 16, "en", [(7, "point")], []),
    (["--screen", "options"], 32, "en", [(OPTIONS_SLOT, "click")], []),
    (["--screen", "options", "--module", "1", "--row", "2"], 32, "de", [(OPTIONS_SLOT, "click")],
     [(12, "click"), (26, "point")]),
    (["--screen", "options", "--row", "8", "--hover", "83"], 15, "en", [(OPTIONS_SLOT, "click")],
     [(40, "point"), (83, "point")]),
    (["--screen", "help", "--hover", "3"], 32, "en", [(3, "point"), (None, "F1")], []),
    (["--screen", "help", "--hover", "13"], 24, "de", [(13, "point"), (None, "F1")], []),
]


def wait_for_menu(robot):
    """The menu's picture, as coarse as 15 bits make it."""
    wanted = np.asarray(Image.open(robot.installation.path("images/menu.pcx")).convert("RGB"), np.int16)
    robot.window()
    wait_until(lambda: (np.abs(robot.picture().astype(np.int16) - wanted).max(axis=2) <= 10).mean() > 0.5, "the main menu", 20)
    robot.standing_picture(still_s=0.4)


def play(robot, screen, steps):
    for slot, how in steps:
        if how == "F1":
            robot.key("F1")
        elif how == "point":
            robot.move(*slot_place(robot.installation, screen, slot))
        else:
            robot.click(*slot_place(robot.installation, screen, slot))
        robot.standing_picture()


@pytest.mark.parametrize("arguments, depth, language, on_menu, on_options", CASES, ids=range(len(CASES)))
def test_rendered_picture_is_that_of_the_window(make_robot, installation, tmp_path, arguments, depth, language, on_menu,
                                                on_options):
    installation.write("tools/language.ini", "1\n" if language == "en" else "2\n")
    installation.set("VELDOR_GRAPHICS", "screen_mode_range", "3")
    installation.set("VELDOR_GRAPHICS", "bitmap_depth", str({32: 0, 24: 1, 16: 2, 15: 3}[depth]))
    robot = make_robot().start(menu=False)
    wait_for_menu(robot)
    play(robot, "vcc", on_menu)
    if on_options:
        robot.move(*PARKED)
        play(robot, "vcc_options", on_options)
    if "--hover" not in arguments or "help" in arguments:
        robot.move(*PARKED)
    shown = robot.standing_picture(still_s=0.4)
    pointer = PARKED if "--hover" not in arguments or "help" in arguments else slot_place(
        installation, "vcc_options" if on_options else "vcc", int(arguments[arguments.index("--hover") + 1]))

    output = tmp_path / "rendered.png"
    subprocess.run([VCCKIT, "render", installation.folder, *arguments, "--language", language, "--depth", str(depth), "-o",
                    output], check=True)
    rendered = np.asarray(Image.open(output).convert("RGB"))
    lost = {15: (3, 3, 3), 16: (3, 2, 3)}.get(depth, (0, 0, 0))  # bits that a desktop of 24 bits fills up in its own way
    different = (shown >> lost != rendered >> lost).any(axis=2)
    x, y = pointer
    different[max(y - POINTER, 0):y + POINTER, max(x - POINTER, 0):x + POINTER] = False
    rows, columns = np.nonzero(different)
    assert not different.any(), f"{different.sum()} pixels, {columns.min()},{rows.min()} to {columns.max()},{rows.max()}"
