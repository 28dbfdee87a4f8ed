#!/usr/bin/env python3
"""The intro: a machine walks past, far away and at the camera. VELDOR_Intro.py WORK IMAGES; times as in films.md.

The machine comes as layers on a clear ground (films/layers) and is put over a still plate here, with its mirror image in the water, haze,
splashes and a shake of the camera at each step. Shot numbers, walking speed and cameras are those of lib/shots.inc.
"""
import subprocess
import sys
from pathlib import Path

import numpy as np
from PIL import Image

sys.path[:0] = [str(Path(__file__).parent.parent), str(Path(__file__).parent)]
import avi
import metal
from avi import HEIGHT, WIDTH, blur, screen, smooth

RENDERED = 12
LENGTH = 16.0
STEP = 1.25
SPEED = 2.2 / 0.65 / 2.5
SHOTS = [(0.0, 1), (4.5, 2), (9.0, 3)]
LAST_STEP = 12.5
CAMERA = {  # place, aim, angle: as in lib/shots.inc
    1: ((-0.6, 1.05, -8.6), (-0.9, 1.95, 0), 50),
    3: ((0, 1.15, -15.5), (-0.2, 5.0, 0), 62),
}
SUN = {1: (0.38, 0.17, 1), 3: (-0.22, 0.13, 1)}
HAZE = np.array([0.66, 0.47, 0.36])


def load(path):
    return np.asarray(Image.open(path).convert("RGB"), float) / 255


def load_layer(path):
    """A layer with its cover, premultiplied, at the film's size."""
    picture = np.asarray(Image.open(path).convert("RGBA").resize((WIDTH, HEIGHT), Image.BICUBIC), float) / 255
    return np.concatenate([picture[..., :3] * picture[..., 3:], picture[..., 3:]], axis=-1)


def project(shot, point):
    """Pixel and pixels per metre of a point of the scene."""
    at, to, angle = (np.array(v, float) if np.ndim(v) else v for v in CAMERA[shot])
    ahead = (to - at) / np.linalg.norm(to - at)
    right = np.cross([0, 1, 0], ahead)
    right /= np.linalg.norm(right)
    up = np.cross(ahead, right)
    d = np.array(point, float) - at
    depth = max(d @ ahead, 0.1)
    scale = WIDTH / 2 / np.tan(np.radians(angle) / 2) / depth
    return WIDTH / 2 + d @ right * scale, HEIGHT / 2 - d @ up * scale, scale


def turned(point, degrees):
    a = np.radians(degrees)
    x, y, z = point
    return np.array([x * np.cos(a) + z * np.sin(a), y, -x * np.sin(a) + z * np.cos(a)])


def place(shot, t):
    """Turn and place of the machine, as in lib/shots.inc."""
    if shot == 1:
        turn = -90 + 16
        return turn, np.array([3.6, -0.1, 4.6]) + turned((0, 0, SPEED * t), turn)
    turn = 180 + 15
    return turn, np.array([0.2, -0.1, -1.2]) + turned((0, 0, SPEED * (min(t, LAST_STEP) - LAST_STEP)), turn)


def footfalls(shot, first, last):
    """Times and ground points at which feet come down. The order of the four phases is that of the walking cycle."""
    falls = []
    for side, front, offset in ((1, 1, 0.0), (-1, 1, 0.5), (1, -1, 0.58), (-1, -1, 0.08)):
        for k in range(0, 8):
            t = (k - offset) * 2.5
            if first - 1.5 < t < last and t <= LAST_STEP + 0.01:
                turn, at = place(shot, t)
                falls.append((t, at + turned((side * (3.35 + (0.15 if front < 0 else 0)), 0, front * 3.05 + 1.1), turn)))
    return falls


