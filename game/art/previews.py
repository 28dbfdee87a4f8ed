#!/usr/bin/python3
"""Draws images/previews.pcx, what the menu shows of the places behind its buttons: previews.py IMAGES

One tile below the other in the order of the buttons, then the one for no button; English at the left, German at
the right.
"""
import math
import sys
from pathlib import Path

from PIL import Image, ImageDraw, ImageEnhance, ImageFilter

from parts import BOLD, CREAM, GREY, REGULAR, cut_off_corners, face, gradient, metal_frame, put, save

TILE, BAR, CAPTION = (212, 138), 5, 21
ROOM = (TILE[0] - 2 * BAR - 2, TILE[1] - 2 * BAR - CAPTION - 2)  # of the picture

# picture, piece of it (left, top, width), colour and brightness, English and German caption
PLACES = [
    ("hq", (440, 176, 356), 1.0, 1.12, ("HQ", "campaigns and orders"), ("HQ", "Feldzug und Befehle")),
    ("factory", (400, 120, 400), 1.0, 1.08, ("FACTORY", "hulls, guns, repairs"), ("FABRIK", "R\u00fcmpfe und Waffen")),
    ("battle", (370, 190, 424), 1.0, 1.0, ("BATTLE", "onto the field"), ("SCHLACHT", "hinaus aufs Feld")),
    ("morv1", (0, 100, 480), 0.4, 1.0, ("OPTIONS", "sound, display, keys"), ("OPTIONEN", "Klang, Bild, Tasten")),
    ("morv3", (60, 200, 420), 0.6, 0.62, ("LEAVE", "back to the desktop"), ("BEENDEN", "zur\u00fcck zum Desktop")),
]
IDLE = ("VELDOR", "choose a destination"), ("VELDOR", "w\u00e4hle ein Ziel")


def piece(images, name, area, colour, brightness):
    left, top, width = area
    height = round(width * ROOM[1] / ROOM[0])
    picture = Image.open(images / f"{name}.pcx").convert("RGB").crop((left, top, left + width, top + height))
    picture = picture.resize(ROOM, Image.LANCZOS)
    picture = ImageEnhance.Color(picture).enhance(colour)
    return ImageEnhance.Brightness(picture).enhance(brightness).filter(ImageFilter.UnsharpMask(0.8, 60, 2))


def monitor():
    """A scope without an echo."""
    scale = 4
    width, height = ROOM[0] * scale, ROOM[1] * scale
    picture = gradient((width, height), (16, 24, 28), (8, 12, 14))
    draw = ImageDraw.Draw(picture)
    x, y = width // 2, height // 2
    for k in range(72):  # the beam and its afterglow
        level = (k / 72) ** 2
        colour = tuple(round(a + b * level) for a, b in zip((14, 21, 25), (96, 58, 8)))
        draw.pieslice((x - 4 * 45, y - 4 * 45, x + 4 * 45, y + 4 * 45), -120 + k, -118 + k, fill=colour)
    for radius in (15, 30, 45):
        draw.ellipse((x - 4 * radius, y - 4 * radius, x + 4 * radius, y + 4 * radius), outline=(92, 66, 30), width=3)
    for turn in range(0, 360, 30):
        c, s = math.cos(math.radians(turn)), math.sin(math.radians(turn))
        draw.line((x + c * 4 * 45, y + s * 4 * 45, x + c * 4 * 49, y + s * 4 * 49), fill=(150, 102, 40), width=4)
    draw.line((x - 4 * 52, y, x + 4 * 52, y), fill=(92, 66, 30), width=3)
    draw.line((x, y - 4 * 50, x, y + 4 * 50), fill=(92, 66, 30), width=3)
    for line in range(0, height, 3 * scale):
        draw.line((0, line, width, line), fill=(10, 15, 18), width=2)
    return picture.resize(ROOM, Image.LANCZOS)


def tile(picture, caption):
    name, text = caption
    scale = 4
    whole = Image.new("RGB", TILE, (8, 9, 11))
    whole.paste(picture, (BAR + 1, BAR + 1))
    band = gradient((ROOM[0] * scale, CAPTION * scale), (40, 46, 54), (18, 20, 24))
    draw = ImageDraw.Draw(band)
    draw.line((0, 0, band.width, 0), fill=(120, 84, 36), width=2 * scale)
    bold, regular = face(BOLD, 12 * scale), face(REGULAR, 12 * scale)
    x, y = 7 * scale, band.height // 2 + scale // 2
    draw.text((x, y), name, font=bold, fill=CREAM, anchor="lm")
    draw.text((x + bold.getlength(name) + 7 * scale, y), text, font=regular, fill=GREY, anchor="lm")
    if x + bold.getlength(name) + 7 * scale + regular.getlength(text) > band.width - 4 * scale:
        raise SystemExit(f"previews: the caption is too long: {name} {text}")
    whole.paste(band.resize((ROOM[0], CAPTION), Image.LANCZOS), (BAR + 1, TILE[1] - BAR - 1 - CAPTION))
    frame = metal_frame(TILE, BAR, 8)
    put(whole, frame, (0, 0))
    cut_off_corners(whole, frame, 8)
    return whole


def main():
    images = Path(sys.argv[1])
    rows = [(piece(images, *place[:4]), place[4:]) for place in PLACES] + [(monitor(), IDLE)]
    sheet = Image.new("RGB", (2 * TILE[0], len(rows) * TILE[1]))
    for k, (picture, captions) in enumerate(rows):
        for language, caption in enumerate(captions):
            sheet.paste(tile(picture, caption), (language * TILE[0], k * TILE[1]))
    save(sheet, images / "previews.pcx")


main()
