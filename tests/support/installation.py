"""A copy of the built installation for one test: files to edit, settings to set, and what the program wrote."""

import os
import re
import shutil
import struct
import subprocess
import tempfile
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
CONFIG = "data/configs/vcc.cfg"
LOG = "data/logfiles/veldor_log.txt"
SLOT_SIZE, FONT_6_CELL = 376, (8, 14)
MODULES = ("hq", "factory", "battle")


def built_installation():
    """The installation under test: that of the release build unless VELDOR_INSTALLATION names another."""
    folder = Path(os.environ.get("VELDOR_INSTALLATION", PROJECT / "build/release/veldor"))
    if not (folder / "vcc").exists():
        raise FileNotFoundError(f"{folder} holds no vcc: build the release preset first")
    return folder


def _link(source, target):
    """Files are shared with the build; what the program writes in place is copied."""
    if Path(source).suffix in (".cfg", ".txt"):
        return shutil.copy2(source, target)
    try:
        os.link(source, target)
    except OSError:
        shutil.copy2(source, target)
    return target


class Installation:
    def __init__(self, source=None):
        source = Path(source or built_installation())
        # beside the build, so that files can be linked
        self.folder = Path(tempfile.mkdtemp(prefix="e2e-", dir=source.parent))
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
        """{section: {key: value}} of the configuration file."""
        sections, current = {}, {}
        for line in self.read(CONFIG).splitlines():
            if header := re.match(r"\s*\[(.*?)\]", line):
                current = sections.setdefault(header[1], {})
            elif entry := re.match(r"\s*([^#=\s][^=]*?)\s*=\s*(.*?)\s*$", line):
                current[entry[1]] = entry[2]
        return sections

    def setting(self, section, key):
        return self.settings().get(section, {}).get(key)

    def set(self, section, key, value):
        """Sets one key; other lines stay as they are."""
        lines = self.read(CONFIG).splitlines()
        entry, header = f"{key} = {value}", f"[{section}]"
        if header not in [line.strip() for line in lines]:
            lines += ["", header]
        start = [line.strip() for line in lines].index(header) + 1
        end = next((i for i in range(start, len(lines)) if lines[i].lstrip().startswith("[")), len(lines))
        for i in range(start, end):
            if re.match(rf"\s*{re.escape(key)}\s*=", lines[i]):
                lines[i] = entry
                break
        else:
            lines.insert(start, entry)
        self.write(CONFIG, "\n".join(lines) + "\n")

    def slot_places(self, name, language="english"):
        """A point inside every slot of a screen's file."""
        data = self.path(f"tools/language/{language}/e_{name}.slt").read_bytes()
        for index in range((len(data) - 4) // SLOT_SIZE):
            numbers = struct.unpack_from("<25i", data, 4 + SLOT_SIZE * index)
            box_width, box_height, column, row, graphic, src_x, src_y, dest_x, dest_y = (numbers[i] for i in (3, 4, 7, 8, 13, 14, 15, 16, 17))
            if graphic:
                yield dest_x + min((box_width - src_x) // 2, 40), dest_y + (box_height - src_y) // 2
            else:
                yield column * FONT_6_CELL[0] + 4, row * FONT_6_CELL[1] + 7

    # what the program wrote

    def log(self):
        """[(writer, message)] of the log, in order."""
        entries = re.split(r"(?m)^(CC:? ) \[[^\]]*\]\n", self.read(LOG))
        return [(writer.strip(), text.strip("\n")) for writer, text in zip(entries[1::2], entries[2::2])]

    def log_messages(self):
        return [message for _, message in self.log()]

    # modules that record their calls

    def use_recording_modules(self):
        """Puts modules in place that return at once (see recording_module.c)."""
        library = self.path("recording.so")
        subprocess.run(["cc", "-shared", "-fPIC", "-o", library, f"-I{PROJECT / 'sdk'}",
                        Path(__file__).with_name("recording_module.c")], check=True)
        for module in MODULES:
            self.write(f"{module}.so", library.read_bytes())

    def hold_modules(self, hold=True):
        """Modules entered from now on stay until hold_modules(False)."""
        self.write("module_hold", "") if hold else self.remove("module_hold")

    def module_calls(self):
        """[(module, arguments...)] in order."""
        calls = (line.split() for line in self.read("module_calls.txt").splitlines())
        return [(name, *map(int, arguments)) for name, *arguments in calls]
