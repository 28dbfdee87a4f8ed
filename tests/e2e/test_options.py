"""The options screen: every setting changed with the mouse, accepted or cancelled, then read from the settings file."""

import shutil

import numpy as np
import pytest

from support import menu
from support.installation import CELL_HEIGHT, CELL_WIDTH
from support.menu import open_options

pytestmark = pytest.mark.windows

ACCEPT, RESET, FACTORY = (80, 540), (318, 540), (50, 161)
LOOP_BUTTON = 67 * CELL_WIDTH + 20, 29 * CELL_HEIGHT + 6
NAME, ADDRESS = (140, 36 * CELL_HEIGHT + 6), (380, 36 * CELL_HEIGHT + 6)

# name: row of its button, section, key, value in the built-in installation, after a click, after a right click
OPTIONS = {
    "effects": (7, "VELDOR_SOUND", "vcc_snd_volume", 8, 9, 7),
    "music": (9, "VELDOR_SOUND", "vcc_music_volume", 3, 4, 2),
    "theme": (11, "VELDOR_SOUND", "vcc_theme", 2, 3, 1),
    "resolution": (18, "VELDOR_GRAPHICS", "resolution", 3, 4, 2),
    "keyboard": (22, "VELDOR_GENERAL", "keyboard", 0, 1, 1),
    "animations": (26, "VELDOR_BATTLE", "brontar_anim", 1, 0, 0),
    "sprites": (28, "VELDOR_BATTLE", "sprite_speed", 1, 2, 0),
    "delay": (30, "VELDOR_BATTLE", "message_delay", 1, 2, 0),
    "detail": (32, "VELDOR_BATTLE", "message_detail", 2, 3, 1),
    "screen mode": (16, "VELDOR_GRAPHICS", "screen_mode", 0, 1, 1),
}


def place(option):
    return 26 * CELL_WIDTH + 40, OPTIONS[option][0] * CELL_HEIGHT + 6


def value_place(value):
    return 67 * CELL_WIDTH + 30, (7 + 2 * value) * CELL_HEIGHT + 6


def click(robot, where, button=1):
    robot.click(*where, button)
    robot.standing_picture()


def stored(robot):
    settings = robot.installation.settings()
    return {name: int(settings[section][key]) for name, (_, section, key, *_) in OPTIONS.items()}


@pytest.fixture
def options(robot):
    open_options(robot)
    return robot


def accept(robot):
    robot.click(*ACCEPT)
    robot.forget_window()
    robot.move(700, 30)
    robot.wait_for_menu()


@pytest.mark.parametrize("button, column, mode", [(1, 4, 255), (3, 5, 255)], ids=["click", "right click"])
def test_every_option_by_mouse(options, button, column, mode):
    for option in OPTIONS:
        click(options, place(option), button)
    accept(options)
    assert stored(options) == {name: row[column] for name, row in OPTIONS.items()}
    menu.enter(options, "Factory", menu.walk_to)
    assert options.installation.module_calls() == [("factory", 3, mode, 3, 0, 128)]


def test_values_are_chosen_from_the_panel_and_reset(options):
    defaults = stored(options)
    chosen = {"sprites": 3, "effects": 5, "music": 10, "theme": 7}
    for option, value in chosen.items():
        click(options, place(option))
        click(options, value_place(value))
    accept(options)
    assert stored(options) == defaults | chosen
    open_options(options)
    options.click(*RESET)
    options.forget_window()
    options.standing_picture()
    accept(options)
    assert stored(options) == defaults


@pytest.mark.linux  # other desktops
def test_another_depth_builds_the_display_again(make_robot, installation):
    # 15 bits: there is no other way to them
    robot = make_robot(depth=16, graphics={"screen_mode_range": 3, "bitmap_depth": 3}).start()
    open_options(robot)
    depth_x, screen_mode_y = place("screen mode")
    click(robot, (depth_x, screen_mode_y + 4 * CELL_HEIGHT))
    click(robot, value_place(2))
    accept(robot)
    menu.enter(robot, "Factory")
    assert installation.module_calls() == [("factory", 3, 0, 3, 2, 128)]
    assert installation.log_messages() == []


