"""A player of the control centre: starts the real program on a desktop of its own, points, clicks, types and looks.

Coordinates are those of the program's picture of 800 x 600, in a window and in full screen, at any size.
"""

import os
import subprocess
import time
from pathlib import Path

import numpy as np
from PIL import Image

from support.desktop import Desktop, stop, wait_until
from support.installation import PROJECT, Installation, image
from support.system import NO_SOUND, SYSTEM

FULL_SCREEN = "_NET_WM_STATE_FULLSCREEN"
TITLE = SYSTEM.window_titles[0]
PICTURES = PROJECT / "out/e2e"
MENU_PICTURE = "images/menu.pcx"
# After the program has placed the pointer (at the start of a pass, or when a key moves the focus) the library takes
# motion as relative for a while: a move in that time ends elsewhere.
POINTER_PLACED_S = 0.5
LOOK_S, LOOK_TURNS = 0.03, 2
SLOWNESS = SYSTEM.slowness


class Robot:
    def __init__(self, installation=None, window_manager=None, films=False, scale=0, **desktop):
        """`scale` is the setting display_scale, None leaves the installation's own; `desktop` are its options."""
        self.installation = installation or Installation()
        self.system = self.installation.system
        self.desktop = Desktop(window_manager=window_manager, **desktop)
        self.films, self.scale = films, scale
        self._pointer_is_free_at = 0
        if scale is not None:
            self.installation.set("VELDOR_GRAPHICS", "display_scale", scale)
        self._managed = window_manager
        self._program = self._window = None
        self._files_kept = installation is not None
        self.wheel = self.desktop.wheel

    def __enter__(self):
        self.desktop.__enter__()
        return self

    def __exit__(self, *_):
        stop(self._program, timeout_s=0.5)  # a module does not listen
        self.system.end()
        self.desktop.__exit__()
        if not self._files_kept:
            self.installation.delete()

    # the program

    def start(self, *arguments, menu=True, environment=None, program=None):
        """Starts the program (the installation's unless another is named); waits for the menu unless told otherwise.
        `environment` may replace the silent card."""
        if not self.films:
            self.installation.set("VELDOR_GENERAL", "intro_at_all", "no")
        if not self.installation.path("alsa.conf").exists():
            self.installation.write("alsa.conf", NO_SOUND)
        silent = {"ALSA_CONFIG_PATH": "alsa.conf"}  # a list of names: the folder's may have a blank in it
        self.system.end()  # what runs without this desktop
        with open(self.installation.path("stderr.txt"), "wb") as errors:
            self._program = subprocess.Popen(
                self.system.command(arguments, program), cwd=self.installation.folder, stdout=errors,
                stderr=subprocess.STDOUT,
                env=os.environ | self.system.environment() | {"DISPLAY": self.desktop.name} | silent |
                (environment or {}))
        self._window = None
        if menu:
            self.wait_for_menu()
            self._window = None  # may be the manager's frame, found before the window in it was there
        return self

    @property
    def pid(self):
        return self._program.pid

    def running(self):
        return self._program is not None and self._program.poll() is None

    def wait_for_end(self, timeout_s=10):
        """The exit status (negative: killed by that signal)."""
        return self._program.wait(timeout=timeout_s * SLOWNESS)

    def leave(self):
        """By Alt+X; the exit status."""
        self.key("x", "Alt_L")
        return self.wait_for_end()

    def close(self):
        """By the window's close button; the exit status."""
        if self.system.has_own_desktop:
            self.click(*self.system.close_button)
        else:
            self.desktop.close_window(self.window())
        return self.wait_for_end()

    def errors(self):
        return self.installation.read("stderr.txt")

    # its window

    def window(self):
        """The program's window; a mode switch makes a new one."""
        if self._window is None:
            self._window = wait_until(self.find_window, "the program's window", 20 * SLOWNESS)
            if not self._managed:
                self.desktop.focus(self._window)
        return self._window

    def find_window(self):
        """The window as it is now, if there is one."""
        if not self.running():
            raise RuntimeError(f"the program ended with {self._program.poll()}: {self.errors()}")
        titles = self.system.window_titles
        named = next(filter(None, map(self.desktop.find_window, titles)), None)
        if named or self.scale != 0:
            return named  # the others are parts of the window manager's frame
        return next((window for window, _, width in reversed(list(self.desktop.windows())) if width >= 800), None)

    def fills_the_desktop(self):
        """Whether the program is in full screen. A maximised window may be as large."""
        if self.system.has_own_desktop:  # whose size is that of the mode
            return self.desktop.find_window(TITLE).get_geometry().width == 800
        def is_full(window, name):
            geometry = window.get_geometry()
            full = self.desktop.has_state(window, FULL_SCREEN) if name else window.get_attributes().override_redirect
            return full and (geometry.width, geometry.height) == self.desktop.size
        return any(is_full(window, name) for window, name, _ in self.desktop.windows())

    def forget_window(self, placed_s=0.3):
        """After a mode switch."""
        time.sleep(placed_s)
        self._window = None

    def place(self, window=None):
        """The picture's x, y, width and height in the window: in full screen it is centred. A picture that is scaled
        fills a window of its own in it."""
        window = window or self.window()
        geometry = window.get_geometry()
        children = window.query_tree().children if self.system.has_inner_window else []
        inner = [child.get_geometry() for child in children]
        if inner and window.get_wm_name():
            return inner[0].x, inner[0].y, inner[0].width, inner[0].height
        return (geometry.width - 800) // 2, (geometry.height - 600) // 2, 800, 600

    def spot(self, x, y, window=None):
        """Where on the desktop the middle of one of the picture's pixels is."""
        window = window or self.window()
        left, top, width, height = self.place(window)
        origin = self.desktop.origin(window)
        return (origin[0] + left + (2 * x + 1) * width // 1600, origin[1] + top + (2 * y + 1) * height // 1200)

    # looking

    def picture(self, area=(0, 0, 800, 600)):
        """The program's picture as the player sees it, [y, x] of red, green, blue, without the rest of the desktop."""
        left, top, width, height = self.place()
        if (width, height) == (800, 600):
            return self.desktop.picture(self.window(), (area[0] + left, area[1] + top, area[2], area[3]))
        columns = (2 * np.arange(area[0], area[0] + area[2]) + 1) * width // 1600
        rows = (2 * np.arange(area[1], area[1] + area[3]) + 1) * height // 1200
        x, y = columns[0], rows[0]
        shown = left + int(x), top + int(y), int(columns[-1] - x) + 1, int(rows[-1] - y) + 1
        return self.desktop.picture(self.window(), shown)[rows - y][:, columns - x]

    def shown(self):
        """The picture at the size shown."""
        return self.desktop.picture(self.window(), self.place())

    def pixel(self, x, y):
        return tuple(int(value) for value in self.picture((x, y, 1, 1))[0, 0])

    def standing_picture(self, still_s=0.15):
        """The picture once it no longer changes."""
        self._let_it_look()
        end = time.monotonic() + 10
        last, since = self.picture(), time.monotonic()
        while time.monotonic() - since < still_s:
            if time.monotonic() > end:
                raise TimeoutError("the picture does not come to rest")
            time.sleep(0.04)
            now = self.picture()
            if not np.array_equal(now, last):
                last, since = now, time.monotonic()
        return last

    def shows(self, name, share=0.5):
        """Whether at least `share` of the display is a picture of the installation, as coarse as 16 bits make it."""
        wanted = image(self.installation.path(name))[:600:6, :800:6].astype(np.int16)
        near = np.abs(self.picture()[::6, ::6] - wanted).max(axis=2) <= 10
        return float(near.mean()) >= share

    def wait_for_menu(self, timeout_s=20):
        self.window()
        wait_until(lambda: self.running() and self.shows(MENU_PICTURE), "the main menu", timeout_s * SLOWNESS)
        self._let_it_look()  # its first step forgets the keys of before, later than the picture on a busy machine
        self._pointer_is_free_at = time.monotonic() + POINTER_PLACED_S
        return self

    def wait_for_change(self, before):
        """The new picture, once it differs from `before` and stands."""
        wait_until(lambda: not np.array_equal(self.picture(), before), "another picture", 5)
        return self.standing_picture()

    def save_picture(self, name):
        PICTURES.mkdir(parents=True, exist_ok=True)
        Image.fromarray(self.desktop.picture()).save(PICTURES / f"{name}.png", compress_level=1)

    # acting

    def wait_for_pointer(self):
        """After wait_for_menu: until the place that the program gave the pointer no longer counts."""
        time.sleep(max(self._pointer_is_free_at - time.monotonic(), 0))

    def key(self, name, *modifiers):
        self.wait_for_pointer()  # what is pressed before is forgotten with it
        self.desktop.key(name, *modifiers)

    def move(self, x, y):
        """Points there; wait POINTER_PLACED_S first when a key has just moved the focus."""
        self.wait_for_pointer()
        self.desktop.move(*self.spot(x, y))
        self._let_it_look()

    def click(self, x, y, button=1):
        self.move(x, y)
        self.click_here(button)

    def click_here(self, button=1):
        self.desktop.press_button(button)
        self._let_it_look()
        self.desktop.release_button(button)
        self._let_it_look()

    def _let_it_look(self):
        """Until the program has had its turn often enough for a few frames, which on a busy machine is late. A click
        that comes with the move, or is over too soon, means something else."""
        time.sleep(LOOK_S * SLOWNESS)
        turns = Path(f"/proc/{self.pid}/schedstat")
        try:
            wanted = int(turns.read_text().split()[2]) + LOOK_TURNS
            wait_until(lambda: int(turns.read_text().split()[2]) >= wanted, "the program's next frames", 1)
        except (OSError, TimeoutError):  # it leaves, or is busy with something else
            pass
