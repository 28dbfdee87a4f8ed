"""Draws images/help.pcx, what a help page lies on: help_panel.py IMAGES

The panel is as large as text window 2, and the program draws it again for every page. Row and edges follow
game/screens/mess.toml: the title in the band at the top, the buttons in the band at the bottom. The mark at the left of
the title is all that the band shows of a page without one.
"""

import sys
from pathlib import Path

from PIL import Image, ImageDraw

from parts import AMBER, BOLD, cut_off_corners, face, gradient, metal_frame, put, save

SIZE = (581, 451)  # both edges of a text window are drawn
FRAME, CUT = 5, 9
TITLE_BAND, BUTTON_BAND = (7, 34), (402, 443)
MARK = (9, 11, 20, 30)


def mark():
    """A question mark on amber."""
    scale = 4
    size = ((MARK[2] - MARK[0] + 1) * scale, (MARK[3] - MARK[1] + 1) * scale)
    picture = gradient(size, (255, 196, 84), (206, 128, 16))
    draw = ImageDraw.Draw(picture)
    draw.text((size[0] // 2, size[1] // 2), "?", font=face(BOLD, 15 * scale), fill=(24, 16, 6), anchor="mm")
    return picture.resize((size[0] // scale, size[1] // scale), Image.LANCZOS)


def panel():
    width, height = SIZE
    picture = gradient(SIZE, (27, 31, 37), (13, 15, 18))
    draw = ImageDraw.Draw(picture)
    for y in range(TITLE_BAND[1] + 2, BUTTON_BAND[0], 2):  # the lines of a screen, too faint to disturb a text
        draw.line((8, y, width - 9, y), fill=tuple(max(0, c - 2) for c in picture.getpixel((10, y))))
    for (top, bottom), light in ((TITLE_BAND, (58, 66, 78)), (BUTTON_BAND, (38, 43, 50))):
        picture.paste(gradient((width - 14, bottom - top + 1), light, tuple(c // 2 for c in light)), (7, top))
    draw.line((7, BUTTON_BAND[0], width - 8, BUTTON_BAND[0]), fill=(10, 11, 13))
    draw.line((7, TITLE_BAND[1], width - 8, TITLE_BAND[1]), fill=AMBER)
    picture.paste(mark(), MARK[:2])
    frame = metal_frame(SIZE, FRAME, CUT)
    put(picture, frame, (0, 0))
    cut_off_corners(picture, frame, CUT)
    return picture


save(panel(), Path(sys.argv[1]) / "help.pcx")
