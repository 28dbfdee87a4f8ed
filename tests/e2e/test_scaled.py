"""The picture at other sizes: its pixels, the pointer's place, the size that the window keeps, what goes wrong."""

import random
import subprocess
import time

import numpy as np
import pytest
from support.desktop import wait_until
from support.installation import PROJECT
from support.menu import enter_obedient
from support.robot import POINTER_PLACED_S, SLOWNESS, Robot

FULL_HD, ULTRA_HD = (1920, 1080), (3840, 2160)
PLACES = [(0, 0), (799, 599), (799, 0), (0, 599), (1, 1), (400, 300), (401, 299), (798, 2)]


def resized(picture, shown):
    """Along the first axis: means over the shares of the source that each shown pixel covers."""
    size = picture.shape[0]
    edges = np.arange(shown + 1) * size / shown
    whole = np.minimum(edges.astype(int), size - 1)
    sums = np.concatenate([np.zeros_like(picture[:1]), np.cumsum(picture, axis=0)])
    at_edges = sums[whole] + (edges - whole).reshape(-1, 1, 1) * picture[whole]
    return np.diff(at_edges, axis=0) * shown / size


def scaled(picture, width, height):
    """What a picture looks like at another size, computed independently of the program, in double precision."""
    rows = resized(picture.astype(float), height)
    return resized(rows.swapaxes(0, 1), width).swapaxes(0, 1)


def fitted(width, height, own=(800, 600)):
    """x, y, width and height of the picture in a window of this size."""
    scale = min(width / own[0], height / own[1])
    shown = round(own[0] * scale), round(own[1] * scale)
    return (width - shown[0]) // 2, (height - shown[1]) // 2, *shown


class Player(Robot):
    """Asks more of the desktop."""

    def size(self):
        geometry = self.window().get_geometry()
        return geometry.width, geometry.height

    def wait_for_size(self, size, own=(800, 600)):
        wait_until(lambda: self.size() == size and self.place() == fitted(*size, own=own),
                   f"a window of {size} with the picture in it", 5 * SLOWNESS)

    def resize(self, *size, own=(800, 600)):
        self.desktop.configure(self.window(), width=size[0], height=size[1])
        self.wait_for_size(size, own)

    def switch_mode(self, size=None):
        """Alt+W, until the window has its new size: the desktop's unless one is given."""
        self.key("w", "Alt_L")
        self.wait_for_size(size or self.desktop.size)
        time.sleep(POINTER_PLACED_S)

    def menu(self):
        self.move(600, 100)  # where it covers nothing that changes
        return self.standing_picture()

    def check_shown(self, own, tolerance=2):
        """The window shows this picture, scaled, between black bars."""
        own_size = own.shape[1], own.shape[0]
        x, y, width, height = fitted(*self.size(), own=own_size)
        assert self.place() == (x, y, width, height)
        window = self.desktop.picture(self.window())
        shown = window[y:y + height, x:x + width].astype(np.int16)
        window[y:y + height, x:x + width] = 0
        assert not window.any(), "the bars are not black"
        whole_step = width % own_size[0] == 0 and width * own_size[1] == height * own_size[0]
        worst = np.abs(shown - scaled(own, width, height)).max()
        assert worst <= (0 if whole_step else tolerance) + 0.001, f"{width} x {height}"


@pytest.fixture
def make_player(make_robot):
    def make(**options):
        usual = {"modules": "obedient", "graphics": {"screen_mode_range": 3}, "window_manager": "openbox", "scale": 1}
        return make_robot(Player, **usual | options)
    return make


@pytest.fixture(scope="module")
def own_menu():
    """The menu as the library shows it, unscaled."""
    with Player(scale=0) as player:
        return player.start().menu()


# its pixels

@pytest.mark.parametrize("size, layouts", [((1300, 1000), [(800, 600), (1240, 800), (500, 410)]),
                                           (FULL_HD, [(800, 600), (1333, 1000)])])
def test_window_and_full_screen_show_the_menu_and_draw_only_what_changes(make_player, own_menu, size, layouts):
    player = make_player(size=size, scale=None).start()  # as it is built in
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
    assert player.desktop.count_drawings(player.window(), 0.3, lambda: player.move(650, 100)) > 0
    assert player.installation.log_messages() == []


