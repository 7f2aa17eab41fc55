"""The fields of the forms, and what is said about them."""

from pathlib import Path

from selenium.webdriver.common.keys import Keys

from boardtool.reading import read_board
from browser import Page


def test_a_setup_option_is_typed_in_either_way(page: Page, folder: Path) -> None:
    page.choose("CPU")
    page.all(".section summary")[2].click()
    field = page.one("[name=token]")
    assert field.get_attribute("value") == "0x2001"
    for typed, number in (("0x1a2", 0x1A2), ("77", 77), ("0", 0)):
        page.type("token", typed)
        page.save()
        assert read_board(folder / "board.yaml").components[0].token == number
    page.type("token", "seven")
    page.wait("#field-token-said", lambda text: "whole number" in text)


def test_what_has_to_be_measured_is_told_after_a_pause(page: Page) -> None:
    page.wait(".problems summary", lambda text: text == "Nothing to complain about")
    page.choose("DIMM_1")
    page.press(Keys.ENTER, Keys.PAGE_UP, Keys.PAGE_UP)
    page.press_with(Keys.SHIFT, Keys.ARROW_LEFT, times=77)
    page.press_with(Keys.SHIFT, Keys.ARROW_DOWN, times=8)
    page.wait("#field-callout-said", lambda text: "overlaps the callout of CPU" in text)
    page.press_with(Keys.CONTROL, "z", times=85)
    page.wait(".problems summary", lambda text: text == "Nothing to complain about")


def test_the_boards_own_fields(page: Page, folder: Path) -> None:
    page.one("#tab-board").click()
    page.type("board", "Another title")
    page.select("marker", "amber")
    page.one("form.board summary").click()
    page.type("system_info[1]", "A graphics adapter")
    page.type("styles.normal.default.radius", "5")
    page.save()
    text = (folder / "board.yaml").read_text()
    assert 'board: "Another title"\npicture: board.png   # one to one' in text
    assert 'system_info: ["", "A graphics adapter"]' in text
    board = read_board(folder / "board.yaml")
    assert (board.marker, board.styles[0].default.radius) == (2, 5)
    page.type("system_info[1]", Keys.DELETE)
    page.save()
    assert "system_info" not in (folder / "board.yaml").read_text()


def test_information_lines_come_and_go(page: Page, folder: Path) -> None:
    page.choose("CPU")
    page.button("Add a line").click()
    page.one("[aria-label='Label of line 2']").send_keys("Cores")
    page.one("[aria-label='Value of line 2']").send_keys("12")
    page.save()
    lines = (
        '      - {label: Brand, value: Example processor}\n      - {label: Cores, value: "12"}\n'
    )
    assert lines in (folder / "board.yaml").read_text()
    page.one("[aria-label='Value of line 2']").send_keys("#")
    page.wait(".info-line .message", lambda text: "write '##'" in text)
    page.one("[aria-label='Delete line 2']").click()
    page.one("[aria-label='Delete line 1']").click()
    page.save()
    assert "info" not in (folder / "board.yaml").read_text()
