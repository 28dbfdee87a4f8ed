"""Every text of the menu can be read: its contrast to its background, in pictures by vcckit render."""

import subprocess
import sys

import numpy as np
import pytest

from support import menu
from support.installation import PROJECT, SLOT_SIZE, VCCKIT, built_installation, image

sys.path.insert(0, str(PROJECT / "game/art"))

import parts  # noqa: E402
import widgets  # noqa: E402

ENOUGH = 4.5
SLOTS = {"HQ": 3, "Factory": 5, "Battle": 7, "Options": 13, "Leave": 15}
CAPTION = 573, 531, 198, 16  # the band below the preview
BOTTOM_LINE, LINE_COLOUR = (18, 19), (235, 235, 235)  # version and hint, texts of the program
TEXT_OFFSET = 4 + 253


def luminance(colour):
    share = np.asarray(colour, float) / 255
    share = np.where(share <= 0.03928, share / 12.92, ((share + 0.055) / 1.055) ** 2.4)
    return share @ np.array([0.2126, 0.7152, 0.0722])


def worst_contrast(colour, ground):
    text, ground = luminance(colour), luminance(ground)
    return ((np.maximum(text, ground) + 0.05) / (np.minimum(text, ground) + 0.05)).min()


def shows(piece, colour):
    return (abs(piece.astype(int) - colour) <= 24).all(axis=-1).sum() >= 15


def on_plate(picture, area, *colours):
    """The contrast of text that is part of a picture.

    Its plate has the same colour along a row, and light letters cover less than 60 % of it.
    """
    x, y, width, height = area
    piece = picture[y:y + height, x:x + width]
    assert all(shows(piece, colour) for colour in colours), f"no text at {area}"
    return min(worst_contrast(colour, np.percentile(piece, 40, axis=1)) for colour in colours)


def label(left, top):
    """A button without its frame and its bar."""
    return left + 14, top + 6, menu.WIDTH - 20, menu.HEIGHT - 12


def rendered(folder, output, language, slot):
    hover = ["--hover", str(slot)] if slot else []
    command = [VCCKIT, "render", folder, "--screen", "menu", "--language", language, "-o", output, *hover]
    subprocess.run(command, check=True)
    return image(output)


@pytest.fixture
def without_line(installation):
    """The installation with nothing in its bottom line."""
    for name in ("english/e", "german/g"):
        file = f"tools/language/{name}_vcc.slt"
        data = bytearray(installation.path(file).read_bytes())
        for slot in BOTTOM_LINE:
            data[TEXT_OFFSET + SLOT_SIZE * slot] = 0
        installation.write(file, bytes(data))
    return installation.folder


@pytest.mark.parametrize("language", ["en", "de"])
def test_every_text_of_the_menu_stands_out(without_line, tmp_path, language):
    for lit in (None, *SLOTS):
        picture = rendered(built_installation(), tmp_path / "menu.png", language, SLOTS.get(lit))
        found = {"caption": on_plate(picture, CAPTION, parts.CREAM, parts.GREY)}
        if not lit:
            empty = rendered(without_line, tmp_path / "empty.png", language, None)
            line = (picture != empty).any(axis=2)
            assert shows(picture[line], LINE_COLOUR), "no bottom line"
            found["bottom line"] = worst_contrast(LINE_COLOUR, empty[line])
        for name, top in menu.TOPS.items():
            found[name] = on_plate(picture, label(menu.LEFT, top), widgets.STATES["over" if name == lit else "rest"][3])
        assert min(found.values()) >= ENOUGH, (lit, found)


def test_pressed_buttons_stand_out():
    sheet = image(built_installation() / "images/buttons.pcx")
    for row in range(2 * len(SLOTS)):
        area = label(menu.LOOKS[menu.PRESSED], row % len(SLOTS) * 46 + row // len(SLOTS) * 240)
        assert on_plate(sheet, area, widgets.STATES["pressed"][3]) >= ENOUGH, row
