"""The program on the desktops that people use: under their window managers, and when the display server goes away."""

import os
import re
import subprocess
import time
from contextlib import contextmanager

import numpy as np
import pytest
from PIL import Image
from support.desktop import MANAGERS, stop, wait_until
from support.menu import choose, enter_obedient, middle
from support.robot import FULL_SCREEN, MENU_PICTURE, POINTER_PLACED_S
from Xlib.error import BadDrawable, BadMatch, BadWindow


SIZE = 1920, 1080
MAXIMISED = "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ"


@pytest.fixture
def make_player(make_robot):
    def make(manager, scale, **settings):
        graphics = {"screen_mode_range": 3} | settings
        return make_robot(modules="obedient", graphics=graphics, window_manager=manager, scale=scale, size=SIZE)
    return make


def area(robot):
    """Of the picture on the desktop: x, y, width, height."""
    left, top, width, height = robot.place()
    x, y = robot.desktop.origin(robot.window())
    return x + left, y + top, width, height


def is_seen(robot):
    """Whether the player sees what the window contains: a compositor shows a copy."""
    x, y, width, height = area(robot)
    if x < 0 or y < 0 or x + width > SIZE[0] or y + height > SIZE[1]:
        return False
    seen = robot.desktop.picture(area=(x, y, width, height)).astype(np.int16)
    shown = robot.shown()  # of another size while the window manager still changes the window's
    return shown.shape == seen.shape and np.mean(np.abs(seen - shown).max(axis=2) > 8) < 0.01


def wait_for_menu(robot):
    def is_there():
        robot.forget_window(0)
        try:
            return robot.shows(MENU_PICTURE) and is_seen(robot)
        except (BadMatch, BadWindow, BadDrawable):  # the window manager is still busy with it
            return False
    wait_until(is_there, "the menu on the desktop", 10)


def hears_keys(robot):
    def buttons():  # their left parts: no pointer covers them
        return robot.picture((34, 186, 100, 242)).astype(np.int16)

    robot.key("Home")
    robot.standing_picture()
    before = buttons()
    robot.key("Down")
    wait_until(lambda: np.abs(buttons() - before).max() > 50, "another button", 3)


def switch_mode(robot, full):
    robot.key("w", "Alt_L")
    wait_until(lambda: robot.fills_the_desktop() == full, f"full screen to be {full}", 5)
    time.sleep(POINTER_PLACED_S)
    wait_for_menu(robot)


@pytest.mark.parametrize("scale", [0, 1])
@pytest.mark.parametrize("manager", MANAGERS)
def test_every_start_shows_the_menu(make_player, manager, scale):
    robot = make_player(manager, scale)
    for _ in range(10):
        robot.start(menu=False)
        wait_for_menu(robot)
        assert robot.close() == 0
    assert robot.installation.log_messages() == []


@pytest.mark.parametrize("manager", MANAGERS)
def test_playing_at_the_pictures_own_size(make_player, manager):
    robot = make_player(manager, 0).start(menu=False)
    wait_for_menu(robot)
    hears_keys(robot)
    switch_mode(robot, True)
    hears_keys(robot)
    for act in (lambda: robot.click(700, 100), lambda: None):
        other = robot.desktop.open_other_window()  # takes the keyboard
        act()
        hears_keys(robot)
        other.destroy()
    switch_mode(robot, False)
    hears_keys(robot)
    assert robot.leave() == 0


