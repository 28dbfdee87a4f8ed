"""What is drawn over the traced layers: dust, clods and rings of a step, lamps in the mist, muzzle flash, smoke."""
import numpy as np
from PIL import Image

from avi import HEIGHT, WIDTH, smooth
from picture import XS, YS, noise
from shots import CAMERA, project

SPRITE = 128


def puff_sprites(count=6):
    """Cover of small clouds, SPRITE pixels square."""
    ys, xs = np.mgrid[-1 : 1 : SPRITE * 1j, -1 : 1 : SPRITE * 1j]
    round_ = np.clip(1 - np.hypot(xs, ys), 0, 1)
    sizes = ((3, 3), (6, 6), (12, 12), (24, 24))
    return [np.clip(round_ * 1.9 * (0.25 + noise(70 + k, SPRITE, SPRITE, sizes)) - 0.18, 0, 1) for k in range(count)]


PUFFS = puff_sprites()


def stamp(picture, sprite, x, y, width, height, colour, strength):
    """Lays a cloud over the picture, in place."""
    w, h = max(int(width), 2), max(int(height), 2)
    x0, y0 = int(round(x - w / 2)), int(round(y - h / 2))
    a, b, c, d = max(x0, 0), max(y0, 0), min(x0 + w, WIDTH), min(y0 + h, HEIGHT)
    if a >= c or b >= d or strength < 0.004:
        return
    cover = Image.fromarray((sprite * 255).astype(np.uint8)).resize((w, h), Image.BILINEAR)
    cover = np.asarray(cover, np.float32)[b - y0 : d - y0, a - x0 : c - x0, None] / 255 * strength
    picture[b:d, a:c] = picture[b:d, a:c] * (1 - cover) + np.asarray(colour, np.float32) * cover


def ground_places(shot):
    """The place on the ground (x and z in metres) that each pixel shows, far away above the horizon."""
    at, to, angle = (np.array(v, float) if np.ndim(v) else v for v in CAMERA[shot])
    ahead = (to - at) / np.linalg.norm(to - at)
    right = np.cross([0, 1, 0], ahead)
    right /= np.linalg.norm(right)
    up = np.cross(ahead, right)
    k = 2 * np.tan(np.radians(angle) / 2) / WIDTH
    ray = ahead + (XS[..., None] - WIDTH / 2) * k * right + (HEIGHT / 2 - YS[..., None]) * k * up
    far = np.where(ray[..., 1] < -1e-3, -at[1] / np.minimum(ray[..., 1], -1e-3), 1e4)
    return (at[0] + far * ray[..., 0]).astype(np.float32), (at[2] + far * ray[..., 2]).astype(np.float32)


