"""The program on the desktops that people use: under their window managers, and when the display server goes away."""

import pytest
from support.desktop import wait_until
from support.menu import choose, middle

pytestmark = pytest.mark.linux


def go_to(robot, state):
    robot.installation.use_obedient_modules()
    robot.installation.set("VELDOR_GRAPHICS", "screen_mode_range", 3)
    robot.start(menu=state != "film")
    if state == "film":
        wait_until(lambda: robot.picture().any(), "the film")
    elif state == "options":
        choose(robot, "Options")
    elif state == "module":
        robot.click(*middle("HQ"))
        wait_until(robot.installation.module_state, "the module")


@pytest.mark.parametrize("scale", [0, 1])
@pytest.mark.parametrize("state", ["film", "menu", "options", "module"])
def test_the_program_ends_with_its_display(make_robot, state, scale):
    robot = make_robot(scale=scale, films=state == "film")
    go_to(robot, state)
    settings = robot.installation.read("data/configs/vcc.cfg")
    robot.desktop.crash()
    assert robot.wait_for_end(timeout_s=1) == 1
    assert robot.installation.log_messages() == ["The display server has gone away"]
    assert robot.installation.read("data/configs/vcc.cfg") == settings
