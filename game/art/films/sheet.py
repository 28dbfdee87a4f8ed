#!/usr/bin/env python3
"""A contact sheet of both films, one frame a second: sheet.py IMAGES OUT.png"""
import subprocess
import sys

from PIL import Image

FILMS = ("Zentrik.avi", "VELDOR_Intro.avi")
SIZE, COLUMNS, GAP = (320, 240), 6, 4


def stills(path):
    command = [
        "ffmpeg",
        "-v",
        "error",
        "-i",
        path,
        "-vf",
        f"select=not(mod(n-12\\,24)),scale={SIZE[0]}:{SIZE[1]}:flags=area",
    ]
    said = subprocess.run(
        [*command, "-vsync", "0", "-f", "rawvideo", "-pix_fmt", "rgb24", "-"], capture_output=True, check=True
    )
    size = SIZE[0] * SIZE[1] * 3
    return [Image.frombytes("RGB", SIZE, said.stdout[at : at + size]) for at in range(0, len(said.stdout), size)]


def main(images, out):
    all_stills = [still for film in FILMS for still in stills(f"{images}/{film}")]
    rows = -(-len(all_stills) // COLUMNS)
    sheet = Image.new("RGB", (COLUMNS * (SIZE[0] + GAP) - GAP, rows * (SIZE[1] + GAP) - GAP))
    for k, still in enumerate(all_stills):
        sheet.paste(still, (k % COLUMNS * (SIZE[0] + GAP), k // COLUMNS * (SIZE[1] + GAP)))
    sheet.save(out)
    subprocess.run(["convert", out, "-dither", "FloydSteinberg", "-colors", "250", f"PNG8:{out}"], check=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
