"""The main menu: how it looks and moves, which modules it calls and how, and how it is left."""

import pytest

from support import menu
from support.desktop import wait_until

CALLS = [("hq", 0, 128), ("factory", 3, 0, 3, 0, 128), ("battle", 0, 128)]
MODULE_BUTTONS = ("HQ", "Factory", "Battle")


def walk_to(robot, button):
    robot.move(700, 50)  # over nothing, so that the first key starts at the top
    for _ in range(list(menu.TOPS).index(button) + 1):
        robot.key("Down")
    menu.wait_for_look(robot, button, menu.POINTED_AT)
    robot.key("Return")


def enter_and_return(robot, button, way=menu.choose):
    menu.enter(robot, button, way)
    robot.move(700, 50)
    robot.wait_for_menu()
    menu.wait_for_look(robot, button, menu.REST)


@pytest.mark.parametrize("way", [menu.choose, walk_to])
def test_modules_are_called_with_the_display_and_the_version(robot, way):
    for button in MODULE_BUTTONS:
        enter_and_return(robot, button, way)
    assert robot.installation.module_calls() == CALLS
    assert robot.installation.log() == []


def test_a_module_that_left_full_screen_behind_is_believed(robot):
    robot.installation.write("module_result.txt", "255")
    enter_and_return(robot, "HQ")
    menu.enter(robot, "Factory")
    assert robot.installation.module_calls() == [("hq", 0, 128), ("factory", 3, 255, 3, 0, 128)]


def test_every_button_lights_up_and_shows_its_place(robot):
    previews = set()
    for button in menu.TOPS:
        robot.move(*menu.middle(button))
        menu.wait_for_look(robot, button, menu.POINTED_AT)
        assert menu.pointed_at(robot) == [button]
        previews.add(robot.picture(menu.PREVIEW).tobytes())
    assert len(previews) == len(menu.TOPS)
    robot.move(700, 50)
    menu.wait_for_look(robot, "Leave", menu.REST)


def test_a_click_shows_the_pressed_look_first(robot):
    robot.move(*menu.middle("HQ"))
    menu.wait_for_look(robot, "HQ", menu.POINTED_AT)
    robot.desktop.press_button()
    menu.wait_for_look(robot, "HQ", menu.PRESSED)
    assert robot.installation.module_calls() == []
    wait_until(robot.installation.module_calls, "the module's call")
    robot.desktop.release_button()


def test_keys_and_wheel_move_from_button_to_button(robot):
    walk = [("Down", "HQ"), ("Down", "Factory"), ("Up", "HQ"), ("Up", "Leave"), ("Down", "HQ"), ("Right", "Factory"),
            ("End", "Leave"), ("Left", "Options"), ("Home", "HQ"), (-3, "Options"), (2, "Factory")]
    for step, button in walk:
        robot.wheel(step) if isinstance(step, int) else robot.key(step)
        menu.wait_for_look(robot, button, menu.POINTED_AT)
        assert menu.pointed_at(robot) == [button], f"after {step}"


def test_f12_and_escape_stay_in_the_menu(robot):
    for key in ("F12", "Escape"):
        robot.key(key)
        robot.standing_picture()
        assert robot.running() and robot.shows("images/menu.pcx")
    enter_and_return(robot, "HQ")


@pytest.mark.parametrize("leave", [
    lambda robot: menu.choose(robot, "Leave"),
    lambda robot: robot.key("x", "Alt_L"),
    lambda robot: robot.close_window(),
], ids=["button", "Alt+X", "window closed"])
def test_leaving(robot, leave):
    leave(robot)
    assert robot.wait_for_end() == 0
    assert robot.installation.log() == []
    assert robot.installation.module_calls() == []


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


def test_german_menu(make_robot):
    player = make_robot()
    player.installation.write("tools/language.ini", "2\n")
    player.start()
    for button in menu.TOPS:
        assert menu.look(player, button, german=True) == menu.REST
    assert menu.look(player, "Leave") is None
    player.move(*menu.middle("Leave"))
    wait_until(lambda: menu.look(player, "Leave", german=True) == menu.POINTED_AT, "the German button to light up")


def fills_the_desktop(robot):
    return any(window.get_geometry().width == 1024 for window, _ in robot.desktop.windows())


@pytest.mark.parametrize("offered", [3, 2], ids=["both", "window only"])
def test_alt_w_changes_between_window_and_full_screen(make_robot, offered):
    player = make_robot(window_manager=True)
    player.installation.set("VELDOR_GRAPHICS", "screen_mode_range", offered)
    player.installation.use_recording_modules()
    player.start()
    for full in (offered == 3, False):
        player.key("w", "Alt_L")
        player.forget_window()
        wait_until(lambda: fills_the_desktop(player) == full, "full screen" if full else "a window")
        player.wait_for_menu()
    menu.enter(player, "Factory")
    assert player.installation.module_calls() == [("factory", offered, 0, offered, 0, 128)]


def test_nothing_happens_while_another_program_has_the_keyboard(make_robot):
    player = make_robot(window_manager=True).start()
    player.switch_away()
    player.standing_picture(still_s=0.5)  # the program hears of it
    player.move(*menu.middle("HQ"))
    player.key("Down")
    player.standing_picture(still_s=0.4)
    assert menu.pointed_at(player) == []
    player.switch_back()
    menu.wait_for_look(player, "HQ", menu.POINTED_AT)
