"""How the program starts: on which desktop, with which settings and arguments, and what it says when something is missing."""

import subprocess

import pytest

from support import menu
from support.desktop import wait_until
from support.installation import CONFIG

ENGLISH = "tools/language/english/"
SCREENS_FAIL = (["CC: Error initializing Graphics"], ["Error initializing Graphics", "CC: Error initializing Graphics"])
BUFFERS_FAIL = "CC: Error loading Graphicbuffers!", "Error loading Graphicbuffers"


def test_first_start_writes_what_it_found(make_robot):
    player = make_robot()
    player.installation.remove(CONFIG)
    player.films = True  # nothing is written before the start
    player.start("x", "y")
    player.key("x", "Alt_L")
    assert player.wait_for_end() == 0
    graphics = player.installation.settings()["VELDOR_GRAPHICS"]
    assert {key: graphics[key] for key in ("bitmap_depth", "screen_mode_range", "screen_mode")} == {
        "bitmap_depth": "0", "screen_mode_range": "3", "screen_mode": "0"}
    assert player.installation.setting("VELDOR_BATTLE", "battle_hq_ip") == "N/A"


@pytest.mark.parametrize("size, settings, call", [
    ((800, 600), {"screen_mode_range": -1}, ("factory", 1, 255, 1, 0, 128)),
    ((1024, 768), {"screen_mode_range": 3, "screen_mode": 1}, ("factory", 3, 255, 3, 0, 128)),
    ((1024, 768), {"screen_mode_range": 2, "screen_mode": 1, "bitmap_depth": 2}, ("factory", 2, 0, 2, 2, 128)),
], ids=["exact desktop", "configured full screen", "window only at 16 bits"])
def test_display_set_up(make_robot, size, settings, call):
    player = make_robot(size=size)
    for key, value in settings.items():
        player.installation.set("VELDOR_GRAPHICS", key, value)
    player.installation.use_recording_modules()
    player.start(menu=False)
    wait_until(lambda: menu.standing(player), "the menu", 20)
    for attempt in range(3):  # the picture stands a moment before the program listens
        menu.choose(player, "Factory")
        try:
            wait_until(player.installation.module_calls, "the module's call", 5)
            break
        except TimeoutError:
            if attempt == 2:
                raise
    assert player.installation.module_calls() == [call]


@pytest.mark.parametrize("size, depth, message", [
    ((640, 480), 24, "Wrong desktop resolution!\n800x600 is minimum"),
    ((1024, 768), 8, "Wrong Desktop color depth!\n16bit is minimum"),
], ids=["too small", "too few colours"])
def test_desktops_that_are_refused(make_robot, size, depth, message):
    player = make_robot(size=size, depth=depth).start(menu=False)
    window = wait_until(lambda: next((w for w, _ in player.desktop.windows()), None), "the message box")
    player.desktop.focus(window)
    player.desktop.key("Return")
    assert player.wait_for_end() == 0
    assert player.installation.log_messages() == [message]


def test_without_a_display(make_robot):
    player = make_robot()
    player.desktop.name = ":4711"
    player.start(menu=False)
    assert player.wait_for_end() == 0
    assert player.errors() and len(player.installation.log_messages()) == 1


