"""The screen editor in a real browser: mouse, keys, files on disk, a tool that is killed.

VELDOR_KEEP_PICTURES=1 puts the pictures that are taken in place of those of the documents.
"""

import json
import os
import shutil
import socket
import subprocess
import time
from contextlib import ExitStack
from urllib.parse import urlparse

import numpy as np
import pytest
from PIL import Image

from support.desktop import Desktop, wait_until
from support.editor import Browser, Editor, settle
from support.installation import PROJECT, VCCKIT, built_installation

pytestmark = pytest.mark.linux

FACTORY = "slot:5"
FACTORY_PLACE = [34, 236, 216, 42]
FACTORY_MIDDLE = 142, 257


@pytest.fixture(scope="module")
def browser(tmp_path_factory):
    one = Browser(tmp_path_factory.mktemp("profile"))
    yield one
    one.close()


@pytest.fixture
def project(installation, tmp_path):
    """A copy of the built-in installation with its sources; make(...) starts editors on it."""
    screens = tmp_path / "screens"
    shutil.copytree(PROJECT / "game/screens", screens)
    with ExitStack() as stack:
        class Project:
            folder = installation.folder

            def source(self, name="vcc.toml"):
                return screens / name

            def start(self, environment=None):
                editor = Editor(installation.folder, screens, tmp_path / "state", environment)
                stack.callback(editor.stop)
                return editor.start()

            def bytes(self):
                """Everything that an editor may write."""
                return {path: path.read_bytes() for folder in (screens, installation.path("tools"))
                        for path in folder.rglob("*") if path.is_file()}

        yield Project()


@pytest.fixture
def editor(project):
    return project.start()


@pytest.fixture(scope="module")
def shared_editor(tmp_path_factory):
    """One editor for all tests that save nothing."""
    folder = tmp_path_factory.mktemp("shared")
    shutil.copytree(PROJECT / "game/screens", folder / "screens")
    shutil.copytree(built_installation(), folder / "veldor")
    editor = Editor(folder / "veldor", folder / "screens", folder / "state").start()
    yield editor
    editor.stop()


@pytest.fixture
def page(request, browser):
    """An editor's page as a new user sees it, without a fault in its scripts until the test ends; of the shared editor
    when the test has none of its own."""
    has_own = {"project", "editor"} & set(request.fixturenames)
    editor = request.getfixturevalue("editor" if has_own else "shared_editor")
    browser.resize(1280, 800)
    browser.open(editor)
    yield browser
    faults = browser.errors()
    browser.run("sessionStorage.clear(); localStorage.clear()")
    browser.leave()
    if not has_own:
        for name in json.loads(editor.get("project")[1])["documents"]:
            while editor.document(name)["done"]:
                editor.post("undo", {"name": name})
    assert faults == []


def choose_factory(page):
    page.click_at(*FACTORY_MIDDLE)
    assert page.selection() == [FACTORY]
    wait_until(lambda: page.text("#properties h2") == "Slot 5", "its properties")


def save(page):
    wait_until(lambda: not page.all("dialog"), "the dialog to close")
    page.keys("ctrl+s")
    wait_until(lambda: page.run("return document.querySelector('#bar .state').disabled"), "everything to be saved")


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


def test_what_is_dragged_looks_as_the_program_draws_what_is_saved(page, project, editor, tmp_path):
    page.drag(FACTORY_MIDDLE, (443, 290), held="ctrl")
    page.wait_for_picture()
    assert page.frame(FACTORY) == [335, 269, 216, 42]
    save(page)

    rendered = tmp_path / "rendered.png"
    subprocess.run([VCCKIT, "render", project.folder, "--screen", "menu", "-o", rendered], check=True)
    assert editor.get("picture.png?view=menu&language=en") == (200, rendered.read_bytes())
    assert np.array_equal(page.canvas(), np.asarray(Image.open(rendered).convert("RGB")))

    # the packed files follow the source; only one place in it has changed
    packed = {path: data for path, data in project.bytes().items() if path.suffix in (".slt", ".tgl")}
    subprocess.run([VCCKIT, "pack", "-q", project.source(), "-o", project.folder], check=True)
    assert all(path.read_bytes() == data for path, data in packed.items())
    before = (PROJECT / "game/screens/vcc.toml").read_text().splitlines()
    after = project.source().read_text().splitlines()
    assert [line for line in after if line not in before] == ["dest_y = 269", "dest_x = 335"]


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
        for process in children_of(editor.process.pid):
            os.kill(process, 15)


