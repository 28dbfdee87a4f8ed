#!/usr/bin/env python3
"""Draws what is quicker to draw than to trace: weather.py rain|battle IN OUT."""
import sys

import numpy as np
from PIL import Image, ImageDraw, ImageFilter

W, H = 800, 600


def load(path):
    return np.asarray(Image.open(path).convert("RGB"), float) / 255


def save(picture, path, grain=0.007):
    noise = np.random.default_rng(1).normal(0, grain, (H, W))[..., None]  # hides the steps of dark gradients
    Image.fromarray((np.clip(picture + noise, 0, 1) * 255 + 0.5).astype(np.uint8)).save(path)


def screen(a, b):
    return 1 - (1 - np.clip(a, 0, 1)) * (1 - np.clip(b, 0, 1))


def cloud(seed, sizes=((4, 3), (8, 6), (16, 12), (32, 24), (64, 48))):
    rng = np.random.default_rng(seed)
    total = 0
    for k, (w, h) in enumerate(sizes):
        noise = Image.fromarray((rng.random((h, w)) * 255).astype(np.uint8)).resize((W, H), Image.BICUBIC)
        total = total + np.asarray(noise, float) / 255 / 1.7**k
    return (total - total.min()) / (total.max() - total.min())


def lines(count, length, width, slant, seed, level):
    rng = np.random.default_rng(seed)
    img = Image.new("L", (W * 2, H * 2))
    draw = ImageDraw.Draw(img)
    for _ in range(count):
        x, y = rng.uniform(-100, W * 2 + 100), rng.uniform(-100, H * 2)
        n = length * rng.uniform(0.6, 1.4)
        draw.line([x, y, x - n * slant, y + n], fill=int(level * rng.uniform(0.35, 1)), width=width)
    return np.asarray(img.filter(ImageFilter.GaussianBlur(0.9)).resize((W, H), Image.LANCZOS), float)[..., None] / 255


def rain(picture):
    blurred = Image.fromarray((picture * 255).astype(np.uint8)).filter(ImageFilter.GaussianBlur(25))
    bright = np.asarray(blurred, float) / 255
    light = 0.35 + 2.2 * bright.mean(axis=-1, keepdims=True)  # drops show where light falls through them
    drops = lines(2600, 34, 1, 0.16, 5, 120) + lines(900, 70, 2, 0.18, 6, 105) + lines(160, 150, 3, 0.20, 7, 80)
    veil = np.array([0.10, 0.125, 0.16]) * 0.25 * (0.4 + 0.6 * cloud(3)[..., None])
    picture = screen(picture, veil)
    return screen(picture, drops * light * np.array([0.72, 0.82, 1.0]) * 0.8)


def battle(picture):
    ys, xs = np.mgrid[0:H, 0:W].astype(float)
    a, b = cloud(21), cloud(33)
    # columns of smoke: they lean with the wind, widen and thin out upwards
    for x0, foot, lean, wide, seed in ((92, 433, -0.08, 9, 2), (206, 432, 0.03, 4, 9), (292, 432, 0.10, 6, 5)):
        up = np.clip((foot - ys) / foot, 0, 1)
        middle = x0 + lean * (foot - ys) * (1 + up) + (a - 0.5) * 120 * up + (cloud(seed) - 0.5) * 46
        half = wide * (0.6 + 6.0 * up)
        dense = np.exp(-(((xs - middle) / half) ** 2)) * (ys < foot) * np.clip((foot - ys) / 6, 0, 1)
        dense = dense * (1 - up) ** 0.8 * (0.45 + 0.75 * b)
        dense = np.clip(dense * 1.15, 0, 0.9)[..., None]
        lit = np.exp(-up * 14)[..., None]
        colour = np.array([0.075, 0.055, 0.055]) * (1 - lit) + np.array([0.9, 0.36, 0.10]) * lit
        picture = picture * (1 - dense) + colour * dense
        fire = np.exp(-(((xs - x0) / (wide * 1.1)) ** 2) - ((ys - foot + 4) / 7) ** 2)[..., None]
        picture = screen(picture, fire * np.array([1.0, 0.55, 0.18]))
    # the muzzle flash: a hot core, a long flame ahead, two to the sides of the brake, and the smoke it lights
    # where the scene's gun ends, where it points; size 1 is a flame of 150 pixels
    mx, my, dx, dy, size = 464.0, 242.0, -0.86, -0.51, 0.58
    ahead, aside = ((xs - mx) * dx + (ys - my) * dy) / size, (-(xs - mx) * dy + (ys - my) * dx) / size
    wave = (cloud(41, ((16, 12), (32, 24), (64, 48), (128, 96))) - 0.5) * 20

    def flame(along, across, length, wide):
        t = np.clip(along / length, 0, 1)
        body = wide * np.sqrt(t * 3 + 0.05) * (1 - t) ** 0.8
        return np.exp(-(((across + wave * (0.3 + t)) / np.maximum(body, 0.5)) ** 2)) * (along > -4) * (1 - t) ** 0.5

    fire = flame(ahead, aside, 150, 24)
    for turn, length in ((62, 62), (-62, 62), (118, 40), (-118, 40)):
        c, s = np.cos(np.radians(turn)), np.sin(np.radians(turn))
        fire = np.maximum(fire, 0.9 * flame(ahead * c + aside * s, -ahead * s + aside * c, length, 10))
    r = np.hypot(xs - mx + 14 * size, ys - my + 4 * size) / size
    puff = np.clip(np.exp(-(((ahead - 70) / 110) ** 2) - (aside / 70) ** 2) * (b * 1.5 - 0.25), 0, 0.75)[..., None]
    smoke = np.array([0.62, 0.36, 0.20]) + np.exp(-r / 60)[..., None] * np.array([0.5, 0.4, 0.25])
    picture = picture * (1 - puff) + smoke * puff
    hot = fire[..., None] * np.array([1.0, 0.72, 0.30]) + (fire**3)[..., None] * np.array([0.5, 0.7, 0.8])
    hot = hot + np.exp(-((r / 26) ** 2))[..., None] * np.array([1.0, 0.9, 0.7])
    return screen(screen(picture, hot), np.exp(-r / 70)[..., None] * np.array([0.65, 0.36, 0.14]))


if __name__ == "__main__":
    save({"rain": rain, "battle": battle}[sys.argv[1]](load(sys.argv[2])), sys.argv[3])
