"""How the program starts: desktops, settings, arguments, and messages about missing files."""

import os
import signal
import subprocess
import time

import pytest

from support import menu
from support.desktop import wait_until
from support.installation import CONFIG, PROJECT, VCCKIT
from support.robot import MENU_PICTURE


@pytest.mark.windows
def test_first_start_writes_what_it_found_and_two_arguments_skip_the_films(make_robot):
    player = make_robot(films=True)
    player.installation.remove(CONFIG)
    player.installation.remove("images/Zentrik.avi")
    player.start("x", "y")
    assert player.leave() == 0
    found = {"bitmap_depth": "0", "screen_mode_range": "3", "screen_mode": "0"}
    settings = player.installation.settings()
    assert settings["VELDOR_GRAPHICS"].items() >= found.items()
    assert settings["VELDOR_BATTLE"]["battle_hq_ip"] == "N/A"
    assert not any("Zentrik" in line for line in player.installation.log_messages())


def test_a_desktop_that_is_too_small(make_robot):
    player = make_robot(size=(640, 480)).start(menu=False)
    window = wait_until(lambda: next((w for w, *_ in player.desktop.windows()), None), "the message box")
    player.desktop.focus(window)
    player.desktop.key("Return")
    assert player.wait_for_end() == 0
    assert player.installation.log_messages() == ["Wrong desktop resolution!\n800x600 is minimum"]
    box = player.installation.path("bin/kdialog")  # goes before the program's own
    player.installation.write("bin/kdialog", '#!/bin/sh\n/bin/echo "$@" > shown\nexit 1\n')
    box.chmod(0o755)
    player.start(menu=False, environment={"PATH": str(box.parent)})
    assert player.wait_for_end() == 0
    assert player.installation.read("shown") == "--title=Veldor --error Wrong desktop resolution!\n800x600 is minimum\n"


def test_without_a_display(make_robot):
    player = make_robot()
    player.desktop.name = ":4711"
    player.start(menu=False)
    assert player.wait_for_end() == 0
    assert player.errors() and len(player.installation.log_messages()) == 1