def children_of(parent):
    found = subprocess.run(["pgrep", "-P", str(parent)], capture_output=True, text=True, check=False)
    return [int(line) for line in found.stdout.split()]


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


def project_text(page, name="vcc"):
    return page.run("const name = arguments[0];"
                    "return import('./state.js').then(({ state }) => state.documents.get(name).text)", name)


def test_one_change_is_one_request(page):
    choose_factory(page)
    settle(0.6)  # the small pictures of the looks
    page.run("performance.clearResourceTimings()")
    page.keys("right")
    page.wait_for_frame(FACTORY, (35, 236))
    page.wait_for_picture()
    asked = page.run("return performance.getEntriesByType('resource').map((each) => each.name.split('/').pop())")
    assert [name for name in asked if name.startswith(("document", "edit")) or "keep" in name] == ["edit"], asked


def test_many_tabs_and_slow_strangers_leave_the_server_free(page, shared_editor):
    editor = shared_editor
    first = page.driver.current_window_handle
    strangers = [socket.create_connection(("127.0.0.1", urlparse(editor.address).port)) for _ in range(64)]
    for each in strangers:
        each.sendall(b"GET /wrong/ HTTP/1.1\r\nHost: 127.0.0.1\r\n")
    for _ in range(7):
        page.driver.switch_to.new_window("tab")
        page.driver.get(editor.address)
        page.wait_until_ready()
    for handle in page.driver.window_handles:
        if handle != first:
            page.driver.switch_to.window(handle)
            page.driver.close()
    page.driver.switch_to.window(first)
    for each in strangers:
        each.close()
    connection = editor.connect()
    connection.request("POST", editor.path("save"), (b" " * 65536 for _ in range(64)),
                       {"Content-Type": "application/json"}, encode_chunked=True)
    assert connection.getresponse().status == 413
    connection.close()


def test_a_link_to_everything_does_not_hold_the_editor(project):
    (project.folder / "rootlink").symlink_to("/")
    (project.folder / "tools/language/loop").symlink_to(project.folder)
    editor = project.start()
    assert editor.get("picture?view=menu")[0] == 200
    begun = time.monotonic()
    editor.stop()
    assert time.monotonic() - begun < 1.0


# what misleads

def test_controls_say_what_they_do(page):
    # nothing is chosen, and F6 goes on
    assert [page.keys("f6") or page.focused() for _ in range(3)] == ["items", "below", "viewport"]
    # a text is changed in the language that is shown
    page.click_at(60, 582)
    settle(0.1)
    assert page.run("""return [...document.querySelectorAll('#properties [data-field]')].filter((each) => {
        each.dispatchEvent(new FocusEvent('focusin', { bubbles: true }));
        const told = document.getElementById('field-help');
        return !told.textContent.includes(each.labels[0]?.textContent ?? '') || told.scrollWidth > told.clientWidth;
        }).map((each) => each.dataset.field)""") == [], "everything said of a field is visible"
    page.press("DE")
    before = project_text(page)
    page.type_into(page.all("#field-text")[0], "Zentrale")
    page.wait_for_picture()
    changed = [line for line in project_text(page).splitlines() if line not in before.splitlines()]
    assert changed == ['text = { en = "Veldor Control Centre  1.2.8", de = "Zentrale" }']
    # the focus comes back to where a colour was chosen
    page.all("#field-fore_colour")[0].find_element("xpath", "../button").click()
    page.keys("right", "enter")
    page.wait_for_picture()
    wait_until(lambda: page.run("return document.activeElement.dataset.field") == "fore_colour table", "the focus")
    # the chosen one of a few looks chosen under the pointer, too
    chosen = page.button("DE")
    page._actions().move_to_element(chosen).perform()
    settle(0.3)
    assert page.run("const style = (one) => getComputedStyle(one).backgroundColor;"
                    "return style(arguments[0]) === style(document.querySelector('#bar [aria-checked=true]'))", chosen)
    # another list is another choice
    page.press("Windows")
    assert page.selection() == [] and page.all("#items li")
    # Tab leaves the picture behind the last slot
    page.press("Slots")
    page.run("document.getElementById('viewport').focus()")
    page.keys("shift+tab")
    assert page.selection() == [page.all("#items li")[-1].get_attribute("data-key")]
    page.keys("tab")
    assert page.focused() != "viewport"


