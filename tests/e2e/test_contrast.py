"""Every button of the menu can be read in each of its looks: the contrast of its text to its plate."""

import sys

import numpy as np

from support import menu
from support.installation import PROJECT, built_installation, image

sys.path.insert(0, str(PROJECT / "game/art"))

import widgets  # noqa: E402

ENOUGH = 4.5
COLOURS = {menu.REST: "rest", menu.POINTED_AT: "over", menu.PRESSED: "pressed"}


def luminance(colour):
    share = np.asarray(colour, float) / 255
    share = np.where(share <= 0.03928, share / 12.92, ((share + 0.055) / 1.055) ** 2.4)
    return share @ np.array([0.2126, 0.7152, 0.0722])


def test_buttons_stand_out():
    sheet = image(built_installation() / "images/buttons.pcx")
    for look, left in menu.LOOKS.items():
        colour = widgets.STATES[COLOURS[look]][3]
        text = luminance(colour)
        for button in range(2 * len(menu.TOPS)):  # English, German
            top = button % len(menu.TOPS) * 46 + button // len(menu.TOPS) * 240
            piece = sheet[top + 6:top + menu.HEIGHT - 6, left + 14:left + menu.WIDTH - 6]  # without frame and bar
            assert (abs(piece.astype(int) - colour) <= 24).all(axis=2).sum() >= 15, f"no text on {button}"
            plate = luminance(np.percentile(piece, 40, axis=1))  # light letters cover less than 60 % of a row
            contrast = (np.maximum(text, plate) + 0.05) / (np.minimum(text, plate) + 0.05)
            assert contrast.min() >= ENOUGH, (look, button)
