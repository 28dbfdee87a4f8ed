"""vcckit play: programs that do not do what they should, and requests to end."""

import os
import shutil
import signal
import subprocess

import pytest

from support.installation import VCCKIT


def play(installation, *options):
    return subprocess.run([VCCKIT, "play", installation.folder, *options], capture_output=True, text=True, timeout=380)


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
    program = subprocess.Popen([VCCKIT, "play", installation.folder, "--language", "de", "-o", tmp_path / "pictures"],
                               text=True, stdout=subprocess.PIPE, env=os.environ | {"TMPDIR": str(tmp_path)})
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
    before = {path: path.stat().st_mtime_ns for path in installation.folder.rglob("*")}
    done = play(installation, "--language", "en", "-o", tmp_path / "pictures")
    assert done.returncode == status and told in done.stderr, done.stderr
    assert {path: path.stat().st_mtime_ns for path in installation.folder.rglob("*")} == before
