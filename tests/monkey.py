"""Random input for the real program, as fast as it can be sent: keys, clicks, moves and the wheel in bursts of differing length and pace.

The desktop, the language, a damage to the installation and every event are the seed's. The doors out of the menu are mostly passed by, or
starts would fill the time. Every few thousand events the program is asked to close: one that is still there 20 s later hangs, and gdb,
where there is one, tells where.
"""
import collections
import random
import shutil
import subprocess
import time
from pathlib import Path

from Xlib import X

from support import menu
from support.installation import CONFIG

MOVERS = ["Up", "Down", "Left", "Right", "Home", "End", "Prior", "Next", "Tab", "KP_Home"]  # of the focus
KEYS = [*MOVERS, "Escape", "F1", "F4", "F12", "BackSpace", "Insert", "Delete", "a", "Z", "7", "c", "o", "period", "space", "Pause", "Print"]
MODIFIERS = ["Shift_L", "Control_L", "Alt_L"]
HELP_BUTTONS = [(180, 492), (300, 492), (618, 492), (400, 310)]  # and the alert's
ACCEPT, NAME_FIELD = (80, 540), (140, 511)  # on the options screen
MODULE_DOORS, LEAVE_DOOR = (34, 186, 250, 328), (34, 386, 250, 428)
DAMAGES = [None, None, None, "hq.so", "battle.so", "sounds/theme03.wav", "sounds/sfx_click.wav", "images/morv3.pcx", "images/pointer.pcx",
           "tools/vcc.snd", "help/menu_en.hlp", "help/options_de.hlp"]
EVENTS_OF_A_LIFE = 2000, 12000
STEP_S, END_STEPS = 0.1, 200


class Failure(Exception):
    pass


def stopped(pid):
    """Whether somebody holds the program with a signal: that is no hang."""
    try:
        return Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()[0] in "Tt"
    except OSError:
        return False


def desktop_for(_count, seed):
    """Only as large as the program's picture for some: there it is always full screen."""
    dice = random.Random(seed)
    return {"size": dice.choice([(1024, 768), (1280, 1024), (800, 600)]), "depth": dice.choice([24, 16])}


def inside(place, door):
    return door[0] <= place[0] < door[2] and door[1] <= place[1] < door[3]