@pytest.mark.windows
def test_address_from_the_clipboard(make_robot):
    player = make_robot()
    player.installation.set("VELDOR_BATTLE", "battle_hq_ip", "from last time")
    for argument, clipboard, address in ("/N", None, "N/A"), ("/NET", b"192.168.0.10", "192.168.0.10"):
        if clipboard:
            subprocess.run(["xclip", "-display", player.desktop.name, "-selection", "clipboard"], input=clipboard,
                           check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        player.start(argument)
        assert player.leave() == 0
        assert player.installation.settings()["VELDOR_BATTLE"]["battle_hq_ip"] == address


NO_SCREENS, NO_BUFFERS = "Error initializing Graphics", "Error loading Graphicbuffers"
NO_PICTURE, NO_WINDOWS = "error reading pic_file[6]:=images/widgets.pcx", "Error loading transparent Text-Windows"
NO_POINTER, NO_SETUP = "VCC: Error loading mousepointer!", "Error opening Sound-Init-File => tools/vcc.snd"
NO_STREAM = ["Error (1) detecting wav stream", "Error loading audio stream file: sounds/theme02.wav (theme:2)"]


# files and what they contain (None: missing; a number: cut there), whether the program ends, what it says and logs
FAULTY_FILES = [
    ({"fonts/cour.ttf": None}, True, [], ["Error in module:VELDOR_VCC while loading font:fonts/cour.ttf"]),
    ({"tools/language/english/e_mess.slt": b"\xff\xff\xff\xff"}, True, [f"CC: {NO_SCREENS}"],
     ["e_mess.slt: -1 records announced, 0 to 200 are possible", NO_SCREENS, f"CC: {NO_SCREENS}"]),
    ({"tools/language/english/e_factory.tw": None}, True, [f"{NO_WINDOWS}!"], [NO_WINDOWS]),
    ({"tools/vcc.buf": None}, True, [f"CC: {NO_BUFFERS}!"], [NO_BUFFERS]),
    ({"images/widgets.pcx": b"\x0a\x05"}, True, [NO_PICTURE, f"CC: {NO_BUFFERS}!"], [NO_PICTURE, NO_BUFFERS]),
    ({"tools/vcc.snd": None}, False, [NO_SETUP], [NO_SETUP, "Sound initialization failed!"]),
    ({"images/morv3.pcx": None, "sounds/theme02.wav": b"RIFF but no more"}, False, NO_STREAM,
     ["Error initializing display background nr: 3", *NO_STREAM]),
]
FAULTY_FILES_ON_BOTH_SYSTEMS = [
    ({"tools/language/english/e_vcc.slt": None}, True, [f"CC: {NO_SCREENS}"], [NO_SCREENS, f"CC: {NO_SCREENS}"]),
    ({"images/options.pcx": 20000, "images/pointer.pcx": None, "alsa.conf": b""}, False,
     [NO_POINTER, "Error initialising sound"],
     [NO_POINTER, "Error initialising sound: ", "Picture is incomplete: images/options.pcx"]),
]


@pytest.mark.parametrize("files, ends, alerts, logged", [
    *FAULTY_FILES, *(pytest.param(*row, marks=pytest.mark.windows) for row in FAULTY_FILES_ON_BOTH_SYSTEMS)])
def test_files_that_fail(make_robot, installation, files, ends, alerts, logged):
    for file, content in files.items():
        if isinstance(content, int):
            content = installation.path(file).read_bytes()[:content]
        installation.remove(file) if content is None else installation.write(file, content)
    player = make_robot().start(menu=False)
    for text in alerts:
        menu.confirm_alert(player, text)
    if ends:
        assert player.wait_for_end() == 0 and "Shutting down Allegro" not in player.errors()
    else:
        player.wait_for_menu()
    messages = installation.log_messages()
    following = iter(messages)
    assert all(any(text in line for line in following) for text in logged), messages


@pytest.mark.windows
def test_modules_that_cannot_be_entered(robot):
    installation, ending = robot.installation, robot.system.library
    contents = {"HQ": None, "Factory": b"not a library", "Battle": b""}  # nothing, damaged, without its entry
    for module, content in [*contents.items(), *([("HQ", "pipe")] if robot.system.name == "linux" else [])]:
        library = module.lower() + ending
        installation.remove(library)
        if content == "pipe":  # which must not be waited for
            os.mkfifo(installation.path(library))
        elif content == b"":
            subprocess.run([*installation.system.compiler, "-x", "c", "-o", installation.path(library), "/dev/null"],
                           check=True)
        elif content:
            installation.write(library, content)
        logged = len(installation.log_messages())
        menu.choose(robot, module)
        menu.confirm_alert(robot, "CC: Error loading module!")
        robot.wait_for_menu()
        assert wait_until(lambda: installation.log_messages()[logged:], "the log")[0].startswith(
            f"Error loading module {library}: ")
    installation.remove("hq" + ending)
    installation.use_modules("recording")
    menu.enter(robot, "HQ")


@pytest.mark.parametrize("place", ["films", "menu", "module", "alert"])
def test_a_signal_to_end_leaves_as_the_close_button_does(make_robot, installation, place):
    if place == "alert":  # the first of two
        installation.write("images/widgets.pcx", b"\x0a\x05")
    player = make_robot(modules=None, films=place == "films").start(menu=place in ("menu", "module"))
    if place == "alert":
        wait_until(lambda: menu.alert_length(player) == len(NO_PICTURE), "the first alert", 10)
    if place == "films":
        player.window()
    if place == "module":
        menu.choose(player, "Factory")
        wait_until(lambda: not player.shows(MENU_PICTURE), "the module's screen")
    os.kill(player.pid, signal.SIGTERM)
    assert player.wait_for_end() == 0
    assert "Shutting down Allegro" not in player.errors()


def test_a_second_signal_ends_a_module_that_does_not_listen(robot):
    robot.installation.hold_modules()
    menu.enter(robot, "HQ")
    os.kill(robot.pid, signal.SIGTERM)
    time.sleep(0.3)
    assert robot.running()
    os.kill(robot.pid, signal.SIGTERM)
    assert robot.wait_for_end() == -signal.SIGTERM


@pytest.mark.windows
def test_an_exported_zip_is_played(make_robot, installation, tmp_path, monkeypatch):
    short = installation.path("sounds/sfx_hover.wav").read_bytes()
    for large in *installation.folder.glob("sounds/theme*"), *installation.folder.glob("images/*.avi"):
        installation.write(large, short)
    source = [installation.folder]
    if installation.system.name == "windows":
        source = [PROJECT / "build/release/veldor", "--windows", installation.folder]
    subprocess.run([VCCKIT, "export", *source, "-o", "storm fleet.zip"], cwd=tmp_path, check=True)
    subprocess.run(["unzip", "-q", "storm fleet.zip"], cwd=tmp_path, check=True)
    monkeypatch.setattr(installation, "folder", tmp_path / "storm fleet")
    player = make_robot().start()
    assert player.installation.log_messages() == []
