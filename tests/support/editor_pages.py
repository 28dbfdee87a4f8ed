"""Fixtures of the screen editor's tests, which import them, and what several of these do."""

import json
import shutil
from contextlib import ExitStack

import pytest

from support.desktop import wait_until
from support.editor import Browser, Editor
from support.installation import PROJECT, built_installation

FACTORY = "slot:5"
FACTORY_PLACE = [34, 236, 216, 42]
FACTORY_MIDDLE = 142, 257


@pytest.fixture(scope="module")
def browser():
    one = Browser()
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


def project_text(page, name="vcc"):
    return page.run("const name = arguments[0];"
                    "return import('./state.js').then(({ state }) => state.documents.get(name).text)", name)
