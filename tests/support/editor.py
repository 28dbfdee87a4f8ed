"""vcckit edit and its page in a headless Chromium: the tool's process, requests of the test's own, mouse and keys."""

import base64
import io
import json
import os
import subprocess
import time

import numpy as np
import urllib3
from PIL import Image
from selenium import webdriver
from selenium.webdriver import ActionChains
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

from support.desktop import stop, wait_until
from support.installation import VCCKIT

CHANGED_KEYS = {"ctrl": Keys.CONTROL, "shift": Keys.SHIFT, "alt": Keys.ALT}


class Editor:
    """A running vcckit edit. What it keeps for the user lies in `state`."""

    def __init__(self, folder, screens, state, environment=None):
        self.folder, self.screens = folder, screens
        self._environment = os.environ | {"XDG_STATE_HOME": str(state)} | (environment or {})
        self.process = None

    def start(self):
        command = [VCCKIT, "edit", self.folder, "--screens", self.screens, "--no-browser"]
        self.process = subprocess.Popen(command, env=self._environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                        text=True)
        self.address = self.process.stdout.readline().strip()
        if not self.address.startswith("http://127.0.0.1:"):
            raise RuntimeError(f"vcckit edit does not start: {self.process.communicate()[1]}")
        return self

    def kill(self):
        self.process.kill()
        self._close()

    def stop(self):
        if self.process:
            stop(self.process)
            self._close()

    def _close(self):
        self.process.wait()
        self.process.stdout.close()
        self.process.stderr.close()

    # requests

    def get(self, name):
        answer = urllib3.PoolManager(timeout=20).request("GET", self.address + name)
        return answer.status, answer.data

    def document(self, name):
        status, body = self.get(f"document?name={name}")
        assert status == 200, body
        return json.loads(body)

    def post(self, name, body):
        answer = urllib3.PoolManager(timeout=20).request(
            "POST", self.address + name, body=json.dumps(body), headers={"Content-Type": "application/json"})
        return answer.status, json.loads(answer.data)

    def edit(self, name, *operations):
        """A change that another page makes."""
        revision = self.document(name)["revision"]
        return self.post("edit", {"name": name, "revision": revision, "label": "a test's change", "merge": "",
                                  "operations": list(operations)})


