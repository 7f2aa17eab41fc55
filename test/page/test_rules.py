"""What the page's modules work out, asked in the browser that they run in."""

import json
from typing import Any

import pytest

from browser import Page

U_SHAPE = [[100, 100], [140, 100], [140, 260], [260, 260], [260, 100], [300, 100], [300, 300]]
U_SHAPE += [[100, 300]]
SIZE = [1440, 810]


def ask(page: Page, module: str, expression: str, *arguments: Any) -> Any:
    """Evaluates an expression with what a module exports, and `a` as the arguments."""
    script = f"""
        const [a, done] = arguments;
        const said = (error) => done(JSON.stringify(String(error)));
        import(`./{module}`).then((m) => done(JSON.stringify({expression}))).catch(said);
    """
    return json.loads(page.driver.execute_async_script(script, list(arguments)))


@pytest.mark.parametrize(
    ("name", "following"),
    [
        ("SATA_1", "SATA_2"),
        ("SATA_9", "SATA_10"),
        ("USB_09", "USB_10"),
        ("DIMM_A", "DIMM_B"),
        ("DIMM_A1", "DIMM_A2"),
        ("CPU", "CPU_2"),
        ("FAN Z", "FAN Z_2"),
        ("", "_2"),
    ],
)
def test_names_count_up(page: Page, name: str, following: str) -> None:
    assert ask(page, "document.js", "m.nextName(a[0])", name) == following


def test_a_name_that_is_taken_is_passed_over(page: Page) -> None:
    taken = ["SATA_2", "SATA_3"]
    assert ask(page, "document.js", "m.nextName('SATA_1', new Set(a[0]))", taken) == "SATA_4"


def test_the_dot_stands_within_the_outline(page: Page) -> None:
    dot = ask(page, "proposals.js", "m.proposeMarker(a[0])", U_SHAPE)
    assert ask(page, "geometry.js", "m.isInside(a[0], a[1])", dot, U_SHAPE)
    square = [[0, 0], [10, 0], [10, 20], [0, 20]]
    assert ask(page, "proposals.js", "m.proposeMarker(a[0])", square) == [5, 10]


def component(name: str, marker: list[int]) -> dict[str, Any]:
    x, y = marker
    outline = [[x - 5, y - 5], [x + 5, y - 5], [x + 5, y + 5], [x - 5, y + 5]]
    return {
        "id": name, "name": name, "outline": outline, "marker": marker,
        "leader": [marker], "callout": "left",
    }  # fmt: skip


def test_callouts_line_up_without_crossing(page: Page) -> None:
    """A hundred dots, most of them at one height."""
    components = [component(f"P{i}", [100 + 12 * i, 400 + i % 3]) for i in range(99)]
    aligned = ask(
        page, "proposals.js", "m.alignCallouts(a[0], a[1])", {"components": components}, SIZE
    )
    for side in ("left", "right"):
        mine = [one for one in aligned["components"] if one["callout"] == side]
        assert len({one["leader"][-1][0] for one in mine}) == 1
        rows = sorted((one["leader"][-1][1], one["marker"][1]) for one in mine)
        gaps = {low[0] - high[0] for high, low in zip(rows, rows[1:])}
        assert min(gaps) >= SIZE[1] // (len(mine) + 1)  # They share the height.
        assert [dot for _, dot in rows] == sorted(dot for _, dot in rows)
        assert 0 <= rows[0][0] <= rows[-1][0] < SIZE[1]


def test_a_proposal_goes_to_a_free_place_of_the_column(page: Page) -> None:
    first = component("A", [300, 200]) | {"callout": "right", "leader": [[300, 200], [180, 200]]}
    proposal = ask(
        page, "proposals.js", "m.proposeCallout(a[0], a[1], a[2])",
        {"components": [first]}, [320, 205], SIZE,
    )  # fmt: skip
    assert proposal["callout"] == "right"
    x, y = proposal["leader"][-1]
    assert x == 180 and abs(y - 200) >= 26


def test_rescaling_keeps_points_inside(page: Page) -> None:
    document = {"components": [component("A", [1434, 804])]}
    for size in ([2880, 1620], [100, 50], [4095, 4095]):
        scaled = ask(page, "document.js", "m.rescale(a[0], a[1], a[2])", document, SIZE, size)
        points = [*scaled["components"][0]["outline"], scaled["components"][0]["marker"]]
        assert all(0 <= x < size[0] and 0 <= y < size[1] for x, y in points)


@pytest.mark.parametrize("step", [[40, -17], [40, 17], [40, 0], [-40, -3]])
def test_the_lines_of_a_row_do_not_cross(page: Page, step: list[int]) -> None:
    first = component("DIMM_1", [800, 400]) | {"leader": [[800, 400], [1310, 400]]}
    copies = ask(
        page, "copies.js", "m.repeat(a[0], a[1], 3, a[2], a[3])[0].components",
        {"components": [first]}, "DIMM_1", step, SIZE,
    )  # fmt: skip
    assert [one["name"] for one in copies] == ["DIMM_1", "DIMM_2", "DIMM_3", "DIMM_4"]
    rows = [one["leader"][-1][1] for one in copies]
    assert rows == sorted(rows, reverse=step[1] < 0)
    assert min(abs(low - high) for high, low in zip(rows, rows[1:])) >= 26