class Steps:
    """Dust that spreads, clods that fly, rings on the water and the camera's shake where feet come down."""

    def __init__(self, shot, falls, dust, lit):
        self.shot, self.falls, self.dust, self.lit = shot, falls, np.array(dust), np.array(lit)
        self.gx, self.gz = ground_places(shot)
        rng = np.random.default_rng(20 + len(falls))
        self.clods, self.clouds = [], []
        for t, p in falls:
            for _ in range(120):
                a, v = rng.uniform(0, 2 * np.pi), rng.uniform(0.4, 3.4)
                out = np.array([np.cos(a), 0, np.sin(a)])
                speed = out * v + np.array([0, rng.uniform(0.6, 1.0) * rng.uniform(0.8, 4.4), 0])
                self.clods.append(
                    (
                        t + rng.uniform(0, 0.06),
                        p + out * rng.uniform(0.8, 1.7),
                        speed,
                        0.006 + 0.026 * rng.random() ** 3,
                        rng.random() < 0.2,
                    )
                )
            for k in range(26):
                a = 2 * np.pi * (k + rng.random()) / 26
                self.clouds.append(
                    (
                        t,
                        p,
                        np.array([np.cos(a), 0, np.sin(a)]),
                        rng.uniform(1.1, 3.0),
                        rng.uniform(0.5, 1.1),
                        rng.uniform(1.1, 1.9),
                        int(rng.integers(len(PUFFS))),
                    )
                )

    def rings(self, t, water):
        """Light and dark of the rings, to be added."""
        total = np.zeros((HEIGHT, WIDTH), np.float32)
        for born, p in self.falls:
            age = t - born
            if 0 < age < 1.8:
                r = np.hypot(self.gx - p[0], self.gz - p[2]) - 1.2
                wave = np.sin((r - 2.6 * age) * 7.0) * np.exp(-(((r - 2.1 * age) / (0.35 + 0.5 * age)) ** 2))
                total += wave * (1 - age / 1.8) ** 1.5 * 0.16
        return (total * water[..., 0])[..., None] * np.array([1.0, 0.8, 0.6], np.float32)

    def draw(self, picture, t, near):
        """Puts what is nearer (or farther) than the machine's middle over the picture, in place."""
        for born, p, out, speed, size, life, sprite in self.clouds:
            age = t - born
            if not 0 <= age < life or (out[2] < 0) != near:
                continue
            travel = speed * (1 - np.exp(-age * 2.6)) / 1.6
            q = p + out * (1.15 + travel) + np.array([0, 0.10 + 0.42 * age * size, 0])
            x, y, s = project(self.shot, q)
            if s > 400:
                continue
            w = s * size * (0.55 + 1.9 * (1 - np.exp(-age * 2.2)))
            level = 0.62 * smooth(age, -0.01, 0.06) * (1 - age / life) ** 1.4
            stamp(
                picture,
                PUFFS[sprite],
                x,
                y - w * 0.16,
                w * 1.25,
                w * 0.78,
                self.dust + self.lit * 0.5 * (1 - age / life),
                level,
            )
        if not near:
            return
        for born, p, v, size, bright in self.clods:
            age = t - born
            if not 0 < age < 1.1:
                continue
            q = p + v * age + np.array([0, -4.9 * age * age, 0])
            x, y, s = project(self.shot, q)
            r = max(size * s, 0.6)
            x0, x1, y0, y1 = int(x - r - 1), int(x + r + 2), int(y - r - 1), int(y + r + 2)
            if q[1] < -0.05 or r > 12 or x0 < 0 or y0 < 0 or x1 >= WIDTH or y1 >= HEIGHT:
                continue
            cover = np.clip(r + 0.5 - np.hypot(XS[y0:y1, x0:x1] - x, YS[y0:y1, x0:x1] - y), 0, 1)[..., None] * 0.85
            colour = self.dust + self.lit if bright else self.dust * 0.2
            picture[y0:y1, x0:x1] = picture[y0:y1, x0:x1] * (1 - cover) + colour.astype(np.float32) * cover

    def shake(self, t, amount):
        x = y = 0.0
        for born, p in self.falls:
            age = t - born
            if 0 <= age < 1:
                near = min(1.0, project(self.shot, p)[2] / 90)
                y += amount * near * np.exp(-age * 7) * np.cos(age * 38)
                x += amount * near * 0.4 * np.exp(-age * 7) * np.sin(age * 31)
        return float(x), float(y)


def lamp_light(places, level, size=1.0, colour=(1.0, 0.88, 0.66)):
    """The glow around lamps, to be screened over the picture."""
    total = np.zeros((HEIGHT, WIDTH), np.float32)
    for x, y, _ in places:
        r = np.hypot(XS - x, YS - y) / size
        streak = np.exp(-np.abs(YS - y) / (1.6 * size) - np.abs(XS - x) / (60 * size))
        total += 0.95 * np.exp(-r / 7) + 0.30 * np.exp(-r / 34) + 0.10 * np.exp(-r / 110) + 0.35 * streak
    return np.clip(total * level, 0, 1)[..., None] * np.array(colour, np.float32)


