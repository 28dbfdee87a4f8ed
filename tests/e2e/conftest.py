"""Fixtures of the end-to-end tests: copies of the built installation, and robots that play it."""

import re
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

from support.installation import Installation  # noqa: E402
from support.robot import Robot  # noqa: E402


@pytest.fixture
def installation():
    """A copy of the built installation, removed after the test."""
    copy = Installation()
    yield copy
    copy.delete()


@pytest.fixture
def make_robot(installation, request):
    """make_robot(size=..., depth=..., window_manager=..., films=...): a robot on the test's installation, not started."""
    robots = request.node.robots = []

    def make(**options):
        robot = Robot(installation, **options).__enter__()
        robots.append(robot)
        return robot

    yield make
    for robot in robots:
        robot.__exit__()


@pytest.fixture
def robot(make_robot):
    """A robot in front of the main menu: 1024 x 768 at 24 bits, films off, modules that record their calls."""
    player = make_robot()
    player.installation.use_recording_modules()
    return player.start()


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    """Keeps what every desktop of a failed test showed in out/e2e."""
    outcome = yield
    report = outcome.get_result()
    if report.when == "call" and report.failed:
        for number, player in enumerate(getattr(item, "robots", [])):
            name = re.sub(r"[^\w.-]+", "_", item.name)
            report.sections.append(("picture", str(player.save_picture(f"{name}-{number}"))))
            report.sections.append(("log", player.installation.read("data/logfiles/veldor_log.txt")))
