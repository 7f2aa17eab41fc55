#!/usr/bin/env python3
"""Draws the pictures of docs/board.md: a tour of the page, from a picture to a board.

Started by script/draw-page.
"""

import io
import shutil
import sys
import tempfile
from pathlib import Path

CLONE = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(CLONE / "script"), str(CLONE / "tool")]

from PIL import Image
from selenium.webdriver.common.keys import Keys

from boardtool.live import PROGRAM, program
from browser import Page, Point, open_browser, served

DOCS = CLONE / "docs" / "page"
BOARD = CLONE / "assets" / "board"
WINDOW = (1280, 880)
COLORS = 160
"""Enough for a picture of the page, at a third of its size."""

CPU = ((1009, 621), (1295, 493), (1330, 510), (1511, 717), (1217, 860))
SLOT = ((1288, 301), (1732, 726), (1700, 780), (1277, 359))
INVENTORY = """\
hardware:
  # Example processor, 12-Core, 4.2 GHz
  - processor: "boot"
  # 16 GB DDR5-5600
  - memory: "DIMM_A1"
  - memory: "DIMM_A2"
  # Model BS SSD 500GB, Capacity 500 GB
  - sata: "PciRoot(0x0)/Pci(0x1F,0x2)/Sata(0x0,0xFFFF,0x0)"
"""


def shoot(page: Page, name: str) -> None:
    """Takes a picture once the view has followed."""
    page.wait_for("return document.querySelector('[aria-busy=true]') === null")
    page.wait_for("return new Promise((done) => setTimeout(() => done(true), 600))")
    picture = Image.open(io.BytesIO(page.driver.get_screenshot_as_png())).convert("RGB")
    small = picture.quantize(COLORS, dither=Image.Dither.NONE)
    small.save(DOCS / f"{name}.png", optimize=True)


def draw(page: Page, outline: tuple[Point, ...]) -> None:
    page.button("Draw").click()
    for corner in outline:
        page.click_at(corner)


def finish(page: Page, outline: tuple[Point, ...], name: str, category: str) -> None:
    page.click_at(outline[0])
    page.wait_for("return document.activeElement.name === 'name'")
    page.press(name)
    page.select("category", category)


def tour(page: Page, folder: Path) -> None:
    page.open()
    shoot(page, "start")
    page.click(".pictures button")
    page.wait(".nothing")
    draw(page, CPU[:-1])
    page.point_at(CPU[-1])
    shoot(page, "drawing")
    page.click_at(CPU[-1])
    finish(page, CPU, "CPU", "cpu")
    shoot(page, "proposal")
    draw(page, SLOT)
    finish(page, SLOT, "DIMM_A1", "memory")
    page.press_with(Keys.CONTROL, "d")
    for field, number in (("count", "3"), ("dx", "41"), ("dy", "-17")):
        page.one(f"#copies-{field}").send_keys(Keys.CONTROL, "a")
        page.one(f"#copies-{field}").send_keys(number)
    shoot(page, "row")
    page.button("Add copies").click()
    page.drop("inventory.yaml", INVENTORY)
    page.choose("DIMM_A1")
    page.all(".section summary")[0].click()
    page.all(".chooser option")[2].click()
    page.all(".section summary")[1].click()
    page.button("Add a line").click()
    page.one("[aria-label='Label of line 1']").send_keys("Slot")
    page.one("[aria-label='Value of line 1']").send_keys("DDR5, channel A")
    shoot(page, "fields")
    for name in ("board.yaml", "board.png"):
        shutil.copy(BOARD / name, folder / name)
    page.close()
    page.open()
    page.choose("PCIEX16_1")
    shoot(page, "board")
    page.button("Large").click()
    shoot(page, "view")


def main() -> int:
    DOCS.mkdir(exist_ok=True)
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name) / "my-board"
        folder.mkdir()
        shutil.copy(BOARD / "board.png", folder / "board.png")
        with served(folder, {PROGRAM: str(program())}) as address:
            driver = open_browser()
            driver.set_window_size(*WINDOW)
            try:
                tour(Page(driver, address), folder)
            finally:
                driver.quit()
    return 0


if __name__ == "__main__":
    sys.exit(main())
