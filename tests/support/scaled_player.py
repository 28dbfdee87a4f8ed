"""A player of the scaled picture, who asks more of the desktop, and how the picture looks there."""

import time

import numpy as np

from support.desktop import wait_until
from support.robot import POINTER_PLACED_S, SLOWNESS, Robot


def _resized(picture, shown):
    """Along the first axis: means over the shares of the source that each shown pixel covers."""
    size = picture.shape[0]
    edges = np.arange(shown + 1, dtype=np.float64) * size / shown
    whole = np.minimum(edges.astype(int), size - 1)
    sums = np.concatenate([np.zeros_like(picture[:1]), np.cumsum(picture, axis=0)])
    at_edges = sums[whole] + (edges - whole).reshape(-1, 1, 1) * picture[whole]
    return np.diff(at_edges, axis=0) * shown / size


def scaled(picture, width, height):
    """What a picture looks like at another size, computed independently of the program, in double precision."""
    rows = _resized(picture.astype(np.float64), height)
    return _resized(rows.transpose(1, 0, 2), width).transpose(1, 0, 2)


def fitted(width, height, own=(800, 600)):
    """x, y, width and height of the picture in a window of this size."""
    scale = min(width / own[0], height / own[1])
    shown = round(own[0] * scale), round(own[1] * scale)
    return (width - shown[0]) // 2, (height - shown[1]) // 2, *shown


class Player(Robot):
    """A robot with what these tests ask of the desktop."""

    # the window

    def size(self):
        geometry = self.window().get_geometry()
        return geometry.width, geometry.height

    def wait_for_size(self, size, own=(800, 600)):
        wait_until(lambda: self.size() == size and self.place() == fitted(*size, own=own),
                   f"a window of {size} with the picture in it", 5 * SLOWNESS)

    def resize(self, *size, own=(800, 600)):
        self.desktop.configure(self.window(), width=size[0], height=size[1])
        self.wait_for_size(size, own)

    def switch_mode(self, size=None):
        """Alt+W, until the window has its new size: the desktop's unless one is given."""
        self.key("w", "Alt_L")
        self.wait_for_size(size or self.desktop.size)
        time.sleep(POINTER_PLACED_S)

    # what it shows

    def menu(self):
        self.move(600, 100)  # where it covers nothing that changes
        return self.standing_picture()

    def check_shown(self, own, tolerance=2):
        """The window shows this picture, scaled, between black bars."""
        own_size = own.shape[1], own.shape[0]
        x, y, width, height = fitted(*self.size(), own=own_size)
        assert self.place() == (x, y, width, height)
        window = self.desktop.picture(self.window())
        shown = window[y:y + height, x:x + width].astype(np.int16)
        window[y:y + height, x:x + width] = 0
        assert not window.any(), "the bars are not black"
        whole_step = width % own_size[0] == 0 and width * own_size[1] == height * own_size[0]
        worst = np.abs(shown - scaled(own, width, height)).max()
        assert worst <= (0 if whole_step else tolerance) + 0.001, f"{width} x {height}"

    def pointer(self):
        """Where the obedient module has it."""
        return self.installation.module_state()[:2]
