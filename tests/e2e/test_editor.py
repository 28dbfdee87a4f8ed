"""The screen editor in a real browser: what is changed and saved, files on disk, a tool that is killed."""

import socket
import subprocess
import time
from urllib.parse import urlparse

import numpy as np
import pytest
import urllib3
from PIL import Image

from support.desktop import Desktop, wait_until
from support.editor import Browser, settle
from support.editor_pages import (FACTORY, FACTORY_MIDDLE, FACTORY_PLACE, browser, choose_factory,  # noqa: F401
                                  editor, page, project, project_text, save, shared_editor)
from support.installation import VCCKIT

pytestmark = pytest.mark.linux

# the picture

def test_another_style_leaves_the_further_ones(page, project):
    text = project.source().read_text()
    head, tail = text.split("index = 5\n", 1)
    tail = tail.replace('style = "button"', 'style = ["button", "further"]', 1)
    button = text.split("[style.button]\n", 1)[1].split("\n\n", 1)[0]
    styles = f"[style.further]\nreserved = 1\n\n[style.other]\n{button}\n\n"
    project.source().write_text(f"{styles}{head}index = 5\n{tail}")
    choose_factory(page)
    wait_until(lambda: "further" in page.text("#properties"), "the styles of the slot")
    page.run("""const field = document.querySelector('[data-field="style"]');
      const list = field.matches('select') ? field : field.querySelector('select');
      list.value = 'other';
      list.dispatchEvent(new Event('change', { bubbles: true }));""")
    save(page)
    assert 'style = ["other", "further"]' in project.source().read_text()


def test_the_chosen_of_a_group_whose_places_are_a_list_move(page, project):
    source = project.source("vcc_options.toml")
    scalar, listed = "count = 4, dest_y = 28 }\ndest_y = 100\n", "count = 4 }}\ndest_y = [{}, {}, 156, 184]\n"
    source.write_text(source.read_text().replace(scalar, listed.format(100, 128)))
    page.press("Options")
    wait_until(lambda: listed.format(100, 128) in project_text(page, "vcc_options"), "the list in the page")
    page.run("return import('./state.js').then(({ select }) => select(['slot:16', 'slot:17']))")
    page.run("document.getElementById('viewport').focus()")
    page.keys("down")
    save(page)
    assert listed.format(101, 129) in source.read_text()


def test_what_is_dragged_looks_as_the_program_draws_what_is_saved(page, project, editor, tmp_path):
    page.drag(FACTORY_MIDDLE, (443, 290), held="ctrl")
    page.wait_for_picture()
    assert page.frame(FACTORY) == [335, 269, 216, 42]
    save(page)

    rendered = tmp_path / "rendered.png"
    subprocess.run([VCCKIT, "render", project.folder, "--screen", "menu", "-o", rendered], check=True)
    assert editor.get("picture.png?view=menu&language=en") == (200, rendered.read_bytes())
    assert np.array_equal(page.canvas(), np.asarray(Image.open(rendered).convert("RGB")))

    # the packed files follow the source
    packed = {path: data for path, data in project.bytes().items() if path.suffix in (".slt", ".tgl")}
    subprocess.run([VCCKIT, "pack", "-q", project.source(), "-o", project.folder], check=True)
    assert all(path.read_bytes() == data for path, data in packed.items())


def test_german_text_and_the_way_back_to_the_first_byte(page, project):
    before = project.bytes()
    page.click_at(60, 582)
    assert page.selection() == ["slot:18"]
    page.press("Texts")
    page.type_into(page.all('[data-field="18-de"]')[0], "Zentrale für Veldor")
    page.wait_for_picture()
    page.press("DE")
    page.wait_for_picture()
    assert project.bytes() == before, "only what is saved is written"
    save(page)
    assert 'text = { en = "Veldor Control Centre  1.2.8", de = "Zentrale für Veldor" }' in project.source().read_text()
    page.drag((60, 582), (160, 540))
    page.click_at(*FACTORY_MIDDLE)
    page.keys("right", "right", "shift+down")
    page.wait_for_frame(FACTORY, (36, 246))
    assert project.bytes() != before

    undo = 'return document.querySelector("#bar [aria-label^=Undo]")'
    while page.run(undo):
        page.keys("ctrl+z")
        page.wait_for_picture()
    save(page)
    assert project.bytes() == before


def test_keys_alone_move_a_slot_and_save_it(page, project):
    page.keys("ctrl+f")
    page.driver.switch_to.active_element.send_keys("Factory")
    page.keys("enter")
    wait_until(lambda: page.selection() == ["slot:5"], "the slot that was looked for")
    page.keys("up", "left", "left", "shift+right")
    page.wait_for_frame(FACTORY, (42, 235))
    page.keys("enter")  # to its properties
    field = page.driver.switch_to.active_element
    assert field.get_attribute("id") == "field-dest_x"
    page.keys("up", "tab", "tab")
    page.wait_for_frame(FACTORY, (43, 235))
    save(page)
    assert "dest_x = 43" in project.source().read_text()


