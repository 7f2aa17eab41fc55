"""A person at the page: a real browser, its mouse and its keyboard."""

import json
import os
import re
import subprocess
from collections.abc import Iterator, Mapping
from contextlib import contextmanager
from pathlib import Path
from typing import Any
from urllib.parse import urlsplit

from selenium import webdriver
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.remote.webelement import WebElement
from selenium.webdriver.support.ui import Select, WebDriverWait

CLONE = Path(__file__).resolve().parents[2]
BROWSER = "/usr/bin/chromium"
DRIVER = "/usr/bin/chromedriver"
SIZE = (1600, 1000)
PATIENCE = 30.0
"""Seconds, on a busy machine."""

Point = tuple[int, int]


def origin_of(address: str) -> str:
    parts = urlsplit(address)
    return f"{parts.scheme}://{parts.netloc}"


@contextmanager
def served(folder: Path, environment: Mapping[str, str] | None = None) -> Iterator[str]:
    """The page's address, as the command prints it."""
    process = subprocess.Popen(
        [CLONE / "tool" / "board", "edit", folder, "--no-browser"],
        env={**os.environ, **(environment or {})},
        stdout=subprocess.PIPE,
        text=True,
    )
    try:
        assert process.stdout is not None
        lines = iter(process.stdout.readline, "")
        found = (re.search(r"http://\S+/", line) for line in lines)
        yield next(match[0] for match in found if match)
    finally:
        process.terminate()
        process.communicate(timeout=PATIENCE)


def open_browser(*arguments: str) -> webdriver.Chrome:
    options = webdriver.ChromeOptions()
    options.binary_location = BROWSER
    for argument in ("--headless=new", "--no-sandbox", "--hide-scrollbars", *arguments):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    driver = webdriver.Chrome(options=options, service=webdriver.ChromeService(DRIVER))
    driver.set_window_size(*SIZE)
    return driver


