"""The fixtures of the end-to-end tests, for what concerns the program for Windows alone."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

from e2e.conftest import installation, make_robot, robot  # noqa: E402, F401