class Splashes:
    """Mud thrown up and mist spreading where feet come down."""

    def __init__(self, shot, first, last):
        self.shot, self.bits, self.puffs = shot, [], []
        rng = np.random.default_rng(20 + shot)
        for t, p in footfalls(shot, first, last):
            self.puffs.append((t, p))
            for _ in range(110):
                a, v = rng.uniform(0, 2 * np.pi), rng.uniform(0.3, 3.2)
                out = np.array([np.cos(a), 0, np.sin(a)])
                self.bits.append((t + rng.uniform(0, 0.12), p + out * rng.uniform(0.5, 1.4), out * v + np.array([0, rng.uniform(0.3, 1.0) * rng.uniform(0.5, 4.2), 0]), 0.006 + 0.03 * rng.random() ** 3, rng.random() < 0.22))
        self.ys, self.xs = np.mgrid[0:HEIGHT, 0:WIDTH].astype(float)

    def mist(self, t):
        veil = np.zeros((HEIGHT, WIDTH))
        for born, p in self.puffs:
            age = t - born
            if 0 <= age < 1.3:
                x, y, s = project(self.shot, p + np.array([0, 0.15 + 0.25 * age, 0]))
                w, h = s * (0.9 + 1.3 * age), s * (0.22 + 0.5 * age)
                veil += 0.42 * (1 - age / 1.3) ** 1.5 * smooth(age, 0, 0.1) * np.exp(-(((self.xs - x) / w) ** 2) - ((self.ys - y) / h) ** 2)
        return np.clip(veil, 0, 0.6)[..., None]

    def draw(self, picture, t):
        for born, p, v, size, bright in self.bits:
            age = t - born
            if not 0 < age < 1.0:
                continue
            q = p + v * age + np.array([0, -4.9 * age * age, 0])
            if q[1] < -0.05:
                continue
            x, y, s = project(self.shot, q)
            r = max(size * s, 0.7)
            x0, x1, y0, y1 = int(x - r - 1), int(x + r + 2), int(y - r - 1), int(y + r + 2)
            if x0 < 0 or y0 < 0 or x1 >= WIDTH or y1 >= HEIGHT:
                continue
            yy, xx = np.mgrid[y0:y1, x0:x1]
            cover = np.clip(r + 0.5 - np.hypot(xx - x, yy - y), 0, 1)[..., None] * 0.85
            picture[y0:y1, x0:x1] = picture[y0:y1, x0:x1] * (1 - cover) + (np.array([0.95, 0.72, 0.5]) if bright else np.array([0.10, 0.075, 0.055])) * cover


def ripple(layer, t, strength):
    """Moves the rows of a mirror image sideways as waves would."""
    rows = np.arange(HEIGHT)
    near = np.clip((rows - 300) / 180, 0, 1) * strength
    shift = near * (np.sin(rows * 0.33 - t * 3.1) + 0.7 * np.sin(rows * 0.71 + t * 4.3) + 0.5 * np.sin(rows * 1.7 - t * 6.1))
    columns = np.clip(np.arange(WIDTH)[None, :] + np.rint(shift).astype(int)[:, None], 0, WIDTH - 1)
    return layer[rows[:, None], columns]


def shaken(picture, t, amount):
    """Camera shake: decays after each step; the picture is drawn a little larger so that no edge shows."""
    k = np.floor(t / STEP) * STEP
    age = t - k
    if k < 0.1 or t > LAST_STEP + 1.2:
        return picture
    if t > LAST_STEP:
        age = t - LAST_STEP
    dy = amount * np.exp(-age * 7) * np.cos(age * 38)
    dx = amount * 0.4 * np.exp(-age * 7) * np.sin(age * 31)
    return np.roll(picture, (int(round(dy)), int(round(dx))), axis=(0, 1))


def moved(layer, dx, dy):
    """A layer moved by parts of a pixel; what comes in is clear."""
    out = Image.fromarray((np.clip(layer, 0, 1) * 255 + 0.5).astype(np.uint8), "RGBA").transform((WIDTH, HEIGHT), Image.AFFINE, (1, 0, -dx, 0, 1, -dy), Image.BICUBIC)
    return np.asarray(out, float) / 255


def graded(picture):
    picture = np.clip(picture, 0, 1)
    picture = screen(picture, blur(np.clip((picture - 0.62) / 0.38, 0, 1), 10) * 0.55)
    return np.clip(picture + 0.55 * (picture - 0.45) * picture * (1 - picture) * 2, 0, 1)


def close_shot(shot, n, t, parts, splashes, layers):
    plate, water = parts
    layer, mirror = load_layer(layers / f"machine{shot}-{n:02d}.png"), load_layer(layers / f"mirror{shot}-{n:02d}.png")
    picture = metal.over(plate, ripple(mirror, t, 5.0) * np.array([0.8, 0.8, 0.8, 1]) * water, 0.8)
    # feet darken the ground they press on
    shade = np.zeros((HEIGHT, WIDTH))
    below = layer[..., 3]
    shade = np.roll(blur(below[..., None], 7)[..., 0], 6, axis=0) * np.clip((splashes.ys - 350) / 40, 0, 1)
    picture = picture * (1 - 0.45 * shade[..., None])
    # the sun's glow creeps over the edges of what stands before it
    creep = blur(picture * (picture.mean(axis=-1, keepdims=True) > 0.72), 12) * 0.45
    picture = metal.over(picture, layer)
    picture = screen(picture, creep)
    mist = splashes.mist(t)
    picture = picture * (1 - mist) + HAZE * mist
    low = (np.clip((splashes.ys - 300) / 60, 0, 1) * np.clip((420 - splashes.ys) / 90, 0, 1) * 0.16)[..., None]
    picture = picture * (1 - low) + HAZE * low
    splashes.draw(picture, t)
    return picture


