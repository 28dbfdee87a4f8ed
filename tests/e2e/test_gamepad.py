"""Everything by a gamepad alone, and what it does when it comes, goes or is not meant."""

import time

import numpy as np
import pytest
from test_films import INTRO, STUDIO, make_film, shows_film

from support import menu
from support.desktop import wait_until
from support.gamepad import A, B, HAT, LEFT_SHOULDER, RIGHT_SHOULDER, STICK, X, Y, Gamepads

pytestmark = pytest.mark.windows

UP, DOWN, NOWHERE = (0, -1), (0, 1), (0, 0)


def start(robot, **options):
    """With a gamepad."""
    pads = Gamepads(robot)
    pad = pads.plug_in()
    robot.start(environment=pads.environment(), **options)
    return pad


def walk(robot, pad, way, button):
    """Pushes the hat until the menu's button is lit."""
    for _ in menu.TOPS:
        pad.nudge(HAT, *way)
        if menu.look(robot, button) == menu.POINTED_AT:
            return
    raise AssertionError(f"no way leads to {button}")


def test_a_gamepad_is_enough(make_robot, installation):
    player = make_robot(films=True)
    slowness = player.system.slowness
    for film in STUDIO, INTRO:
        make_film(installation, film, 20)
    pad = start(player, menu=False)
    wait_until(lambda: shows_film(player, STUDIO), "the first film", 10 * slowness)
    pad.press(A)
    wait_until(lambda: shows_film(player, INTRO), "the second film", 5 * slowness)
    pad.press(B)
    player.wait_for_menu(8)
    assert installation.module_calls() == []

    walk(player, pad, DOWN, "Factory")
    pad.press(A)
    wait_until(installation.module_calls, "the module", 5 * slowness)
    player.wait_for_menu()
    assert len(installation.module_calls()) == 1

    walk(player, pad, UP, "Battle")
    before = player.standing_picture()
    for closer in (B, Y):
        pad.press(Y)
        player.wait_for_change(before)
        pad.press(closer)
        wait_until(lambda: np.array_equal(player.picture(), before), "the menu as it was")
    pad.press(Y)
    opened = player.wait_for_change(before)
    pad.nudge(STICK, *DOWN)  # to the page's own button
    pad.press(A)
    player.wait_for_change(opened)
    assert player.shows("images/menu.pcx", share=0.7)

    walk(player, pad, DOWN, "Options")
    pad.press(A)
    wait_until(lambda: player.shows("images/options.pcx", share=0.4), "the options screen")
    volume, name, accept_button = (202, 124, 80, 18), (124, 502, 50, 18), (50, 530, 25, 20)  # without the pointer
    for area, way, buttons in ((volume, DOWN, (RIGHT_SHOULDER, RIGHT_SHOULDER, LEFT_SHOULDER)),
                               (name, DOWN, (X, A)), (accept_button, UP, (RIGHT_SHOULDER, A))):
        pad.step_to(HAT, *way, area)
        for button in buttons:
            player.standing_picture(still_s=0.3)
            pad.press(button)
    player.wait_for_menu()
    settings = installation.settings()
    assert settings["VELDOR_SOUND"]["vcc_music_volume"] == "4" and not settings["VELDOR_BATTLE"].get("player_name")

    walk(player, pad, DOWN, "Leave")
    pad.press(A)
    assert player.wait_for_end() == 0 and installation.log_messages() == []


def test_gamepads_come_and_go_in_the_middle_of_a_press(make_robot):
    player = make_robot()
    pads, second_s = Gamepads(player), 1.3 * player.system.slowness

    def stays_at(*buttons):
        time.sleep(second_s)
        assert menu.pointed_at(player) == list(buttons)

    player.start(environment=pads.environment())
    worn = pads.plug_in()
    worn.push(STICK, 0.3, -0.35)
    worn.push(HAT, *DOWN)
    worn.hold(A)
    stays_at()
    worn.push(HAT, *NOWHERE)
    walk(player, worn, DOWN, "Factory")
    other = pads.plug_in(1)
    stays_at("Factory")
    walk(player, other, DOWN, "Battle")
    worn.push(HAT, *UP)
    menu.wait_for_look(player, "Factory", menu.POINTED_AT)
    worn.pull_out()
    stays_at("Factory")
    walk(player, other, DOWN, "Battle")
    other.pull_out()
    pads.plug_in(0, axes=4, buttons=4)
    stays_at("Battle")
    assert player.running() and player.installation.log_messages() == player.installation.module_calls() == []


@pytest.mark.linux  # the box is the library's
def test_an_alert_hears_the_gamepad_and_the_menu_does_not_hear_it_again(make_robot, installation):
    player = make_robot()
    pad = start(player)
    for module in "hq", "factory", "battle":
        installation.remove(module + player.system.library)
    walk(player, pad, DOWN, "HQ")
    pad.press(A)
    wait_until(lambda: menu.alert_length(player), "the alert", 10 * player.system.slowness)
    pad.hold(A)
    player.wait_for_menu()
    time.sleep(1)
    assert len(installation.log_messages()) == 1
    pad.hold(A, False)
    pad.nudge(HAT, *DOWN)
    assert menu.pointed_at(player)


@pytest.mark.linux  # of the installation's data
@pytest.mark.parametrize("has_words", [True, False], ids=["own words", "words for keys alone"])
def test_buttons_are_named_while_a_gamepad_is_used(make_robot, installation, has_words):
    texts, help_file = "tools/language/english/txt/screen_texts.eng", "help/menu_en.hlp"
    if not has_words:
        installation.write(texts, installation.read(texts).replace("+14", "+7770"))
        installation.write(help_file, installation.read(help_file).replace("+1000", "+9000"))
    player = make_robot()
    pad = start(player)

    def hint():
        return player.standing_picture()[572:598].tobytes()

    def help_page(ask, close):
        before = player.standing_picture()
        ask()
        opened = player.wait_for_change(before)
        close()
        player.wait_for_change(opened)
        return opened[70:521, 250:691].tobytes()

    with_keys = hint()
    walk(player, pad, DOWN, "Options")
    assert (hint() != with_keys) == has_words
    by_pad = help_page(lambda: pad.press(Y), lambda: pad.press(B))
    player.key("Home")
    menu.wait_for_look(player, "HQ", menu.POINTED_AT)
    assert hint() == with_keys
    for _ in range(3):
        player.key("Down")
    menu.wait_for_look(player, "Options", menu.POINTED_AT)
    assert (by_pad != help_page(lambda: player.key("F1"), lambda: player.key("Escape"))) == has_words


@pytest.mark.linux  # the others give another window the focus; Wine's desktop keeps it
@pytest.mark.parametrize("wanted", [True, False])
def test_what_is_not_meant_for_the_program_is_not_heard(make_robot, wanted):
    player = make_robot(window_manager="openbox")
    player.installation.set("VELDOR_GENERAL", "gamepad", "yes" if wanted else "no")
    pad = start(player)
    if wanted:
        other = player.desktop.open_other_window()
        player.standing_picture()  # it has heard of that
    for _ in range(3):
        pad.nudge(HAT, *DOWN)
    pad.push(HAT, *DOWN)
    assert menu.pointed_at(player) == []
    if wanted:
        other.destroy()
        player.desktop.focus(player.window())  # the window manager takes a second
        time.sleep(1)
        assert menu.pointed_at(player) == []
        pad.push(HAT, *NOWHERE)
        walk(player, pad, DOWN, "HQ")