def test_what_is_not_accepted_is_forgotten_and_what_cannot_be_written_is_kept_for_the_next_try(options):
    before = stored(options)
    for leave in ("End", "Up", "Return"), ("Escape",):  # from reset, the last button, to cancel
        for option in ("effects", "delay", "theme"):
            click(options, place(option))
        click(options, LOOP_BUTTON)  # after the chosen theme, all in turn
        for key in leave:
            options.key(key)
            options.standing_picture()
        options.wait_for_menu()
        open_options(options)
    accept(options)
    assert stored(options) == before
    open_options(options)
    in_the_way = options.installation.path("data/configs/vcc.cfg.new")
    (in_the_way / "folder").mkdir(parents=True)
    click(options, place("delay"))
    accept(options)
    assert stored(options) == before
    shutil.rmtree(in_the_way)
    assert options.leave() == 0
    assert stored(options) == before | {"delay": OPTIONS["delay"][4]}
    assert options.installation.log_messages() == ["Cannot write data/configs/vcc.cfg"]


def test_name_and_address_are_typed(make_robot, installation):
    robot = make_robot()
    robot.desktop.add_keys("dead_acute", "adiaeresis", "Multi_key")
    open_options(robot.start())
    keys, name = ("dead_acute", "e", "adiaeresis", "Multi_key", "o", "slash"), "éäøyer1"
    if robot.system.name != "linux":  # Windows puts accents together itself
        keys, name = ("e", "comma", "x"), "e,xyer1"
    for field, keys in (NAME, keys), (ADDRESS, ("1", "0", "period", "7")):
        robot.move(*field)
        robot.standing_picture()
        for key in keys:
            robot.key(key)
    accept(robot)
    entries = installation.settings()["VELDOR_BATTLE"]
    assert entries["player_name"].encode("latin-1").decode() == name  # the file is UTF-8
    assert entries["ip_address"] == "10.7"


LIT, RESTING = (255, 167, 0), (99, 115, 143)
# The short lines of the modules, into the sound group, of the options and into the values: x, and their buttons' rows.
MODULE_LINES, SOUND_LINES = (137, {7, 9, 11, 13}), (188, {7, 9, 11})
OPTION_LINES = 410, {7, 9, 11, 16, 18, 20, 22, 26, 28, 30, 32}
VALUE_LINES = 510, set(range(7, 29, 2))


def check_lines(picture, lines, lit_row=None):
    """Only that button's line is lit, the others rest."""
    x, rows = lines
    lit, resting = (np.flatnonzero((picture[:, x] == colour).all(axis=1)) for colour in (LIT, RESTING))
    assert lit.tolist() == [lit_row * CELL_HEIGHT + CELL_HEIGHT // 2 + at for at in (-1, 0, 1) if lit_row], lines
    assert rows - {lit_row} <= set(resting // CELL_HEIGHT), lines


def test_every_row_lights_up_with_the_line_to_its_value(options):
    options.move(700, 30)
    rest = options.standing_picture()
    for name, (grid_row, _, _, value, *_) in OPTIONS.items():
        x, y = place(name)
        options.move(x + 120, y)  # the pointer's picture beside the letters
        if name == "resolution":  # it must be clicked, and so steps
            options.click_here()
            value += 1
        picture = options.standing_picture()
        letters = slice(y - 6, y + 8), slice(x - 40, x + 40)
        # effects are chosen, and lit already
        assert name == "effects" or (picture[letters] != rest[letters]).any(), name
        value_row = 7 + 2 * value
        of_sound = grid_row < 16
        for lines, lit in ((MODULE_LINES, 13 if of_sound else None), (SOUND_LINES, grid_row if of_sound else None),
                           (OPTION_LINES, grid_row), (VALUE_LINES, value_row)):
            check_lines(picture, lines, lit)
        marked = picture[value_row * CELL_HEIGHT:(value_row + 1) * CELL_HEIGHT, 536:700].reshape(-1, 3).astype(int)
        assert (abs(marked - LIT).sum(axis=1) < 60).sum() > 20, f"{name}: the value's text is not marked"
    click(options, FACTORY)
    options.move(*place("music"))
    check_lines(options.standing_picture(), MODULE_LINES, 11)
