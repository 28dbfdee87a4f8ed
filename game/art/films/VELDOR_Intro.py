#!/usr/bin/env python3
"""The intro: dawn, a machine wakes, walks up, fires once, and its last picture is the menu's.

usage: VELDOR_Intro.py WORK IMAGES [FIRST LAST]

The machine comes as layers on a clear ground (layers.py); here it is put over still plates, with its image in the
water, its shadow, haze, dust and light. Times are those of cuts.txt. With FIRST and LAST only those frames are made,
so that several can run at once; the film is written when all are there.
"""
import subprocess
import sys
from functools import lru_cache
from pathlib import Path

import numpy as np
from PIL import Image

sys.path[:0] = [str(Path(__file__).parent.parent), str(Path(__file__).parent)]
import avi
import effects
import metal
from avi import HEIGHT, RATE, WIDTH, screen, smooth
from picture import XS, YS, affine, encoded, framed, graded, linear, load, load_layer, noise, soft, to_image
from shots import (
    CUT,
    LEGS,
    STARTS,
    foot,
    footfalls,
    in_world,
    lamps,
    muzzles,
    pose,
    project,
    rotated,
    shot_at,
    turned,
)

FRAMES = round(CUT["end"] * RATE)
TITLE = ("VELDOR", 800, 140, 30, 30, 0.80)  # word, canvas, place and scale as in ../render
TITLE_MIDDLE = (30 + 257, 30 + 40)
BIG = 2.0
FLASH_FRAMES = 4
DUST = {"feet": ((0.36, 0.28, 0.22), (0.52, 0.36, 0.22)), "menu": ((0.40, 0.31, 0.25), (0.50, 0.34, 0.20))}
AIR = {"dawn": (0.27, 0.22, 0.23), "feet": (0.56, 0.45, 0.38), "menu": (0.56, 0.46, 0.43)}


def of_light(colour):
    return np.array(colour, np.float32)


class Work:
    """The traced layers, read when they are wanted."""

    def __init__(self, folder):
        self.folder = folder
        self.plate = lru_cache(None)(lambda name: load(folder / f"{name}.png"))
        self.layer = lru_cache(12)(lambda name: load_layer(folder / f"{name}.png"))

    def has(self, name):
        return (self.folder / f"{name}.png").exists()

    def pose(self, kind, n):
        """The layer of a frame. A frame without one gets the mean of its neighbours, each moved its part of the hull's
        way: what stands on the ground stays there, what swings is blurred as on film."""
        if self.has(f"{kind}-{n:03d}"):
            return self.layer(f"{kind}-{n:03d}")
        shot = shot_at(n / RATE)
        before = next(k for k in range(n, -1, -1) if self.has(f"{kind}-{k:03d}"))
        after = next((k for k in range(n, FRAMES) if self.has(f"{kind}-{k:03d}")), None)
        if shot_at(before / RATE) != shot:
            return self.layer(f"{kind}-{after:03d}")
        if after is None or shot_at(after / RATE) != shot:
            return self.layer(f"{kind}-{before:03d}")
        return sum(
            self.leaned(kind, k, n, shot) * w
            for k, w in ((before, (after - n) / (after - before)), (after, (n - before) / (after - before)))
        )

    def leaned(self, kind, k, n, shot):
        """Frame k's layer as if the hull stood where it stands in frame n."""
        was, now = pose(k / RATE), pose(n / RATE)
        seen = (0, -0.2, 3.6) if shot == "close" else (0, 0, 0)  # the part of the hull that fills the picture
        x0, y0, _ = project(shot, in_world(was, seen))
        x1, y1, _ = project(shot, in_world(now, seen))
        ground = project(shot, now.place)[1]
        dx, dy = x1 - x0, y1 - y0
        if kind == "shadow":
            return self.layer(f"{kind}-{k:03d}")
        if kind == "mirror":
            dy, y1 = -dy, 2 * ground - y1
        tall = y1 - ground
        # the shift grows from nothing at the ground to the hull's
        lean, grow = dx / tall, dy / tall
        return affine(self.layer(f"{kind}-{k:03d}"), (1, -lean, lean * ground, 0, 1 - grow, grow * ground))