def test_a_press_outlives_a_change_from_elsewhere(page, shared_editor):
    choose_factory(page)
    back = page.all('.field .back[aria-label*="dest_y"]')[0]
    place = back.rect
    settle(0.5)  # the small pictures of the looks come later
    assert back.rect == place, "nothing moves below the pointer"
    page._actions().click_and_hold(back).perform()
    shared_editor.edit("vcc", {"do": "move", "of": [{"slot": 7}], "dx": 0, "dy": 4})
    page.wait_for_frame("slot:7", (34, 290))
    page._actions().release().perform()
    wait_until(lambda: not page.all('.field .back[aria-label*="dest_y"]'), "the value to be taken back")


def test_no_frames_lie_over_the_picture_of_another_screen(page):
    page.run("""const context = document.getElementById('picture').getContext('2d');
        window.seen = new Set();
        const look = () => {
          const frames = document.getElementById('frames');
          if (frames.checkVisibility())
            seen.add(`${frames.childElementCount} ${context.getImageData(0, 100, 800, 1).data.join()}`);
          requestAnimationFrame(look);
        };
        look()""")
    settle(0.1)
    for key in ("ctrl+2", "ctrl+1"):
        page.keys(key)
        page.wait_for_picture()
        settle(0.1)
    assert page.run("return seen.size") == 2, "frames and picture of the menu, and of the options"


NEW = [
    # keys, document, what its source gets, where the focus is then
    (("n",), "vcc", ['text = { en = "Text", de = "Text" }', "dest_x = 360"], "field-text"),
    (("escape", "b"), "vcc", ['highlight = { fore_colour = "yellow" }'], "field-text"),
    (("escape", "p"), "vcc", ["box_height = 50"], None),
    (("escape", "w"), "factory", ["+26", "xo300"], "viewport"),
    (("ctrl+f", "window 26", "enter", "ctrl+d"), "factory", ["+27", "xo308"], "viewport"),
    (("ctrl+f", "slot 18", "enter", "ctrl+k", "new button", "enter"), "vcc", ["index = 25"], "field-text"),
]


def test_what_is_new(page):
    for keys, name, expected, focus in NEW:
        before = project_text(page, name).splitlines()
        for key in keys:
            page.keys(key)
            page.wait_for_picture()
        wait_until(lambda: set(expected) <= set(project_text(page, name).splitlines()) - set(before), f"{expected}")
        wait_until(lambda: focus in (None, page.focused()), f"the focus in {focus}, not {page.focused()}")


def test_a_picture_gets_a_buffer_that_slots_show_at_once(page, project):
    """It is saved; without it check misses what the slot shows."""
    page.keys("i")
    page.type_into(page.all("dialog input")[0], "images/help.pcx")
    wait_until(lambda: page.selection() == ["buffer:9"], "the buffer")
    page.wait_for_picture()
    page.keys("p")
    page.press("buffer 9")
    wait_until(lambda: "581 × 451" in page.text(".buffer-bar output"), "its picture")
    page.press("Take this piece")
    wait_until(lambda: "buffer = 9" in project_text(page), "the buffer of the slot")
    page.wait_for_picture()
    save(page)
    assert (project.folder / "tools/vcc.buf").read_text().endswith("+9\nimages/help.pcx\n")
    page.press("Buffers")
    page.keys("ctrl+z")
    wait_until(lambda: "VK108" in page.text(".faults"), "the fault of the slot")


FOUND = [
    # what is typed, what is chosen then, on which screen
    ("slot 18", "slot:18", "Menu"), ("klang", "slot:4", "Options"), ("vk113", "slot:5", "Options"),
    ("style button", "style:button", "Menu"), ("window 3", "window:3", "Menu"), ("options.pcx", "buffer:3", "Menu"),
]


def test_everything_is_found_from_everywhere(page, editor):
    editor.edit("vcc_options", {"do": "set", "of": [{"slot": 5}], "field": "display_time", "value": 900})
    wait_until(lambda: "VK113" in page.text(".faults"), "the fault of the other screen")
    for typed, key, view in FOUND:
        page.keys("ctrl+1", "ctrl+f")
        page.driver.switch_to.active_element.send_keys(typed)
        page.keys("enter")
        wait_until(lambda key=key: page.selection() == [key], f"{key} for {typed!r}, not {page.selection()}")
        assert page.text("#bar [aria-checked=true]") == view, typed


