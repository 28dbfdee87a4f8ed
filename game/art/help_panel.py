"""Draws images/help.pcx, what a help page lies on: help_panel.py IMAGES

The panel is as large as text window 2, and the program draws it again for every page. Row and edges follow game/screens/mess.toml: the title in
the band at the top, the buttons in the band at the bottom.
"""

import subprocess
import sys
from pathlib import Path

from PIL import Image, ImageDraw

SIZE = (581, 451)  # both edges of a text window are drawn
STEEL, AMBER = (99, 115, 143), (255, 167, 0)
TITLE_BAND, BUTTON_BAND = (8, 34), (402, 442)


def vertical(size, top, bottom):
    strip = Image.new("RGB", (1, size[1]))
    for y in range(size[1]):
        t = y / max(1, size[1] - 1)
        strip.putpixel((0, y), tuple(round(a + (b - a) * t) for a, b in zip(top, bottom)))
    return strip.resize(size)


def rivet(draw, x, y):
    draw.ellipse((x - 2, y - 2, x + 2, y + 2), fill=(70, 78, 90), outline=(8, 9, 11))
    draw.point((x - 1, y - 1), fill=(150, 160, 176))


def panel():
    width, height = SIZE
    picture = vertical(SIZE, (27, 31, 37), (13, 15, 18))
    draw = ImageDraw.Draw(picture)
    for y in range(TITLE_BAND[1] + 2, BUTTON_BAND[0], 2):  # the lines of a screen, too faint to disturb a text
        draw.line((10, y, width - 11, y), fill=tuple(max(0, c - 2) for c in picture.getpixel((10, y))))
    for (top, bottom), light in ((TITLE_BAND, (58, 66, 78)), (BUTTON_BAND, (38, 43, 50))):
        picture.paste(vertical((width - 16, bottom - top + 1), light, tuple(c // 2 for c in light)), (8, top))
        draw.rectangle((8, top, width - 9, bottom), outline=(10, 11, 13))
    draw.line((8, TITLE_BAND[1], width - 9, TITLE_BAND[1]), fill=AMBER)
    draw.rectangle((8, TITLE_BAND[0], 12, TITLE_BAND[1]), fill=AMBER)
    for inset, colour in ((0, (6, 7, 8)), (1, STEEL), (2, (46, 53, 64)), (3, (46, 53, 64)), (4, (6, 7, 8))):
        draw.rectangle((inset, inset, width - 1 - inset, height - 1 - inset), outline=colour)
    rivet(draw, width - 18, sum(TITLE_BAND) // 2)
    return picture


def main():
    target = Path(sys.argv[1]) / "help.pcx"
    png = target.with_suffix(".tmp.png")
    panel().save(png)
    subprocess.run(["convert", str(png), "-type", "TrueColor", "-compress", "RLE", f"pcx:{target}"], check=True)
    png.unlink()


main()