def shaded(plate, shadow, water, strength):
    """The ground under the machine: less sun, and less sky where feet and hull are close."""
    sun, sky = soft(shadow[..., 0], 4, 2)[..., None], soft(shadow[..., 1], 5, 2)[..., None]
    plate = plate * (1 - (1 - sun) * (0.50 - 0.38 * water) * strength)
    return plate * (1 - (1 - np.clip(sky, 0, 1) ** 1.3) * (0.80 - 0.35 * water))


def pressed(picture, shot, p, places):
    """The dark line where a foot meets the ground, fainter the higher it is."""
    gx, gz = places
    dark = np.zeros((HEIGHT, WIDTH), np.float32)
    for leg in LEGS:
        where, up = foot(p, leg)
        r = np.hypot(gx - where[0], gz - where[2])
        dark = np.maximum(dark, np.exp(-((r / (1.5 + up)) ** 4)) * np.exp(-3.0 * up))
    return picture * (1 - 0.62 * dark[..., None])


def ripple(layer, t, strength, horizon):
    """Moves the rows of a mirror image sideways as waves would."""
    rows = np.arange(HEIGHT)
    near = np.clip((rows - horizon) / (HEIGHT - horizon), 0, 1) * strength
    shift = near * (
        np.sin(rows * 0.27 - t * 3.1) + 0.7 * np.sin(rows * 0.58 + t * 4.3) + 0.5 * np.sin(rows * 1.4 - t * 6.1)
    )
    columns = np.clip(np.arange(WIDTH)[None, :] + np.rint(shift).astype(int)[:, None], 0, WIDTH - 1)
    return layer[rows[:, None], columns]


def hazy(layer, air, low, high, horizon):
    """The air between the machine and the camera, thicker above the ground."""
    thick = (high + (low - high) * np.exp(-np.clip(horizon + 60 - YS, 0, None) / 110))[..., None]
    out = layer.copy()
    out[..., :3] = layer[..., :3] * (1 - thick) + of_light(air) * layer[..., 3:] * thick
    return out


def mist(picture, t, level, row, height, colour, seed, speed):
    """A bank of ground mist that drifts."""
    wide = drift(seed)
    at = int(t * speed) % wide.shape[1]
    cover = np.roll(wide, -at, axis=1)[:, :WIDTH] * np.exp(-(((YS - row) / height) ** 2)) * level
    return picture * (1 - cover[..., None]) + of_light(colour) * cover[..., None]


@lru_cache(None)
def drift(seed):
    return np.concatenate([noise(seed, sizes=((6, 12), (12, 24), (24, 48)))] * 2, axis=1) ** 1.4


def strike(t, at, times):
    """A lamp that is switched on: a few flickers, then it burns."""
    if t < at:
        return 0.0
    for start, end, level in times:
        if start <= t - at < end:
            return level
    return 1.0 - 0.25 * np.exp(-(t - at - times[-1][1]) / 0.18)


def visor_level(t):
    return strike(t, CUT["visor"], ((0, 0.08, 0.8), (0.08, 0.17, 0.05), (0.17, 0.21, 0.55), (0.21, 0.34, 0.12)))


def lamp_level(t):
    return strike(t, CUT["lamps"], ((0, 0.05, 1.25), (0.05, 0.10, 0.2)))


def forward(p):
    """The direction in which the head looks."""
    return turned(rotated((0, 0, 1), 6, p.head, 0), p.turn)


