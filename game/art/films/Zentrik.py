#!/usr/bin/env python3
"""The studio's film: a spark welds the word, the emblem lights up, a band of light passes.

usage: Zentrik.py WORK IMAGES; times are those of cuts.txt.
"""
import sys
from pathlib import Path

import numpy as np
from PIL import Image, ImageDraw

sys.path[:0] = [str(Path(__file__).parent.parent), str(Path(__file__).parent)]
import avi
import metal
from avi import HEIGHT, RATE, WIDTH, screen, smooth
from cuts import Cuts
from picture import XS, YS, noise, soft

CUT = Cuts("studio")
WORD_LEFT, WORD_TOP, WORD_SCALE = 70, 375, 0.975
EMBLEM_LEFT, EMBLEM_TOP, EMBLEM_SCALE = 271, 85, 2.225
RIGHT = WORD_LEFT + 678 * WORD_SCALE
MIDDLE = (400, 196)
BLACK_EDGE = 24  # pixels at the film's edge that are black in every frame; the light ends well before


def background():
    """A wall that a lamp lights; black before it reaches the edge."""
    r = np.hypot((XS - MIDDLE[0]) / 430, (YS - 260) / 300)
    light = np.clip(1 - r, 0, 1) ** 1.6
    return (light * (0.35 + 0.65 * noise(5, sizes=((5, 4), (10, 8), (20, 15), (40, 30)))))[..., None] * np.array(
        [0.14, 0.18, 0.235], np.float32
    )


def edge():
    """What every frame is multiplied with: 0 at the edge, 1 inside."""
    inside = np.minimum(np.minimum(XS, WIDTH - 1 - XS), np.minimum(YS, HEIGHT - 1 - YS))
    return smooth(inside, BLACK_EDGE, BLACK_EDGE + 30)[..., None]


def sparks(all_sparks, now):
    """Draws the sparks that are alive: short streaks that fall and cool."""
    img = Image.new("RGB", (WIDTH * 2, HEIGHT * 2))
    draw = ImageDraw.Draw(img)
    for x, y, vx, vy, born, life in all_sparks:
        age = now - born
        if not 0 <= age < life:
            continue
        heat = 1 - age / life
        px, py = x + vx * age, y + vy * age + 320 * age * age
        tx, ty = px - vx * 0.03, py - (vy + 640 * age) * 0.03
        colour = (int(255 * min(1, heat * 1.6)), int(225 * heat), int(150 * heat * heat))
        draw.line([px * 2, py * 2, tx * 2, ty * 2], fill=colour, width=3 if heat > 0.6 else 2)
    return np.asarray(img.resize((WIDTH, HEIGHT), Image.LANCZOS), np.float32) / 255


def seam_height(t):
    return WORD_TOP + 49 + 37 * np.sin(t * 9)


def thrown():
    """All sparks of the film: place, speed, birth and life."""
    rng = np.random.default_rng(11)
    born = []
    for _ in range(620):
        part = rng.random()
        t = CUT["weld"] + (CUT["weld_end"] - CUT["weld"]) * part
        a, v = rng.uniform(0, 2 * np.pi), rng.uniform(50, 320)
        born.append(
            (
                WORD_LEFT + (RIGHT - WORD_LEFT) * part,
                seam_height(t),
                v * np.cos(a),
                v * np.sin(a) - 110,
                t,
                rng.uniform(0.25, 0.9),
            )
        )
    for _ in range(200):  # the blow throws sparks out of the emblem
        a, v = rng.uniform(0, 2 * np.pi), rng.uniform(150, 520)
        born.append(
            (
                MIDDLE[0] + 112 * np.cos(a),
                MIDDLE[1] + 100 * np.sin(a),
                v * np.cos(a),
                v * np.sin(a) - 70,
                CUT["blow"],
                rng.uniform(0.3, 0.9),
            )
        )
    return born