def test_overlapping_slots_take_turns_and_fixed_ones_stay(page):
    """Six previews lie in one place. The program knows five of them by number. Only Ctrl goes below the first."""
    seen = []
    for held in (None, None, "ctrl", "ctrl", "ctrl", "ctrl", "ctrl"):
        page.click_at(600, 500, held)
        seen += page.selection()
        settle(0.02)
    assert seen == [f"slot:{number}" for number in (17, 17, 16, 11, 10, 9, 8)]
    page.keys("delete")
    assert "stays" in wait_until(lambda: page.text(".toast.bad"), "the reason")
    page.click_at(*FACTORY_MIDDLE)
    page.drag(FACTORY_MIDDLE, (442, 257), held="alt")
    copied = wait_until(lambda: page.selection() if page.selection() != [FACTORY] else None, "the copy")
    page.wait_for_picture()
    assert page.frame(copied[0]) == [334, 236, 216, 42] and page.frame(FACTORY) == FACTORY_PLACE
    page.keys("ctrl+z")  # the copy and its way are one step
    wait_until(lambda: page.frame(copied[0]) is None, "the copy to go")
    assert page.run('return document.querySelector("#bar [aria-label^=\\"Nothing to undo\\"]")')


# faults

def test_a_fault_comes_goes_and_leads_to_its_field(page):
    choose_factory(page)
    page.type_into(page.all("#field-display_time")[0], "900")
    wait_until(lambda: "VK113" in page.text(".faults"), "the fault")
    page.click_at(60, 582)
    page.all(".faults li")[0].click()
    wait_until(lambda: page.selection() == [FACTORY], "the slot of the fault")
    wait_until(lambda: page.driver.switch_to.active_element.get_attribute("id") == "field-display_time",
               "its field")
    page.keys("ctrl+z")
    wait_until(lambda: "clean" in page.text(".faults"), "no fault")


def test_a_source_that_cannot_be_packed_is_not_saved(page, project):
    before = project.bytes()
    page.press("Source")
    area = page.all(".source textarea")[0]
    page.run("arguments[0].focus(); arguments[0].setSelectionRange(0, 0)", area)
    page.keys("[", "slot")
    page.press("Faults")
    wait_until(lambda: "VK001" in page.text(".faults"), "the fault")
    page.keys("ctrl+s")
    wait_until(lambda: page.text(".toast.bad"), "the reason")
    assert project.bytes() == before
    assert page.frame(FACTORY) == FACTORY_PLACE  # the last good picture stays
    assert page.all("#banner-stale")
    # other screens can be changed and saved
    page.press("Options")
    page.wait_for_picture()
    page.click_at(260, 105)
    page.keys("shift+right", "ctrl+s")
    wait_until(lambda: project.source("vcc_options.toml").read_bytes() != before[project.source("vcc_options.toml")],
               "the other source")
    assert project.source().read_bytes() == before[project.source()]
    page.keys("ctrl+1", "ctrl+z")
    wait_until(lambda: not page.all("#banner-stale"), "the source as it was")


def test_sources_that_were_broken_before_leave_the_others_free(browser, project):
    """One is no TOML, one has a slot outside of the screen: both are named, and stay as they are."""
    broken = {"vcc_options": ("[[slot]]", "[[slot"), "mess": ("dest_x = ", "dest_x = 9")}
    for name, change in broken.items():
        source = project.source(f"{name}.toml")
        source.write_text(source.read_text().replace(*change))
    before = project.bytes()
    browser.open(project.start())
    choose_factory(browser)
    browser.keys("right")
    browser.wait_for_frame(FACTORY, (35, 236))
    save(browser)
    assert "dest_x = 35" in project.source().read_text()
    told = browser.text(".faults")
    assert all(name in told for name in broken) and "VK001" in told
    assert all(project.source(f"{name}.toml").read_bytes() == before[project.source(f"{name}.toml")] for name in broken)
    browser.leave()


# lost work, and work that is kept

def test_unsaved_changes_are_offered_after_the_tool_was_killed(page, project, editor):
    """To the same page, back with the next editor, and to a new one."""
    choose_factory(page)
    page.keys("right", "down")
    page.wait_for_frame(FACTORY, (35, 237))
    page.driver.refresh()
    wait_until(lambda: page.frame(FACTORY) == [35, 237, *FACTORY_PLACE[2:]], "the change after a reload")
    editor.kill()
    wait_until(lambda: page.all("#banner-offline"), "the page to notice")
    assert "vcckit edit" in page.text("#banner-offline")
    second = project.start()
    assert second.address == editor.address
    wait_until(lambda: "Unsaved changes" in page.text("dialog"), "the page to come back", 20)
    second.kill()
    page.leave()
    page.errors()  # of the connections
    page.open(project.start())
    assert "Unsaved changes" in page.text("dialog")
    assert page.frame(FACTORY) == FACTORY_PLACE
    page.keys("escape")
    page.press("Decide")
    page.press("Take them back")
    page.wait_for_frame(FACTORY, (35, 237))
    save(page)
    assert "dest_y = 237" in project.source().read_text()
    page.keys("ctrl+z", "ctrl+z")  # every step
    page.wait_for_frame(FACTORY, tuple(FACTORY_PLACE[:2]))