class Intro:
    def __init__(self, work, images):
        self.work = Work(work)
        self.falls = {
            s: footfalls(s, CUT[a], CUT[b]) for s, a, b in (("feet", "feet", "walk"), ("menu", "walk", "aim"))
        }
        steps = [t for falls in self.falls.values() for t, _ in falls]
        for name in (event for event in CUT if event.startswith(("step", "toe"))):
            if min(abs(t - CUT[name]) for t in steps) > 0.5 / RATE:
                raise SystemExit(f"no foot comes down at {name}")
        self.steps = {s: effects.Steps(s, self.falls[s], *DUST[s]) for s in self.falls}
        # the menu's water grows dark towards its line of text, as in ../render
        dark = [
            np.interp(np.arange(HEIGHT), (490, 530, 600), (1, low, foot))
            for low, foot in ((0.878, 0.314), (0.722, 0.220), (0.549, 0.125))
        ]
        self.strip = np.stack(dark, axis=-1)[:, None, :].astype(np.float32)
        self.places = {s: effects.ground_places(s) for s in ("dawn", "feet", "menu")}
        self.menu = load_pcx(f"{images}/menu.pcx")
        word = metal.Word(*TITLE, over=3)
        self.word, self.title = word, np.zeros((HEIGHT, WIDTH, 4))
        self.title[:140] = word.paint()
        width = int(642 * BIG)
        big = metal.Word("VELDOR", width + 240, int(100 * BIG) + 240, 120, 120, BIG)
        self.big = to_image(big.paint(), "RGBA")
        p = pose(CUT["fire"])
        ends = [np.array(project("menu", m)[:2]) for m in muzzles(p)]
        behind = [np.array(project("menu", m)[:2]) for m in muzzles(pose(CUT["fire"] + 0.06))]
        self.muzzle = sum(ends) / 2
        self.barrel = self.muzzle - sum(behind) / 2
        self.smoke = effects.Smoke(self.muzzle, self.barrel, CUT["fire"])

    def dawn(self, t):
        p = pose(t)
        water = self.work.plate("water-dawn")[..., :1]
        picture = shaded(self.work.plate("plate-dawn"), self.work.layer("shadow-000")[..., :3], water, 0.5)
        picture = pressed(picture, "dawn", p, self.places["dawn"])
        picture = metal.over(picture, ripple(self.work.layer("mirror-000"), t, 3.0, 400) * water, 0.7)
        picture = mist(picture, t, 0.55, 425, 22, AIR["dawn"], 3, 16)
        picture = metal.over(picture, hazy(self.work.layer("pose-000"), AIR["dawn"], 0.20, 0.10, 440))
        picture = mist(picture, t, 0.50, 480, 34, AIR["dawn"], 4, 34)
        return graded(picture), 1.02 + 0.035 * t / CUT["close"], (480, 380), (0.0, 0.0)

    def close(self, n, t):
        p = pose(t)
        visor, lit = visor_level(t), lamp_level(t)
        plate = self.work.plate("plate-close")
        if t < CUT["rise"]:
            dark = self.work.layer("close-dark")
            light = linear(dark[..., :3])
            for name, level in (("visor", visor), ("lamps", lit)):
                if level > 0:
                    light = light + linear(self.work.layer(f"close-{name}")[..., :3]) * level
            layer = np.concatenate([encoded(light), dark[..., 3:]], axis=-1)
        else:
            layer = self.work.pose("pose", n)
        picture = metal.over(plate, hazy(layer, AIR["dawn"], 0.10, 0.05, 560))
        places = [project("close", lamp) for lamp in lamps(p)]
        if visor > 0:
            x, y, s = project("close", in_world(p, (0, -0.22, 5.75)))
            glow = np.exp(-(((XS - x) / (s * 1.5)) ** 2) - ((YS - y) / (s * 0.75)) ** 2) * 0.30 * visor
            picture = screen(picture, glow[..., None] * of_light((1.0, 0.55, 0.15)))
        if lit > 0:
            picture = screen(picture, effects.lamp_light(places, lit))
            for lamp in lamps(p):
                picture = screen(picture, effects.beam("close", lamp, forward(p), lit))
        picture = mist(picture, t, 0.36, 560, 60, AIR["dawn"], 5, 30)
        up = smooth(t, CUT["rise"], CUT["up"])
        age = t - CUT["up"]
        shift = (0.0, 2.0 * np.exp(-age * 6) * np.cos(age * 30) if age > 0 else 0.0)
        return graded(picture), 1.30 - 0.26 * up - 0.01 * (t - CUT["close"]), (430, 400 - 60 * up), shift

    def ground(self, shot, n, t, horizon, flash=0.0):
        """A walking shot up to its haze; the flash lights ground and machine."""
        p, plate, water = pose(t), self.work.plate(f"plate-{shot}"), self.work.plate(f"water-{shot}")[..., :1]
        steps = self.steps[shot]
        layer, mirror = self.work.pose("pose", n), self.work.pose("mirror", n)
        picture = shaded(plate, self.work.pose("shadow", n)[..., :3], water, 1.0)
        picture = pressed(picture, shot, p, self.places[shot])
        picture = metal.over(picture, ripple(mirror, t, 6.0, horizon) * water, 0.78)
        picture = np.clip(picture + steps.rings(t, water), 0, 1)
        if flash > 0:
            first = round(CUT["fire"] * RATE)
            light = (
                linear(self.work.layer(f"flash-{min(max(n - first, 0), FLASH_FRAMES - 1) + first:03d}")[..., :3])
                * 0.45
                * flash
                * of_light((1.0, 0.74, 0.60))
            )
            layer = np.concatenate(
                [np.minimum(encoded(linear(layer[..., :3]) + light), layer[..., 3:]), layer[..., 3:]], axis=-1
            )
            picture = encoded(
                linear(picture) + linear(self.work.plate("flash-plate")) * 0.8 * flash * of_light((1.0, 0.74, 0.60))
            )
        steps.draw(picture, t, near=False)
        low, high = (0.13, 0.03) if shot == "feet" else (0.38, 0.15)
        creep = soft(picture * (picture.mean(axis=-1, keepdims=True) > 0.72), 12) * 0.4
        picture = screen(metal.over(picture, hazy(layer, AIR[shot], low, high, horizon)), creep)
        if shot == "menu":
            picture = screen(picture, effects.lamp_light([project(shot, lamp) for lamp in lamps(p)], 0.7, 0.55))
        picture = mist(picture, t, 0.20, horizon + 14, 26, AIR[shot], 6, 22)
        steps.draw(picture, t, near=True)
        return picture

    def feet(self, n, t):
        picture = self.ground("feet", n, t, 428)
        x, y = self.steps["feet"].shake(t, 9.0)
        return graded(picture), 1.06, (380, 470), (x, y)

    def arrival(self, n, t):
        fire, title, land = CUT["fire"], CUT["title"], CUT["land"]
        age = t - fire
        flash = float(np.exp(-max(age - 0.045, 0) / 0.085)) if age >= -1e-6 else 0.0
        near = 1 - smooth(t, CUT["walk"], fire) * 0.7 - smooth(t, fire, land) * 0.3
        zoom = 1 + 0.15 * near
        x, y = self.steps["menu"].shake(t, 6.0)
        if 0 <= age < 1:
            x, y = x + 9 * np.exp(-age * 7) * np.cos(age * 47), y + 6 * np.exp(-age * 6) * np.sin(age * 39)
        still = smooth(t, title - 0.1, title + 0.75)
        picture = self.untitled()
        if still < 1:
            own = graded(self.ground("menu", n, t, 455, flash if flash > 0.02 else 0)) * self.strip
            picture = own * (1 - still) + picture * still
        if 0 <= age < 0.6:
            picture = screen(picture, effects.muzzle_flash(self.muzzle, self.barrel, age))
        picture = np.ascontiguousarray(picture)
        self.smoke.draw(picture, t)
        if t >= land - 1e-6:
            a = t - land
            menu = picture * (1 - self.title[..., 3:]) + self.title[..., :3]
            picture = menu * (1 - smooth(t, land, land + 0.3)) + self.smoked(t) * smooth(t, land, land + 0.3)
            flare = np.exp(-a / 0.16)
            picture = screen(picture, soft(self.title[..., :3] * self.title[..., 3:], 14) * 0.95 * flare)
            if CUT["shine"] < t < CUT["shine_end"]:
                band = -20 + (t - CUT["shine"]) / (CUT["shine_end"] - CUT["shine"]) * 680
                picture[:140] = metal.over(picture[:140], self.word.paint(sweep=band, glow=0, shadow=0))
            x, y = x, y + 5 * np.exp(-a * 9) * np.cos(a * 40)
            picture = framed(picture, 1, (0, 0), (float(x), float(y)) if abs(y) > 0.05 else (0.0, 0.0))
            return picture, 1, (0, 0), (0.0, 0.0)
        picture = framed(picture, zoom, (500, 330), (float(x), float(y)))
        if t > title:
            picture = self.flown(picture, t)
        return picture, 1, (0, 0), (0.0, 0.0)

    @lru_cache(None)
    def untitled(self):
        """The menu's picture with sky where the title stands."""
        plate = graded(self.work.plate("plate-menu"))
        cover = soft((self.title[..., 3] > 0.004).astype(np.float32), 8)
        cover = np.clip(soft((cover > 0.02).astype(np.float32), 8) * 1.6 - 0.3, 0, 1)[..., None]
        edge = (cover > 0.05) & (cover < 0.95)
        off = (self.menu - plate)[edge[..., 0]].mean(axis=0)  # both skies alike where they meet
        return self.menu * (1 - cover) + (plate + off) * cover

    def smoked(self, t):
        picture = self.menu.copy()
        self.smoke.draw(picture, t)
        keep = smooth(t, CUT["shine_end"] - 0.3, CUT["shine_end"] + 0.6)
        return picture * (1 - keep) + self.menu * keep

    def flown(self, picture, t):
        """The title on its way: out of the smoke, up to us, and down into its place."""
        total = np.zeros((HEIGHT, WIDTH, 4), np.float32)
        for k in range(7):
            u = np.clip((t + (k - 3) / (8 * RATE) - CUT["title"]) / (CUT["land"] - CUT["title"]), 0, 1)
            rise, fall = 1 - (1 - min(u / 0.52, 1)) ** 2.2, max(0, (u - 0.52) / 0.48) ** 2.4
            start, top, end = (
                np.array([*self.muzzle, 0.04]),
                np.array([404, 292, 1.16]),
                np.array([*TITLE_MIDDLE, TITLE[5]]),
            )
            x, y, scale = (start * (1 - rise) + top * rise) * (1 - fall) + end * fall
            lean = np.radians(-14 * (1 - rise))
            z = BIG / scale
            c, s = np.cos(lean) * z, np.sin(lean) * z
            w, h = self.big.size
            matrix = (c, s, w / 2 - c * x - s * y, -s, c, h / 2 + s * x - c * y)
            moved = self.big.transform((WIDTH, HEIGHT), Image.AFFINE, matrix, Image.BICUBIC)
            total += np.asarray(moved, np.float32) / 255 / 7
        u = (t - CUT["title"]) / (CUT["land"] - CUT["title"])
        heat = float(np.exp(-u / 0.28))
        total[..., :3] = np.minimum(
            total[..., :3] + total[..., 3:] * of_light((0.95, 0.55, 0.22)) * heat, total[..., 3:]
        )
        come = smooth(u, 0.0, 0.18)
        picture = metal.over(picture * (1 - 0.16 * come * (1 - smooth(u, 0.7, 1))), total, come)
        return screen(picture, soft(total[..., :3], 16) * (0.25 + 1.2 * heat) * come)

    def frame(self, n):
        t = n / RATE
        shot = shot_at(t)
        picture, zoom, at, shift = {
            "dawn": lambda: self.dawn(t),
            "close": lambda: self.close(n, t),
            "feet": lambda: self.feet(n, t),
            "menu": lambda: self.arrival(n, t),
        }[shot]()
        picture = framed(picture, zoom, at, shift)
        level = smooth(t, 0.0, 0.9) * (1 - 0.85 * np.exp(-((t - STARTS[shot]) / 0.05)) * (shot in ("close", "feet")))
        return picture * level if level < 1 else picture


def load_pcx(path):
    with Image.open(path) as file:
        return np.asarray(file.convert("RGB"), np.float32) / 255


def main(work, images, first="0", last=str(FRAMES)):
    folder, made = Path(work) / "film", Path(work) / "frames"
    made.mkdir(parents=True, exist_ok=True)
    subprocess.run([sys.executable, str(Path(__file__).parent / "layers.py"), str(folder)], check=True)
    intro = Intro(folder, images)
    for n in range(int(first), min(int(last), FRAMES)):
        if not (made / f"{n:03d}.png").exists():
            part = made / f"part-{n:03d}.png"
            to_image(intro.frame(n)).save(part, compress_level=1)
            part.rename(made / f"{n:03d}.png")
    if all((made / f"{n:03d}.png").exists() for n in range(FRAMES)):
        film = avi.Writer(f"{images}/VELDOR_Intro.avi", 3)
        for n in range(FRAMES):
            film.add(load(made / f"{n:03d}.png"))
        film.close()


if __name__ == "__main__":
    main(*sys.argv[1:])
