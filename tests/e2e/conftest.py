"""Fixtures of the end-to-end tests: copies of the built installation, and robots that play it."""

import sys
from contextlib import ExitStack
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

from support.installation import Installation  # noqa: E402
from support.robot import Robot  # noqa: E402
from support.system import SYSTEM  # noqa: E402


def pytest_configure(config):
    config.addinivalue_line("markers", "windows: played with the program for Windows, too")
    config.addinivalue_line("markers", "linux: in a file of such tests one that is not")
    if SYSTEM.name == "windows":
        config.option.markexpr = "windows and not linux"


@pytest.fixture
def installation():
    """A copy of the built installation, removed after the test."""
    copy = Installation()
    yield copy
    copy.delete()


@pytest.fixture
def make_robot(installation, request):
    """make_robot(kind, size=..., films=...): a robot, not started; a test that fails keeps the last that it shows. Its
    modules record their calls unless others are named, None being the installation's own."""
    failed_before = request.session.testsfailed
    with ExitStack() as stack:
        def make(kind=Robot, modules="recording", graphics=None, **options):
            if modules:
                installation.use_modules(modules)
            for key, value in (graphics or {}).items():
                installation.set("VELDOR_GRAPHICS", key, value)
            robot = stack.enter_context(kind(installation, **options))
            stack.callback(lambda: request.session.testsfailed > failed_before and
                           robot.save_picture(request.node.name.replace("/", "_")))
            return robot

        yield make


@pytest.fixture
def robot(make_robot):
    """A robot in front of the main menu: 1024 x 768 at 24 bits, films off."""
    return make_robot().start()