def test_slots_and_windows_are_carried_to_another_screen(page):
    left, top, width, height = FACTORY_PLACE
    choose_factory(page)
    page.wait_for_picture()
    button = page.canvas()[top:top + height, left:left + width]
    page.keys("ctrl+c", "ctrl+2")
    page.wait_for_picture()
    page.keys("ctrl+v")
    copied = wait_until(page.selection, "the copy")
    page.wait_for_picture()
    assert page.frame(copied[0]) == FACTORY_PLACE
    assert np.array_equal(page.canvas()[top:top + height, left:left + width], button)
    page.keys("h")  # with its looks
    page.wait_for_picture()
    assert not np.array_equal(page.canvas()[top:top + height, left:left + width], button)
    # a text window comes with a slot that shows it; both are one step
    page.keys("ctrl+1")
    page.press("Windows")
    page.all("#items li")[0].click()
    page.wait_for_picture()
    place = page.frame("window:1")
    page.keys("ctrl+c", "ctrl+2")
    page.wait_for_picture()
    page.keys("ctrl+v")
    [slot] = wait_until(page.selection, "the slot")
    page.wait_for_picture()
    assert page.frame(slot) == place and "+26" in project_text(page, "factory")
    for key, is_there in (("ctrl+z", False), ("ctrl+y", True)):
        page.keys(key)
        page.wait_for_picture()
        assert (page.frame(slot) is not None) == is_there == ("+26" in project_text(page, "factory"))


def test_edges_are_dragged_attracted_and_measured(page):
    left, top, width, height = FACTORY_PLACE
    choose_factory(page)
    page.drag((left + width - 1, top + 20), (left + width + 19, top + 20), held="ctrl")
    page.wait_for_picture()
    assert page.frame(FACTORY) == [left, top, 236, height] and "box_width = 236" in project_text(page)
    page.keys("ctrl+z")
    page.wait_for_picture()
    page.drag((142, top + height - 1), (142, top + height + 5))
    page.wait_for_picture()
    assert page.frame(FACTORY) == [left, top, width, 50], "down to the button below"
    # undo restores the choice; the background stays
    page.click_at(60, 582)
    page.keys("ctrl+z")
    wait_until(lambda: page.selection() == [FACTORY], "what is undone")
    before = project_text(page)
    page.click_at(600, 50)
    assert page.selection() == ["slot:0"] and not page.all(".handle")
    page.keys("right")
    wait_until(lambda: "stays" in page.text(".toast.bad, .toast"), "the reason")
    assert project_text(page) == before
    # the gaps to the neighbours, and to the edges of the screen
    choose_factory(page)
    actions = page._to(page._actions(), *FACTORY_MIDDLE).click_and_hold()
    for place in ((300, 300), (330, 310)):
        page._to(actions, *place)
    actions.perform()
    gaps = wait_until(lambda: page.run("return [...document.querySelectorAll('.measures span')].map((each) => "
                                       "Number(each.textContent))"), "the gaps")
    x, y = page.frame(FACTORY)[:2]
    assert {x, 800 - x - width} <= set(gaps) and f"x {x}  y {y}" in page.text(".ghost"), gaps
    page.keys("escape")
    page._actions().release().perform()
    page.wait_for_frame(FACTORY, (left, top))
    page.keys("g")
    page.drag(FACTORY_MIDDLE, (150, 262))
    page.wait_for_frame(FACTORY, (40, 238))  # of cells of 8 x 14
    page.keys("g", "z")
    wait_until(lambda: page.text("#tools output") == "3×", "it as large as fits")
    page.press("Texts")
    page.keys("0")
    wait_until(lambda: page.run("const { style } = document.getElementById('surface');"
                                "return parseFloat(style.height) <= document.getElementById('viewport').clientHeight"),
               "all of the picture in little room")
    page.resize(2560, 1440)
    wait_until(lambda: page.text("#tools output") == "1.5×", "the picture as large as fits")
    page.keys("+")
    wait_until(lambda: page.text("#tools output") == "2×", "the next whole step")