def beam(shot, start, ahead, level, length=16.0):
    """A lamp's light in the mist."""
    total = np.zeros((HEIGHT, WIDTH), np.float32)
    for s in np.arange(0.3, length, 0.55):
        x, y, scale = project(shot, start + ahead * s)
        if scale > 300:
            break
        r = scale * (0.14 + 0.10 * s)
        total += np.exp(-(((XS - x) / r) ** 2) - ((YS - y) / r) ** 2) * 0.075 / (1 + 0.16 * s)
    return np.clip(total * level, 0, 1)[..., None] * np.array([1.0, 0.86, 0.62], np.float32)


FLAME = (noise(41, sizes=((16, 12), (32, 24), (64, 48), (128, 96))) - 0.5) * 20


def muzzle_flash(at, ahead, age, size=1.0):
    """The flash at a muzzle (pixels), to be screened over the picture; `ahead` is the direction of the barrel there."""
    dx, dy = ahead / np.linalg.norm(ahead)
    along, aside = (XS - at[0]) * dx + (YS - at[1]) * dy, -(XS - at[0]) * dy + (YS - at[1]) * dx
    r = np.hypot(XS - at[0], YS - at[1])

    def flame(u, v, length, wide):
        t = np.clip(u / length, 0, 1)
        body = wide * np.sqrt(t * 3 + 0.05) * (1 - t) ** 0.8
        return np.exp(-(((v + FLAME * (0.3 + t)) / np.maximum(body, 0.5)) ** 2)) * (u > -4) * (1 - t) ** 0.5

    level = np.exp(-max(age - 0.045, 0) / 0.075)
    grow = size * (0.95 + 5 * age)
    fire = flame(along, aside, 150 * grow, 24 * grow)
    for turn, length in ((62, 66), (-62, 66), (118, 40), (-118, 40)):
        c, s = np.cos(np.radians(turn)), np.sin(np.radians(turn))
        fire = np.maximum(fire, 0.9 * flame(along * c + aside * s, -along * s + aside * c, length * grow, 10 * grow))
    fire = (fire * min(1, 1.3 * level))[..., None]
    hot = fire * np.array([1.0, 0.72, 0.30]) + fire**3 * np.array([0.5, 0.7, 0.8])
    hot = hot + (np.exp(-((r / (26 * size)) ** 2)) * level)[..., None] * np.array([1.0, 0.9, 0.7])
    air = np.exp(-r / (90 * size)) * 0.85 + np.exp(-r / 300) * 0.34
    return np.clip(hot + (air * level)[..., None] * np.array([0.75, 0.42, 0.17]), 0, 1).astype(np.float32)


class Smoke:
    """What a shot leaves in the air before the muzzle: thrown forward, then carried off by the wind."""

    def __init__(self, at, ahead, born, count=34):
        rng = np.random.default_rng(8)
        dx, dy = ahead / np.linalg.norm(ahead)
        self.born, self.puffs = born, []
        for k in range(count):
            throw, side = 140 * rng.random() ** 1.5, rng.normal(0, 12)
            start = np.array([at[0] + dx * 8, at[1] + dy * 8])
            self.puffs.append(
                (
                    start,
                    np.array([dx * throw - dy * side, dy * throw + dx * side]),
                    rng.uniform(-8, 14),
                    rng.uniform(16, 40),
                    rng.uniform(1.6, 3.0),
                    k % len(PUFFS),
                )
            )

    def draw(self, picture, t):
        age = t - self.born
        if age < 0:
            return
        out = 1 - np.exp(-age * 6)
        for start, throw, rise, size, life, sprite in self.puffs:
            if age >= life:
                continue
            x, y = start + throw * out + np.array([9.0, -rise]) * age
            w = size * (0.8 + 2.4 * (1 - np.exp(-age * 1.5)))
            warm = np.exp(-age * 7)
            colour = np.array([0.36, 0.30, 0.29]) * (1 - warm) + np.array([1.0, 0.66, 0.32]) * warm
            stamp(
                picture,
                PUFFS[sprite],
                x,
                y,
                w,
                w * 0.86,
                colour,
                0.52 * smooth(age, 0.04, 0.20) * (1 - age / life) ** 1.5,
            )
