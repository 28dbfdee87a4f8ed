"""The program for Windows beside the one for Linux, and what only it has: its tool, its icon, its installer."""

import filecmp
import subprocess

import numpy as np
import pytest

from support import menu
from support.desktop import wait_until
from support.installation import CONFIG, PROJECT, Installation
from support.robot import Robot
from support.system import Linux, Wine

WINE = Wine()


def pictures(system, german):
    """Menu and options screen, with the pointer in the same place."""
    copy = Installation(system)
    if german:
        copy.write("tools/language.ini", "2\n")
    with Robot(copy) as robot:
        robot.start()
        for options in (False, True):
            if options:
                menu.choose(robot, "Options")
                wait_until(lambda: robot.shows("images/options.pcx", share=0.4), "the options screen")
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
        robot = make_robot(window_manager=True)
        robot.installation.remove(CONFIG)
        robot.start("no", "films", menu=False)
        wait_until(lambda: robot.desktop.find_window("Veldor CC"), "the window", 30)
        wait_until(lambda: robot.key("x", "Alt_L") or not robot.running(), "the end", 30, step_s=0.5)
    finally:
        WINE.end()
        WINE.run("reg", "add", *desktop, "/d", "Default", "/f", **quiet)
    assert robot.wait_for_end() == 0 and robot.installation.log_messages() == []
    assert robot.installation.settings()["VELDOR_GRAPHICS"]["screen_mode_range"] == "2"


def test_the_installer_gives_every_player_a_folder(make_robot):
    """Installed, played, removed: what is the player's stays."""
    [setup] = (PROJECT / "out/package").glob("*_setup.exe")
    drive = WINE.prefix / "drive_c"
    system = drive / "Program Files/Veldor"
    assert WINE.run(setup, "/S").returncode == 0
    assert (system / "vcc.exe").exists()
    assert list(drive.rglob("Start Menu/Programs/Veldor/Veldor.lnk")), "nothing in the start menu"

    robot = make_robot()
    robot.start(menu=False, program=system / "veldor.exe")
    robot.wait_for_menu(60)
    robot.key("x", "Alt_L")
    assert robot.wait_for_end() == 0
    [own] = drive.rglob("AppData/Roaming/Veldor")
    assert (own / "data/configs/vcc.cfg").exists() and (own / "data/logfiles").is_dir()
    WINE.run(system / "uninstall.exe", "/S", "_?=C:\\Program Files\\Veldor")
    assert not (system / "vcc.exe").exists() and (own / "data/configs/vcc.cfg").exists()