# the same file in a text editor

def test_changes_on_disk_show_and_conflicts_are_asked_about(page, project):
    source = project.source()
    source.write_text(source.read_text().replace("dest_y = 236", "dest_y = 240"))
    page.wait_for_frame(FACTORY, (34, 240))
    choose_factory(page)
    page.keys("down")
    page.wait_for_frame(FACTORY, (34, 241))
    source.write_text(source.read_text().replace("dest_y = 240", "dest_y = 250"))
    wait_until(lambda: page.all("#banner-conflict"), "the question")
    page.press("Decide")
    versions = [each.text for each in page.all(".version pre")]
    assert "dest_y = 241" in versions[0] and "dest_y = 250" in versions[1] and "dest_y = 240" in versions[2]
    page.press("The file’s")
    page.wait_for_frame(FACTORY, (34, 250))
    wait_until(lambda: not page.all("#banner-conflict"), "the answer")


def test_play_starts_the_program_once_or_says_why_not(browser, project):
    blind = project.start({"DISPLAY": ":999"})
    status, answer = blind.post("play", {})
    assert status == 422 and "ended at once" in answer["error"]
    blind.stop()
    with Desktop((1024, 768)) as desktop:
        editor = project.start({"DISPLAY": desktop.name})
        browser.open(editor)
        browser.press("Play")
        wait_until(lambda: desktop.find_window("Veldor"), "the program's window", 20)
        status, answer = editor.post("play", {})
        assert status == 422 and "runs already" in answer["error"]
        browser.leave()
        subprocess.run(["pkill", "-P", str(editor.process.pid)], check=True)


def test_what_is_typed_into_the_source_keeps_what_others_write(page, project):
    """Also its line ends, and text being typed in a field when it is saved."""
    source = project.source()
    text = source.read_bytes().replace(b"\n", b"\r\n")
    source.write_bytes(text)
    page.press("Source")
    area = page.all(".source textarea")[0]
    wait_until(lambda: project_text(page) == text.decode(), "the new ends of lines")
    page.run("arguments[0].focus(); arguments[0].setSelectionRange(0, 0)", area)
    page.keys("#")
    source.write_bytes(text.replace(b"dest_y = 286", b"dest_y = 290"))
    for letter in " typed on":
        page.keys(letter)
        settle(0.1)
    page.keys("enter")
    page.wait_for_frame("slot:7", (34, 290))
    choose_factory(page)
    page.all("#field-dest_x")[0].click()  # the text typed is sent meanwhile, and answered
    page.keys("ctrl+a", "4", "4")
    save(page)
    expected = b"# typed on\r\n" + text.replace(b"dest_y = 286", b"dest_y = 290")
    saved = source.read_bytes()
    assert saved.replace(b"dest_x = 44\r\n", b"") == expected
    assert b"dest_x = 44" in saved


def test_one_change_is_one_request(page):
    choose_factory(page)
    settle(0.6)  # the small pictures of the looks
    page.run("performance.clearResourceTimings()")
    page.keys("right")
    page.wait_for_frame(FACTORY, (35, 236))
    page.wait_for_picture()
    asked = page.run("return performance.getEntriesByType('resource').map((each) => each.name.split('/').pop())")
    assert [name for name in asked if name.startswith(("document", "edit")) or "keep" in name] == ["edit"], asked


def test_many_tabs_and_slow_strangers_leave_the_server_free(shared_editor):
    editor = shared_editor
    strangers = [socket.create_connection(("127.0.0.1", urlparse(editor.address).port)) for _ in range(64)]
    for each in strangers:
        each.sendall(b"GET /wrong/ HTTP/1.1\r\nHost: 127.0.0.1\r\n")
    tabs = Browser(tabs=True)
    tabs.open(editor)
    for _ in range(6):  # a browser has six connections
        tabs.driver.switch_to.new_window("tab")
        tabs.open(editor)
    tabs.close()
    for each in strangers:
        each.close()
    endless = (b" " * 65536 for _ in range(64))
    refused = urllib3.PoolManager().request("POST", editor.address + "save", body=endless,
                                            headers={"Content-Type": "application/json"})
    assert refused.status == 413


def test_a_link_to_everything_does_not_hold_the_editor(project):
    (project.folder / "rootlink").symlink_to("/")
    (project.folder / "tools/language/loop").symlink_to(project.folder)
    editor = project.start()
    assert editor.get("picture?view=menu")[0] == 200
    begun = time.monotonic()
    editor.stop()
    assert time.monotonic() - begun < 1.0
