"""What the drawn parts of the screens have in common: colours, plates, metal frames, and PCX files."""
import subprocess

import numpy as np
from PIL import Image, ImageFont

import metal

BOLD = "/usr/share/fonts/truetype/liberation/LiberationSans-Bold.ttf"
REGULAR = "/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf"
PINK = (255, 0, 255)
AMBER, CREAM, GREY = (255, 167, 0), (255, 215, 135), (203, 203, 203)


def face(file, pixels):
    return ImageFont.truetype(file, pixels)


def gradient(size, top, bottom):
    strip = Image.new("RGB", (1, size[1]))
    for y in range(size[1]):
        t = y / max(1, size[1] - 1)
        strip.putpixel((0, y), tuple(round(a + (b - a) * t) for a, b in zip(top, bottom)))
    return strip.resize(size)


def as_picture(colour, alpha):
    whole = np.clip(np.concatenate([colour, alpha], axis=-1), 0, 1)
    return Image.fromarray((whole * 255 + 0.5).astype(np.uint8), "RGBA")


BRASS = [(0.00, 255, 236, 190), (0.10, 246, 190, 96), (0.50, 186, 120, 50), (0.90, 236, 168, 78), (1.00, 255, 226, 166)]


def metal_frame(size, bar, cut, stops=BRASS, dim=0.8):
    """A frame of bevelled metal as an RGBA picture; clear inside and at its corners."""
    layer = metal.Frame(*size, bar, cut).paint(stops, glow=0, shadow=0, rim=0.8, dim=dim)
    alpha = np.clip(layer[..., 3:], 0, 1)
    colour = np.where(alpha > 0, layer[..., :3] / np.maximum(alpha, 1e-4), 0)
    return as_picture(colour, alpha)


def put(picture, layer, place):
    """Lays an RGBA picture on an RGB one."""
    picture.paste(layer, place, layer)


def masked(layer, ground=(10, 9, 8)):
    """An RGBA picture as the program draws it: hard edges against the transparent colour."""
    picture = Image.new("RGB", layer.size, ground)
    put(picture, layer, (0, 0))
    alpha = layer.getchannel("A").point(lambda v: 255 if v > 127 else 0)
    result = Image.new("RGB", layer.size, PINK)
    result.paste(picture, (0, 0), alpha)
    return result


def cut_off_corners(picture, frame, cut):
    """Nothing is drawn outside of a frame whose corners are cut off."""
    edge = masked(frame)
    right, bottom = picture.size[0] - 1, picture.size[1] - 1
    for x in range(cut):
        for y in range(cut - x):
            for at in ((x, y), (right - x, y), (x, bottom - y), (right - x, bottom - y)):
                if edge.getpixel(at) == PINK:
                    picture.putpixel(at, PINK)


def metal_word(word, tall, size, dim=1.0):
    """A word in the letters of the titles, `tall` pixels high, as an RGBA picture."""
    layer = metal.Word(word, *size, 2, 3, tall / 100, over=4).paint(glow=0, shadow=0, rim=1.2, dim=dim)
    alpha = np.clip(layer[..., 3:], 0, 1)
    colour = np.where(alpha > 0, layer[..., :3] / np.maximum(alpha, 1e-4), 0)
    return as_picture(colour, alpha)


def save(picture, path):
    png = path.with_suffix(".tmp.png")
    picture.save(png)
    subprocess.run(["convert", str(png), "-type", "TrueColor", "-compress", "RLE", f"pcx:{path}"], check=True)
    png.unlink()