class Monkey:
    def __init__(self, robot, count, seed):
        self.robot, self.count, self.dice = robot, count, random.Random(seed)
        self.installation, self.desktop = robot.installation, robot.desktop
        self.done = self.starts = self.ends_by_itself = 0
        self.keys = collections.Counter()
        self.option_places = list(self.installation.slot_places("vcc_options"))
        self.slots = [*self.installation.slot_places("vcc"), *self.option_places, *HELP_BUTTONS]
        self.place, self.corner, self.began = (0, 0), (0, 0), time.monotonic()
        self.focus_moved_at, self.pause, self.late = 0, 0, []

    # what is sent

    def point(self, place):
        self.place = place
        self.desktop.queue(X.MotionNotify, x=self.corner[0] + place[0], y=self.corner[1] + place[1])

    def somewhere(self):
        """A place that is a door only now and then."""
        while True:
            place = self.dice.randrange(800), self.dice.randrange(600)
            if self.dice.random() < 0.5:
                x, y = self.dice.choice(self.slots)
                place = min(x + self.dice.randrange(70), 799), min(y + self.dice.randrange(-4, 5), 599)
            if self.passes_by(place):
                return place

    def passes_by(self, place):
        chance = 0.98 if inside(place, LEAVE_DOOR) else 0.9 if inside(place, MODULE_DOORS) else 0
        return self.dice.random() >= chance

    def event(self):
        """One action; some releases wait for the end of the burst."""
        dice, what = self.dice, self.dice.random()
        self.done += 1
        if what < 0.45:
            self.point(self.somewhere())
        elif what < 0.65:
            if self.may_open_a_door():
                self.press(X.ButtonPress, dice.choice([1] * 20 + [2, 3]))
        elif what < 0.67:
            if self.may_open_a_door():
                self.press(X.KeyPress, self.desktop.keycode("Return"))
        elif what < 0.671:
            self.key("Alt_L", "w")
        elif what < 0.6711:
            self.key("Alt_L", "x")
        elif what < 0.72:
            self.focus_moved_at = self.done
            self.press(X.ButtonPress, dice.choice([4, 5]))
        elif dice.random() < 0.1:
            self.key(dice.choice(MODIFIERS), dice.choice(KEYS))
        else:
            name = dice.choice(KEYS)
            self.keys[name] += 1
            if name in MOVERS:
                self.focus_moved_at = self.done
            self.press(X.KeyPress, self.desktop.keycode(name))

    def may_open_a_door(self):
        """A key has moved the focus, and the pointer with it, nobody here knows where."""
        if self.done - self.focus_moved_at < 15:
            return self.dice.random() < 0.1
        return self.passes_by(self.place)

    def press(self, kind, detail):
        self.desktop.queue(kind, detail)
        release = kind + 1, detail  # X numbers a release after its press
        if self.dice.random() < 0.2:
            self.late.append(release)
        else:
            self.wait()
            self.desktop.queue(*release)

    def key(self, *names):
        self.keys["+".join(names)] += 1
        codes = [self.desktop.keycode(name) for name in names]
        for kind, order in ((X.KeyPress, codes), (X.KeyRelease, codes[::-1])):
            for code in order:
                self.desktop.queue(kind, code)
            self.wait()

    def wait(self):
        if self.pause:
            self.desktop.send()
            time.sleep(self.pause)

    def burst(self):
        """At once, faster than the program looks, or at a human's pace."""
        dice = self.dice
        length, self.pause = dice.choices([(dice.randrange(1, 120), 0), (dice.randrange(5, 50), dice.uniform(0.001, 0.012)),
                                           (dice.randrange(2, 10), dice.uniform(0.02, 0.1))], [5, 4, 1.5])[0]
        for _ in range(length):
            self.event()
            self.wait()
        self.end_burst()
        time.sleep(dice.uniform(0, 0.05))

    def errand(self):
        """To the options screen like a human, who chooses, types and mostly accepts."""
        dice = self.dice
        self.pause = dice.uniform(0.03, 0.1)
        places = [menu.middle("Options"), *dice.choices(self.option_places, k=dice.randrange(1, 8)), NAME_FIELD]
        for place in [*places, ACCEPT] if dice.random() < 0.8 else places:
            self.point(place)
            self.wait()
            self.press(X.ButtonPress, 1)
            self.wait()
            self.done += 2
            if place == NAME_FIELD:
                for key in dice.choices("aZ7 .", k=dice.randrange(8)):
                    self.press(X.KeyPress, self.desktop.keycode({" ": "space", ".": "period"}.get(key, key)))
                    self.done += 1
        self.end_burst()

    def end_burst(self):
        for release in self.late:
            self.desktop.queue(*release)
        self.late.clear()
        self.desktop.send()

    # the program

    def start(self):
        damage, self.whole = self.dice.choice(DAMAGES), None
        if damage:
            self.whole = damage, self.installation.path(damage).read_bytes()
            self.installation.write(damage, self.whole[1][:self.dice.choice([0, 30])])
        self.installation.write("tools/language.ini", self.dice.choice(["1\n", "2\n"]))
        self.robot.films = self.dice.random() < 0.1
        if self.robot.films:
            self.installation.set("VELDOR_GENERAL", "intro_at_all", "yes")
        self.robot.start(menu=False)
        self.starts += 1
        self.life_end = self.done + self.dice.randrange(*EVENTS_OF_A_LIFE)
        self.settle_down()

    def settle_down(self):
        """Looks where the window is and gives it the keyboard. False: there is none just now."""
        try:
            self.window = self.robot.find_window()
            if self.window is not None:
                self.corner = self.robot.corner_on_desktop(self.window)
                self.desktop.focus(self.window)
            return self.window is not None
        except Exception as error:  # it has just left, or is changing its window
            if type(error).__name__ not in ("BadWindow", "BadDrawable", "BadMatch", "RuntimeError"):
                raise
            return False

    def leave(self):
        """Asks the program to close until it does; every alert on the way is confirmed."""
        for step in range(END_STEPS):
            while self.robot.running() and stopped(self.robot.pid):
                time.sleep(STEP_S)
            if not self.robot.running():
                return
            if step % 5 == 0 and self.settle_down():
                self.desktop.close_window(self.window)
                self.key("c")
                self.desktop.send()
            time.sleep(STEP_S)
        raise Failure(f"does not close: it hangs\n{self.backtrace()}")

    def backtrace(self):
        if not shutil.which("gdb"):
            return "(no gdb)"
        return subprocess.run(["gdb", "-batch", "-ex", "thread apply all bt", "-p", str(self.robot.pid)],
                              capture_output=True, text=True, check=False).stdout

    def bury(self):
        """After the end of a life: what did it leave?"""
        status = self.robot.wait_for_end()
        if status != 0 or "signal" in self.robot.errors():
            raise Failure(f"ended with {status}")
        if self.whole:
            self.installation.write(*self.whole)

    def report(self):
        minutes = (time.monotonic() - self.began) / 60
        calls = collections.Counter(call[0] for call in self.installation.module_calls())
        print(f"{self.done:8d} of {self.count}: {minutes:.1f} min, {self.starts} starts ({self.ends_by_itself} left by keys and clicks), "
              f"modules {dict(calls)}, Alt+W {self.keys['Alt_L+w']}, F12 {self.keys['F12']}", flush=True)

    def run(self):
        self.start()
        next_report = 0
        while self.done < self.count:
            if not self.robot.running():
                self.ends_by_itself += 1
                self.bury()
                self.start()
            elif self.done >= self.life_end:
                self.leave()
                self.bury()
                self.start()
            self.settle_down()
            if self.dice.random() < 0.01:
                other = self.desktop.open_other_window()
                self.burst()
                other.destroy()
            self.errand() if self.dice.random() < 0.03 else self.burst()
            if self.done >= next_report:
                self.report()
                next_report += self.count // 50
        self.leave()
        self.bury()


def monkey(robot, count, seed):
    robot.installation.use_recording_modules()
    robot.installation.remove("docs/veldor_manual.pdf")
    run = Monkey(robot, count, seed)
    try:
        run.run()
    except (Failure, TimeoutError) as failure:
        picture = robot.save_picture(f"monkey-{seed}")
        print(f"event {run.done}: {failure}; {picture}, {robot.errors()[-2000:]}\nlog {robot.installation.log_messages()[-20:]}\n"
              f"settings {robot.installation.read(CONFIG)}")
        return 1
    finally:
        run.report()
    return 0
