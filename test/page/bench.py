#!/usr/bin/env python3
"""Measures the page in a browser: a drag on a full board, and how soon the view follows a change.

Started by script/bench.
"""

import math
import statistics
import sys
import tempfile
import time
from pathlib import Path
from typing import Any

CLONE = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(CLONE / "script"), str(CLONE / "tool")]

import yaml
from PIL import Image
from selenium.webdriver.common.keys import Keys

from boardtool.live import PROGRAM, program
from browser import Page, open_browser, served

SIZE = (2880, 1620)
COUNT = 99
CORNERS = 20
COLUMNS = 11
NAME = "PART_50"

FRAMES = 300
CHANGES = 12
FRAME_AIM = 16.0
VIEW_AIM = 200.0
PAUSE = 1.0
"""Seconds between changes, for what follows them: a person is no faster."""

LOOK = {"text": "20,20,20", "background": "200,200,200", "mark": "150,0,0"}

# Work is what the page does from the frame's start until it is drawn: a message that is sent before
# drawing arrives after it.
DRAG = """
    const [x, y, frames, done] = arguments;
    const target = document.elementFromPoint(x, y);
    const mouse = (kind, on, dx, dy) => on.dispatchEvent(new MouseEvent(kind, {
      clientX: x + dx, clientY: y + dy, bubbles: true, cancelable: true, button: 0,
    }));
    const work = [];
    let start = 0;
    const channel = new MessageChannel();
    channel.port1.onmessage = () => {
      work.push(performance.now() - start);
      if (work.length < frames) return requestAnimationFrame(step);
      mouse("mouseup", document, 0, 0);
      return done(work);
    };
    const step = () => {
      start = performance.now();
      mouse("mousemove", document, 40 * Math.sin(work.length / 9), 30 * Math.cos(work.length / 7));
      channel.port2.postMessage(0);
    };
    mouse("mousedown", target, 0, 0);
    requestAnimationFrame(step);
"""

CHANGE = """
    const [done] = arguments;
    const picture = document.querySelector(".screen img");
    const start = performance.now();
    picture.addEventListener("load", () => done(performance.now() - start), { once: true });
    const key = new KeyboardEvent("keydown", { key: "ArrowRight", bubbles: true });
    document.querySelector(".surface svg").dispatchEvent(key);
"""


def center_of(number: int) -> tuple[int, int]:
    return 150 + number % COLUMNS * 240, 100 + number // COLUMNS * 160


def component(number: int) -> dict[str, Any]:
    x, y = center_of(number)
    turns = [2 * math.pi * corner / CORNERS for corner in range(CORNERS)]
    return {
        "name": f"PART_{number}",
        "category": "usb",
        "outline": [[round(x + 60 * math.cos(a)), round(y + 50 * math.sin(a))] for a in turns],
        "leader": [[x, y], [x + 20, y + 70]],
        "callout": "top",
        "marker": [x, y],
    }


def write_board(folder: Path) -> None:
    Image.new("RGB", SIZE, (20, 60, 40)).save(folder / "board.png")
    components = [component(number) for number in range(COUNT)]
    styles = {"normal": {"default": LOOK, "focus": dict(LOOK)}}
    document = {"picture": "board.png", "styles": styles, "components": components}
    (folder / "board.yaml").write_text(yaml.safe_dump(document))


def say(what: str, values: list[float], aim: float) -> None:
    for name, value in (("median", statistics.median(values)), ("longest", max(values))):
        print(
            f"  {f'{what}, {name}':<44} {value:>9.1f} ms   {'aim':<34} {aim:>9.1f} ms   "
            f"{value / aim:>8.2f}"
        )


def measure(page: Page) -> None:
    page.open()
    page.wait_for("return document.querySelector('.screen img')?.naturalWidth")
    page.choose(NAME)
    page.wait_for("return document.querySelector('.screen').ariaBusy === 'false'")
    x, y = center_of(int(NAME.removeprefix("PART_")))
    work = page.driver.execute_async_script(DRAG, *page.to_screen((x, y + 20)), FRAMES)
    page.choose(NAME)
    page.press(Keys.ENTER)
    page.wait_for("return document.querySelector('.screen').ariaBusy === 'false'")
    changes = []
    for _ in range(CHANGES):
        time.sleep(PAUSE)
        changes.append(page.driver.execute_async_script(CHANGE))
    print(f"\nPage, {COUNT} components with {CORNERS} corners each")
    say("a frame's work while one is dragged", work, FRAME_AIM)
    say("from a change to the view's picture", changes, VIEW_AIM)


def main() -> int:
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        write_board(folder)
        with served(folder, {PROGRAM: str(program())}) as address:
            driver = open_browser()
            try:
                measure(Page(driver, address))
            finally:
                driver.quit()
    return 0


if __name__ == "__main__":
    sys.exit(main())
