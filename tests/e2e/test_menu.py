"""The main menu: its looks and movements, calling modules, leaving."""

import time

import pytest
from Xlib import X

from support import menu
from support.desktop import wait_until
from support.robot import MENU_PICTURE

pytestmark = pytest.mark.windows


def enter_and_return(robot, button, way=menu.choose):
    menu.enter(robot, button, way)
    robot.move(700, 50)
    robot.wait_for_menu()
    menu.wait_for_look(robot, button, menu.REST)


def test_modules_are_called_with_the_display_and_the_version(robot):
    for button, way in (("HQ", menu.walk_to), ("Factory", menu.choose), ("Battle", menu.walk_to)):
        enter_and_return(robot, button, way)
    robot.installation.write("module_result.txt", "255")
    enter_and_return(robot, "HQ")  # leaves full screen behind, and is believed
    menu.enter(robot, "Factory")
    hq, battle = ("hq", 0, 128), ("battle", 0, 128)
    assert robot.installation.module_calls() == [
        hq, ("factory", 3, 0, 3, 0, 128), battle, hq, ("factory", 3, 255, 3, 0, 128)]
    assert robot.installation.log_messages() == []


def test_every_button_lights_up_shows_its_place_and_looks_pressed_first(robot):
    robot.standing_picture()
    previews = {robot.picture(menu.PREVIEW).tobytes()}  # of the current button, the first
    for button in menu.TOPS:
        robot.move(*menu.middle(button))
        menu.wait_for_look(robot, button, menu.POINTED_AT)
        assert menu.pointed_at(robot) == [button]
        previews.add(robot.picture(menu.PREVIEW).tobytes())
    assert len(previews) == len(menu.TOPS)
    robot.move(*menu.middle("HQ"))
    menu.wait_for_look(robot, "Leave", menu.REST)
    robot.desktop.press_button()
    menu.wait_for_look(robot, "HQ", menu.PRESSED)
    assert robot.installation.module_calls() == []
    wait_until(robot.installation.module_calls, "the module's call")


def test_keys_and_wheel_move_from_button_to_button_and_escape_stays(robot):
    walk = [("Down", "HQ"), ("Up", "Leave"), ("Right", "HQ"), ("End", "Leave"), ("Left", "Options"), ("Home", "HQ"),
            (-3, "Options"), (2, "Factory")]
    for step, button in walk:
        robot.wheel(step) if isinstance(step, int) else robot.key(step)
        menu.wait_for_look(robot, button, menu.POINTED_AT)
        assert menu.pointed_at(robot) == [button], f"after {step}"
    robot.key("Escape")
    robot.standing_picture(still_s=0.5)
    assert robot.running() and robot.shows(MENU_PICTURE)
    assert robot.close() == 0
    assert robot.installation.log_messages() == robot.installation.module_calls() == []


@pytest.mark.parametrize("scale", [0, 1])
def test_clicks_and_keys_of_no_length_are_heard(make_robot, scale):
    player = make_robot(scale=scale).start()
    desktop = player.desktop
    player.move(*menu.middle("Factory"))
    for button in ("Factory", "HQ", "Battle"):  # the first is under the pointer already
        place = player.spot(*menu.middle(button)) if button != "Factory" else ()
        player.wait_for_pointer()
        desktop.click_at_once(*place)
        wait_until(lambda button=button: player.installation.module_calls()[-1:] and
                   player.installation.module_calls()[-1][0] == button.lower(), f"{button} to be called")
        player.wait_for_menu()
    assert len(player.installation.module_calls()) == 3
    player.wait_for_pointer()
    if player.system.name == "windows":  # keys of no length are not heard there yet
        player.key("x", "Alt_L")
    else:
        desktop.key_at_once("Alt_L", "x")
    assert player.wait_for_end() == 0


def test_backgrounds_go_on_in_turn_from_pass_to_pass(robot):
    installation = robot.installation
    pictures = sum(line.startswith("+") for line in installation.read("tools/vcc.buf").splitlines())
    work_bitmaps = 4
    shown_before = 1 + 1 + work_bitmaps + pictures  # at the start, in the first pass, and after everything it loaded
    installation.hold_modules()
    menu.enter(robot, "HQ")
    installation.remove("tools/language/english/e_factory.tw")
    installation.hold_modules(False)
    wait_until(lambda: menu.alert_length(robot), "the second pass to fail")
    assert robot.shows(f"images/morv{shown_before % 4 + 1}.pcx", share=0.9)


@pytest.mark.linux
def test_keys_are_heard_after_full_screen_without_a_window_manager(make_robot):
    player = make_robot().start()
    player.desktop.focus(X.PointerRoot)
    for full in (True, False):
        player.key("w", "Alt_L")
        wait_until(lambda full=full: player.fills_the_desktop() == full, "full screen" if full else "a window")
        time.sleep(0.5)
    player.desktop.move(1023, 767)  # beside the window
    assert player.leave() == 0


@pytest.mark.parametrize("offered", [3, 2], ids=["both", "window only"])
def test_alt_w_changes_between_window_and_full_screen(make_robot, offered):
    player = make_robot(window_manager="openbox", graphics={"screen_mode_range": offered}).start()
    for full in (offered == 3, False):
        player.key("w", "Alt_L")
        player.forget_window()
        wait_until(lambda: player.fills_the_desktop() == full, "full screen" if full else "a window")
        player.wait_for_menu()
    menu.enter(player, "Factory")
    assert player.installation.module_calls() == [("factory", offered, 0, offered, 0, 128)]


@pytest.mark.linux
def test_nothing_happens_while_another_program_has_the_keyboard(make_robot):
    player = make_robot(window_manager="openbox").start()
    other = player.desktop.open_other_window()
    player.standing_picture(still_s=0.5)  # the program hears of it
    player.move(*menu.middle("HQ"))
    player.key("Down")
    player.standing_picture(still_s=0.4)
    assert menu.pointed_at(player) == []
    other.destroy()
    player.desktop.focus(player.window())
    menu.wait_for_look(player, "HQ", menu.POINTED_AT)
