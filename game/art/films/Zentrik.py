#!/usr/bin/env python3
"""The studio's film: a spark welds the word, the emblem lights up, a band of light passes. Zentrik.py WORK IMAGES; times as in films.md."""
import sys
from pathlib import Path

import numpy as np
from PIL import Image, ImageDraw

sys.path[:0] = [str(Path(__file__).parent.parent), str(Path(__file__).parent)]
import avi
import metal
from avi import HEIGHT, RATE, WIDTH, blur, screen, smooth

LENGTH = 8.5
WELD_FROM, WELD_TO, BLOW = 1.2, 3.4, 3.6
WORD_LEFT, WORD_TOP, WORD_SCALE = 56, 300, 0.78


def background():
    ys, xs = np.mgrid[0:HEIGHT, 0:WIDTH].astype(np.float32)
    r = np.hypot((xs - 320) / 420, (ys - 215) / 300)
    rng = np.random.default_rng(5)
    cloud = np.zeros((HEIGHT, WIDTH))
    for k, (w, h) in enumerate([(5, 4), (10, 8), (20, 15), (40, 30)]):
        patch = Image.fromarray((rng.random((h, w)) * 255).astype(np.uint8)).resize((WIDTH, HEIGHT), Image.BICUBIC)
        cloud += np.asarray(patch, float) / 255 / 2**k
    cloud /= cloud.max()
    light = np.clip(1 - r, 0, 1) ** 1.5
    return light[..., None] * (0.35 + 0.65 * cloud[..., None]) * np.array([0.13, 0.165, 0.215])


def sparks(where, now):
    """Draws the sparks that are alive: short streaks that fall and cool."""
    img = Image.new("RGB", (WIDTH * 2, HEIGHT * 2))
    draw = ImageDraw.Draw(img)
    for x, y, vx, vy, born, life in where:
        age = now - born
        if not 0 <= age < life:
            continue
        heat = 1 - age / life
        px, py = x + vx * age, y + vy * age + 260 * age * age
        tx, ty = px - vx * 0.03, py - (vy + 520 * age) * 0.03
        draw.line([px * 2, py * 2, tx * 2, ty * 2], fill=(int(255 * min(1, heat * 1.6)), int(225 * heat), int(150 * heat * heat)), width=3 if heat > 0.6 else 2)
    return np.asarray(img.resize((WIDTH, HEIGHT), Image.LANCZOS), float) / 255


def main(work, images):
    word = metal.Word("ZENTRIK", WIDTH, HEIGHT, WORD_LEFT, WORD_TOP, WORD_SCALE)
    emblem = metal.Word("*", WIDTH, HEIGHT, 217, 68, 1.78)
    ground = background()
    word_lit, emblem_lit = word.paint(metal.STEEL, glow=0.0), emblem.paint(metal.AMBER, glow=0.30)
    word_dark, emblem_dark = word.paint(metal.STEEL, glow=0.0, dim=0.10), emblem.paint(metal.STEEL, glow=0.0, dim=0.08)
    seam = np.exp(-((word.distance / 2.0) ** 2))
    seam = word.down(seam[..., None])[..., 0]
    xs = np.arange(WIDTH, dtype=float)[None, :]
    right = WORD_LEFT + 678 * WORD_SCALE
    rng = np.random.default_rng(11)
    born = []
    for _ in range(560):
        t = WELD_FROM + (WELD_TO - WELD_FROM) * rng.random()
        at = WORD_LEFT + (right - WORD_LEFT) * (t - WELD_FROM) / (WELD_TO - WELD_FROM)
        a, v = rng.uniform(0, 2 * np.pi), rng.uniform(40, 260)
        born.append((at, WORD_TOP + 39 + 30 * np.sin(t * 9), v * np.cos(a), v * np.sin(a) - 90, t, rng.uniform(0.25, 0.9)))
    for _ in range(160):  # the blow throws sparks out of the emblem
        a, v = rng.uniform(0, 2 * np.pi), rng.uniform(120, 420)
        born.append((320 + 90 * np.cos(a), 157 + 80 * np.sin(a), v * np.cos(a), v * np.sin(a) - 60, BLOW, rng.uniform(0.3, 0.9)))

    film = avi.Writer(f"{images}/Zentrik.avi", 3)
    stills = []
    for n in range(int(LENGTH * RATE)):
        t = n / RATE
        rise, lit = smooth(t, 0.0, 0.9), smooth(t, BLOW - 0.02, BLOW + 0.08)
        front = WORD_LEFT + (right - WORD_LEFT) * (t - WELD_FROM) / (WELD_TO - WELD_FROM)
        picture = ground * (0.45 * rise + 0.55 * lit)
        sweep = 40 + (t - 3.8) / 1.4 * 700 if 3.8 < t < 5.4 else None
        # the word is bright where it was welded, all of it after the blow
        welded = np.clip((front - xs) / 40, 0, 1)[..., None] if t > WELD_FROM else 0
        w_lit = word.paint(metal.STEEL, glow=0.0, sweep=sweep) if sweep is not None else word_lit
        e_lit = emblem.paint(metal.AMBER, glow=0.30, sweep=sweep) if sweep is not None else emblem_lit
        w_level = np.maximum(welded * 0.42, lit)
        picture = metal.over(picture, word_dark * (1 - w_level) + w_lit * w_level, rise)
        picture = metal.over(picture, emblem_dark * (1 - lit) + e_lit * lit, rise)
        if t > WELD_FROM:
            age = (front - xs) / (right - WORD_LEFT) * (WELD_TO - WELD_FROM)
            heat = np.where(age >= 0, np.exp(-np.clip(age, 0, None) / 0.55), 0) * (1 - smooth(t, 3.4, 4.6))
            glow = seam * heat
            hot = glow[..., None] * np.array([1.5, 0.62, 0.16]) + (glow**3)[..., None] * np.array([0.3, 0.7, 0.6])
            light = np.clip(hot, 0, 1) + sparks(born, t)
            if t < WELD_TO:
                y = WORD_TOP + 39 + 30 * np.sin(t * 9)
                yy, xx = np.mgrid[0:HEIGHT, 0:WIDTH]
                r = np.hypot(xx - front, yy - y)
                flicker = 0.75 + 0.25 * np.sin(n * 2.4) * np.sin(n * 1.3)
                light = light + ((np.exp(-((r / 5) ** 2)) * 1.6 + np.exp(-r / 34) * 0.55 * flicker)[..., None] * np.array([0.78, 0.9, 1.0]))
            picture = screen(picture, screen(light, blur(np.clip(light, 0, 1), 6) * 0.9))
        flash = np.exp(-(t - BLOW) / 0.28) if t >= BLOW else 0.0
        if flash > 0.01:
            picture = screen(picture, blur(np.clip(picture - 0.35, 0, 1), 16) * 1.6 * flash + np.array([1.0, 0.75, 0.4]) * 0.35 * flash)
        else:
            picture = screen(picture, blur(np.clip(picture - 0.62, 0, 1), 9) * 0.5)
        picture = picture * rise * (1 - smooth(t, 7.4, 8.4))
        film.add(picture)
        if n % 17 == 8:
            stills.append(Image.fromarray((np.clip(picture, 0, 1) * 255).astype(np.uint8)).resize((320, 240)))
    film.close()
    sheet = Image.new("RGB", (320 * 4, 240 * ((len(stills) + 3) // 4)))
    for k, s in enumerate(stills):
        sheet.paste(s, (320 * (k % 4), 240 * (k // 4)))
    sheet.save(f"{work}/Zentrik-sheet.png")


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
