"""docs/making.md as it stands: its commands are run, its pictures drawn again, its table of slots compared.

VELDOR_KEEP_PICTURES=1 puts the pictures that are drawn in place of those of the document.
"""

import json
import os
import re
import struct
import subprocess

import numpy as np
import pytest
from PIL import Image

from support.installation import PROJECT, SLOT_SIZE, VCCKIT, built_installation

DOCUMENT = PROJECT / "docs/making.md"
# Pictures that show parts of the built-in installation.
BORROWED = {"07", "08", "09", "10"}


def steps():
    """(number, commands, picture) of every step."""
    for step in re.split(r"(?m)^## (?=\d)", DOCUMENT.read_text())[1:]:
        body = step.partition("\n## ")[0]
        yield int(step.split(".")[0]), "\n".join(re.findall(r"(?s)```sh\n(.*?)```", body)), re.findall(
            r"!\[[^]]+\]\(pictures/making-(\d\d)\.png\)", body)


@pytest.fixture(scope="module")
def made(tmp_path_factory):
    """The folder after all steps."""
    folder = tmp_path_factory.mktemp("making")
    script = "set -euo pipefail\n" + "".join(f"echo step {number} >&2\n{commands}" for number, commands, _ in steps())
    tools = folder / "bin"
    tools.mkdir()
    (tools / "vcckit").symlink_to(VCCKIT)
    # the tool builds on the installation under test
    script = script.replace("vcckit new lantern", f"vcckit new lantern --base {built_installation()}")
    done = subprocess.run(["bash", "-c", script], cwd=folder, text=True, capture_output=True, timeout=380,
                          env=os.environ | {"PATH": f"{tools}:{os.environ['PATH']}"})
    assert done.returncode == 0, done.stdout + done.stderr
    assert "game: clean" in done.stdout and "game: every slot visited" in done.stdout
    assert done.stdout.count("\nplayed/") == len(list((folder / "lantern/played").iterdir()))
    return folder / "lantern"


def test_every_step_has_its_picture_as_in_the_document(made):
    numbers = [f"{number:02d}" for number in range(1, 11)]
    assert [pictures for _, _, pictures in steps()] == [[number] for number in numbers]
    for number in numbers:
        drawn, kept = made / f"{number}.png", PROJECT / f"docs/pictures/making-{number}.png"
        if os.environ.get("VELDOR_KEEP_PICTURES"):
            picture = Image.open(drawn)  # photographs take room: with fewer colours
            (picture.quantize(128) if number in BORROWED else picture).save(kept, optimize=True)
        new, old = (np.asarray(Image.open(path).convert("RGB"), np.int16) for path in (drawn, kept))
        assert new.shape == old.shape == (600, 800, 3)
        alike = (np.abs(new - old).max(axis=2) <= 10).mean()
        assert alike >= (0.2 if number in BORROWED else 0.995), f"step {number}: {alike:.1%} is as it was"


