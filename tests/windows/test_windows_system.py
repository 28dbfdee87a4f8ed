"""The program for Windows beside the one for Linux, and what only it has: its tool, its icon, its installer."""

import filecmp
import getpass
import re
import shutil
import subprocess

import numpy as np
import pytest

from support import menu
from support.desktop import wait_until
from support.installation import CONFIG, PROJECT, Installation, built_installation
from support.robot import Robot
from support.system import NO_SOUND, Linux, Wine

pytestmark = pytest.mark.windows

WINE = Wine()
SYSTEM_LIBRARIES = set("ADVAPI32 BCRYPT COMDLG32 DDRAW DINPUT DSOUND GDI32 KERNEL32 MSVCRT OLE32 SHELL32 USER32 WINMM"
                       .split())


def headers(file):
    return subprocess.run(["x86_64-w64-mingw32-objdump", "-p", file], capture_output=True, text=True, check=True).stdout


def test_the_unit_tests_pass(monkeypatch):
    build = built_installation(WINE).parent
    monkeypatch.setenv("WINEPATH", "Z:" + str(build.parent / "windows-libraries/prefix/bin").replace("/", "\\"))
    programs = sorted(build.glob("tests/unit/unit_*.exe"))
    assert len(programs) > 10
    for program in programs:
        done = WINE.run(program, "--gtest_brief=1", cwd=program.parent, capture_output=True, text=True)
        assert done.returncode == 0 and "[  PASSED  ]" in done.stdout, f"{program.stem}: {done.stdout}"


def test_programs_and_libraries_ask_for_one_another_and_the_systems():
    folder = built_installation(WINE)
    for file in [*folder.glob("*.exe"), *folder.glob("*.dll")]:
        for wanted in re.findall(r"DLL Name: (\S+)", headers(file)):
            assert (folder / wanted).exists() or wanted.split(".")[0].upper() in SYSTEM_LIBRARIES, (file.name, wanted)


def pictures(system, german):
    """Menu and options screen, with the pointer in the same place."""
    copy = Installation(system)
    if german:
        copy.write("tools/language.ini", "2\n")
    with Robot(copy) as robot:
        robot.start()
        for options in (False, True):
            if options:
                menu.open_options(robot)
            robot.move(700, 50)
            yield robot.standing_picture(still_s=0.5)
    copy.delete()


@pytest.mark.parametrize("german", [False, True], ids=["English", "German"])
def test_menu_and_options_are_the_same_pixel_by_pixel(german):
    for name, here, there in zip(("menu", "options"), pictures(WINE, german), pictures(Linux(), german)):
        assert np.array_equal(here, there), f"{(here != there).any(axis=2).sum()} pixels of the {name} differ"


def test_the_tool_packs_the_same_bytes_and_finds_no_fault(installation):
    def kit(*arguments):
        return WINE.run(installation.path("vcckit.exe"), *arguments, stdout=subprocess.DEVNULL).returncode

    packed = sorted(file.relative_to(installation.folder) for file in installation.folder.rglob("*.[st][lg][tl]"))
    assert len(packed) == 16
    for file in packed:
        installation.remove(file)
    sources = sorted((PROJECT / "game/screens").glob("*.toml"))
    assert kit("pack", *sources, "-o", installation.folder) == 0
    assert kit("check", installation.folder) == 0
    linux = PROJECT / Linux.installation
    assert all(filecmp.cmp(linux / file, installation.path(file), shallow=False) for file in packed)


def test_a_desktop_without_the_full_screen_mode_gets_its_window(make_robot):
    desktop = r"HKCU\Software\Wine\Explorer", "/v", "Desktop"
    quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    WINE.run("reg", "delete", *desktop, "/f", **quiet)
    try:
        robot = make_robot(window_manager="openbox")
        robot.installation.remove(CONFIG)
        robot.start("no", "films", menu=False)
        wait_until(lambda: robot.desktop.find_window("Veldor CC"), "the window", 30)
        wait_until(lambda: robot.key("x", "Alt_L") or not robot.running(), "the end", 30, step_s=0.5)
    finally:
        WINE.end()
        WINE.run("reg", "add", *desktop, "/d", "Default", "/f", **quiet)
    assert robot.wait_for_end() == 0 and robot.installation.log_messages() == []
    assert robot.installation.settings()["VELDOR_GRAPHICS"]["screen_mode_range"] == "2"


