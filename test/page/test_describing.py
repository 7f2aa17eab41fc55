"""A person describes a board, from nothing but a picture to what the view shows."""

import io
from pathlib import Path

import numpy as np
from PIL import Image
from selenium.webdriver.common.keys import Keys

from boardtool.building import build_board
from boardtool.checking import check
from boardtool.live import LiveView, ViewOptions
from boardtool.reading import read_board
from browser import Page, Point
from pictures import PARTS

Outline = list[Point]


def begin(page: Page) -> None:
    """Chooses the picture; the page makes a board of it."""
    page.click(".pictures button")
    page.wait(".nothing")


def describe(page: Page, name: str, category: str) -> None:
    """Fills in the form, whose first field has the focus when an outline is drawn."""
    page.wait_for("return document.activeElement.name === 'name'")
    page.press(name)
    page.select("category", category)


def draw_rectangle(page: Page, name: str) -> Outline:
    """Drags from corner to corner."""
    left, top, right, bottom = PARTS[name]
    page.button("Draw").click()
    x1, y1 = page.to_picture(page.to_screen((left, top)))
    x2, y2 = page.drag((left, top), (right, bottom))
    return [(x1, y1), (x2, y1), (x2, y2), (x1, y2)]


def draw_corners(page: Page, name: str) -> Outline:
    """Clicks the corners one by one, and the first one again."""
    left, top, right, bottom = PARTS[name]
    page.button("Draw").click()
    corners = [(left, top), (right, top), (right, bottom), (left, bottom)]
    outline = [page.click_at(corner) for corner in corners]
    page.click_at((left, top))
    return outline


def draw_with_keys(page: Page, name: str) -> Outline:
    """Moves the cross by arrow keys; nothing else is touched."""
    left, top, right, bottom = PARTS[name]
    page.click(".surface svg")
    page.press(Keys.ESCAPE, "n")
    x, y = page.wait_for("return document.querySelector('.draft').dataset.at?.split(',')")
    x, y = int(x), int(y)
    outline = []
    for corner in ((left, top), (right, top), (right, bottom), (left, bottom)):
        go(page, corner[0] - x, Keys.ARROW_RIGHT, Keys.ARROW_LEFT)
        go(page, corner[1] - y, Keys.ARROW_DOWN, Keys.ARROW_UP)
        page.press(" ")
        outline.append(corner)
        x, y = corner
    page.press(Keys.ENTER)
    return outline


def go(page: Page, way: int, forward: str, back: str) -> None:
    key = forward if way > 0 else back
    page.press_with(Keys.SHIFT, key, times=abs(way) // 10)
    page.press(key, times=abs(way) % 10)


def lit(folder: Path, names: list[str]) -> dict[str, tuple[int, int, int, int]]:
    """Left, top, right and bottom of what the view lights up of each component, in pixels of the
    picture."""
    board = build_board(read_board(folder / "board.yaml"))
    found = {}
    with LiveView() as view:
        x, y, width, height = (round(value) for value in view.measure(board).picture)
        assert (width, height) == (1440, 810)

        def seen(hover: str | None) -> np.ndarray:
            picture = Image.open(io.BytesIO(view.picture(board, ViewOptions(hover=hover))))
            return np.asarray(picture.convert("RGB"))[y : y + height, x : x + width]

        plain = seen(None)
        for name in names:
            left, top, right, bottom = PARTS[name]
            changed = (seen(name) != plain).any(axis=2)
            # Its line and its callout light up as well, but nowhere for half a row or column.
            around = changed[top - 8 : bottom + 8, left - 8 : right + 8]
            rows = np.flatnonzero(around[:, 8:-8].mean(axis=1) > 0.5)
            columns = np.flatnonzero(around[8:-8].mean(axis=0) > 0.5)
            found[name] = (
                int(columns[0]) + left - 8,
                int(rows[0]) + top - 8,
                int(columns[-1]) + left - 8,
                int(rows[-1]) + top - 8,
            )
    return found


def test_five_components_from_a_bare_picture(bare: Page, folder: Path) -> None:
    begin(bare)
    assert not (folder / "board.yaml").exists()
    drawn = {}
    drawn["CPU"] = draw_rectangle(bare, "CPU")
    describe(bare, "CPU", "cpu")
    drawn["DIMM_A"] = draw_corners(bare, "DIMM_A")
    describe(bare, "DIMM_A", "memory")
    drawn["SATA_1"] = draw_with_keys(bare, "SATA_1")
    describe(bare, "SATA_1", "sata")
    drawn["AUDIO"] = draw_rectangle(bare, "AUDIO")
    describe(bare, "AUDIO", "audio")
    drawn["FAN"] = draw_corners(bare, "FAN")
    describe(bare, "FAN", "fan")
    bare.save()

    assert bare.names() == list(drawn)
    board = read_board(folder / "board.yaml")
    assert {one.name: list(one.outline) for one in board.components} == drawn
    assert [problem.text for problem in check(folder / "board.yaml")] == []
    corners = {name: (*outline[0], *outline[2]) for name, outline in drawn.items()}
    # The rightmost column and the lowest row of an outline are not lit.
    assert lit(folder, list(drawn)) == {
        name: (left, top, right - 1, bottom - 1)
        for name, (left, top, right, bottom) in corners.items()
    }