@pytest.mark.parametrize("manager", MANAGERS)
def test_playing_at_any_size(make_player, manager):
    robot = make_player(manager, 1, screen_mode=1).start(menu=False)
    wait_until(robot.fills_the_desktop, "full screen")
    wait_for_menu(robot)
    hears_keys(robot)
    desktop = robot.desktop
    switch_mode(robot, False)
    if manager != "i3":  # which tiles
        middle_of_it = 560, 240, 800, 600
        wait_until(lambda: np.abs(np.subtract(area(robot), middle_of_it)).max() < 60,
                   lambda: f"a window in the middle, not {area(robot)}", 5)
        desktop.ask_for_state(robot.window(), True, *MAXIMISED)
        wait_until(lambda: area(robot)[3] > 900, "a maximised window")
        wait_for_menu(robot)
        switch_mode(robot, True)
        switch_mode(robot, False)
        wait_until(lambda: area(robot)[3] > 900, "the maximised window", 5)
        desktop.ask_for_state(robot.window(), False, *MAXIMISED)
        wait_until(lambda: area(robot)[3] == 600, "the window as it was")
        for size in ((1101, 703), (500, 410), (820, 600)):
            desktop.configure(robot.window(), width=size[0], height=size[1])
            wait_until(lambda: robot.window().get_geometry().width == size[0], "another size")
            wait_for_menu(robot)
        desktop.ask_for_state(robot.window(), True, FULL_SCREEN)  # not the program's own command
        wait_until(robot.fills_the_desktop, "full screen")
        switch_mode(robot, False)
    enter_obedient(robot)
    robot.installation.order("leave 0")
    wait_for_menu(robot)
    hears_keys(robot)
    assert robot.close() == 0
    assert robot.installation.log_messages() == []


@pytest.mark.parametrize("scale", [0, 1])
@pytest.mark.parametrize("state", ["film", "menu", "options", "module"])
def test_the_program_ends_with_its_display(make_robot, state, scale):
    robot = make_robot(modules="obedient", scale=scale, films=state == "film")
    robot.start(menu=state != "film")
    if state == "film":
        wait_until(lambda: robot.picture().any(), "the film")
    elif state == "options":
        choose(robot, "Options")
    elif state == "module":
        enter_obedient(robot)
    settings = robot.installation.read("data/configs/vcc.cfg")
    robot.desktop.crash()
    assert robot.wait_for_end(timeout_s=1) == 1
    assert robot.installation.log_messages() == ["The display server has gone away"]
    assert robot.installation.read("data/configs/vcc.cfg") == settings


def test_the_window_comes_back_where_it_was(make_player):
    robot = make_player("openbox", 1).start()
    robot.desktop.configure(robot.window(), x=300, y=120, width=1000, height=700)
    wait_until(lambda: robot.window().get_geometry().width == 1000, "another size")
    time.sleep(0.2)
    place = area(robot)
    assert robot.close() == 0
    for maximised in (True, False):
        robot.start(menu=False)
        wait_for_menu(robot)
        assert area(robot) == place
        robot.desktop.ask_for_state(robot.window(), True, *MAXIMISED)
        wait_until(lambda: area(robot)[3] > 900, "a maximised window")
        assert robot.close() == 0
        robot.start(menu=False)
        wait_for_menu(robot)
        wait_until(lambda: area(robot)[3] > 900, "the maximised window", 5)
        robot.desktop.ask_for_state(robot.window(), False, *MAXIMISED)
        wait_until(lambda: area(robot) == place, "the window as it was")
        assert robot.close() == 0


def test_the_window_appears_with_its_first_picture(make_player):
    robot = make_player(None, 1).start(menu=False)
    window = wait_until(robot.find_window, "the window", step_s=0.001)
    wait_until(lambda: robot.desktop.picture(window, (0, 300, 800, 2)).any(), "its picture", 0.1, step_s=0.001)
    robot.wait_for_menu()
    assert robot.close() == 0


@pytest.mark.parametrize("scale", [0, 1])
@pytest.mark.parametrize("comes", [True, False])
def test_a_manager_that_comes_or_goes_in_full_screen(make_player, comes, scale):
    robot = make_player(None if comes else "openbox", scale).start()
    robot.key("w", "Alt_L")
    time.sleep(POINTER_PLACED_S)
    wait_for_menu(robot)
    if comes:
        robot.desktop.start_manager("openbox")
    else:
        robot.desktop.manager.kill()
    time.sleep(0.5)
    for full in False, True, False:
        robot.forget_window(0)
        robot.click(700, 100)
        hears_keys(robot)
        switch_mode(robot, full)
    assert area(robot)[2:] == (800, 600)
    hears_keys(robot)
    assert (robot.close() if comes else robot.leave()) == 0