def version_texts(program):
    """Names and values of the version resource, in UTF-16."""
    data = program.read_bytes().decode("utf-16-le", "replace")
    names = "FileDescription", "FileVersion", "InternalName", "OriginalFilename", "ProductName", "ProductVersion"
    after = {name: data[data.index(name) + len(name):].lstrip("\0") for name in names}
    return {name: text[:text.index("\0")] for name, text in after.items()}


@pytest.mark.parametrize("name", ["vcc", "vcckit", "veldor"])
def test_programs_say_what_they_are(name):
    program = built_installation(WINE) / f"{name}.exe"
    texts = version_texts(program)
    version = WINE.run(built_installation(WINE) / "vcckit.exe", "--version", capture_output=True, text=True).stdout
    assert texts["FileVersion"] == texts["ProductVersion"] == version.split()[1]
    assert (texts["ProductName"], texts["OriginalFilename"]) == ("Veldor", f"{name}.exe")
    assert ("Windows CUI" if name == "vcckit" else "Windows GUI") in headers(program)
    assert b"\x89PNG" in program.read_bytes(), "no icon of 256 pixels"


@pytest.mark.parametrize("by_console", [False, True], ids=["the end of the session", "Ctrl+C in its console"])
def test_what_leaves_as_the_close_button_does(make_robot, by_console):
    robot = make_robot()
    robot.installation.set("VELDOR_BATTLE", "battle_hq_ip", "from last time")
    if by_console:
        console, source = robot.installation.path("ctrl_c.exe"), PROJECT / "tests/support/ctrl_c.c"
        subprocess.run(["x86_64-w64-mingw32-gcc", "-O1", "-Wall", "-Wextra", "-o", console, source], check=True)
        robot.start(program=console)
        robot.installation.write("press", "")
        assert robot.wait_for_end(40) == 0
    else:
        robot.start("/N")
        WINE.run("wineboot", "--end-session", display=robot.desktop.name)
        robot.wait_for_end()  # Wine kills what has answered
    assert robot.installation.settings()["VELDOR_BATTLE"]["battle_hq_ip"] == "N/A"
    assert robot.installation.log_messages() == [] and "Shutting down Allegro" not in robot.errors()


def test_without_the_film_library_the_menu_comes(make_robot):
    robot = make_robot(films=True)
    [library] = robot.installation.folder.glob("avcodec-*.dll")
    robot.installation.remove(library.name)
    robot.start(menu=False)
    robot.wait_for_menu(60)
    messages = robot.installation.log_messages()
    assert len(messages) == 2 and all(message.startswith("Error ") for message in messages), messages
    assert "Zentrik.avi" in messages[0] and "VELDOR_Intro.avi" in messages[1]


def test_the_installer_gives_every_player_a_folder(make_robot):
    """Installed, played, removed: the player's files stay."""
    [setup] = (PROJECT / "out/package").glob("*_setup.exe")
    drive = WINE.prefix / "drive_c"
    system, own = drive / "Program Files/Veldor", drive / "users" / getpass.getuser() / "AppData/Roaming/Veldor"
    shutil.rmtree(own, ignore_errors=True)
    assert WINE.run(setup, "/S").returncode == 0
    assert (system / "vcc.exe").exists()
    [link] = drive.rglob("Start Menu/Programs/Veldor/Veldor.lnk")

    robot = make_robot()
    silent = WINE.prefix / "alsa.conf"
    silent.write_text(NO_SOUND)
    robot.start("no", "films", program=system / "veldor.exe", environment={"ALSA_CONFIG_PATH": str(silent)})
    assert robot.leave() == 0
    copied, linked = {path.name for path in own.iterdir() if not path.is_symlink()}, own / "images"
    assert copied >= {"vcc.exe", "hq.dll", "alleg44.dll", "data", "tools", "installed.txt"}
    assert not copied & {"veldor.exe", "uninstall.exe"}
    assert (linked / "menu.pcx").exists() and (own / "data/configs/vcc.cfg").exists()
    assert (own / "tools/language.ini").read_text().startswith("1")

    (own / "data/configs/vcc.cfg").write_text("[VELDOR_VCC]\n")  # of the player
    (system / "my notes.txt").write_text("mine")
    assert WINE.run(system / "uninstall.exe", "/S").returncode == 0
    # It goes on as a copy of itself, and takes the start menu away last.
    wait_until(lambda: not link.parent.exists(), "the end of the uninstaller", 30)
    assert [path.name for path in system.iterdir()] == ["my notes.txt"]
    assert (own / "data/configs/vcc.cfg").read_text() == "[VELDOR_VCC]\n"
