"""What mouse and keyboard change, and what the file says afterwards."""

import itertools
from pathlib import Path

import pytest
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select

from boards import TEXT
from boardtool.building import build_board
from boardtool.live import LiveView, ViewOptions
from boardtool.reading import read_board
from browser import Page
from pictures import SIZE, draw_board

CPU = [(500, 250), (700, 250), (700, 450), (500, 450)]
UNDO_LIMIT = 50


def handle(page: Page, line: str, index: int, name: str = "CPU") -> None:
    """Goes to a point of a component by keys."""
    page.choose(name)
    page.press(Keys.ENTER)
    counts = {"outline": 0, "leader": 4, "marker": 7}
    page.press(Keys.PAGE_DOWN, times=counts[line] + index + 1)
    active = page.one(".handle.active")
    assert (active.get_attribute("data-line"), active.get_attribute("data-index")) == (
        line,
        str(index),
    )


def changed_lines(folder: Path) -> list[str]:
    before = TEXT.splitlines()
    return [line for line in (folder / "board.yaml").read_text().splitlines() if line not in before]


def test_a_corner_is_dragged_and_only_its_line_changes(page: Page, folder: Path) -> None:
    page.choose("CPU")
    end = page.drag_point((700, 450), (730, 470), Keys.ALT)
    assert page.points("CPU") == [*CPU[:2], end, CPU[3]]
    page.save()
    x, y = end
    assert changed_lines(folder) == [
        f"    outline: [[500, 250], [700, 250], [{x}, {y}], [500, 450]]"
    ]


def test_a_corner_snaps_to_a_corner_nearby(page: Page) -> None:
    page.choose("CPU")
    page.drag((700, 250), (758, 183))
    assert page.points("CPU")[1] == (760, 180)
    page.press_with(Keys.CONTROL, "z")
    end = page.drag_point((700, 250), (758, 183), Keys.ALT)
    assert page.points("CPU")[1] == end != (760, 180)


def test_an_edge_is_split_and_a_corner_deleted(page: Page) -> None:
    page.choose("CPU")
    end = page.drag_point((600, 250), (610, 230))
    assert page.points("CPU") == [CPU[0], end, *CPU[1:]]
    page.press(Keys.DELETE)
    assert page.points("CPU") == CPU
    handle(page, "outline", 3)
    page.press(Keys.INSERT)
    assert page.points("CPU") == [*CPU, (500, 350)]
    page.press(Keys.DELETE, times=5)
    assert len(page.points("CPU")) == 3  # An outline has an area.


def test_arrow_keys_move_by_single_pixels(page: Page) -> None:
    page.choose("CPU")
    handle(page, "outline", 2)
    page.press(Keys.ARROW_RIGHT, times=3)
    page.press_with(Keys.SHIFT, Keys.ARROW_UP)
    assert page.points("CPU")[2] == (703, 440)
    page.press(Keys.ESCAPE, Keys.ARROW_LEFT)
    assert page.points("CPU") == [(499, 250), (699, 250), (702, 440), (499, 450)]
    assert page.points("CPU", "leader")[0] == (599, 350)


def test_leader_callout_and_dot(page: Page, folder: Path) -> None:
    page.choose("CPU")
    bend = page.drag_point((300, 200), (330, 230))
    box = page.one(".component.selected .callout").rect
    grip = page.to_picture((round(box["x"]) + 5, round(box["y"] + box["height"] / 2)))
    end = page.drag_point(grip, (grip[0] + 20, grip[1] + 60))
    moved = (260 + end[0] - grip[0], 200 + end[1] - grip[1])
    handle(page, "marker", 0)
    page.press(Keys.ARROW_DOWN, times=2)
    page.save()
    component = read_board(folder / "board.yaml").components[0]
    assert component.leader[0] == (600, 350)
    assert component.leader[1] == bend
    assert max(abs(component.leader[2][axis] - moved[axis]) for axis in (0, 1)) <= 1
    assert component.marker == (600, 352)
    # A side is chosen by a click on it, or in the form.
    handle(page, "leader", 2)
    page.press("+", times=4)
    page.one(".handle.side[data-side=bottom]").click()
    assert Select(page.one("[name=callout]")).first_selected_option.text == "bottom"
    page.select("callout", "top-left")
    page.save()
    assert "    callout: top-left" in changed_lines(folder)


