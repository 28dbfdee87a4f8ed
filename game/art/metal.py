"""Draws words as bevelled metal.

As a program: metal.py WORD WIDTH HEIGHT X Y SCALE OUT.png (a transparent background, positions in pixels).
"""
import sys

import numpy as np
from PIL import Image

import glyphs

AMBER = [(0.00, 255, 240, 204), (0.14, 255, 214, 138), (0.34, 246, 164, 56), (0.47, 150, 82, 22), (0.53, 122, 62, 14),
         (0.62, 190, 110, 32), (0.82, 255, 190, 92), (1.00, 255, 226, 166)]
STEEL = [(0.00, 226, 234, 242), (0.16, 172, 186, 200), (0.36, 108, 122, 136), (0.48, 44, 52, 60), (0.53, 34, 40, 48),
         (0.64, 84, 96, 110), (0.84, 156, 170, 184), (1.00, 208, 218, 228)]


def ramp(stops, t):
    """Colours 0..1 for the places t (0..1) of a list of (place, red, green, blue)."""
    at = [s[0] for s in stops]
    return np.stack([np.interp(t, at, [s[k] / 255 for s in stops]) for k in (1, 2, 3)], axis=-1)


class Shape:
    """A shape on a canvas: signed distance to its outline (inside positive) and its direction, in pixels.

    rings: closed outlines, holes included. Colours run from top down over `tall` pixels; bevel, glow and shadow have
    the size that suits letters of `unit` pixels.
    """

    def __init__(self, rings, width, height, x, y, tall, unit, over=2):
        self.size, self.over = (width, height), over
        self.tall, self.unit = tall, unit
        w, h = width * over, height * over
        ys, xs = np.mgrid[0:h, 0:w].astype(np.float32)
        xs, ys = (xs + 0.5) / over, (ys + 0.5) / over
        self.xs, self.ys, self.top, self.left = xs, ys, y, x
        best = np.full((h, w), 1e9, np.float32)
        inside = np.zeros((h, w), bool)
        for points in rings:
            for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
                dx, dy = bx - ax, by - ay
                t = np.clip(((xs - ax) * dx + (ys - ay) * dy) / (dx * dx + dy * dy), 0, 1)
                np.minimum(best, (xs - ax - t * dx) ** 2 + (ys - ay - t * dy) ** 2, out=best)
                if ay != by:
                    inside ^= ((ay > ys) != (by > ys)) & (xs < dx * (ys - ay) / dy + ax)
        distance = np.sqrt(best)
        self.inside = inside
        self.distance = np.where(inside, distance, -distance)
        gy, gx = np.gradient(self.distance, 1 / over)
        length = np.maximum(np.hypot(gx, gy), 1e-3)
        self.gx, self.gy = gx / length, gy / length
        rng = np.random.default_rng(7)
        streak = rng.normal(0, 1, (h, max(1, w // 24)))
        streak = np.repeat(streak, 24, axis=1)[:, :w]
        streak = np.pad(streak, ((0, 0), (0, w - streak.shape[1])), mode="edge")
        kernel = np.ones(31) / 31
        self.brush = np.apply_along_axis(lambda r: np.convolve(r, kernel, "same"), 1, streak).astype(np.float32)

    def down(self, picture):
        o = self.over
        h, w = picture.shape[0] // o, picture.shape[1] // o
        return picture.reshape(h, o, w, o, -1).mean(axis=(1, 3))

    def paint(self, stops=AMBER, light=(-0.55, -0.75, 0.55), sweep=None, glow=0.35, glow_colour=(1.0, 0.60, 0.18),
              rim=2.2, shadow=0.7, dim=1.0):
        """Returns premultiplied red, green, blue, alpha (0..1) of the canvas.

        sweep: where a band of light lies, in pixels, or None.
        """
        d = self.distance
        bevel = self.unit * 0.075
        slope = np.where(d < bevel, 1.0 - 0.35 * np.clip(d / bevel, 0, 1), 0.0) * 1.15
        nz = 1 / np.sqrt(1 + slope * slope)
        nx, ny = -self.gx * slope * nz, -self.gy * slope * nz
        lx, ly, lz = np.array(light) / np.linalg.norm(light)
        diffuse = nx * lx + ny * ly + nz * lz
        place = np.clip((self.ys - self.top) / self.tall, 0, 1)
        face = ramp(stops, np.clip(place + self.brush * 0.03, 0, 1)) * (1 + self.brush[..., None] * 0.06)
        tint = np.array([0.9, 0.97, 1.0] if stops is STEEL else [1.0, 0.86, 0.66])
        lit = np.array(stops[0][1:]) / 255 * np.clip(diffuse, 0.02, 1)[..., None] ** 1.5 * tint
        side = ramp(stops, np.clip(0.5 - 0.5 * (ny * 0.9), 0, 1)) * 0.15 + lit
        edge = np.clip((bevel - d) * 1.5 + 0.5, 0, 1)[..., None]
        colour = face * (1 - edge) + side * edge
        ridge = np.exp(-(((d - bevel) / 0.9) ** 2))[..., None] * np.clip(-ny * 0.6 - nx * 0.4 + 0.35, 0, 1)[..., None]
        colour = colour + ridge * 0.45
        colour = colour * dim
        if sweep is not None:
            across = self.xs + (self.ys - self.top) * 0.45 - sweep
            band = np.exp(-((across / (self.unit * 0.28)) ** 2)) * (0.35 + 0.9 * np.clip(diffuse, 0, 1))
            band += 0.6 * np.exp(-((across / (self.unit * 0.07)) ** 2)) * edge[..., 0]
            colour = colour + band[..., None] * np.array([1.0, 0.92, 0.78]) * 0.8
        cover = np.clip(d * self.over + 0.5, 0, 1)[..., None]
        colour = np.clip(colour, 0, 1)
        dark = np.clip(d * self.over + 0.5 + rim * self.over, 0, 1)[..., None]
        halo = np.exp(-np.clip(-d, 0, None) / (self.unit * 0.14))[..., None] * glow
        o = int(self.unit * 0.05 * self.over)
        cast = np.roll(np.exp(-np.clip(-d, 0, None) / (self.unit * 0.05)), (o, o), axis=(0, 1))[..., None] * shadow
        rgb = halo * np.array(glow_colour) * 0.8
        alpha = np.maximum(halo * 0.5, cast)
        rgb = rgb * (1 - dark) + np.array([0.035, 0.028, 0.02]) * dark
        alpha = alpha * (1 - dark) + dark
        rgb = rgb * (1 - cover) + colour * cover
        alpha = alpha * (1 - cover) + cover
        return self.down(np.concatenate([rgb, alpha], axis=-1))


class Word(Shape):
    """A word in the letters of glyphs.py: its top left corner at (x, y), `scale` pixels per unit."""

    def __init__(self, word, width, height, x, y, scale, over=2):
        rings = [[(x + px * scale, y + py * scale) for px, py in ring]
                 for letter in glyphs.rings(word) for ring in letter]
        super().__init__(rings, width, height, x, y, scale * 100, scale * 100, over)


def cut_corners(left, top, right, bottom, cut):
    """The outline of a rectangle without its corners, as the letters have it."""
    return [(left + cut, top), (right - cut, top), (right, top + cut), (right, bottom - cut),
            (right - cut, bottom), (left + cut, bottom), (left, bottom - cut), (left, top + cut)]


class Frame(Shape):
    """A panel's frame that fills the canvas: `margin` pixels around it, bars of `bar` pixels, corners cut by `cut`."""

    def __init__(self, width, height, bar, cut, margin=1, over=4):
        outer = cut_corners(margin, margin, width - margin, height - margin, cut)
        inner = cut_corners(margin + bar, margin + bar, width - margin - bar, height - margin - bar, cut - bar * 0.59)
        super().__init__([outer, inner], width, height, margin, margin, height - 2 * margin, bar * 6, over)


def over(ground, layer, strength=1.0):
    """Puts a premultiplied layer on a picture (both 0..1)."""
    return ground * (1 - layer[..., 3:] * strength) + layer[..., :3] * strength


def main(argv):
    word, width, height, x, y, scale, out = argv[1], *(int(v) for v in argv[2:6]), float(argv[6]), argv[7]
    layer = Word(word, width, height, x, y, scale, over=3).paint()
    alpha = np.clip(layer[..., 3:], 0, 1)
    rgb = np.where(alpha > 0, layer[..., :3] / np.maximum(alpha, 1e-4), 0)
    pixels = np.clip(np.concatenate([rgb, alpha], axis=-1), 0, 1) * 255 + 0.5
    Image.fromarray(pixels.astype(np.uint8), "RGBA").save(out)


if __name__ == "__main__":
    main(sys.argv)
