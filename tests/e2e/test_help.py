"""Help pages over the running program: what opens, what a page shows, and that nothing of it stays."""

import time

import numpy as np
import pytest
from PIL import Image

from support import menu
from support.desktop import wait_until

pytestmark = pytest.mark.windows

FACTORY, OPTIONS = (140, 257), (140, 357)
CLOSE, BACK, NEXT = (618, 492), (370, 492), (494, 492)


def open_help(robot, place):
    robot.move(*place)
    before = robot.standing_picture()
    robot.key("F1")
    return before, robot.wait_for_change(before)


def wait_for(robot, picture):
    wait_until(lambda: np.array_equal(robot.picture(), picture), "the picture as it was")


def press(robot, place):
    """The new picture, once it stands. The pointer goes to the button first: its move is no answer."""
    robot.move(*place)
    before = robot.standing_picture()
    robot.click_here()
    return robot.wait_for_change(before)


def buttons(picture):
    """Those in the band below the text, plain otherwise; looked for above a pointer there."""
    band = picture[487].astype(int)
    return [button for button in (BACK, NEXT, CLOSE) if np.ptp(band[button[0] - 40:button[0] + 40], axis=0).max() > 40]


def test_a_page_opens_over_menu_and_options_leaves_no_trace_and_is_saved_by_f4(robot):
    closers = (lambda: robot.key("Escape"), lambda: robot.key("F1"), lambda: robot.click_here(3),
               lambda: (robot.click(*CLOSE), robot.move(*FACTORY)))
    for close in closers:
        before, opened = open_help(robot, FACTORY)
        assert buttons(opened) == [CLOSE]
        outside = (before != opened).any(axis=2)
        outside[70:521, 110:691] = False
        outside[236:278, 34:250] = False  # the button: the pointer has left it
        assert not outside.any()
        close()
        wait_for(robot, before)
    _, opened = open_help(robot, FACTORY)
    robot.key("F4")
    robot.standing_picture()
    picture = np.array(Image.open(robot.installation.path("factory.pcx")).convert("RGB"))
    x, y = FACTORY
    for each in (picture, opened):  # the pointer belongs to the display, not to the picture
        each[y - 2:y + 34, x - 8:x + 30] = 0
    assert np.array_equal(picture, opened)
    robot.key("Escape")
    menu.open_options(robot)
    titles = set()
    for place in (50, 133), (260, 231), (560, 133), (180, 511), (318, 540):  # module, option, value, field, button
        before, opened = open_help(robot, place)
        titles.add(opened[84:98, 136:660].tobytes())
        robot.key("Escape")
        wait_for(robot, before)
    assert len(titles) == 5


def test_pages_are_turned_forth_and_back_and_stay_when_the_display_changes(robot):
    _, opened = open_help(robot, OPTIONS)
    pages = [opened, *(press(robot, button) for button in (NEXT, NEXT, BACK, BACK, NEXT))]
    first, second, third = [NEXT, CLOSE], [BACK, NEXT, CLOSE], [BACK, CLOSE]
    assert [buttons(page) for page in pages] == [first, second, third, second, first, second]
    texts = [page[106:430, 118:678].tobytes() for page in pages]
    assert len(set(texts[1:4])) == 2 and texts[1] == texts[3] == texts[5], "something of another page is left"
    robot.key("w", "Alt_L")
    robot.forget_window()
    time.sleep(0.5)  # the library puts the pointer in the middle
    robot.move(750, 30)
    assert robot.standing_picture()[106:430, 118:678].tobytes() == texts[5]
