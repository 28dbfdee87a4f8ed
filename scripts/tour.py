#!/usr/bin/python3
"""A guided tour of the control centre on a virtual display, in English and in German (from 41 on): films, menu, modules, options, help; pictures
of every stop.

usage: tour.py INSTALLATION OUTPUT_FOLDER

The installation itself is not touched: the tour plays a copy.
"""
import os
import shutil
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests"))

from PIL import Image  # noqa: E402

from support.installation import Installation  # noqa: E402
from support.robot import Robot  # noqa: E402

MENU = {"hq": (140, 207), "factory": (140, 257), "battle": (140, 307), "options": (140, 357), "leave": (140, 407)}
SELECTORS = {"hq": 105, "factory": 133, "battle": 161, "centre": 189}
ROWS = {"effects": 105, "music": 133, "theme": 161, "screen-mode": 231, "resolution": 259, "depth": 287, "keyboard": 315,
        "animations": 371, "sprite-speed": 399, "message-delay": 427, "message-detail": 455}
NEXT_PAGE, CLOSE_HELP = (494, 493), (618, 493)


class Tour:
    def __init__(self, robot, folder):
        self.robot, self.folder, self.count = robot, folder, 0

    def stop(self, name, text):
        """One stop: a picture, and a line that says what it shows."""
        self.count += 1
        path = self.folder / f"{self.count:02d}-{name}.png"
        Image.fromarray(self.robot.picture()).save(path)
        print(f"tour: {path}  {text}", flush=True)

    def settled(self, name, text):
        self.robot.standing_picture()
        self.stop(name, text)

    def films(self):
        for name, pause_s, text in (("film-studio", 5, "the studio's film"), ("film-intro", 11, "the game's intro")):
            time.sleep(pause_s)
            self.stop(name, text)
        self.robot.key("space")
        self.robot.wait_for_menu()

    def menu(self):
        self.settled("menu", "the main menu")
        for name, place in MENU.items():
            self.robot.move(*place)
            self.settled(f"menu-{name}", f"the pointer over {name}")

    def modules(self):
        for name in ("hq", "factory", "battle"):
            before = self.robot.standing_picture()
            self.robot.click(*MENU[name])
            self.robot.wait_for_change(before)
            time.sleep(1.5)  # the pass is torn down, the library loaded
            self.settled(f"module-{name}", f"the {name} module")
            self.robot.key("Escape")
            self.robot.wait_for_menu()

    def options(self):
        before = self.robot.standing_picture()
        self.robot.click(*MENU["options"])
        self.robot.wait_for_change(before)
        for name, y in SELECTORS.items():
            self.robot.click(60, y)
            self.settled(f"options-module-{name}", f"sound settings of {name}")
        for name, y in ROWS.items():
            place = (280, y)
            self.robot.move(*place)
            if name == "resolution":  # shown only when clicked
                self.robot.click(*place)
            self.settled(f"options-{name}", f"the option row {name}")

    def help(self):
        self.robot.move(280, ROWS["theme"])
        before = self.robot.standing_picture()
        self.robot.key("F1")
        self.robot.wait_for_change(before)
        self.settled("help", "a help page")
        self.robot.click(*NEXT_PAGE)
        self.settled("help-next", "its next page, if it has one")
        self.robot.click(*CLOSE_HELP)
        self.robot.standing_picture()
        self.robot.key("Escape")
        self.robot.wait_for_menu()

    def leave(self):
        self.robot.click(*MENU["leave"])
        status = self.robot.wait_for_end()
        print(f"tour: the program has left with status {status}")
        return status


def play(installation, folder, in_german):
    with Robot(installation, films=not in_german) as robot:
        tour = Tour(robot, folder)
        tour.count = 40 if in_german else 0
        robot.start(menu=in_german)
        if not in_german:
            tour.films()
        for part in (tour.menu, tour.modules, tour.options, tour.help):
            part()
        return tour.leave()


def main():
    source, folder = Path(sys.argv[1]), Path(sys.argv[2])
    os.environ["VELDOR_INSTALLATION"] = str(source.resolve())
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    worst = 0
    for in_german in (False, True):
        installation = Installation()
        try:
            if in_german:
                installation.write("tools/language.ini", "2 Deutsch\n")
            worst = play(installation, folder, in_german) or worst
        finally:
            installation.delete()
    print(f"tour: {len(list(folder.glob('*.png')))} pictures in {folder}")
    return worst


if __name__ == "__main__":
    sys.exit(main())