def test_what_is_chosen_after_escape_and_undo(page):
    """Dragging one of a group moves all of it; a style cannot be moved."""
    page.press("Options")
    page.wait_for_picture()
    page.click_at(68, 105)
    [key] = page.selection()
    place = page.frame(key)
    page._to(page._to(page._actions(), 68, 105).click_and_hold(), 100, 125).perform()
    wait_until(lambda: page.frame(key) != place, "the drag")
    page.keys("escape")
    page.wait_for_frame(key, tuple(place[:2]))
    page._actions().release().perform()
    page.wait_for_picture()
    assert page.selection() == [key]
    page.keys("right")
    page.wait_for_picture()
    for step in ("ctrl+z", "ctrl+y"):
        page.all("#items li")[1].click()
        page.keys(step)
        wait_until(lambda: page.selection() == [key], "the choice that was changed")
    page.run("document.getElementById('viewport').focus()")
    page.keys("down")
    page.wait_for_picture()
    page.keys("ctrl+h", "home", "enter")
    page.wait_for_frame(key, tuple(place[:2]))
    assert [each.get_attribute("class") for each in page.all(".history li")] == ["", "undone", "undone"]
    page.all(".history li")[1].click()
    page.wait_for_frame(key, (place[0] + 8, place[1]))
    assert page.text(".history [aria-current=true]").startswith("1Move slot")
    page.press("Styles")
    page.all("#items li")[0].click()
    page.run("document.getElementById('viewport').focus()")
    page.keys("right")
    settle()
    assert not page.all(".toast")


def test_windows_are_dragged_and_aligned_and_sounds_heard(page):
    page.press("Windows")
    page.all("#items li")[0].click()
    [key] = page.selection()
    left, top, width, height = page.frame(key)
    page.drag((left + width - 1, top + height - 1), (left + width + 16, top + height + 29), held="ctrl")
    page.wait_for_frame(key, (left, top))
    page.wait_for_picture()
    assert page.frame(key) == [left, top, width + 17, height + 30]
    page.run("const { fetch } = window; window.fetch = async (...one) => {"
             "await new Promise((done) => setTimeout(done, 300)); return fetch(...one); }")
    page.drag((left + 60, top + 4), (left + 93, top + 24), held="ctrl")
    page.press("Align left")
    page.wait_for_frame(key, (0, top + 20))
    page.wait_for_picture()
    lines = project_text(page, "factory").splitlines()
    assert {"xo0", f"yo{top + 20:.0f}", f"xu{width + 17:.0f}", f"yu{top + height + 50:.0f}"} <= set(lines)
    page.press("Slots")
    choose_factory(page)
    page.run("const { Audio } = window; window.Audio = function(...one) { return window.heard = new Audio(...one); }")
    page.run("const hear = document.getElementById('field-sound_act').parentElement.querySelector('.icon');"
             "hear.scrollIntoView({ block: 'center' }); return hear").click()
    wait_until(lambda: page.run("return window.heard?.currentTime > 0"), "the sound")


def test_looks_of_a_style_and_the_colour_of_a_shadow(page):
    page.click_at(60, 582)
    page.all("#field-shadow")[0].click()
    page.wait_for_picture()
    page.type_into(wait_until(lambda: page.all('[data-field="shadow colour"]'), "the colour")[0], "green")
    wait_until(lambda: 'shadow = "green"' in project_text(page), "the colour in the source")
    for field, value, expected in (("padding", "7, 3", "padding = [7, 3]"),
                                   ("help_file", "help/a.hlp", '"help/a.hlp"')):
        page.type_into(page.all(f"#field-{field}")[0], value)
        wait_until(lambda expected=expected: expected in project_text(page), expected)
    page.press("Styles")
    page.all("#items li")[0].click()
    page.press("Pressed")
    wait_until(lambda: page.run("return document.getElementById('field-src_x')?.value") == "440", "the look")
    page.type_into(page.all("#field-src_x")[0], "441")
    wait_until(lambda: "pressed = { src_x = 441, box_width = 656" in project_text(page), "the look in the source")


def test_a_text_that_is_not_translated_is_marked(page):
    page.press("Texts")
    page.type_into(page.all('[data-field="18-de"]')[0], " ")
    wait_until(lambda: "1 not translated" in page.text(".below-extra"), "the count")
    page.keys("ctrl+2")
    page.wait_for_picture()
    assert "0 not translated, 1 on other screens" in page.text(".below-extra")
    page.keys("f7")
    assert page.run("return document.activeElement.dataset.field") == "18-de"


