"""Writes pictures (arrays 0..1, 800 x 600) into an AVI without sound."""
import subprocess

import numpy as np

WIDTH, HEIGHT, RATE = 800, 600, 24


class Writer:
    """Film of a quality (2 is best). `black` pixels at the edge get no grain and stay black."""

    def __init__(self, path, quality, black=0):
        self.black = black
        self.out = subprocess.Popen(
            [
                "ffmpeg",
                "-v",
                "error",
                "-y",
                "-f",
                "rawvideo",
                "-pix_fmt",
                "rgb24",
                "-s",
                f"{WIDTH}x{HEIGHT}",
                "-r",
                str(RATE),
                "-i",
                "-",
                "-an",
                "-threads",
                "1",
                "-c:v",
                "mpeg4",
                "-vtag",
                "XVID",
                "-bf",
                "0",
                "-g",
                "24",
                "-q:v",
                str(quality),
                "-mbd",
                "rd",
                "-bitexact",
                path,
            ],
            stdin=subprocess.PIPE,
        )
        self.rng = np.random.default_rng(3)

    def add(self, picture):
        """Adds a picture; a little noise keeps the dark gradients from banding."""
        grain = self.rng.normal(0, 0.006, picture.shape[:2])[..., None]
        if self.black:
            inside = np.zeros_like(grain)
            inside[self.black : -self.black, self.black : -self.black] = 1
            grain = grain * inside
        grain = grain * np.clip(picture.mean(axis=-1, keepdims=True) * 40, 0, 1)
        self.out.stdin.write((np.clip(picture + grain, 0, 1) * 255 + 0.5).astype(np.uint8).tobytes())

    def close(self):
        self.out.stdin.close()
        if self.out.wait() != 0:
            raise SystemExit("ffmpeg failed")


def blur(picture, radius):
    """Gaussian blur of a colour picture, by three box blurs."""
    r = max(1, int(radius))
    for axis in (0, 1):
        for _ in range(3):
            padded = np.pad(
                picture, [(r + 1, r) if a == axis else (0, 0) for a in range(picture.ndim)], mode="edge"
            ).cumsum(axis=axis)
            n = picture.shape[axis]
            hi = np.take(padded, range(2 * r + 1, 2 * r + 1 + n), axis=axis)
            lo = np.take(padded, range(0, n), axis=axis)
            picture = (hi - lo) / (2 * r + 1)
    return picture


def screen(a, b):
    return 1 - (1 - np.clip(a, 0, 1)) * (1 - np.clip(b, 0, 1))


def smooth(t, a, b):
    """0 before a, 1 after b, a soft step between."""
    t = np.clip((t - a) / (b - a), 0, 1)
    return t * t * (3 - 2 * t)