def test_whole_steps(make_player, own_menu):
    player = make_player(size=ULTRA_HD, scale=2).start()
    player.key("w", "Alt_L")
    wait_until(lambda: player.place() == (720, 180, 2400, 1800), "three times the size", 5 * SLOWNESS)
    time.sleep(POINTER_PLACED_S)
    player.menu()
    assert np.array_equal(player.shown(), own_menu.repeat(3, axis=0).repeat(3, axis=1))


@pytest.mark.parametrize("setting, desktop_depth, scale", [
    (1, 24, 1), (2, 24, 1), (3, 24, 1), (0, 16, 1), (3, 16, 1), (0, 15, 1), (0, 15, 0), (2, 15, 0)])
def test_colour_depths(make_player, own_menu, setting, desktop_depth, scale):
    graphics = {"screen_mode_range": 3, "bitmap_depth": setting}
    player = make_player(graphics=graphics, depth=desktop_depth, scale=scale).start()
    own = player.menu()  # at its own size, as the library draws it
    assert np.abs(own.astype(np.int16) - own_menu).mean() < 4, "other colours"  # 5 bits lose half a level of 8
    if not scale:
        return
    tolerance = 2 if desktop_depth == 24 else 7  # half a level of 8, and more
    player.resize(960, 700)
    player.menu()
    player.check_shown(own, tolerance)


def test_a_module_is_scaled_without_knowing(make_player):
    player = make_player(size=FULL_HD).start()
    enter_obedient(player)
    for size in ((800, 600), (640, 480)):
        player.installation.have_obeyed("mode 0 {} {} 32".format(*size))
        player.resize(*size, own=size)
        player.standing_picture()
        own = player.shown()
        player.resize(1301, 900, own=size)
        player.standing_picture()
        player.check_shown(own)


# the pointer

def test_the_pointer_is_where_the_player_sees_it(make_player):
    player = make_player(size=ULTRA_HD).start()
    enter_obedient(player)
    time.sleep(POINTER_PLACED_S)
    dice = random.Random(1)
    for layout in ((801, 640), (1301, 900), ULTRA_HD):
        if layout == ULTRA_HD:
            player.installation.have_obeyed("mode 1 800 600 32")
            player.wait_for_size(layout)
            time.sleep(POINTER_PLACED_S)
        else:
            player.resize(*layout)
        random_places = [(dice.randrange(800), dice.randrange(600)) for _ in range(4)]
        x, y, width, height = player.place()
        left, top = player.desktop.origin(player.window())
        shown = [(player.spot(*place), place) for place in PLACES + random_places]
        beside = ((left, top), (0, 0)), ((left + 2 * x + width - 1, top + 2 * y + height - 1), (799, 599))
        for spot, place in *shown, *beside:
            player.desktop.move(*spot)
            wait_until(lambda: player.installation.module_state()[:2] == place, f"{place} in {layout}", 2 * SLOWNESS)
        for place in ((200, 150), (799, 0)):  # the program places it
            time.sleep(0.1)
            player.installation.have_obeyed("place {} {}".format(*place))
            wait_until(lambda: player.desktop.pointer() == player.spot(*place), f"the pointer at {place}",
                       3 * SLOWNESS)


# the window's size

def test_the_window_keeps_the_size_that_the_player_gave_it(make_player):
    player = make_player(size=FULL_HD).start()
    hints = player.window().get_wm_normal_hints()
    assert (hints.min_width, hints.min_height) == (400, 300)
    size = 1100, 700
    player.resize(*size)
    player.switch_mode()
    player.switch_mode(size)
    enter_obedient(player)
    for full, *own, depth in ((0, 800, 600, 32), (0, 640, 480, 16), (1, 640, 480, 32), (0, 800, 600, 32)):
        player.installation.have_obeyed(f"mode {full} {own[0]} {own[1]} {depth}")
        player.wait_for_size(FULL_HD if full else size, own)
    player.installation.order("leave 0")
    player.wait_for_menu()
    assert player.size() == size


def test_a_display_that_a_module_leaves_behind_is_set_again(make_player, own_menu):
    player = make_player().start()
    for full, size, result in (0, "640 480", 0), (1, "640 480", 0), (0, "800 600", 255):
        enter_obedient(player)
        player.installation.have_obeyed(f"mode {full} {size} 8")
        player.installation.order(f"leave {result}")
        player.forget_window()
        player.wait_for_menu()
        assert player.fills_the_desktop() == (result == 255)
        player.menu()
        player.check_shown(own_menu)
        assert player.installation.log_messages()[-1] == (f"hq.so has left a display of {size.replace(' ', ' x ')} "
                                                          "at 8 bits: 800 x 600 at 32 bits is set again")
    assert len(player.installation.log_messages()) == 3