READABLE = """
const numbers = (colour) => { const [r, g, b, a = 1] = colour.match(/[\\d.]+/g).map(Number); return [r, g, b, a]; };
const over = ([r, g, b, a], below) => [r, g, b].map((part, i) => part * a + below[i] * (1 - a));
const ground = (element) => {
  if (!element) return [255, 255, 255];
  const own = numbers(getComputedStyle(element).backgroundColor);
  return own[3] === 1 ? own.slice(0, 3) : over(own, ground(element.parentElement));
};
const light = (colour) => colour.map((part) => part / 255).map((part) =>
  part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4)
  .reduce((sum, part, i) => sum + part * [0.2126, 0.7152, 0.0722][i], 0);
const texts = [...document.querySelectorAll('body *')].filter((each) => each.checkVisibility() &&
  !each.closest('#frames, :disabled, svg, option, datalist') && (each.matches('input, select, textarea') ||
  [...each.childNodes].some((one) => one.nodeType === 3 && one.data.trim())));
return texts.map((each) => {
  const below = ground(each);
  const [a, b] = [light(over(numbers(getComputedStyle(each).color), below)), light(below)].sort((x, y) => y - x);
  return [(a + 0.05) / (b + 0.05), each.className, String(each.value || each.textContent).slice(0, 30)];
});"""


CUT = """return [...document.querySelectorAll('#items *, #properties *, #tools *, #bar *')].filter((each) =>
  each.clientWidth > 0 && each.scrollWidth > each.clientWidth && !each.matches('input, select, .folder, .grow'))
  .map((each) => each.outerHTML)"""


@pytest.mark.parametrize("scheme", ["light", "dark"])
def test_everything_can_be_read_and_the_focus_is_seen(page, scheme):
    page.resize(1280, 800, scheme)
    choose_factory(page)
    page.type_into(page.all("#field-display_time")[0], "900")
    wait_until(lambda: "VK113" in page.text(".faults"), "the fault")
    assert page.run(CUT) == []
    for look in ("Texts", "Source", "History", "Faults"):
        page.press(look)
        page.run("document.getElementById('viewport').focus()")
        settle(0.3)  # colours change slowly
        read = page.run(READABLE)
        assert len(read) > 60 and [each for each in read if each[0] < 4.5] == []
    page.keys("?")
    assert {"Ctrl+H", "F6", "Z", "Shift+Arrow keys"} <= {each.text for each in page.all(".palette kbd")}
    assert [each for each in page.run(READABLE) if each[0] < 4.5] == []
    page.keys("escape", "escape", "shift+tab", "tab")  # out of the picture, and around
    seen = set()
    while page.focused() != "viewport":
        seen.add(page.focused())
        assert page.run("""const { activeElement } = document;
            return activeElement === document.body || getComputedStyle(activeElement).outlineStyle !== 'none'"""), \
            page.focused()
        page.keys("tab")
    assert {"divider", "below", "properties", "bar", "items", "tools"} <= seen, seen


def test_a_picture_that_fails_and_a_folder_that_is_away_are_told(page, project):
    buffers = project.folder / "tools/vcc.buf"
    kept = buffers.read_bytes()
    buffers.unlink()
    wait_until(lambda: page.all("#banner-picture"), "the older picture to be told")
    buffers.write_bytes(kept)
    wait_until(lambda: not page.all("#banner-picture"), "the picture")
    project.folder.rename(project.folder.with_name("away"))
    choose_factory(page)
    page.keys("right")
    wait_until(lambda: "moved away" in page.text("#banner-notices"), "the notice")
    page.keys("ctrl+s")
    wait_until(lambda: "moved away" in page.text(".toast.bad"), "the reason")
    assert not project.folder.exists()
    project.folder.with_name("away").rename(project.folder)
    page.keys("right")
    wait_until(lambda: not page.all("#banner-notices"), "the folder to be back")
    save(page)


