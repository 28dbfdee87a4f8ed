#!/usr/bin/python3
"""Draws the parts of the screens that are neither rendered scenes nor text of the program: the menu's buttons and
frame, the small buttons, lamps and titles, and the panels of the options screen on its mood picture.

    game/art/widgets.py OUTPUT_FOLDER [OPTIONS_BASE.png]

Writes buttons.pcx, widgets.pcx and options.pcx (24-bit). Coordinates that screens/*.toml cut pictures from
stand in the tables below.
"""
import sys
from pathlib import Path

from PIL import Image, ImageDraw, ImageFilter

from parts import BOLD, PINK, face, gradient, masked, metal_frame, metal_word, put, save

SCALE = 4  # drawn larger and reduced, for smooth edges

# State of a button: plate from, plate to, frame, text, lamp
STATES = {
    "rest": ((52, 58, 66), (26, 29, 34), (99, 115, 143), (219, 219, 219), (70, 58, 44)),
    "over": ((112, 76, 38), (58, 39, 20), (255, 167, 0), (255, 215, 135), (255, 167, 0)),
    "pressed": ((40, 28, 16), (86, 58, 28), (255, 203, 103), (255, 239, 207), (255, 227, 171)),
}

MENU_SIZE = (216, 42)  # button k in state column s: (s * 220, k * 46), German ones 240 lower
MENU_LABELS = [("HQ", "HQ"), ("FACTORY", "FABRIK"), ("BATTLE", "SCHLACHT"), ("OPTIONS", "OPTIONEN"),
               ("LEAVE", "BEENDEN")]
MENU_FRAME, MENU_FRAME_SIZE = (0, 480), (240, 266)  # around the buttons

SMALL_SIZE = (116, 30)  # button k in state column s: (s * 120, k * 34), German ones 280 lower
SMALL_LABELS = [("ACCEPT", "ANNEHMEN"), ("CANCEL", "ABBRUCH"), ("RESET", "VORGABEN"), ("MANUAL", "HANDBUCH"),
                ("CLOSE", "SCHLIESSEN"), ("BACK", "ZUR\u00dcCK"), ("NEXT", "WEITER"), ("LOOP", "SCHLEIFE")]
TITLES, TITLE_SIZE = {"OPTIONS": (0, 560), "OPTIONEN": (0, 596)}, (240, 32)


