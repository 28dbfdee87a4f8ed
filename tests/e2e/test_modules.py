"""What modules may do with the process that they share, and leave behind."""

import time

import pytest

from support import menu
from support.desktop import wait_until
from support.pulse import RATE, PulseServer, loudness
from support.robot import POINTER_PLACED_S

ARROW, BUSY = 2, 3  # the library's numbers of the system's pointers


def leave(player, text="leave 0"):
    player.installation.order(text)
    player.wait_for_menu()


def point_at_options(player):
    player.move(*menu.middle("Options"))
    menu.wait_for_look(player, "Options", menu.POINTED_AT)


@pytest.mark.parametrize("scale", [0, 1])
def test_modules_use_the_systems_pointer_and_what_they_spoil_is_put_right(make_robot, scale):
    player = make_robot(scale=scale, modules="obedient")
    installation, hidden = player.installation, player.desktop.cursor_is_hidden
    installation.set("VELDOR_SOUND", "vcc_music_volume", 0)
    installation.remove("factory.so")
    with PulseServer() as pulse:
        player.start(environment=pulse.environment)
        menu.enter_obedient(player)
        for shape in (ARROW, BUSY):
            installation.have_obeyed(f"cursor {shape}")
            wait_until(lambda: not hidden(), "the system's pointer")
            installation.have_obeyed("hide")
            wait_until(hidden, "no pointer of the system's")
        installation.have_obeyed(f"cursor {BUSY}")
        leave(player)
        wait_until(hidden, "the menu's own pointer")
        point_at_options(player)
        player.wheel(-1)  # what a module turns counts from there
        time.sleep(POINTER_PLACED_S)
        menu.enter_obedient(player)
        leave(player, "spoil")
        wait_until(lambda: loudness(pulse.samples()[-RATE // 2:]) < 0.0005, "the module's sound to end")
        assert menu.pointed_at(player) == []
        point_at_options(player)
        menu.walk_to(player, "Factory")  # is missing: an alert, in the library's font
        menu.confirm_alert(player, "CC: Error loading module!")
        player.wait_for_menu()
        wait_until(lambda: player.shows("images/menu.pcx", share=0.7), "all of the menu")
        assert player.close() == 0
    left, missing = installation.log_messages()
    assert left == "hq.so has left another working folder, timers, sounds, no keyboard, a clipping rectangle"
    assert missing.startswith("Error loading module factory.so")


def test_without_its_picture_the_pointer_looks_as_before(make_robot):
    player = make_robot()
    player.start()

    def pointer():
        player.move(500, 200)
        return player.standing_picture()[180:240, 480:540]

    before = pointer()
    player.installation.remove("images/pointer.pcx")
    menu.enter(player, "HQ")
    menu.confirm_alert(player, "CC: Error loading mousepointer!")
    player.wait_for_menu()
    assert (pointer() == before).all()
