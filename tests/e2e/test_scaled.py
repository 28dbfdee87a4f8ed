"""The picture at other sizes: its pixels."""

import time

import numpy as np
import pytest
from support.desktop import wait_until
from support.menu import enter_obedient
from support.robot import POINTER_PLACED_S, SLOWNESS
from support.scaled_player import AWAY, FULL_HD, ULTRA_HD, make_player, own_menu  # noqa: F401


@pytest.mark.parametrize("size, layouts", [((1300, 1000), [(800, 600), (1240, 800), (500, 410)]),
                                           (FULL_HD, [(800, 600), (1333, 1000)])])
def test_window_and_full_screen_show_the_menu_and_draw_only_what_changes(make_player, own_menu, size, layouts):
    player = make_player(size=size, scale=None)  # as it is built in
    assert player.size() == layouts[0]
    for layout in layouts:
        player.resize(*layout)
        player.menu()
        player.check_shown(own_menu)
    player.switch_mode()
    assert player.fills_the_desktop() and player.desktop.keyboard_is_free()
    player.menu()
    player.check_shown(own_menu)
    for place in ((600, 400), (2, 2)):  # the picture, a bar
        player.desktop.move(*place)
        assert player.desktop.cursor_is_hidden()
    player.menu()
    time.sleep(1.5)  # it is shown again twice, for compositors
    assert player.desktop.count_drawings(player.window(), 1.5) == 0
    assert player.desktop.count_drawings(player.window(), 0.3, lambda: player.move(AWAY[0] + 50, AWAY[1])) > 0
    assert player.installation.log_messages() == []


def test_whole_steps(make_player, own_menu):
    player = make_player(size=ULTRA_HD, scale=2)
    player.key("w", "Alt_L")
    wait_until(lambda: player.place() == (720, 180, 2400, 1800), "three times the size", 5 * SLOWNESS)
    time.sleep(POINTER_PLACED_S)
    player.menu()
    assert np.array_equal(player.shown(), own_menu.repeat(3, axis=0).repeat(3, axis=1))


@pytest.mark.parametrize("setting, desktop_depth, scale", [
    (1, 24, 1), (2, 24, 1), (3, 24, 1), (0, 16, 1), (3, 16, 1), (0, 15, 1), (0, 15, 0), (2, 15, 0)])
def test_colour_depths(make_player, own_menu, setting, desktop_depth, scale):
    player = make_player(start=False, depth=desktop_depth, scale=scale)
    player.installation.set("VELDOR_GRAPHICS", "bitmap_depth", setting)
    player.start()
    own = player.menu()  # at its own size, as the library draws it
    assert np.abs(own.astype(np.int16) - own_menu).mean() < 4, "other colours"  # 5 bits lose half a level of 8
    if not scale:
        return
    tolerance = 2 if desktop_depth == 24 else 7  # half a level of 8, and more
    player.resize(960, 700)
    player.menu()
    player.check_shown(own, tolerance)


def test_a_module_is_scaled_without_knowing(make_player):
    player = make_player(size=FULL_HD)
    enter_obedient(player)
    for size in ((800, 600), (640, 480)):
        player.installation.have_obeyed("mode 0 {} {} 32".format(*size))
        player.resize(*size, own=size)
        player.standing_picture()
        own = player.shown()
        player.resize(1301, 900, own=size)
        player.standing_picture()
        player.check_shown(own)
