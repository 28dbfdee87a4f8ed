"""The page of the screen editor in a real browser: what it shows, says and is easily done with.

VELDOR_KEEP_PICTURES=1 puts the pictures that are taken in place of those of the documents.
"""

import os
import shutil
import subprocess

import numpy as np
import pytest
from PIL import Image

from support.desktop import wait_until
from support.editor import Editor, settle
from support.editor_pages import (FACTORY, FACTORY_MIDDLE, FACTORY_PLACE, browser, choose_factory,  # noqa: F401
                                  editor, page, project, project_text, save, shared_editor)
from support.installation import PROJECT, VCCKIT, built_installation

pytestmark = pytest.mark.linux


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


SETTLED = """return document.getAnimations().length === 0 &&
  (document.documentElement.matches('.dark') ? 'dark' : 'light')"""

CUT = """return [...document.querySelectorAll('#items *, #properties *, #tools *, #bar *')].filter((each) =>
  each.clientWidth > 0 && each.scrollWidth > each.clientWidth && !each.matches('input, select, .folder, .grow'))
  .map((each) => each.outerHTML)"""


def test_everything_can_be_read_and_the_focus_is_seen(page):
    choose_factory(page)
    page.type_into(page.all("#field-display_time")[0], "900")
    wait_until(lambda: "VK113" in page.text(".faults"), "the fault")
    assert page.run(CUT) == []
    for look in ("Texts", "Source", "History", "Faults", "?"):
        page.keys("?") if look == "?" else page.press(look)
        page.run("document.getElementById('viewport').focus()")
        for scheme in ("light", "dark"):
            page.resize(1280, 800, scheme)
            wait_until(lambda scheme=scheme: page.run(SETTLED) == scheme, "its colours, which change slowly")
            read = page.run(READABLE)
            assert len(read) > 60 and [each for each in read if each[0] < 4.5] == [], (look, scheme)
    assert {"Ctrl+H", "F6", "Z", "Shift+Arrow keys"} <= {each.text for each in page.all(".palette kbd")}
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
    assert help_pages.exists() and not (folder / "screens/vcc_options.toml").exists()
    browser.leave()
    editor.stop()
    installed = [folder / f"game/tools/language/{each}_factory.tw" for each in ("english/e", "german/g")]
    packed = (folder / "game/tools/language/german/g_mess.slt").read_bytes()
    shutil.rmtree(folder / "game")
    shutil.rmtree(folder / ".made")
    subprocess.run(make, cwd=folder, check=True)
    assert all(each.read_bytes() == windows.read_bytes() for each in installed)
    assert (folder / "game/tools/language/german/g_mess.slt").read_bytes() == packed


# the pictures of the documents

def test_the_pictures_are_those_of_the_documents(page, tmp_path):
    def expect(name, scheme):
        page.resize(1280, 800, scheme)
        page.wait_for_picture()
        settle(0.5)  # the small pictures of the looks come last
        taken, kept = tmp_path / f"{name}.png", PROJECT / f"docs/pictures/{name}.png"
        page.driver.save_screenshot(str(taken))
        if os.environ.get("VELDOR_KEEP_PICTURES"):
            picture = Image.open(taken).convert("RGB")  # with few colours and dithering, for a small file
            dithered = picture.quantize(palette=picture.quantize(256), dither=Image.Dither.FLOYDSTEINBERG)
            dithered.save(kept, optimize=True)
        new, old = (np.asarray(Image.open(path).convert("RGB"), np.int16) for path in (taken, kept))
        assert new.shape == old.shape == (800, 1280, 3)
        alike = (np.abs(new - old).max(axis=2) <= 24).mean()
        assert alike >= 0.95, f"{alike:.1%} of {name} is as it was"

    choose_factory(page)
    expect("editor-menu", "dark")
    page.press("Choose the piece")
    wait_until(lambda: page.text(".buffer-bar output").startswith("216"), "the picture of the buffer")
    assert "buttons.pcx" in page.text(".buffer-choice [aria-checked=true]")
    assert page.all("#items .thumbnail")
    expect("editor-piece", "dark")
    page.keys("escape")
    page.type_into(page.all("#field-dest_x")[0], "700")
    page.wait_for_picture()
    page.press("line ")
    expect("editor-source", "light")
    page.run("document.getElementById('viewport').focus()")
    page.keys("ctrl+z")
    page.wait_for_picture()
    page.press("Options")
    page.press("DE")
    page.wait_for_picture()
    page.press("Texts")
    page.keys("g")
    page.click_at(260, 105)
    expect("editor-options", "light")
