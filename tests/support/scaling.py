"""What a picture looks like at another size, computed independently of the program; and where it lies in a window."""

import numpy as np


def _axis(size, shown):
    """For the edges of the shown pixels: the source pixel and how far into it."""
    edges = np.arange(shown + 1, dtype=np.float64) * size / shown
    whole = np.minimum(edges.astype(int), size - 1)
    return whole, edges - whole


def _resized(picture, shown):
    """Along the first axis: means over the shares of the source that each shown pixel covers."""
    size = picture.shape[0]
    sums = np.concatenate([np.zeros_like(picture[:1]), np.cumsum(picture, axis=0)])
    whole, part = _axis(size, shown)
    at_edges = sums[whole] + part.reshape(-1, 1, 1) * picture[whole]
    return np.diff(at_edges, axis=0) * shown / size


def scaled(picture, width, height):
    """In double precision; every shown pixel takes exact shares of the source pixels that it covers."""
    rows = _resized(picture.astype(np.float64), height)
    return _resized(rows.transpose(1, 0, 2), width).transpose(1, 0, 2)


def fitted(width, height, whole_steps=False, own=(800, 600)):
    """x, y, width and height of the picture in a window of this size."""
    step = min(width // own[0], height // own[1])
    if whole_steps and step >= 1:
        shown = own[0] * step, own[1] * step
    else:
        scale = min(width / own[0], height / own[1])
        shown = round(own[0] * scale), round(own[1] * scale)
    return (width - shown[0]) // 2, (height - shown[1]) // 2, *shown
