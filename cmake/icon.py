"""icon.py PICTURE FILE: the picture's pixels as X11 wants those of an icon: blue, green, red, opacity, a byte each."""

import sys
from pathlib import Path

from PIL import Image

Path(sys.argv[2]).write_bytes(Image.open(sys.argv[1]).convert("RGBA").tobytes("raw", "BGRA"))
