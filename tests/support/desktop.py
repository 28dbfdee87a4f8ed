"""A private virtual desktop: an X server, real pointer and key events, pictures of what it shows."""

import os
import subprocess
import tempfile
import time
from pathlib import Path

import numpy as np
from PIL import Image
from Xlib import X, XK, display, protocol
from Xlib.error import BadDrawable, BadWindow
from Xlib.ext import damage, xtest

SETTLE_S = 0.03
MANAGERS = {
    "openbox": ["openbox", "--sm-disable"],
    "i3": ["i3", "-c", str(Path(__file__).with_name("i3.conf"))],
    "xfwm4": ["dbus-run-session", "xfwm4"],
    "kwin": ["dbus-run-session", "kwin_x11"],
    "mutter": ["dbus-run-session", "mutter", "--x11", "--sm-disable"],
}


def wait_until(condition, what, timeout_s=10.0, step_s=0.03):
    """The first true answer of `condition`; `what` may say at the end what there is instead."""
    end = time.monotonic() + timeout_s
    while True:
        if answer := condition():
            return answer
        if time.monotonic() > end:
            raise TimeoutError(f"waited {timeout_s:g} s for {what() if callable(what) else what}")
        time.sleep(step_s)


def stop(process, timeout_s=3):
    if process is None or process.poll() is not None:
        return
    process.terminate()
    try:
        process.wait(timeout=timeout_s)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class Desktop:
    """`with Desktop((1024, 768), depth=24, window_manager="openbox") as desktop:`"""

    def __init__(self, size=(1024, 768), depth=24, window_manager=None, server=(), server_environment=None):
        """`server` are more arguments of the X server, `server_environment` more of its environment."""
        self.size, self.depth = size, depth
        self._server_arguments, self._server_environment = server, server_environment or {}
        self._manager_name = window_manager
        self.manager = self._home = self._display = None

    def __enter__(self):
        reading, writing = os.pipe()
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "{}x{}x{}".format(*self.size, self.depth),
             "-nolisten", "tcp", *self._server_arguments],
            pass_fds=[writing], env=os.environ | self._server_environment, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as number:
            answer = number.readline().strip()
        if not answer:
            raise RuntimeError("Xvfb does not start")
        self.name = f":{answer}"
        # Extensions have other event numbers on other servers; the module keeps them all in one place.
        protocol.display.Display.event_classes = dict(protocol.event.event_class)
        self._display = display.Display(self.name)
        self.root = self._display.screen().root
        if self._manager_name:
            self.start_manager(self._manager_name)
        return self

    def start_manager(self, name):
        self._home = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)  # no settings of the user's
        home = {"HOME": self._home.name, "XDG_RUNTIME_DIR": self._home.name}
        self.manager = subprocess.Popen(MANAGERS[name], env=os.environ | home | {"DISPLAY": self.name},
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_until(lambda: self.root.get_full_property(self.atom("_NET_SUPPORTING_WM_CHECK"), X.AnyPropertyType),
                   "the window manager")
        wait_until(self._window_gets_mapped, "the window manager to take a window")

    def crash(self):
        """Ends the server, as a crash or the end of the session does."""
        self._server.kill()
        self._server.wait()
        self._display = None

    def __exit__(self, *_):
        if self._display:
            self._display.close()
        stop(self.manager)
        stop(self._server)
        if self._home:
            self._home.cleanup()

    def _window_gets_mapped(self):
        """A manager announces itself before it is ready, and a window mapped in between stays hidden for ever."""
        window = self._open_window()
        try:
            wait_until(lambda: window.get_attributes().map_state == X.IsViewable, "a window", 0.1, step_s=0.01)
            return True
        except (BadWindow, TimeoutError):  # it confuses the window with an earlier one of the same number
            return False
        finally:
            window.destroy()
            self.send()

    def _open_window(self):
        window = self.root.create_window(0, 0, 60, 40, 0, X.CopyFromParent)
        window.map()
        self._display.sync()
        return window

    # windows

    def windows(self, parent=None):
        """Every mapped window below the root with its name and width."""
        for window in (parent or self.root).query_tree().children:
            try:
                if window.get_attributes().map_state == X.IsViewable:
                    yield window, window.get_wm_name(), window.get_geometry().width
                    yield from self.windows(window)
            except (BadWindow, BadDrawable):  # windows come and go
                pass

    def find_window(self, title):
        return next((window for window, name, _ in self.windows() if name and name.startswith(title)), None)

    def atom(self, name):
        return self._display.intern_atom(name)

    def configure(self, window, **place):
        """What dragging a window or its corner asks of the window manager: x, y, width, height."""
        window.configure(**place)
        self.send()

    def run(self, *command):
        """What a program on this desktop says."""
        return subprocess.run(command, env=os.environ | {"DISPLAY": self.name}, check=True, capture_output=True,
                              text=True).stdout

    def origin(self, window):
        place = self.root.translate_coords(window, 0, 0)
        return place.x, place.y

    def focus(self, window):
        """Gives the keyboard to a window, or with X.PointerRoot to whatever the pointer is on."""
        self._display.set_input_focus(window, X.RevertToPointerRoot, X.CurrentTime)
        self._display.sync()

    def open_other_window(self):
        """A small window of another program in the corner, with the keyboard's focus; close it with .destroy()."""
        window = self._open_window()
        wait_until(lambda: window.get_attributes().map_state == X.IsViewable, "another window")
        self.focus(window)
        return window

    def close_window(self, window):
        """What the window's close button does."""
        self._tell(window, window, "WM_PROTOCOLS", self.atom("WM_DELETE_WINDOW"), X.CurrentTime)

    def _tell(self, receiver, window, kind, *numbers, mask=0):
        """A message about a window."""
        data = 32, [*numbers, *[0] * (5 - len(numbers))]
        message = protocol.event.ClientMessage(window=window, client_type=self.atom(kind), data=data)
        receiver.send_event(message, mask)
        self.send()

    def ask_for_state(self, window, wanted, *states):
        """What a window manager's own menu does: maximised, full screen."""
        self._tell(self.root, window, "_NET_WM_STATE", int(wanted), *map(self.atom, states), *[0] * (2 - len(states)),
                   2, mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)

    def has_state(self, window, state):
        """For the window manager."""
        states = window.get_full_property(self.atom("_NET_WM_STATE"), X.AnyPropertyType)
        return states is not None and self.atom(state) in states.value

    def is_alive(self, window):
        """Whether the program answers the window manager's question."""
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask)
        question = [self.atom("_NET_WM_PING"), 1234, window.id]
        self._tell(window, window, "WM_PROTOCOLS", *question)
        time.sleep(0.3)
        return any(event.type & 127 == X.ClientMessage and event.window == self.root and
                   list(event.data[1])[:3] == question for event in self._events())

    def _events(self):
        """What the server has told since the last time."""
        self.send()
        return [self._display.next_event() for _ in range(self._display.pending_events())]

    # pictures

    def picture(self, window=None, area=None):
        """An array [y, x] of red, green, blue of a window or the whole desktop; area is x, y, width, height."""
        window = window or self.root
        if area is None:
            geometry = window.get_geometry()
            area = 0, 0, geometry.width, geometry.height
        x, y, width, height = area
        raw = window.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFFFF).data
        form = {8: "R", 15: "BGR;15", 16: "BGR;16"}.get(self.depth, "BGRX")
        return np.array(Image.frombuffer("RGB", (width, height), raw, "raw", form, len(raw) // height, 1))

    def count_drawings(self, window, seconds, act=lambda: None):
        """How often something is drawn into a window and those inside it, after `act`."""
        self._display.damage_query_version()
        watch = window.damage_create(damage.DamageReportRawRectangles)

        def drawn():
            return sum(event.type == self._display.extension_event.DamageNotify for event in self._events())

        drawn()  # the watch begins with all of the window
        act()
        time.sleep(seconds)
        drawings = drawn()
        self._display.damage_destroy(watch)
        self.send()
        return drawings

    def cursor_is_hidden(self):
        """Whether the X server's own pointer is transparent where it is."""
        self._display.xfixes_query_version()
        return not any(self._display.xfixes_get_cursor_image(self.root).cursor_image)

    def keyboard_is_free(self):
        """Whether no program has taken the keyboard for itself alone."""
        answer = self.root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)
        self._display.ungrab_keyboard(X.CurrentTime)
        self.send()
        return answer == X.GrabSuccess

    # events

    def pointer(self):
        place = self.root.query_pointer()
        return place.root_x, place.root_y

    def send(self):
        self._display.sync()

    def at_once(self, *events):
        """Events (kind, detail, x, y), with no time in between."""
        for kind, detail, *place in events:
            xtest.fake_input(self._display, kind, detail, X.CurrentTime, X.NONE, *place)
        self.send()

    def move(self, x, y):
        self.at_once((X.MotionNotify, 0, x, y))

    def press_button(self, button=1):
        self.at_once((X.ButtonPress, button))

    def release_button(self, button=1):
        self.at_once((X.ButtonRelease, button))

    def click_at_once(self, *place):
        """Where the pointer is unless a place is given."""
        moves = [(X.MotionNotify, 0, *place)] if place else []
        self.at_once(*moves, (X.ButtonPress, 1), (X.ButtonRelease, 1))

    def key_at_once(self, *names):
        codes = [self.keycode(name) for name in names]
        self.at_once(*((X.KeyPress, code) for code in codes), *((X.KeyRelease, code) for code in codes[::-1]))

    def wheel(self, notches):
        """Positive is away from the player."""
        for _ in range(abs(notches)):
            self.press_button(4 if notches > 0 else 5)
            self.release_button(4 if notches > 0 else 5)
            time.sleep(SETTLE_S)

    def add_keys(self, *names):
        """Gives the keyboard keys that it lacks; call before the program starts."""
        XK.load_keysym_group("xkb")
        symbol = self._display.keycode_to_keysym
        free = [code for code in range(90, 250) if not any(symbol(code, level) for level in range(4))]
        for name, code in zip(names, free):
            self._display.change_keyboard_mapping(code, [[XK.string_to_keysym(name)] * 4])
        self._display.sync()
        while self._display.pending_events():
            self._display.refresh_keyboard_mapping(self._display.next_event())

    def keycode(self, name):
        code = self._display.keysym_to_keycode(XK.string_to_keysym(name))
        if not code:
            raise ValueError(f"no key {name} on this keyboard")
        return code

    def key(self, name, *modifiers):
        """One key by its keysym's name: key("F1"), key("x", "Alt_L"), key("Home", "Control_L")."""
        codes = [self.keycode(each) for each in (*modifiers, name)]
        for kind, order in ((X.KeyPress, codes), (X.KeyRelease, codes[::-1])):
            for code in order:
                self.at_once((kind, code))
                time.sleep(SETTLE_S)