def selectable(game, name):
    """Numbers of the slots that a player can choose: not inert, not hidden, not passed over."""
    data = (game / f"tools/language/english/e_{name}.slt").read_bytes()
    for index in range((len(data) - 4) // SLOT_SIZE):
        record = data[4 + SLOT_SIZE * index:][:SLOT_SIZE]
        toggle, flags = struct.unpack_from("<i", record, 40)[0], record[191:194]
        if toggle != -1 and flags[:1] != b"n" and flags[2:3] != b"x":
            yield index


def test_every_slot_is_visited(made):
    pictures = sorted(path.name for path in (made / "played").iterdir())
    for screen, name in (("menu", "vcc"), ("options", "vcc_options")):
        for slot in selectable(made / "game", name):
            # a value is shown with its option
            assert any(f"-{screen}-{slot:02d}" in each or f"-value-{slot:02d}" in each for each in pictures), slot
    for name in ("menu", "module-hq", "module-factory", "module-battle", "options"):
        assert any(each[7:] == f"{name}.png" for each in pictures)
    # eleven levels, two themes and the button for their loop, and two layouts of the keyboard
    for option, values in (22, 11), (26, 3), (48, 2):
        assert sum(f"-options-{option}-" in each and "-value-" in each for each in pictures) == values


def slots_of_the_table():
    """{screen: numbers} as the document lists them."""
    table, screen = {}, None
    for name, numbers in re.findall(r"(?m)^\| (?:.*?\(`(\w+)`\))? ?\| ([\d, to]+) \|", DOCUMENT.read_text()):
        screen = name or screen
        for part in numbers.split(", "):
            first, _, last = part.partition(" to ")
            table.setdefault(screen, set()).update(range(int(first), int(last or first) + 1))
    return table


def test_the_table_lists_the_slots_that_the_program_knows(installation):
    missing = {f"tools/language/english/e_{screen}.slt": set() for screen in slots_of_the_table()}
    for name in missing:
        size = installation.path(name).stat().st_size
        installation.write(name, installation.path(name).read_bytes()[:4] + bytes(size - 4))
    done = subprocess.run([VCCKIT, "check", installation.folder, "--json"], capture_output=True, text=True)
    for fault in json.loads(done.stdout)["faults"]:
        if fault["file"] in missing and fault["problem"].endswith("is missing"):
            missing[fault["file"]].update([fault["record"], *fault.get("more_records", [])])
    assert len(missing) == 4 and list(missing.values()) == list(slots_of_the_table().values())


def test_names_with_blanks_any_format_and_what_is_taken_away(tmp_path):
    base = built_installation()
    subprocess.run([VCCKIT, "new", "Storm_Fleet", "--base", base], cwd=tmp_path, check=True)
    project, game = tmp_path / "Storm_Fleet", tmp_path / "Storm_Fleet/game"
    tower, film = project / "pictures/my tower.png", project / "films/Zentrik.mp4"
    for folder in (project / "modules", film.parent):
        folder.mkdir()
    Image.new("RGB", (40, 30), "red").save(tower)
    Image.new("RGB", (800, 600), "navy").save(project / "pictures/far away.jpg")
    with open(project / "files/tools/vcc.buf", "a") as buffers:
        buffers.write("+9\nimages/my tower.pcx\n+10\nimages/far away.pcx\n")
    subprocess.run(["ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i", "testsrc=d=1:s=320x240", film], check=True)
    (project / "modules/hq.c").write_text("#include <stdint.h>\nconst char picture[] = \"hq.pcx\";\n"
                                          "uint8_t hq(uint8_t mode, int32_t v) { return mode; }\n")

    def make(*targets):  # the tool is not on the path
        return subprocess.run(["make", *targets], cwd=project, capture_output=True, text=True, timeout=120)

    done = make("check")
    assert done.returncode == 0 and "game: clean" in done.stdout, done.stdout + done.stderr
    assert (game / "images/Zentrik.avi").read_bytes() != (base / "images/Zentrik.avi").read_bytes()
    assert (game / "hq.so").read_bytes() != (base / "hq.so").read_bytes()
    kept = {path: path.stat().st_mtime_ns for path in (game / "images").iterdir()}
    assert make().returncode == 0
    assert {path: path.stat().st_mtime_ns for path in (game / "images").iterdir()} == kept, "only what has changed"

    tower.unlink()
    film.unlink()
    (project / "screens/vcc.toml").unlink()
    assert make().returncode == 0
    assert not (game / "images/my tower.pcx").exists() and (game / "images/far away.pcx").exists()
    for name in ("images/Zentrik.avi", "tools/language/german/g_vcc.slt"):
        assert (game / name).read_bytes() == (base / name).read_bytes(), name
    (project / "pictures/far away.png").write_bytes((project / "pictures/far away.jpg").read_bytes())
    done = make()
    assert done.returncode != 0 and "is made of another source, too" in done.stderr