def button(size, label, state, text_height):
    top, bottom, frame, text, lamp = STATES[state]
    width, height = size[0] * SCALE, size[1] * SCALE
    picture = gradient((width, height), top, bottom)
    draw = ImageDraw.Draw(picture)
    line = SCALE
    draw.rectangle((0, 0, width - 1, height - 1), outline=frame, width=line)
    lighter = tuple(min(255, c + 34) for c in top)
    draw.rectangle((2 * line, 2 * line, width - 2 * line, 2 * line + line - 1), fill=lighter)
    darker = tuple(c // 2 for c in bottom)
    draw.rectangle((2 * line, height - 3 * line, width - 2 * line, height - 2 * line - 1), fill=darker)
    bar = max(3, size[1] // 10) * line
    draw.rectangle((5 * line, 7 * line, 5 * line + bar, height - 7 * line), fill=lamp)
    is_small = size[0] <= 150
    letters = face(BOLD, text_height * SCALE)
    spacing = text_height * SCALE // (16 if is_small and len(label) > 7 else 9)

    def length():
        return sum(letters.getlength(c) + spacing for c in label) - spacing

    begin = 5 * line + bar  # text lies between the bar and the right edge
    room = width - begin - (10 if is_small else 18) * line
    if length() > room:
        letters = face(BOLD, int(text_height * SCALE * room / length()))
    x = begin + (10 * line if not is_small else (width - begin - 3 * line - length()) / 2)
    y = height / 2 + (line if state == "pressed" else 0)
    for c in label:
        draw.text((x + line, y + line), c, font=letters, fill=(8, 8, 8), anchor="lm")
        draw.text((x, y), c, font=letters, fill=text, anchor="lm")
        x += letters.getlength(c) + spacing
    return picture.resize(size, Image.LANCZOS)


def sheet(size, labels, column, row, language_offset, text_height, total):
    picture = Image.new("RGB", total, (0, 0, 0))
    for language in range(2):
        for k, label in enumerate(labels):
            for s, state in enumerate(STATES):
                at = (s * column, language * language_offset + k * row)
                picture.paste(button(size, label[language], state, text_height), at)
    return picture


def buttons():
    picture = sheet(MENU_SIZE, MENU_LABELS, 220, 46, 240, 19, (660, 480 + MENU_FRAME_SIZE[1]))
    picture.paste(masked(metal_frame(MENU_FRAME_SIZE, 5, 9)), MENU_FRAME)
    return picture


def lamp(lit):
    size = 11 * SCALE
    core, rim = ((255, 191, 67), (255, 227, 171)) if lit else ((58, 50, 42), (92, 92, 94))
    picture = Image.new("RGB", (size, size), (20, 20, 22))
    draw = ImageDraw.Draw(picture)
    draw.ellipse((SCALE, SCALE, size - 1 - SCALE, size - 1 - SCALE), fill=core)
    draw.ellipse((3 * SCALE, 2 * SCALE, 6 * SCALE, 5 * SCALE), fill=rim)
    mask = Image.new("L", (size, size), 0)
    ImageDraw.Draw(mask).ellipse((0, 0, size - 1, size - 1), fill=255)
    # a hard edge against the transparent colour
    mask = mask.resize((11, 11), Image.BOX).point(lambda v: 255 if v > 127 else 0)
    result = Image.new("RGB", (11, 11), PINK)
    result.paste(picture.resize((11, 11), Image.BOX), (0, 0), mask)
    return result


def widgets():
    picture = sheet(SMALL_SIZE, SMALL_LABELS, 120, 34, 280, 13, (400, 628))
    picture.paste(lamp(False), (370, 0))
    picture.paste(lamp(True), (370, 20))
    for word, place in TITLES.items():
        picture.paste(masked(metal_word(word, 24, TITLE_SIZE)), place)
    return picture


# The options screen: panels, and the plates that its texts lie on. Rows are those of a grid of 14 pixels. A panel
# begins 26 pixels above its first plate: frame and title band take 20 of them.
PANELS = [(14, 68, 138, 205), (191, 68, 408, 178), (191, 194, 408, 330), (191, 334, 408, 471), (514, 68, 785, 423),
          (514, 427, 785, 590), (14, 475, 503, 560)]
BAND = 19
SELECTOR_ROWS, OPTION_ROWS = (7, 9, 11, 13), (7, 9, 11, 16, 18, 20, 22, 26, 28, 30, 32)
VALUE_ROWS = range(7, 28, 2)
PLATES = [(24, r, 128) for r in SELECTOR_ROWS] + [(200, r, 399) for r in OPTION_ROWS]
GROOVES = [(528, r, 777) for r in VALUE_ROWS]  # most of them are empty most of the time
FIELDS = [(122, 36, 254), (362, 36, 494)]
FIELD_FILL = (31, 31, 31)  # that of a field at rest


def options(base):
    picture = base.convert("RGB").resize((800, 600), Image.LANCZOS).filter(ImageFilter.GaussianBlur(2.2))
    picture = picture.point(lambda v: int(v * 0.55))  # mood only: lamps must not compete with the connector lines
    shade = Image.new("RGBA", picture.size, (0, 0, 0, 0))
    draw = ImageDraw.Draw(shade)
    for left, top, right, bottom in PANELS:
        draw.rectangle((left + 2, top + 2, right - 2, bottom - 2), fill=(15, 15, 15, 184))
        draw.rectangle((left + 3, top + 3, right - 3, top + BAND), fill=(79, 99, 119, 96))
        draw.line((left + 3, top + BAND + 1, right - 3, top + BAND + 1), fill=(6, 7, 8, 160))
    draw.rectangle((0, 0, 799, 50), fill=(10, 10, 12, 150))
    draw.rectangle((0, 50, 799, 51), fill=(255, 167, 0, 210))
    for left, row, right in GROOVES:
        draw.rectangle((left, row * 14 - 4, right, row * 14 + 17), fill=(0, 0, 0, 56))
        draw.line((left, row * 14 + 17, right, row * 14 + 17), fill=(99, 115, 143, 70))
    picture = Image.alpha_composite(picture.convert("RGBA"), shade)
    shadow = Image.new("RGBA", picture.size, (0, 0, 0, 0))
    for left, row, right in PLATES:
        ImageDraw.Draw(shadow).rectangle((left + 1, row * 14 - 2, right + 2, row * 14 + 19), fill=(0, 0, 0, 150))
    picture = Image.alpha_composite(picture, shadow.filter(ImageFilter.GaussianBlur(1.5))).convert("RGB")
    for left, row, right in PLATES:
        top, bottom, frame = STATES["rest"][:3]
        size = (right - left + 1, 22)
        plate = gradient(size, tuple(c * 3 // 4 for c in top), tuple(c * 3 // 4 for c in bottom))
        edge = ImageDraw.Draw(plate)
        edge.rectangle((0, 0, size[0] - 1, size[1] - 1), outline=tuple(c * 2 // 3 for c in frame))
        edge.line((1, 1, size[0] - 2, 1), fill=(74, 82, 94))
        picture.paste(plate, (left, row * 14 - 4))
    draw = ImageDraw.Draw(picture)
    for left, row, right in FIELDS:
        draw.rectangle((left, row * 14 - 4, right, row * 14 + 18), fill=FIELD_FILL, outline=(99, 115, 143))
    for left, top, right, bottom in PANELS:
        put(picture, metal_frame((right - left + 3, bottom - top + 3), 3, 6, dim=0.72), (left - 1, top - 1))
    return picture


def main():
    folder = Path(sys.argv[1])
    save(buttons(), folder / "buttons.pcx")
    save(widgets(), folder / "widgets.pcx")
    if len(sys.argv) > 2:
        save(options(Image.open(sys.argv[2])), folder / "options.pcx")


if __name__ == "__main__":
    main()
