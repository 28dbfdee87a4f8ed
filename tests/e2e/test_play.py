"""vcckit play: every slot of the built-in installation, and programs that do not do what they should."""

import os
import shutil
import signal
import struct
import subprocess

import pytest

from support.installation import SLOT_SIZE, VCCKIT


def play(installation, *options):
    return subprocess.run([VCCKIT, "play", installation.folder, *options], capture_output=True, text=True, timeout=380)


def selectable(installation, name):
    """Numbers of the slots that a player can choose: not inert, not hidden, not passed over."""
    data = installation.path(f"tools/language/german/g_{name}.slt").read_bytes()
    for index in range((len(data) - 4) // SLOT_SIZE):
        record = data[4 + SLOT_SIZE * index:][:SLOT_SIZE]
        toggle, flags = struct.unpack_from("<i", record, 40)[0], record[191:194]
        if toggle != -1 and flags[:1] != b"n" and flags[2:3] != b"x":
            yield index


def test_every_slot_of_the_built_in_installation_is_visited(installation, tmp_path):
    before = {path: path.stat().st_mtime_ns for path in installation.folder.rglob("*")}
    done = play(installation, "--language", "de", "-o", tmp_path / "pictures")
    assert done.returncode == 0, done.stderr
    assert {path: path.stat().st_mtime_ns for path in installation.folder.rglob("*")} == before
    pictures = sorted(path.name for path in (tmp_path / "pictures").iterdir())
    assert len(pictures) == len(done.stdout.splitlines()) - 1
    for screen, name in (("menu", "vcc"), ("options", "vcc_options")):
        for slot in selectable(installation, name):
            # a value is shown with its option
            assert any(f"-{screen}-{slot:02d}" in each or f"-value-{slot:02d}" in each for each in pictures), slot
    for name in ("menu", "module-hq", "module-factory", "module-battle", "options"):
        assert any(each[7:] == f"{name}.png" for each in pictures)
    # eleven levels, as many themes and the button for their loop, and two layouts of the keyboard
    assert sum("-options-22-" in each and "-value-" in each for each in pictures) == 11
    assert sum("-options-26-" in each and "-value-" in each for each in pictures) == 12
    assert sum("-options-48-" in each and "-value-" in each for each in pictures) == 2


def end_at_once(installation, _):
    installation.remove("vcc")
    shutil.copy("/bin/true", installation.path("vcc"))


def crash_in_module(installation, tmp_path):
    source = tmp_path / "crash.c"
    source.write_text("#include <stdlib.h>\nint hq(int mode, int version) { abort(); }\n")
    installation.remove("hq.so")
    subprocess.run(["cc", "-shared", "-fPIC", source, "-o", installation.path("hq.so")], check=True)


FAULTS = [
    # the damage, the status, the message
    (lambda installation, _: installation.remove("tools/language/english/e_vcc.slt"), 2,
     "the slot files cannot be loaded"),
    (end_at_once, 2, "the main menu does not appear: the program has ended"),
    (crash_in_module, 1, "the main menu after the module hq does not appear: the program has ended"),
]


def test_a_request_to_end_leaves_no_copy_behind(installation, tmp_path):
    program = subprocess.Popen([VCCKIT, "play", installation.folder, "-o", tmp_path / "pictures"], text=True,
                               stdout=subprocess.PIPE, env=os.environ | {"TMPDIR": str(tmp_path)})
    for _ in range(2):  # pictures that are kept
        assert program.stdout.readline()
    program.send_signal(signal.SIGINT)
    program.communicate(timeout=60)
    assert program.returncode == -signal.SIGINT
    assert [path.name for path in tmp_path.iterdir()] == ["pictures"]


@pytest.mark.parametrize("break_it, status, told", FAULTS,
                         ids=["no slots", "a program that ends", "a module that crashes"])
def test_what_does_not_work_is_told(installation, tmp_path, break_it, status, told):
    break_it(installation, tmp_path)
    done = play(installation, "--language", "en", "-o", tmp_path / "pictures")
    assert done.returncode == status and told in done.stderr, done.stderr
