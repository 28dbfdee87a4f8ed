"""What a player hears: the theme, its level, its pauses, and effects over it."""

import time

import pytest

from support import menu
from support.desktop import wait_until
from support.pulse import RATE, PulseServer, longest_gap_s, loudness, main_tone_hz, write_tone

HEARD_LATER_S = 1.0  # what the sound server and the stream still hold


@pytest.fixture
def sounding(make_robot):
    """A robot whose themes are tones, and a recording of them: theme n has 400 + 100 n Hz."""
    robot = make_robot(window_manager="openbox")
    for theme in range(11):
        write_tone(robot.installation.path(f"sounds/theme{theme:02}.wav"), 400 + 100 * theme)
    robot.installation.set("VELDOR_SOUND", "vcc_theme_loop", 0)
    with PulseServer() as recording:
        robot.start(environment=recording.environment)
        wait_for_silence(recording, False)
        time.sleep(HEARD_LATER_S)
        yield robot, recording


def last(recording, seconds):
    return recording.samples()[-int(RATE * seconds):]


def wait_for_silence(recording, silent=True):
    what = "silence" if silent else "sound"
    wait_until(lambda: (loudness(last(recording, 0.4)) < 0.0005) == silent, what)


@pytest.mark.windows  # the others give another window the focus; Wine's desktop keeps it
def test_the_chosen_theme_goes_on_without_a_gap_and_its_level_is_heard(sounding):
    robot, recording = sounding
    start = len(recording.samples())
    end = time.monotonic() + 10  # three times its length
    while time.monotonic() < end:  # a player who looks around
        for button in menu.TOPS:
            robot.move(*menu.middle(button))
    heard = recording.samples()[start:]
    assert main_tone_hz(heard) == pytest.approx(600, abs=3)
    assert longest_gap_s(heard) < 0.01
    robot.move(700, 50)
    time.sleep(HEARD_LATER_S)  # a button was heard, too
    before = loudness(last(recording, 0.5))
    menu.open_options(robot)
    for _ in range(3):
        robot.click(280, 132)  # the music volume, from level 3 to 6
    wait_until(lambda: loudness(last(recording, 0.5)) == pytest.approx(2 * before, rel=0.1), "music twice as loud")


def test_f12_modules_and_other_programs_silence_the_theme(sounding):
    robot, recording = sounding
    robot.key("F12")
    wait_for_silence(recording)
    menu.enter(robot, "HQ")  # another pass loads the theme again
    robot.move(700, 50)
    robot.wait_for_menu()
    start = len(recording.samples())
    time.sleep(2)
    assert loudness(recording.samples()[start + RATE:]) < 0.0005
    start = len(recording.samples())
    robot.move(*menu.middle("HQ"))  # a button is heard all the same, and may be over already
    wait_until(lambda: loudness(recording.samples()[start:]) > 0.0005, "the button's sound")
    wait_for_silence(recording)
    robot.key("F12")
    wait_for_silence(recording, False)
    other = robot.desktop.open_other_window()
    wait_for_silence(recording)
    other.destroy()
    robot.desktop.focus(robot.window())
    wait_for_silence(recording, False)
    robot.installation.hold_modules()
    menu.enter(robot, "HQ")
    wait_for_silence(recording)
    robot.installation.hold_modules(False)
    wait_for_silence(recording, False)
    time.sleep(HEARD_LATER_S)
    assert main_tone_hz(last(recording, 0.5)) == pytest.approx(600, abs=5)


@pytest.mark.windows
def test_the_program_goes_on_when_the_card_goes_away(make_robot):
    robot = make_robot()
    with PulseServer() as pulse:
        robot.start(environment=pulse.environment)
    menu.enter(robot, "HQ")
    robot.wait_for_menu()
    assert robot.leave() == 0
