"""vcckit play: every slot of the built-in installation."""

import struct

from test_play import play

from support.installation import SLOT_SIZE


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