def test_without_a_window_manager(make_player, own_menu):
    player = make_player(size=(1300, 1000), window_manager=None).start()
    player.resize(900, 700)
    player.switch_mode()
    player.desktop.run("xrandr", "--output", "screen", "--off", "--fb", "1100x800")  # a monitor goes away
    player.wait_for_size((1100, 800))
    player.menu()
    player.check_shown(own_menu)
    player.switch_mode((900, 700))


def test_full_screen_fills_the_monitor_where_the_window_is(make_player):
    player = make_player(size=(2400, 1000))
    for monitor in ("left", "1400/200x1000/200+0+0", "screen"), ("right", "1000/200x1000/200+1400+0", "none"):
        player.desktop.run("xrandr", "--setmonitor", *monitor)
    player.start()
    for place, monitor in (((100, 100), (0, 1400)), ((1500, 100), (1400, 1000))):
        player.desktop.configure(player.window(), x=place[0], y=place[1])
        player.switch_mode((monitor[1], 1000))
        assert player.desktop.origin(player.window()) == (monitor[0], 0)
        player.switch_mode((800, 600))


# what goes wrong

def test_a_window_that_changes_its_size_in_a_film_and_is_closed(make_player):
    player = make_player(size=FULL_HD, films=True).start(menu=False)
    dice = random.Random(2)
    for skip in (False, True):
        for _ in range(30):
            player.desktop.configure(player.window(), width=dice.randrange(400, 1900),
                                     height=dice.randrange(300, 1000))
            time.sleep(0.02)
        player.resize(1500, 900)
        if not skip:
            player.key("Return")
            time.sleep(1)
            player.key("Return")
            player.wait_for_menu()
            player.standing_picture(still_s=0.5)
    player.desktop.configure(player.window(), width=1800, height=1000)
    assert player.close() == 0
    assert player.installation.log_messages() == player.installation.module_calls() == []


@pytest.fixture
def own_memory(tmp_path):
    """The environment of a program that has no shared memory of others, and little of its own."""
    library = tmp_path / "own_memory.so"
    subprocess.run(["cc", "-shared", "-fPIC", "-o", library, PROJECT / "tests/support/own_memory.c"], check=True)
    return {"LD_PRELOAD": str(library)}


@pytest.mark.parametrize("options, reason", [
    ({"server": ("-extension", "MIT-SHM")}, "the display server has no shared memory"),
    ({"server_environment": "own_memory"}, "the display server refuses shared memory"),
    ({"depth": 30}, "the desktop's colours are not of 15, 16 or 24 bits"),
    ({"depth": 8, "size": (800, 600)}, "the desktop's colours are not of 15, 16 or 24 bits"),
], ids=["absent", "refused", "30 bits", "8 bits"])
def test_what_cannot_be_scaled_is_shown_by_the_library(request, make_player, own_menu, options, reason):
    if "server_environment" in options:
        options = {"server_environment": request.getfixturevalue("own_memory")}
    player = make_player(window_manager=None, **options)
    player.scale = 0  # its windows are the library's
    readable = options.get("depth", 24) == 24
    player.start(menu=readable)
    player.window()
    for _ in range(2):  # full screen and back
        time.sleep(0.5)
        player.key("w", "Alt_L")
        player.forget_window()
        player.window()
    if readable:
        player.wait_for_menu()
        assert np.array_equal(player.menu(), own_menu)  # with the pointer
    assert player.installation.log_messages() == [f"The picture keeps its size: {reason}"]
    assert player.leave() == 0


def test_without_memory_for_it_the_picture_has_its_own_size(make_player, own_memory, own_menu):
    player = make_player(size=(1300, 1000)).start(environment=own_memory)
    player.desktop.configure(player.window(), width=1200, height=900)
    wait_until(lambda: player.place() == (200, 150, 800, 600), "the picture in the middle", 5 * SLOWNESS)
    assert np.array_equal(player.menu(), own_menu)
    assert player.installation.log_messages() == ["There is no memory to show the picture at its window's size"]