class Film:
    def __init__(self):
        self.word = metal.Word("ZENTRIK", WIDTH, HEIGHT, WORD_LEFT, WORD_TOP, WORD_SCALE)
        self.emblem = metal.Word("*", WIDTH, HEIGHT, EMBLEM_LEFT, EMBLEM_TOP, EMBLEM_SCALE)
        self.ground, self.edge, self.born = background(), edge(), thrown()
        self.word_lit, self.emblem_lit = self.word.paint(metal.STEEL, glow=0.0), self.emblem.paint(
            metal.AMBER, glow=0.30
        )
        self.word_dark, self.emblem_dark = self.word.paint(metal.STEEL, glow=0.0, dim=0.13), self.emblem.paint(
            metal.STEEL, glow=0.0, dim=0.11
        )
        self.seam = self.word.down(np.exp(-((self.word.distance / 2.4) ** 2))[..., None])[..., 0]

    def arc(self, picture, n, t, front):
        """The seam's heat, the sparks and the arc that draws it."""
        seconds = CUT["weld_end"] - CUT["weld"]
        age = (front - XS) / (RIGHT - WORD_LEFT) * seconds
        heat = np.where(age >= 0, np.exp(-np.clip(age, 0, None) / 0.55), 0) * (
            1 - smooth(t, CUT["weld_end"], CUT["weld_end"] + 1.2)
        )
        glow = (self.seam * heat)[..., None]
        light = np.clip(glow * np.array([1.5, 0.62, 0.16]) + glow**3 * np.array([0.3, 0.7, 0.6]), 0, 1) + sparks(
            self.born, t
        )
        if t < CUT["weld_end"]:
            r = np.hypot(XS - front, YS - seam_height(t))
            flicker = 0.75 + 0.25 * np.sin(n * 2.4) * np.sin(n * 1.3)
            light = light + (np.exp(-((r / 6) ** 2)) * 1.6 + np.exp(-r / 42) * 0.55 * flicker)[..., None] * np.array(
                [0.78, 0.9, 1.0]
            )
        return screen(picture, screen(light, soft(light, 7) * 0.9))

    def frame(self, n):
        t = n / RATE
        rise, lit = smooth(t, -0.25, 0.4), smooth(t, CUT["blow"] - 0.04, CUT["blow"] + 0.14)
        front = WORD_LEFT + (RIGHT - WORD_LEFT) * (t - CUT["weld"]) / (CUT["weld_end"] - CUT["weld"])
        picture = self.ground * (0.55 * rise + 0.45 * lit)
        band = None
        if CUT["sweep"] < t < CUT["sweep_end"]:
            band = 40 + (t - CUT["sweep"]) / (CUT["sweep_end"] - CUT["sweep"]) * 900
        # the word is bright where it was welded, all of it after the blow
        welded = np.clip((front - XS) / 50, 0, 1)[..., None] if t > CUT["weld"] else 0
        word = self.word_lit if band is None else self.word.paint(metal.STEEL, glow=0.0, sweep=band)
        emblem = self.emblem_lit if band is None else self.emblem.paint(metal.AMBER, glow=0.30, sweep=band)
        level = np.maximum(welded * 0.42, lit)
        picture = metal.over(picture, self.word_dark * (1 - level) + word * level, rise)
        picture = metal.over(picture, self.emblem_dark * (1 - lit) + emblem * lit, rise)
        if t > CUT["weld"]:
            picture = self.arc(picture, n, t, front)
        # the blow: a glow of the emblem that swells and goes, not a white frame
        age = t - CUT["blow"]
        flash = smooth(age, -0.04, 0.08) * np.exp(-max(age - 0.08, 0) / 0.40)
        r = np.hypot(XS - MIDDLE[0], YS - MIDDLE[1])
        glow = (np.exp(-((r / 190) ** 2)) * 0.34 * flash)[..., None] * np.array([1.0, 0.72, 0.38])
        picture = screen(picture, soft(picture - 0.5, 14) * (0.5 + 0.6 * flash) + glow)
        return picture * self.edge * (1 - smooth(t, CUT["fade"], CUT["dark"]))


def main(work, images):
    film, out = Film(), avi.Writer(f"{images}/Zentrik.avi", 3, BLACK_EDGE)
    for n in range(round(CUT["end"] * RATE)):
        out.add(film.frame(n))
    out.close()


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
