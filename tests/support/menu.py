"""What the main menu of the built-in installation shows and where, and the alert boxes of the library."""

import numpy as np

from support.desktop import wait_until
from support.installation import image

LEFT, WIDTH, HEIGHT = 34, 216, 42
TOPS = {"HQ": 186, "Factory": 236, "Battle": 286, "Options": 336, "Leave": 386}
REST, POINTED_AT, PRESSED = "rest", "pointed at", "pressed"
LOOKS = {REST: 0, POINTED_AT: 220, PRESSED: 440}  # columns of buttons.pcx
PREVIEW = 566, 417, 212, 138
SEEN_WIDTH = 100  # the pointer covers the middle of a button that a key has chosen

CHARACTER_WIDTH, BOX_MARGIN = 8, 32


def middle(button):
    return LEFT + WIDTH // 2, TOPS[button] + HEIGHT // 2


def choose(robot, button):
    robot.click(*middle(button))


def open_options(robot):
    choose(robot, "Options")
    wait_until(lambda: robot.shows("images/options.pcx", share=0.4), "the options screen")
    return robot.standing_picture()


def walk_to(robot, button):
    """By keys: they work in full screen, too."""
    robot.key("Home")
    for _ in range(list(TOPS).index(button)):
        robot.key("Down")
    wait_for_look(robot, button, POINTED_AT)
    robot.key("Return")


def enter(robot, button, way=choose):
    """Into the module that the button stands for."""
    calls = len(robot.installation.module_calls())
    way(robot, button)
    wait_until(lambda: len(robot.installation.module_calls()) > calls, f"a call of {button}", 5 * robot.system.slowness)


def enter_obedient(robot):
    """Into a module that does what it is told (see obedient_module.c)."""
    robot.installation.remove("module_state.txt")
    enter(robot, "HQ")
    wait_until(robot.installation.module_state, "the module's state", 5 * robot.system.slowness)


def look(robot, button, german=False):
    """Which of its pictures a button shows; None when it is none of them."""
    row = list(TOPS).index(button) * 46 + (240 if german else 0)
    sheet = image(robot.installation.path("images/buttons.pcx"))[row:row + HEIGHT]
    seen = robot.picture((LEFT, TOPS[button], SEEN_WIDTH, HEIGHT))
    return next((name for name, x in LOOKS.items() if np.array_equal(seen, sheet[:, x:x + SEEN_WIDTH])), None)


def pointed_at(robot):
    return [button for button in TOPS if look(robot, button) == POINTED_AT]


def wait_for_look(robot, button, wanted):
    wait_until(lambda: look(robot, button) == wanted, f"{button} to look {wanted}, not {look(robot, button)}")


def alert_length(robot):
    """Characters of the longest line of the alert box that is up, 0 without one: the box is as wide as its text."""
    row = robot.picture((0, 294, 800, 1))[0]
    plain = ((row == 255).all(axis=1) | (row == 0).all(axis=1)).tolist()
    left = right = 400
    while left > 0 and plain[left - 1]:
        left -= 1
    while right < 799 and plain[right + 1]:
        right += 1
    white = np.flatnonzero((row[left:right + 1] == 255).all(axis=1))  # the screen around the box may be black
    return round((white[-1] - white[0] + 3 - BOX_MARGIN) / CHARACTER_WIDTH) if len(white) > 50 else 0


def confirm_alert(robot, text):
    """Waits for the alert with this text and closes it by its key."""
    wait_until(lambda: alert_length(robot) == len(text), f"the alert {text!r}",
               10 * robot.system.slowness)
    robot.key("c")