class Browser:
    """A Chromium that keeps nothing, with the words that a page of the editor is spoken to. Without tabs it is only
    what draws a page and runs its scripts: a third less of the processor."""

    def __init__(self, size=(1280, 800), tabs=False):
        options = webdriver.ChromeOptions()
        options.binary_location = "/usr/bin/chromium" if tabs else "/usr/lib/chromium/chromium-headless-shell"
        for argument in ("--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                         "--disable-background-networking", "--window-size={},{}".format(*size)):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        self.driver = webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))
        self.resize(*size)

    def close(self):
        self.driver.quit()

    def resize(self, width, height, scheme="dark"):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def open(self, editor):
        self.errors()
        self.driver.get(editor.address)
        wait_until(lambda: self.run("return document.documentElement.dataset.ready"), "the page")
        self.wait_for_picture()

    def leave(self):
        self.driver.get("about:blank")

    def errors(self):
        """What went wrong in the page since the last time, in its scripts or with what it loads; but no refusals."""
        return [entry["message"] for entry in self.driver.get_log("browser")
                if entry["level"] == "SEVERE" and "status of 422" not in entry["message"]]

    # looking

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0])?.textContent ?? ''", selector)

    def button(self, label, what="button"):
        """The first button whose text, or name for screen readers, begins with this; or something of it."""
        return wait_until(lambda: self.run("""const button = [...document.querySelectorAll('button')].find((each) =>
            each.offsetParent && [each.textContent.trim(), each.getAttribute('aria-label') ?? '']
              .some((text) => text.startsWith(arguments[0])));
            button?.scrollIntoView({ block: 'nearest' });
            const box = button?.getBoundingClientRect();
            return button && """ + what, label), f"a button {label!r}")

    def frame(self, key):
        """Left, top, width, height of a frame in pixels of the picture; None when there is none."""
        return self.run("""const frame = document.querySelector(`.frame[data-key="${arguments[0]}"]`);
            const zoom = document.getElementById('surface').getBoundingClientRect().width / 800;
            return frame && ['left', 'top', 'width', 'height']
              .map((each) => Math.round(parseFloat(frame.style[each]) / zoom))""",
                        key)

    def wait_for_frame(self, key, place):
        wait_until(lambda: self.frame(key)[:2] == list(place), f"frame {key} at {place}, not {self.frame(key)}")

    def selection(self):
        return self.run("return [...document.querySelectorAll('#items li[aria-selected=true]')]"
                        ".map((each) => each.dataset.key)")

    def wait_for_picture(self):
        """Until nothing waits to be sent, and the picture is that of the newest change."""
        wait_until(lambda: self.run("""return Promise.all([import('./edits.js'), import('./picture.js')])
            .then(([edits, picture]) => !edits.isBusy() && picture.isCurrent())"""), "the newest picture")

    def canvas(self):
        """The picture's pixels as the page shows them, RGB."""
        _, png = self.run("return document.getElementById('picture').toDataURL()").split(",")
        return np.asarray(Image.open(io.BytesIO(base64.b64decode(png))).convert("RGB"))

    # mouse and keys

    def _to(self, actions, x, y):
        left, top, scale = self.run("""const box = document.getElementById('surface').getBoundingClientRect();
            return [box.left, box.top, box.width / 800]""")
        actions.w3c_actions.pointer_action.move_to_location(round(left + (x + 0.5) * scale),
                                                            round(top + (y + 0.5) * scale))
        actions.w3c_actions.key_action.pause()  # keys and pointer go in step
        return actions

    def _actions(self):
        return ActionChains(self.driver, duration=10)

    def _holding(self, held, act):
        """Carries out what `act` adds to the actions, with a key held that says how."""
        actions = self._actions()
        if held:
            actions.key_down(CHANGED_KEYS[held])
        act(actions)
        if held:
            actions.key_up(CHANGED_KEYS[held])
        actions.perform()

    def click_at(self, x, y, held=None):
        self._holding(held, lambda actions: self._to(actions, x, y).click())

    def focused(self):
        return self.run("return document.activeElement.id || document.activeElement.closest('[id]')?.id")

    def drag(self, start, end, held=None):
        """Presses, moves in a few steps and lets go."""
        def pull(actions):
            self._to(actions, *start).click_and_hold()
            for step in range(1, 4):
                self._to(actions, *(round(a + (b - a) * step / 3) for a, b in zip(start, end, strict=True)))
            actions.release()

        self._holding(held, pull)

    def keys(self, *keys):
        """Single keys, texts, and combinations such as "ctrl+s"."""
        actions = self._actions()
        for key in keys:
            *changed, last = key.split("+") if len(key) > 1 and "+" in key else [key]
            for each in changed:
                actions.key_down(CHANGED_KEYS[each])
            actions.send_keys(getattr(Keys, last.upper(), last) if len(last) > 1 else last)
            for each in reversed(changed):
                actions.key_up(CHANGED_KEYS[each])
        actions.perform()

    def type_into(self, element, text):
        element.click()
        self.keys("ctrl+a")
        self._actions().send_keys(text, Keys.ENTER).perform()

    def press(self, label):
        """Clicks at its place, also if it is made anew just then."""
        actions = self._actions()
        actions.w3c_actions.pointer_action.move_to_location(
            *self.button(label, "[box.x + box.width / 2, box.y + box.height / 2].map(Math.round)"))
        actions.w3c_actions.key_action.pause()
        actions.click().perform()


def settle(seconds=0.2):
    """Watches for what must not happen."""
    time.sleep(seconds)