@pytest.mark.parametrize("scale", [0, 1])
def test_the_window_says_whose_it_is_and_in_full_screen_no_screen_saver_begins(make_player, scale):
    robot = make_player("openbox", scale).start()
    window, desktop = robot.window(), robot.desktop

    def value(name):
        return window.get_full_property(desktop.atom(name), 0).value

    assert window.get_wm_class() == ("veldor", "Veldor")
    assert list(value("_NET_WM_PID")) == [robot.pid] and window.get_wm_client_machine()
    assert value("_NET_WM_NAME") == window.get_wm_name().encode()
    icon = np.array(value("_NET_WM_ICON"))
    assert icon[:2].tolist() == [48, 48] and len(icon) == 2 + 48 * 48 and len(set(icon)) > 500
    assert desktop.is_alive(window)
    for full in False, True:
        if full:
            switch_mode(robot, True)
        time.sleep(3)
        assert (desktop.root.screensaver_query_info().idle < 2500) == full
    assert robot.close() == 0


@contextmanager
def wayland(desktop, home):
    """Weston as a window that fills the desktop; gives the name of the X server that it offers."""
    log = home / "log"
    weston = subprocess.Popen(
        ["weston", "--backend=x11-backend.so", "--xwayland", "--no-config", f"--width={SIZE[0]}",
         f"--height={SIZE[1]}", f"--log={log}"],
        env=os.environ | {"DISPLAY": desktop.name, "HOME": str(home), "XDG_RUNTIME_DIR": str(home)},
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        yield wait_until(lambda: log.exists() and re.search(r"listening on display (:\d+)", log.read_text()),
                         "an X server")[1]
    finally:
        stop(weston)


def test_playing_on_wayland(make_player, tmp_path):
    robot = make_player(None, 1)
    robot.installation.use_modules("recording")
    tmp_path.chmod(0o700)
    menu = Image.open(robot.installation.path(MENU_PICTURE)).convert("RGB").crop((0, 0, 800, 600))
    piece = np.asarray(menu)[60, 100:300].tobytes()  # of the title
    enlarged = np.asarray(menu.resize((1440, 1080)), np.int16)

    def place_of_the_menu():
        rows = (row.tobytes().find(piece) for row in robot.desktop.picture())
        return next(((at // 3 - 100, y - 60) for y, at in enumerate(rows) if at >= 0), None)

    def menu_fills_the_desktop():
        seen = robot.desktop.picture()[:, 240:1680].astype(np.int16)
        return np.median(np.abs(seen - enlarged).max(axis=2)) < 10

    with wayland(robot.desktop, tmp_path) as server:
        robot.desktop.focus(wait_until(lambda: next(robot.desktop.windows(), None), "the desktop")[0])
        for corner in (SIZE[0] - 1, SIZE[1] - 1), (0, 0):  # Weston adds up the pointer's steps, but for the first
            robot.desktop.move(*corner)
            time.sleep(0.3)
        robot.start(menu=False, environment={"DISPLAY": server})
        left, top = wait_until(place_of_the_menu, "the menu")
        for x, y in (400, 300), middle("Factory"):
            time.sleep(POINTER_PLACED_S)
            robot.desktop.move(left + x, top + y)
        time.sleep(POINTER_PLACED_S)
        robot.desktop.click_at_once()
        wait_until(robot.installation.module_calls, "the module")
        for full in (False, True, False):
            is_there = menu_fills_the_desktop if full else place_of_the_menu
            wait_until(is_there, f"the menu, full screen {full}")
            time.sleep(POINTER_PLACED_S)
            calls = len(robot.installation.module_calls())
            robot.key("Home")
            time.sleep(POINTER_PLACED_S)
            robot.key("Return")
            wait_until(lambda: len(robot.installation.module_calls()) > calls, "the module")
            wait_until(is_there, f"the menu, full screen {full}")
            time.sleep(POINTER_PLACED_S)
            robot.key("w", "Alt_L")
        assert robot.leave() == 0