@pytest.mark.parametrize("argument, clipboard, address", [
    ("/N", "192.168.0.10", "192.168.0.10"),
    ("/NET", "1a.2b.3c.4d", "1a.2b.3c.4d"),
    ("/N", "192.168.100.1000", "N/A"),
    ("/N", "10.0.1", "N/A"),
    ("/n", "192.168.0.10", "N/A"),
    ("/N", None, "N/A"),
])
def test_address_from_the_clipboard(make_robot, argument, clipboard, address):
    player = make_robot()
    player.installation.set("VELDOR_BATTLE", "battle_hq_ip", "from last time")
    if clipboard:
        subprocess.run(["xclip", "-display", player.desktop.name, "-selection", "clipboard"], input=clipboard.encode(), check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    player.start(argument)
    player.key("x", "Alt_L")
    assert player.wait_for_end() == 0
    assert player.installation.setting("VELDOR_BATTLE", "battle_hq_ip") == address


def test_two_arguments_skip_the_films(make_robot):
    player = make_robot(films=True)
    player.installation.remove("images/Zentrik.avi")
    player.start("a", "b")
    assert not any("Zentrik" in line for line in player.installation.log_messages())


@pytest.mark.parametrize("arguments, films, picture", [(("a", "b"), True, 1), ((), False, 2)], ids=["films on", "films off"])
def test_the_first_background(make_robot, arguments, films, picture):
    player = make_robot(films=films)
    player.installation.remove(ENGLISH + "e_factory.tw")
    player.start(*arguments, menu=False)
    wait_until(lambda: menu.alert_length(player), "the alert over the background")
    assert player.shows(f"images/morv{picture}.pcx", share=0.9)


def broken(name, content=None):
    """Takes a file away, or puts another content in its place."""
    return lambda installation: installation.remove(name) if content is None else installation.write(name, content)


@pytest.mark.parametrize("damage, alerts, logged", [
    (broken("fonts/cour.ttf"), [], ["Error in module:VELDOR_VCC while loading font:fonts/cour.ttf"]),
    (broken("fonts/arial.ttf", "no font"), [], ["Error in module:VELDOR_VCC while loading font:fonts/arial.ttf"]),
    (broken(ENGLISH + "e_vcc.slt"), *SCREENS_FAIL),
    (broken(ENGLISH + "e_mess.slt", b"\x05\x00"), *SCREENS_FAIL),
    (broken(ENGLISH + "e_factory.tw"), ["Error loading transparent Text-Windows!"], ["Error loading transparent Text-Windows"]),
    (broken("tools/vcc.buf"), [BUFFERS_FAIL[0]], [BUFFERS_FAIL[1]]),
    (broken("images/widgets.pcx", b"\x0a\x05"), ["error reading pic_file[6]:=images/widgets.pcx", BUFFERS_FAIL[0]],
     ["error reading pic_file[6]:=images/widgets.pcx", BUFFERS_FAIL[1]]),
], ids=["font", "not a font", "menu's slots", "short slots", "text windows", "buffer list", "picture"])
def test_what_it_cannot_do_without(make_robot, damage, alerts, logged):
    player = make_robot()
    damage(player.installation)
    player.start(menu=False)
    for text in alerts:
        menu.confirm_alert(player, text)
    assert player.wait_for_end() == 0
    messages = player.installation.log_messages()
    assert [line for line in messages if line in logged] == logged, messages
    assert player.errors().count("Shutting down Allegro") == 0


@pytest.mark.parametrize("damage, alerts, logged", [
    (broken("images/morv3.pcx"), [], "Error initializing display background nr: 3"),
    (broken("tools/vcc.snd", ""), [], "Sound initialization failed!"),
    (broken("images/pointer.pcx"), ["VCC: Error loading mousepointer!"], "VCC: Error loading mousepointer!"),
], ids=["background", "sound set-up", "pointer"])
def test_what_it_can_do_without(make_robot, damage, alerts, logged):
    player = make_robot()
    damage(player.installation)
    player.start(menu=False)
    for text in alerts:
        menu.confirm_alert(player, text)
    player.wait_for_menu()
    assert any(logged in line for line in player.installation.log_messages())


@pytest.mark.parametrize("module", [None, b"not a library", "recording.so"], ids=["missing", "broken", "without its entry"])
def test_a_module_that_cannot_be_entered(robot, module):
    installation = robot.installation
    if module == "recording.so":
        subprocess.run(["cc", "-shared", "-fPIC", "-x", "c", "-o", installation.path("empty.so"), "/dev/null"], check=True)
        module = installation.path("empty.so").read_bytes()
    installation.remove("hq.so") if module is None else installation.write("hq.so", module)
    menu.choose(robot, "HQ")
    menu.confirm_alert(robot, "CC: Error loading module!")
    robot.wait_for_menu()
    assert any("hq" in line for line in installation.log_messages())
    menu.wait_for_look(robot, "Battle", menu.REST)
    menu.choose(robot, "Battle")
    wait_until(installation.module_calls, "a call of the next module")
