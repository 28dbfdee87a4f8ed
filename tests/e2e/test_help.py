"""Help pages over the running program: what opens, what a page shows, and that nothing of it stays."""

import re
import time

import numpy as np
import pytest
from PIL import Image

from support.desktop import wait_until
from support.robot import difference

FACTORY, OPTIONS = (140, 257), (140, 357)
WINDOW = (110, 70, 581, 451)
TEXT = (118, 106, 560, 364)  # between the bands of the title and the buttons
CLOSE, BACK, NEXT = (618, 492), (180, 492), (300, 492)
COLUMN_X, ROW_Y, CELL = 136, 84, (8, 14)


def open_help(robot, place):
    robot.move(*place)
    before = robot.standing_picture()
    robot.key("F1")
    return before, robot.wait_for_change(before)


def wait_for(robot, picture):
    wait_until(lambda: np.array_equal(robot.picture(), picture), "the picture as it was")


def press(robot, place):
    """Presses a button; the new picture, once it stands. The pointer goes there first: its move is no answer."""
    robot.move(*place)
    before = robot.standing_picture()
    robot.click_here()
    return robot.wait_for_change(before)


def text_of(picture):
    return picture[TEXT[1] : 430, TEXT[0] : TEXT[0] + TEXT[2]]


def turn(robot, button):
    robot.move(*button)
    before = text_of(robot.standing_picture())
    press(robot, button)
    robot.move(400, 440)  # away from button and text
    after = text_of(robot.standing_picture())
    assert not np.array_equal(before, after)
    return after


def shows(robot, button):
    """Whether a button lies in the band below the text, which is a plain column of colours otherwise."""
    x, y = button
    return np.ptp(robot.picture((x - 40, y, 80, 1)).astype(int), axis=1).max() > 40


CLOSERS = {
    "Escape": lambda robot: robot.key("Escape"),
    "F1": lambda robot: robot.key("F1"),
    "right click": lambda robot: robot.click_here(3),
    "button": lambda robot: (robot.click(*CLOSE), robot.move(*FACTORY)),
}


@pytest.mark.parametrize("closer", CLOSERS)
def test_a_page_opens_over_the_menu_and_leaves_no_trace(robot, closer):
    before, opened = open_help(robot, FACTORY)
    assert difference(before, opened)[1:] == (70, 690, 520)
    assert not shows(robot, BACK) and not shows(robot, NEXT) and shows(robot, CLOSE)
    outside = (before != opened).any(axis=2)
    outside[WINDOW[1] : WINDOW[1] + WINDOW[3], WINDOW[0] : WINDOW[0] + WINDOW[2]] = False
    outside[236:278, 34:250] = False  # the button, which is no longer pointed at
    assert not outside.any()
    CLOSERS[closer](robot)
    wait_for(robot, before)


def test_every_kind_of_slot_of_the_options_screen_has_its_page(robot):
    press(robot, OPTIONS)
    seen = []
    for place in ((50, 133), (260, 231), (560, 133), (180, 511), (318, 540)):  # module, option, value, field, button
        before, opened = open_help(robot, place)
        seen.append(opened[84:98, 136:660].tobytes())  # the title
        robot.key("Escape")
        wait_for(robot, before)
    assert len(set(seen)) == len(seen)


def test_pages_are_turned_forth_and_back(robot):
    open_help(robot, OPTIONS)
    assert not shows(robot, BACK) and shows(robot, NEXT)
    second = turn(robot, NEXT)
    assert shows(robot, BACK) and shows(robot, NEXT)
    third = turn(robot, NEXT)
    assert shows(robot, BACK) and not shows(robot, NEXT)
    assert np.array_equal(turn(robot, BACK), second), "something of another page is left"
    turn(robot, BACK)
    assert not shows(robot, BACK)
    assert np.array_equal(turn(robot, NEXT), second)
    assert np.array_equal(turn(robot, NEXT), third)


def test_f4_saves_what_is_seen(robot):
    _, opened = open_help(robot, FACTORY)
    robot.key("F4")
    saved = robot.installation.path("factory.pcx")
    robot.standing_picture()
    picture = np.asarray(Image.open(saved).convert("RGB")).copy()
    x, y = FACTORY
    for each in (picture, opened):  # the pointer belongs to the display, not to the picture
        each[y - 2 : y + 34, x - 8 : x + 30] = 0
    assert np.array_equal(picture, opened)


def test_alt_w_keeps_the_page(robot):
    _, opened = open_help(robot, OPTIONS)
    robot.move(760, 30)
    before = robot.standing_picture()[100:460, 118:680]
    robot.key("w", "Alt_L")
    robot.forget_window()
    time.sleep(0.5)  # the library puts the pointer in the middle
    robot.move(750, 30)
    assert np.array_equal(robot.standing_picture()[100:460, 118:680], before)
    robot.key("Escape")
    robot.wait_for_menu()


def entry(installation, name, number):
    """[text line] of a page."""
    lines = installation.read(name).splitlines()
    texts = lines[lines.index(f"+{number}") + 1 :]
    texts = texts[next(i for i, line in enumerate(texts) if line.startswith("-")) :]
    return [line[2:] for line in texts[: next(i for i, line in enumerate(texts) if not line.startswith("-"))]]


def test_umlauts_show_in_german(make_robot):
    robot = make_robot()
    robot.installation.write("tools/language.ini", "2\n")
    name = "help/menu_de.hlp"
    text = robot.installation.read(name)
    umlauts = {(row, column) for row, line in enumerate(entry(robot.installation, name, 2)) for column, c in enumerate(line) if c in "äöüß"}
    assert umlauts
    robot.start()
    _, german = open_help(robot, FACTORY)
    robot.key("Escape")
    robot.installation.write(name, text.translate(str.maketrans("äöüß", "aouB")))
    robot.standing_picture()
    _, plain = open_help(robot, FACTORY)
    changed = {((y - ROW_Y) // CELL[1], (x - COLUMN_X) // CELL[0]) for y, x in zip(*np.nonzero((german != plain).any(axis=2)))}
    assert umlauts <= {(row + up, column) for row, column in changed for up in (0, 1)}
    assert all(any(abs(column - at) <= 1 and 0 <= line - row <= 1 for line, at in umlauts) for row, column in changed)


@pytest.mark.parametrize("name", ["menu_en", "menu_de", "options_en", "options_de"])
def test_every_text_fits_between_title_and_buttons(installation, name):
    pages = [int(number) for number in re.findall(r"(?m)^\+(\d+)$", installation.read(f"help/{name}.hlp"))]
    assert len(pages) > 5 and len(set(pages)) == len(pages)
    for page in pages:
        lines = entry(installation, f"help/{name}.hlp", page)
        assert len(lines) > 3 and not lines[1], page  # the title stands alone in its band
        assert ROW_Y + CELL[1] * len(lines) <= TEXT[1] + TEXT[3], page
        assert COLUMN_X + CELL[0] * max(map(len, lines)) <= TEXT[0] + TEXT[2], page