def test_an_evening_of_a_maker(browser, tmp_path, request):
    """A new project, a window moved, a second screen made from the installed one; make keeps both."""
    subprocess.run([VCCKIT, "new", "lantern", "--base", built_installation()], cwd=tmp_path, check=True,
                   stdout=subprocess.DEVNULL)
    folder = tmp_path / "lantern"
    make = ["make", "-s", f"VCCKIT={VCCKIT}"]
    subprocess.run(make, cwd=folder, check=True)
    editor = Editor(folder / "game", folder / "screens", tmp_path / "state").start()
    request.addfinalizer(editor.stop)
    browser.resize(1280, 800)
    browser.open(editor)
    browser.press("Options")
    assert len(browser.all("#items li")) > 50
    assert "No source yet" in browser.text("#items .about")
    browser.press("Take the source over")
    wait_until(lambda: not browser.text("#items .about"), "the source")
    browser.keys("ctrl+z")
    wait_until(lambda: "No source yet" in browser.text("#items .about"), "no source again")
    browser.keys("i", "enter")
    wait_until(lambda: browser.selection() == ["buffer:9"], "the buffer")
    browser.press("Windows")
    browser.all("#items li")[3].click()
    browser.keys("f6", "f6", "f6", "f6")
    browser.run("document.getElementById('viewport').focus()")
    browser.keys("right")
    browser.press("Help")
    browser.press("DE")
    browser.press("Slots")
    browser.all("#items li")[-1].click()
    browser.run("document.getElementById('viewport').focus()")
    browser.keys("down")
    browser.wait_for_picture()
    save(browser)
    windows, help_pages = folder / "screens/factory.tw", folder / "screens/mess.toml"
    buffers = (folder / "files/tools/vcc.buf").read_text()
    assert buffers.count("+9") == 1
    assert help_pages.exists() and not (folder / "screens/vcc_options.toml").exists()
    browser.leave()
    editor.stop()
    installed = [folder / f"game/tools/language/{each}_factory.tw" for each in ("english/e", "german/g")]
    packed = (folder / "game/tools/language/german/g_mess.slt").read_bytes()
    shutil.rmtree(folder / "game")
    shutil.rmtree(folder / ".made")
    subprocess.run(make, cwd=folder, check=True)
    assert all(each.read_bytes() == windows.read_bytes() for each in installed)
    assert (folder / "game/tools/vcc.buf").read_text() == buffers
    assert (folder / "game/tools/language/german/g_mess.slt").read_bytes() == packed


# the pictures of the documents

def menu(page):
    choose_factory(page)


def options_in_german(page):
    page.press("Options")
    page.press("DE")
    page.wait_for_picture()
    page.press("Texts")
    page.keys("g")
    page.click_at(260, 105)


def piece_of_a_picture(page):
    choose_factory(page)
    page.press("Choose the piece")
    wait_until(lambda: page.text(".buffer-bar output").startswith("216"), "the picture of the buffer")
    assert "buttons.pcx" in page.text(".buffer-choice [aria-checked=true]")
    assert page.all("#items .thumbnail")


def faults_and_source(page):
    choose_factory(page)
    page.type_into(page.all("#field-dest_x")[0], "700")
    page.wait_for_picture()
    page.press("line ")


PICTURES = [
    # file, its content, light or dark
    ("editor-menu", menu, "dark"), ("editor-options", options_in_german, "light"),
    ("editor-piece", piece_of_a_picture, "dark"), ("editor-source", faults_and_source, "light"),
]


def keep(taken, kept):
    """With few colours and dithering, for a small file."""
    picture = Image.open(taken).convert("RGB")
    picture.quantize(palette=picture.quantize(256), dither=Image.Dither.FLOYDSTEINBERG).save(kept, optimize=True)


@pytest.mark.parametrize("name, prepare, scheme", PICTURES, ids=[row[0] for row in PICTURES])
def test_the_pictures_are_those_of_the_documents(page, tmp_path, name, prepare, scheme):
    page.resize(1280, 800, scheme)
    prepare(page)
    page.wait_for_picture()
    settle(0.5)  # the small pictures of the looks come last
    taken, kept = tmp_path / f"{name}.png", PROJECT / f"docs/pictures/{name}.png"
    page.driver.save_screenshot(str(taken))
    if os.environ.get("VELDOR_KEEP_PICTURES"):
        keep(taken, kept)
    new, old = (np.asarray(Image.open(path).convert("RGB"), np.int16) for path in (taken, kept))
    assert new.shape == old.shape == (800, 1280, 3)
    alike = (np.abs(new - old).max(axis=2) <= 24).mean()
    assert alike >= 0.95, f"{alike:.1%} is as it was"