def test_a_component_is_dragged_as_a_whole(page: Page) -> None:
    end = page.drag_point((560, 300), (590, 330))
    way = (end[0] - 560, end[1] - 300)
    assert page.points("CPU") == [(x + way[0], y + way[1]) for x, y in CPU]
    # As far as the picture reaches.
    page.press_with(Keys.SHIFT, Keys.ARROW_LEFT, times=40)
    assert min(x for x, _ in page.points("CPU", "leader")) == 0


def test_undo_to_the_beginning_and_back(page: Page, folder: Path) -> None:
    page.choose("CPU")
    page.drag((700, 450), (720, 460))
    page.type("name", "SOCKET")
    page.select("category", "none")
    page.choose("SOCKET")
    page.press_with(Keys.ALT, Keys.ARROW_DOWN)
    handle(page, "outline", 0, "SOCKET")
    page.press(Keys.ARROW_LEFT, Keys.DELETE)
    page.save()
    after = (folder / "board.yaml").read_text()
    assert after != TEXT
    steps = 0
    while page.all("button[title^=Undo]:not(:disabled)") and steps < UNDO_LIMIT:
        page.press_with(Keys.CONTROL, "z")
        steps += 1
        page.wait(".said", lambda text: text.startswith("Undone"))
    assert steps == 6  # A word is one step.
    assert page.points("CPU") == CPU
    page.save()
    assert read_board(folder / "board.yaml").components == read_text(TEXT, folder)
    page.press_with(Keys.CONTROL, "y", times=steps)
    page.save()
    assert (folder / "board.yaml").read_text() == after


def read_text(text: str, folder: Path) -> object:
    return read_board(folder / "board.yaml", text).components


def test_a_row_of_parts_is_one_part_and_a_number(page: Page, folder: Path) -> None:
    page.choose("DIMM_1")
    page.press_with(Keys.CONTROL, "d")
    for field, number in (("count", "3"), ("dx", "40"), ("dy", "2")):
        page.one(f"#copies-{field}").send_keys(Keys.CONTROL, "a")
        page.one(f"#copies-{field}").send_keys(number)
    page.button("Add copies").click()
    assert page.names() == ["CPU", "DIMM_1", "DIMM_2", "DIMM_3", "DIMM_4"]
    page.save()
    board = read_board(folder / "board.yaml")
    assert [one.outline[0] for one in board.components[1:]] == [
        (760 + 40 * i, 180 + 2 * i) for i in range(4)
    ]
    assert upon_another(page) == []
    assert "  # slots\n  - name: DIMM_1" in (folder / "board.yaml").read_text()


def upon_another(page: Page) -> list[tuple[str, str]]:
    """Callouts that share a pixel."""
    page.wait_for("return !document.querySelector('.callout:not(.measured)')")
    script = """
        return [...document.querySelectorAll(".components > g")].map((each) => {
          const { x, y, width, height } = each.querySelector(".callout").getBBox();
          return [each.querySelector(".name").textContent, x, y, x + width, y + height];
        });
    """
    boxes = page.run(script)
    return [
        (one[0], other[0])
        for one, other in itertools.combinations(boxes, 2)
        if one[1] < other[3] and other[1] < one[3] and one[2] < other[4] and other[2] < one[4]
    ]


def test_the_order_says_who_gets_the_pointer(page: Page, folder: Path) -> None:
    page.choose("CPU")
    page.press_with(Keys.ALT, Keys.ARROW_DOWN)
    assert page.names() == ["DIMM_1", "CPU"]
    # What is drawn last lies on top.
    page.wait(".components > g:first-child .name", lambda text: text.startswith("CPU"))
    page.save()
    text = (folder / "board.yaml").read_text()
    assert changed_lines(folder) == []
    assert text.index("# slots") < text.index("# the processor")


def test_the_form_says_what_the_tool_says(page: Page) -> None:
    page.choose("CPU")
    page.type("name", "A" * 30)
    assert page.one("[name=name]").get_attribute("value") == "A" * 19
    page.type("name", "CPU#1")
    page.wait("#field-name-said", lambda text: "printable ASCII characters" in text)
    assert page.one("[name=name]").get_attribute("aria-invalid") == "true"
    page.wait(".list li .fault", lambda text: text == "1")
    page.type("name", "DIMM_1")
    page.wait(".problems summary", lambda text: "to look at" in text)
    page.type("name", "CPU")
    page.wait(".problems summary", lambda text: text == "Nothing to complain about")
    assert page.all("[aria-invalid=true]") == []


