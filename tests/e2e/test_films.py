"""The films before the menu: where and when frames are drawn, how films are skipped."""

import subprocess

import pytest

from support.desktop import wait_until

pytestmark = pytest.mark.windows

STUDIO, INTRO = "images/Zentrik.avi", "images/VELDOR_Intro.avi"
COLOURS = {STUDIO: (255, 0, 0), INTRO: (0, 0, 255)}


def make_film(installation, name, seconds):
    picture = f"color={'red' if name == STUDIO else 'blue'}:s=640x480:r=2:d={seconds}"
    installation.remove(name)
    subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", picture, "-pix_fmt", "bgr24", "-c:v", "rawvideo",
                    installation.path(name)], check=True)


def shows_film(robot, name):
    return max(abs(a - b) for a, b in zip(robot.pixel(200, 200), COLOURS[name])) < 16


def test_films_run_in_turn_in_the_middle_of_the_screen_until_a_click_which_does_nothing_else(make_robot):
    player = make_robot(films=True)
    for film, seconds in (STUDIO, 2), (INTRO, 20):
        make_film(player.installation, film, seconds)
    player.start(menu=False)
    for film in COLOURS:
        wait_until(lambda: shows_film(player, film), film, 10 * player.system.slowness)
        inside, outside = [(80, 60), (719, 60), (80, 539), (719, 539)], [(79, 60), (720, 60), (80, 59), (719, 540)]
        assert len({player.pixel(*place) for place in inside}) == 1
        assert {player.pixel(*place) for place in outside} == {(0, 0, 0)}
    player.move(142, 207)  # where the menu will have a button
    player.desktop.click_at_once()
    player.wait_for_menu(timeout_s=8)
    player.standing_picture(still_s=0.5)
    assert player.installation.module_calls() == player.installation.log_messages() == []
