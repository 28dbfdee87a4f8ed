"""How the program starts: on which desktop, with which settings and arguments, and what it says when something is missing."""

import os
import signal
import subprocess

import pytest

from support import menu
from support.desktop import wait_until
from support.installation import CONFIG
from support.robot import MENU_PICTURE

ENGLISH = "tools/language/english/"
SCREENS_FAIL = (["CC: Error initializing Graphics"], ["Error initializing Graphics", "CC: Error initializing Graphics"])
BUFFERS_FAIL = "CC: Error loading Graphicbuffers!", "Error loading Graphicbuffers"


def test_first_start_writes_what_it_found_and_two_arguments_skip_the_films(make_robot):
    player = make_robot(films=True)
    player.installation.remove(CONFIG)
    player.installation.remove("images/Zentrik.avi")
    player.start("x", "y")
    player.key("x", "Alt_L")
    assert player.wait_for_end() == 0
    graphics = player.installation.settings()["VELDOR_GRAPHICS"]
    assert {key: graphics[key] for key in ("bitmap_depth", "screen_mode_range", "screen_mode")} == {
        "bitmap_depth": "0", "screen_mode_range": "3", "screen_mode": "0"}
    assert player.installation.setting("VELDOR_BATTLE", "battle_hq_ip") == "N/A"
    assert not any("Zentrik" in line for line in player.installation.log_messages())


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
    menu.enter(player.start(), "Factory")
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


NO_SETUP = "Error opening Sound-Init-File => tools/vcc.snd"
NO_STREAM = ["Error (1) detecting wav stream", "Error loading audio stream file: sounds/theme02.wav (theme:2)"]
NO_POINTER = "VCC: Error loading mousepointer!"


@pytest.mark.parametrize("damage, ends, alerts, logged", [
    (broken("fonts/cour.ttf"), True, [], ["Error in module:VELDOR_VCC while loading font:fonts/cour.ttf"]),
    (broken("fonts/arial.ttf", "no font"), True, [], ["Error in module:VELDOR_VCC while loading font:fonts/arial.ttf"]),
    (broken(ENGLISH + "e_vcc.slt"), True, *SCREENS_FAIL),
    (broken(ENGLISH + "e_mess.slt", b"\x05\x00"), True, *SCREENS_FAIL),
    (broken(ENGLISH + "e_factory.tw"), True, ["Error loading transparent Text-Windows!"], ["Error loading transparent Text-Windows"]),
    (broken("tools/vcc.buf"), True, [BUFFERS_FAIL[0]], [BUFFERS_FAIL[1]]),
    (broken("images/widgets.pcx", b"\x0a\x05"), True, ["error reading pic_file[6]:=images/widgets.pcx", BUFFERS_FAIL[0]],
     ["error reading pic_file[6]:=images/widgets.pcx", BUFFERS_FAIL[1]]),
    (broken("images/morv3.pcx"), False, [], ["Error initializing display background nr: 3"]),
    (broken("images/pointer.pcx"), False, [NO_POINTER], [NO_POINTER]),
    (broken("tools/vcc.snd"), False, [NO_SETUP], [NO_SETUP, "Sound initialization failed!"]),
    (broken("tools/vcc.snd", ""), False, [], ["Sound initialization failed!"]),
    (broken("alsa.conf", b""), False, ["Error initialising sound"], ["Error initialising sound: "]),
    (broken("sounds/sfx_click.wav"), False, [], ["Error loading sound nr:2"]),
    (broken("sounds/sfx_click.wav", b"RIFF but no more"), False, [], ["Error loading sound nr:2"]),
    (broken("sounds/theme03.wav"), False, [], ["Error loading music theme nr:193"]),
    (broken("sounds/theme02.wav", b"RIFF but no more"), False, NO_STREAM, NO_STREAM),
], ids=["font", "not a font", "menu's slots", "short slots", "text windows", "buffer list", "picture", "background", "pointer", "no sound set-up",
        "empty sound set-up", "sound card", "no effect", "broken effect", "no theme", "broken theme"])
def test_files_that_fail(make_robot, damage, ends, alerts, logged):
    player = make_robot()
    damage(player.installation)
    player.start(menu=False)
    for text in alerts:
        menu.confirm_alert(player, text)
    if ends:
        assert player.wait_for_end() == 0 and "Shutting down Allegro" not in player.errors()
    else:
        player.wait_for_menu()
    messages = player.installation.log_messages()
    following = iter(messages)
    assert all(any(text in line for line in following) for text in logged), messages


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
    menu.enter(robot, "Battle")


@pytest.mark.parametrize("place", ["films", "menu", "module"])
def test_a_signal_to_end_leaves_as_the_close_button_does(make_robot, place):
    player = make_robot(films=place == "films").start(menu=place != "films")
    if place == "films":
        player.window()
    if place == "module":
        menu.choose(player, "Factory")
        wait_until(lambda: not player.shows(MENU_PICTURE), "the module's screen")
    os.kill(player.pid, signal.SIGTERM)
    assert player.wait_for_end() == 0
    assert "Shutting down Allegro" not in player.errors()