INVENTORY = """\
hardware:
  # Model BS SSD 500GB, Serial number BS-SSD-0001
  - sata: "PciRoot(0x0)/Pci(0x1F,0x2)/Sata(0x0,0xFFFF,0x0)"
  - fan: "CPU Fan"
"""


def test_hardware_comes_from_a_dropped_inventory(page: Page, folder: Path) -> None:
    page.drop("inventory.yaml", INVENTORY)
    page.wait(".said", lambda text: text == "2 pieces of hardware to choose from")
    page.choose("CPU")
    page.all(".section summary")[0].click()
    chooser = Select(page.one(".chooser"))
    assert "BS SSD 500GB" in chooser.options[1].text
    chooser.select_by_index(2)
    page.wait_for("return document.querySelector('.hardware-line')")
    page.save()
    assert changed_lines(folder) == ["    hardware:", '      - fan: "CPU Fan"']
    page.drop("inventory.yaml", "nonsense: [")
    page.wait(".foot [role=alert]", lambda text: "not YAML" in text)


def test_a_new_picture_size_rescales_on_request(page: Page, folder: Path) -> None:
    draw_board().resize((SIZE[0] * 2, SIZE[1] * 2)).save(folder / "large.png")
    page.open()
    page.one("#tab-board").click()
    page.select("picture", "large.png")
    page.button("Rescale").click()
    page.wait_for("return !document.querySelector('dialog')")
    assert page.points("CPU") == [(2 * x, 2 * y) for x, y in CPU]
    page.save()
    board = read_board(folder / "board.yaml")
    assert board.picture_size == (2880, 1620)
    assert board.components[0].marker == (1200, 700)
    page.press_with(Keys.CONTROL, "z")
    assert page.points("CPU") == CPU
    assert page.one(".surface image").get_attribute("width") == str(SIZE[0])
    page.save()
    assert read_board(folder / "board.yaml").picture_size == SIZE


def test_callouts_stand_in_columns_on_request(page: Page, folder: Path) -> None:
    page.button("Align callouts").click()
    page.save()
    board = read_board(folder / "board.yaml")
    ends = [one.leader[-1] for one in board.components]
    assert [x for x, _ in ends] == [round(0.09 * SIZE[0]), round(0.91 * SIZE[0])]
    assert [one.leader[0] for one in board.components] == [(600, 350), (775, 200)]
    assert upon_another(page) == []


@pytest.mark.parametrize("resolution", ["1024 × 768", "1920 × 1080", "3840 × 2160"])
def test_callouts_have_their_true_size(page: Page, folder: Path, resolution: str) -> None:
    Select(page.one("[aria-label='Resolution of the view']")).select_by_visible_text(resolution)
    width, height = (int(part) for part in resolution.split(" × "))
    seen = f"document.querySelector('.screen img')?.naturalWidth === {width}"
    page.wait_for(f"return {seen} && document.querySelector('.callout.measured')")
    with LiveView() as view:
        options = ViewOptions(resolution=f"{width}x{height}")
        measures = view.measure(build_board(read_board(folder / "board.yaml")), options)
    script = """
        return [...document.querySelectorAll(".components > g")].map((each) => {
          const { width, height } = each.querySelector(".callout").getBBox();
          return [each.querySelector(".name").textContent, Math.round(width), Math.round(height)];
        });
    """
    scale = [SIZE[axis] / measures.picture[2 + axis] for axis in (0, 1)]
    assert page.run(script) == [
        [one.text, round(one.callout.width * scale[0]), round(one.callout.height * scale[1])]
        for one in reversed(measures.components)
    ]


def test_the_view_shows_the_panel_of_what_is_pointed_at(page: Page) -> None:
    shown = "return document.querySelector('.screen img')?.src"
    first = page.wait_for(shown)
    page.point_at((600, 300))
    script = """
        const now = document.querySelector(".screen img").src;
        return now !== arguments[0] && now;
    """
    assert page.wait_for(script, first)
