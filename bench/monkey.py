"""Random keys, clicks, moves and wheel for the real program, in bursts as fast as they can be sent.

The desktop, the language, a damage to the installation and every event are the seed's. Every few thousand events the
program is asked to close: one that is still there 20 s later hangs, and gdb, where there is one, tells where.
"""
import random
import struct
import subprocess
import time

from Xlib import X
from Xlib.error import BadDrawable, BadMatch, BadWindow

from support.installation import CELL_HEIGHT, CELL_WIDTH, CONFIG, SLOT_SIZE
from support.robot import Robot

MOVERS = ["Up", "Down", "Left", "Right", "Home", "End", "Prior", "Next", "Tab", "KP_Home"]  # of the focus
KEYS = [*MOVERS, *"aZ7co", "Escape", "F1", "F4", "F12", "BackSpace", "Insert", "Delete", "period", "space", "Pause"]
HELP_BUTTONS = [(180, 492), (300, 492), (618, 492), (400, 310)]  # and the alert's
DAMAGES = [None, None, None, "hq.so", "battle.so", "sounds/theme03.wav", "sounds/sfx_click.wav", "images/morv3.pcx",
           "images/pointer.pcx", "tools/vcc.snd", "help/menu_en.hlp", "help/options_de.hlp"]


class Monkey:
    def __init__(self, robot, count, dice):
        self.robot, self.count, self.dice = robot, count, dice
        self.installation, self.desktop = robot.installation, robot.desktop
        self.slots = [*self.slot_places("vcc"), *self.slot_places("vcc_options"), *HELP_BUTTONS]
        self.done = self.starts = self.ends_by_itself = self.focus_moved_at = 0
        self.place, self.corner, self.pause, self.late = (0, 0), (0, 0), 0, []

    def slot_places(self, name):
        """A point inside every slot of a screen's file."""
        data = self.installation.path(f"tools/language/english/e_{name}.slt").read_bytes()
        for index in range((len(data) - 4) // SLOT_SIZE):
            numbers = struct.unpack_from("<25i", data, 4 + SLOT_SIZE * index)
            box_width, box_height, column, row = numbers[3], numbers[4], numbers[7], numbers[8]
            graphic, src_x, src_y, dest_x, dest_y = numbers[13:18]
            if graphic:
                yield dest_x + min((box_width - src_x) // 2, 40), dest_y + (box_height - src_y) // 2
            else:
                yield column * CELL_WIDTH + 4, row * CELL_HEIGHT + 7

    # what is sent

    def event(self):
        dice, what = self.dice, self.dice.random()
        self.done += 1
        if what < 0.45:
            self.point()
        elif what < 0.67:
            if self.may_press():
                self.click(dice.choice([1] * 20 + [2, 3])) if what < 0.65 else self.press("Return")
        elif what < 0.6711:
            self.desktop.key("w" if what < 0.671 else "x", "Alt_L")
        elif what < 0.72:
            self.focus_moved_at = self.done
            self.click(dice.choice([4, 5]))
        else:
            self.press(dice.choice(KEYS))

    def point(self):
        """Anywhere, or to a slot."""
        dice = self.dice
        x, y = dice.randrange(800), dice.randrange(600)
        if dice.random() < 0.5:
            x, y = dice.choice(self.slots)
            x, y = min(x + dice.randrange(70), 799), min(y + dice.randrange(-4, 5), 599)
        self.place = x, y
        self.desktop.queue(X.MotionNotify, x=self.corner[0] + x, y=self.corner[1] + y)

    def may_press(self):
        """The doors out of the menu are mostly passed by, or starts would fill the time."""
        x, y = self.place
        chance = 1 if not 34 <= x < 250 else 0.05 if 186 <= y < 328 else 0.01 if 386 <= y < 428 else 1
        if self.done - self.focus_moved_at < 15:  # a key has moved the pointer, nobody here knows where
            chance = 0.1
        return self.dice.random() < chance

    def click(self, button):
        self.queue(X.ButtonPress, X.ButtonRelease, button)

    def press(self, name):
        if name in MOVERS:
            self.focus_moved_at = self.done
        self.queue(X.KeyPress, X.KeyRelease, self.desktop.keycode(name))

    def queue(self, down, up, detail):
        """Some releases wait for the end of the burst."""
        self.desktop.queue(down, detail)
        if self.dice.random() < 0.2:
            self.late.append((up, detail))
        else:
            self.wait()
            self.desktop.queue(up, detail)

    def wait(self):
        if self.pause:
            self.desktop.send()
            time.sleep(self.pause)

    def burst(self):
        """At once, faster than the program looks, or at a human's pace; sometimes with a modifier held."""
        dice = self.dice
        paces = [(120, 0), (50, dice.uniform(0.001, 0.012)), (10, dice.uniform(0.02, 0.1))]
        length, self.pause = dice.choices(paces, [5, 4, 1.5])[0]
        if dice.random() < 0.1:
            held = self.desktop.keycode(dice.choice(["Shift_L", "Control_L", "Alt_L"]))
            self.desktop.queue(X.KeyPress, held)
            self.late.append((X.KeyRelease, held))
        for _ in range(dice.randrange(1, length)):
            self.event()
            self.wait()
        for release in self.late:
            self.desktop.queue(*release)
        self.late.clear()
        self.desktop.send()
        time.sleep(dice.uniform(0, 0.05))

    # the program

    def start(self):
        self.damage = self.dice.choice(DAMAGES)
        if self.damage:
            self.whole = self.installation.path(self.damage).read_bytes()
            self.installation.write(self.damage, self.whole[:self.dice.choice([0, 30])])
        self.installation.write("tools/language.ini", self.dice.choice(["1\n", "2\n"]))
        self.installation.set("VELDOR_GENERAL", "intro_at_all", "yes")
        self.robot.films = self.dice.random() < 0.1
        self.robot.start(menu=False)
        self.starts += 1
        self.life_end = self.done + self.dice.randrange(2000, 12000)

    def find_window(self):
        """The window, which gets the keyboard; None while there is none."""
        try:
            if window := self.robot.find_window():
                self.corner = self.robot.spot(0, 0, window)
                self.desktop.focus(window)
            return window
        except (BadWindow, BadDrawable, BadMatch, RuntimeError):  # it has just left, or is changing its window
            return None

    def leave(self):
        """Asks the program to close until it does; every alert on the way is confirmed."""
        end = time.monotonic() + 20
        while self.robot.running():
            if time.monotonic() > end:
                gdb = f"gdb -batch -ex 'thread apply all bt' -p {self.robot.pid}"
                raise RuntimeError(f"it hangs\n{subprocess.getoutput(gdb)}")
            if window := self.find_window():
                self.desktop.close_window(window)
                self.desktop.key("c")
            time.sleep(0.5)
        status = self.robot.wait_for_end()
        if status != 0 or "signal" in self.robot.errors():
            raise RuntimeError(f"ended with {status}")
        if self.damage:
            self.installation.write(self.damage, self.whole)

    def report(self):
        print(f"{self.done:8d} of {self.count}: {self.starts} starts, {self.ends_by_itself} left by keys and clicks, "
              f"{len(self.installation.module_calls())} calls of modules", flush=True)

    def run(self):
        self.start()
        while self.done < self.count:
            if not self.robot.running() or self.done >= self.life_end:
                self.ends_by_itself += not self.robot.running()
                self.leave()
                self.report()
                self.start()
            self.find_window()
            self.burst()
            if self.dice.random() < 0.01:
                other = self.desktop.open_other_window()
                self.burst()
                other.destroy()
        self.leave()


def monkey(count=1_000_000, seed=1):
    dice = random.Random(seed)
    # on the smallest desktop the program is always in full screen
    with Robot(size=dice.choice([(1024, 768), (1280, 1024), (800, 600)]), depth=dice.choice([24, 16])) as robot:
        robot.installation.use_modules("recording")
        robot.installation.remove("docs/veldor_manual.pdf")
        run = Monkey(robot, count, dice)
        try:
            run.run()
        except (RuntimeError, TimeoutError) as failure:
            print(f"event {run.done}: {failure}; {robot.save_picture(f'monkey-{seed}')}, {robot.errors()[-2000:]}\n"
                  f"log {robot.installation.log_messages()[-20:]}\nsettings {robot.installation.read(CONFIG)}")
            return 1
        finally:
            run.report()
        return 0
