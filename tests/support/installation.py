"""A copy of the built installation for one test: files to edit, settings to set, and what the program wrote."""

import configparser
import functools
import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

import numpy as np
from PIL import Image

from support.desktop import wait_until
from support.system import PROJECT, SYSTEM, installation_folder

VCCKIT = os.environ.get("VCCKIT", str(PROJECT / "build/release/tools/vcckit/vcckit"))
CONFIG = "data/configs/vcc.cfg"
LOG = "data/logfiles/veldor_log.txt"
SLOT_SIZE = 376
CELL_WIDTH, CELL_HEIGHT = 8, 14  # of the screens' grid


def built_installation(system=SYSTEM):
    """The installation under test: that of the release build unless VELDOR_INSTALLATION names another."""
    folder = installation_folder() if system is SYSTEM else PROJECT / system.installation
    if not (folder / system.program).exists():
        raise FileNotFoundError(f"{folder} holds no {system.program}: build its preset first")
    return folder


def _link(source, target):
    """Files are shared with the build; what the program writes in place is copied."""
    (shutil.copy2 if Path(source).suffix in (".cfg", ".txt") else os.link)(source, target)


@functools.lru_cache(maxsize=32)
def _read_image(path, _inode, _changed_ns):
    return np.asarray(Image.open(path).convert("RGB"))


def image(path):
    """A picture's file: [y, x] of red, green, blue. Tests that wait look at it again and again, so it is kept."""
    state = path.stat()
    return _read_image(path, state.st_ino, state.st_mtime_ns)


@functools.cache
def _module(system, kind):
    """The bytes of a module of the tests' own, from KIND_module.c."""
    libraries = ["-lalleg"] if kind == "obedient" else []
    with tempfile.NamedTemporaryFile(suffix=system.library) as library:
        source = Path(__file__).with_name(f"{kind}_module.c")
        subprocess.run([*system.compiler, "-o", library.name, f"-I{PROJECT / 'sdk'}", source, *libraries], check=True)
        return Path(library.name).read_bytes()


class Installation:
    def __init__(self, system=SYSTEM):
        self.system = system
        source = built_installation(system)
        # on the build's file system: files can be linked
        self.folder = Path(tempfile.mkdtemp(prefix=self.system.folder_prefix, dir=source.parent))
        shutil.copytree(source, self.folder, copy_function=_link, dirs_exist_ok=True)
        self.remove(LOG)

    def delete(self):
        shutil.rmtree(self.folder, ignore_errors=True)

    def path(self, name):
        return self.folder / name

    def read(self, name):
        """A text file in Latin-1; empty when it is missing."""
        path = self.path(name)
        return path.read_bytes().decode("latin-1") if path.exists() else ""

    def write(self, name, content):
        """Replaces a file (never the build's one behind a link); a text is written in Latin-1."""
        self.remove(name)
        self.path(name).parent.mkdir(parents=True, exist_ok=True)
        self.path(name).write_bytes(content if isinstance(content, bytes) else content.encode("latin-1"))

    def remove(self, name):
        self.path(name).unlink(missing_ok=True)

    # settings

    def settings(self):
        """The configuration file: settings()[section][key]."""
        sections = configparser.RawConfigParser()
        sections.read_string(self.read(CONFIG))
        return sections

    def set(self, section, key, value):
        """Sets a key at the top of its section; other lines stay."""
        header = f"[{section}]\n"
        before, _, after = self.read(CONFIG).partition(header)
        entries, bracket, others = after.partition("\n[")
        entries = re.sub(rf"(?m)^{key} *=.*\n?", "", entries)
        self.write(CONFIG, f"{before}{header}{key} = {value}\n{entries}{bracket}{others}")

    # what the program wrote

    def log_messages(self):
        log = self.read(LOG).replace("\r", "")
        return [text.strip("\n") for text in re.split(r"(?m)^CC:?  \[[^\]]*\]\n", log)[1:]]

    # modules of the tests' own

    def use_modules(self, kind):
        """Puts modules in place that return at once ("recording") or do what order() says ("obedient")."""
        for module in ("hq", "factory", "battle"):
            self.write(module + self.system.library, _module(self.system, kind))

    def order(self, text):
        self.write("module_order.new", text)
        self.path("module_order.new").rename(self.path("module_order.txt"))

    def have_obeyed(self, text):
        """Orders, and waits until the module has obeyed."""
        obeyed = self.module_state()[-1]
        self.order(text)
        wait_until(lambda: self.module_state()[-1] > obeyed, f"the module to obey {text!r}", 5 * self.system.slowness)

    def module_state(self):
        """Of an obedient module: the pointer's x and y, orders obeyed."""
        return tuple(map(int, self.read("module_state.txt").split()))

    def hold_modules(self, hold=True):
        """Modules entered from now on stay until hold_modules(False)."""
        self.write("module_hold", "") if hold else self.remove("module_hold")

    def module_calls(self):
        """[(module, arguments...)] in order."""
        calls = (line.split() for line in self.read("module_calls.txt").splitlines())
        return [(name, *map(int, arguments)) for name, *arguments in calls]