def far_shot(t, parts, layers, ys):
    plate, water = parts
    n = int(round((t - 4.5) * RENDERED)) % 30
    layer = load_layer(layers / f"machine2-{n:02d}.png")
    metre = WIDTH / 2 / np.tan(np.radians(15.2) / 2) / 80
    layer = moved(layer, 92 - SPEED * (t - 4.5) * metre, 61)
    flipped = np.roll(layer[::-1], 2 * 446 - HEIGHT + 1, axis=0)
    flipped[:446] = 0
    picture = metal.over(plate, ripple(flipped, t, 3.0) * np.clip(water + 0.25, 0, 1), 0.6)
    air = np.array([0.62, 0.44, 0.33])
    hazy = layer.copy()
    thick = (0.03 + 0.36 * np.clip((ys - 280) / 160, 0, 1))[..., None]
    hazy[..., :3] = layer[..., :3] * (1 - thick) + air * layer[..., 3:] * thick
    creep = blur(np.clip(picture - 0.62, 0, 1), 12) * 0.6
    picture = screen(metal.over(picture, hazy), creep)
    # drifting ground mist
    xs = np.arange(WIDTH)[None, :]
    drift = 0.55 + 0.25 * np.sin(xs / 61 + t * 0.5) + 0.2 * np.sin(xs / 27 - t * 0.8 + ys / 9)
    veil = (np.exp(-(((ys - 430) / 17) ** 2)) * 0.42 * drift)[..., None]
    return picture * (1 - veil) + air * veil


def main(work, images):
    layers = Path(work) / "film"
    subprocess.run([str(Path(__file__).parent / "layers"), str(layers)], check=True)
    parts = {s: (load(layers / f"plate{s}.png"), load(layers / f"water{s}.png")[..., :1]) for s in (1, 2, 3)}
    splashes = {1: Splashes(1, 0.0, 4.5), 3: Splashes(3, 9.0, LAST_STEP + 0.1)}
    ys = np.mgrid[0:HEIGHT, 0:WIDTH][0].astype(float)
    title = metal.Word("VELDOR", WIDTH, HEIGHT, 44, 372, 0.862)
    plain = title.paint(metal.AMBER)
    film = avi.Writer(f"{images}/VELDOR_Intro.avi", 4)
    stills = []
    for k in range(int(LENGTH * RENDERED)):
        t = k / RENDERED
        shot = [s for start, s in SHOTS if t >= start - 1e-6][-1]
        if shot == 2:
            picture = far_shot(t, parts[2], layers, ys)
            amount = 1.0
        else:
            start = 0.0 if shot == 1 else 9.0
            n = min(int(round((t - start) * RENDERED)), 53 if shot == 1 else 54)
            picture = close_shot(shot, n, t, parts[shot], splashes[shot], layers)
            amount = 5.0 if shot == 1 else 2.0 + 3.0 * smooth(t, 9.0, 12.5)
        picture = graded(picture)
        wide = Image.fromarray((picture * 255 + 0.5).astype(np.uint8)).resize((656, 492), Image.BICUBIC)
        picture = shaken(np.asarray(wide, float) / 255, t, amount)[6:486, 8:648]
        come = smooth(t, 13.4, 14.4)
        if come > 0:
            sweep = 30 + (t - 13.9) / 1.1 * 620 if 13.9 < t < 15.1 else None
            layer = title.paint(metal.AMBER, sweep=sweep) if sweep is not None else plain
            picture = metal.over(picture * (1 - 0.25 * come), layer, come)
            flash = np.exp(-(t - 13.5) / 0.25) if t >= 13.5 else 0
            picture = screen(picture, blur(layer[..., :3] * come, 12) * (0.3 + 1.2 * flash))
        picture = picture * smooth(t, 0.0, 0.8) * (1 - smooth(t, 15.35, 15.95))
        film.add(picture, 2)
        if k % 8 == 4:
            stills.append(Image.fromarray((np.clip(picture, 0, 1) * 255).astype(np.uint8)).resize((320, 240)))
    film.close()
    sheet = Image.new("RGB", (320 * 4, 240 * ((len(stills) + 3) // 4)))
    for k, s in enumerate(stills):
        sheet.paste(s, (320 * (k % 4), 240 * (k // 4)))
    sheet.save(f"{work}/VELDOR_Intro-sheet.png")


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
