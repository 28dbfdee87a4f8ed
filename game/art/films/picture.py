"""Arithmetic of pictures: arrays of 0..1, rows x columns x colours.

A layer has cover as its fourth colour and is premultiplied.
"""
import numpy as np
from PIL import Image, ImageFilter

from avi import HEIGHT, WIDTH

YS, XS = np.mgrid[0:HEIGHT, 0:WIDTH].astype(np.float32)


def load(path, mode="RGB"):
    """A picture at the film's size."""
    with Image.open(path) as file:
        picture = file.convert(mode)
    if picture.size != (WIDTH, HEIGHT):
        picture = picture.resize((WIDTH, HEIGHT), Image.LANCZOS if picture.width > WIDTH else Image.BICUBIC)
    return np.asarray(picture, np.float32) / 255


def load_layer(path):
    picture = load(path, "RGBA")
    picture[..., :3] *= picture[..., 3:]
    return picture


def to_image(picture, mode="RGB"):
    return Image.fromarray((np.clip(picture, 0, 1) * 255 + 0.5).astype(np.uint8), mode)


def soft(picture, radius, small=4):
    """Gaussian blur of a light; computed on a small copy, so only for what is soft anyway."""
    mode = "RGB" if picture.ndim == 3 else "L"
    image = to_image(picture, mode).resize((WIDTH // small, HEIGHT // small), Image.BOX)
    image = image.filter(ImageFilter.GaussianBlur(radius / small)).resize((WIDTH, HEIGHT), Image.BICUBIC)
    return np.asarray(image, np.float32) / 255


def linear(picture):
    return np.where(picture <= 0.04045, picture / 12.92, ((np.maximum(picture, 0.04045) + 0.055) / 1.055) ** 2.4)


def encoded(light):
    light = np.clip(light, 0, 1)
    return np.where(light <= 0.0031308, light * 12.92, 1.055 * np.maximum(light, 0.0031308) ** (1 / 2.4) - 0.055)


def affine(picture, matrix, mode="RGBA"):
    """The picture whose pixel (x, y) is the given one's pixel (ax + by + c, dx + ey + f)."""
    image = to_image(picture, mode).transform((WIDTH, HEIGHT), Image.AFFINE, matrix, Image.BICUBIC)
    return np.asarray(image, np.float32) / 255


def framed(picture, zoom, at, shift=(0.0, 0.0)):
    """The part of a picture that a camera sees that has come nearer to a place, shaken by a shift in pixels."""
    if zoom == 1 and shift == (0.0, 0.0):
        return picture
    z = 1 / zoom
    left, top = at[0] * (1 - z), at[1] * (1 - z)
    left, top = left + shift[0], top + shift[1]
    margin = 12
    wide = np.pad(picture, ((margin, margin), (margin, margin), (0, 0)), mode="edge")
    image = to_image(wide).transform(
        (WIDTH, HEIGHT), Image.AFFINE, (z, 0, left + margin, 0, z, top + margin), Image.BICUBIC
    )
    return np.asarray(image, np.float32) / 255


def graded(picture):
    """Bloom, contrast and sharpness as the pictures get them (`graded` in ../render)."""
    picture = np.clip(picture, 0, 1)
    glow = soft((picture - 0.62) / 0.38, 14) * 0.55
    picture = 1 - (1 - picture) * (1 - glow)
    low, high = 1 / (1 + np.exp(2.2 * 0.45)), 1 / (1 + np.exp(2.2 * (0.45 - 1)))
    picture = (1 / (1 + np.exp(2.2 * (0.45 - picture))) - low) / (high - low)
    fine = np.asarray(to_image(picture).filter(ImageFilter.GaussianBlur(0.7)), np.float32) / 255
    return np.clip(picture + 0.5 * (picture - fine), 0, 1)


def noise(seed, width=WIDTH, height=HEIGHT, sizes=((4, 3), (8, 6), (16, 12), (32, 24), (64, 48))):
    rng = np.random.default_rng(seed)
    total = np.zeros((height, width), np.float32)
    for k, (w, h) in enumerate(sizes):
        patch = Image.fromarray((rng.random((h, w)) * 255).astype(np.uint8)).resize((width, height), Image.BICUBIC)
        total += np.asarray(patch, np.float32) / 255 / 1.7**k
    return (total - total.min()) / (total.max() - total.min())