class Page:
    """What a person does on the page, and what stands there."""

    def __init__(self, driver: webdriver.Chrome, address: str) -> None:
        self.driver = driver
        self.address = address
        self.away = False
        """Whether a test has gone to other pages."""

    def leave(self, address: str) -> None:
        """Goes to another page."""
        self.away = True
        self.close()
        self.driver.get(address)

    def close(self) -> None:
        """Goes away without being asked whether what is not saved may be lost."""
        self.run("addEventListener('beforeunload', (e) => e.stopImmediatePropagation(), true)")
        self.driver.get("about:blank")

    def open(self) -> None:
        self.driver.get(self.address)
        self.wait("body", lambda text: "Loading" not in text)

    # What stands there.

    def all(self, selector: str) -> list[WebElement]:
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def one(self, selector: str) -> WebElement:
        """An element, once it is there."""
        found: list[WebElement] = self._until(lambda _: self.all(selector), f"no {selector}")
        return found[0]

    def text(self, selector: str) -> str:
        return self.one(selector).text

    def wait(self, selector: str, fits: Any = bool) -> str:
        """Waits until the text of an element is as it should be; returns it."""

        def look(_: object) -> str | None:
            found = self.all(selector)
            return found[0].text if found and fits(found[0].text) else None

        return str(self._until(look, f"{selector} has not come to fit"))

    def wait_for(self, script: str, *arguments: Any) -> Any:
        """Waits until a script returns something true; returns it."""
        return self._until(lambda _: self.run(script, *arguments), script)

    def _until(self, look: Any, message: str) -> Any:
        # What is looked at may be drawn anew meanwhile.
        wait = WebDriverWait(self.driver, PATIENCE, poll_frequency=0.05)
        return wait.until(look, message)

    def run(self, script: str, *arguments: Any) -> Any:
        return self.driver.execute_script(script, *arguments)

    def names(self) -> list[str]:
        return [item.text for item in self.all(".list .name")]

    def points(self, name: str, line: str = "outline") -> list[Point]:
        """The points of a component as they are drawn."""
        script = """
            const [name, line] = arguments;
            const all = [...document.querySelectorAll(".component")];
            const one = all.find((each) => each.querySelector(".name").textContent === name);
            return one.querySelector(`.${line}`).getAttribute("points");
        """
        text = self.run(script, name, line)
        return [(int(x), int(y)) for x, y in (pair.split(",") for pair in text.split())]

    # What a person does.

    def press(self, *keys: str, times: int = 1) -> None:
        chain = ActionChains(self.driver)
        for _ in range(times):
            chain.send_keys(*keys)
        chain.perform()

    def press_with(self, modifier: str, key: str, times: int = 1) -> None:
        chain = ActionChains(self.driver).key_down(modifier)
        for _ in range(times):
            chain.send_keys(key)
        chain.key_up(modifier).perform()

    def click(self, selector: str) -> None:
        self.one(selector).click()

    def button(self, text: str) -> WebElement:
        """The button with that text, once it can be pressed."""
        path = f"//button[normalize-space()='{text}' and not(@disabled)]"

        def look(_: object) -> WebElement | None:
            shown = (one for one in self.driver.find_elements(By.XPATH, path) if one.is_displayed())
            return next(shown, None)

        found: WebElement = self._until(look, f"there is no button {text}")
        return found

    def choose(self, name: str) -> None:
        """Clicks a component in the list."""
        path = f"//*[@role='option'][*[text()='{name}']]"
        self._until(lambda _: self.driver.find_elements(By.XPATH, path), f"there is no {name}")
        self.driver.find_element(By.XPATH, path).click()
        self.wait("[aria-selected=true] .name", lambda text: text == name)

    def type(self, field: str, text: str) -> None:
        """Writes a text over what a field says."""
        element = self.one(f"[name='{field}']")
        element.send_keys(Keys.CONTROL, "a")
        element.send_keys(text, Keys.TAB)

    def select(self, field: str, choice: str) -> None:
        Select(self.one(f"[name='{field}']")).select_by_visible_text(choice)

    def to_screen(self, point: Point) -> Point:
        """The pixel of the window that is nearest to a pixel of the picture."""
        script = """
            const svg = document.querySelector(".surface svg");
            const at = new DOMPoint(...arguments[0]).matrixTransform(svg.getScreenCTM());
            return [Math.round(at.x), Math.round(at.y)];
        """
        x, y = self.run(script, point)
        return x, y

    def to_picture(self, point: Point) -> Point:
        """The picture's pixel that is nearest to a pixel of the window."""
        x, y = self.place(point)
        return round(x), round(y)

    def place(self, point: Point) -> tuple[float, float]:
        """Where a pixel of the window is on the picture, between its pixels."""
        script = """
            const svg = document.querySelector(".surface svg");
            const matrix = svg.getScreenCTM().inverse();
            const at = new DOMPoint(...arguments[0]).matrixTransform(matrix);
            return [at.x, at.y];
        """
        x, y = self.run(script, point)
        return x, y

    def drag_point(self, start: Point, end: Point, *keys: str) -> Point:
        """Drags a point that stands at `start`; returns where it has to stand then."""
        (x1, y1), (x2, y2) = (self.place(self.to_screen(point)) for point in (start, end))
        self.drag(start, end, *keys)
        return round(start[0] + x2 - x1), round(start[1] + y2 - y1)

    def drag(self, start: Point, end: Point, *keys: str) -> Point:
        """Drags between two places of the picture; returns where it ended."""
        chain = ActionChains(self.driver, duration=20)
        for key in keys:
            chain.key_down(key)
        self._move(chain, start).click_and_hold()
        self._move(chain, (round((start[0] + end[0]) / 2), round((start[1] + end[1]) / 2)))
        self._move(chain, end).release()
        for key in keys:
            chain.key_up(key)
        chain.perform()
        return self.to_picture(self.to_screen(end))

    def click_at(self, point: Point) -> Point:
        """Clicks a place of the picture; returns where it was hit."""
        chain = ActionChains(self.driver, duration=20)
        self._move(chain, point).click().perform()
        return self.to_picture(self.to_screen(point))

    def point_at(self, point: Point) -> None:
        self._move(ActionChains(self.driver), point).perform()

    def _move(self, chain: ActionChains, point: Point) -> ActionChains:
        x, y = self.to_screen(point)
        pointer: Any = chain.w3c_actions.pointer_action
        pointer.move_to_location(x, y)
        chain.w3c_actions.key_action.pause()
        return chain

    def drop(self, name: str, content: str, kind: str = "text/plain") -> None:
        """Drops a file onto the page, as from a file manager."""
        script = """
            const [name, content, type] = arguments;
            const data = new DataTransfer();
            data.items.add(new File([content], name, { type }));
            const event = { dataTransfer: data, bubbles: true, cancelable: true };
            document.body.dispatchEvent(new DragEvent("drop", event));
        """
        self.run(script, name, content, kind)

    def save(self) -> None:
        self.press_with(Keys.CONTROL, "s")
        self.wait(".saved", lambda text: text == "Saved")

    # What the browser has noted.

    def _log(self, kind: str) -> list[dict[str, Any]]:
        driver: Any = self.driver
        entries: list[dict[str, Any]] = driver.get_log(kind)
        return entries

    def requests(self) -> list[str]:
        """Every address that was asked for since the last time."""
        entries = (json.loads(entry["message"]) for entry in self._log("performance"))
        messages = (entry["message"] for entry in entries)
        return [
            message["params"]["request"]["url"]
            for message in messages
            if message["method"] == "Network.requestWillBeSent"
        ]

    def complaints(self) -> list[str]:
        """What the browser complains of, such as errors in scripts."""
        return [entry["message"] for entry in self._log("browser") if entry["level"] == "SEVERE"]
