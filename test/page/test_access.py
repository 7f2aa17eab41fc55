"""The keyboard alone, screen readers, and the system's wish for light or dark."""

from pathlib import Path
from typing import Any

import pytest
from selenium.webdriver.common.keys import Keys

from boardtool.checking import check
from boardtool.reading import read_board
from browser import Page

CONTROLS = {"button", "textbox", "combobox", "checkbox", "listbox", "tab", "spinbutton", "option"}
CONTROLS |= {"application", "ColorWell", "DisclosureTriangle", "MenuListPopup"}
STEPS = 80


def tab_to(page: Page, condition: str) -> None:
    """Goes on by the tabulator until a script about the element with the focus is true."""
    for _ in range(STEPS):
        if page.run(f"const at = document.activeElement; return {condition}"):
            return
        page.press(Keys.TAB)
    raise AssertionError(f"the tabulator never gets to where {condition}")


def test_a_component_is_described_without_a_mouse(bare: Page, folder: Path) -> None:
    tab_to(bare, "at.closest('.pictures')")
    bare.press(Keys.ENTER)
    bare.wait(".nothing")
    tab_to(bare, "at.textContent === 'Draw'")
    bare.press(Keys.ENTER)
    bare.press(" ")
    bare.press_with(Keys.SHIFT, Keys.ARROW_RIGHT, times=6)
    bare.press(" ")
    bare.press_with(Keys.SHIFT, Keys.ARROW_DOWN, times=4)
    bare.press(" ", Keys.ARROW_RIGHT, Keys.ENTER, Keys.BACKSPACE, Keys.ENTER, Keys.ENTER)
    bare.wait_for("return document.activeElement.name === 'name'")
    bare.press("CHIP")
    tab_to(bare, "at.name === 'category'")
    bare.press("aud")
    tab_to(bare, "at.textContent.startsWith('Information lines')")
    bare.press(Keys.ENTER)
    tab_to(bare, "at.textContent === 'Add a line'")
    bare.press(Keys.ENTER)
    tab_to(bare, "at.getAttribute('aria-label') === 'Value of line 1'")
    bare.press("A chip")
    bare.press_with(Keys.CONTROL, "s")
    bare.wait(".saved", lambda text: text == "Saved")
    board = read_board(folder / "board.yaml")
    middle = (720, 405)
    assert [one.name for one in board.components] == ["CHIP"]
    assert board.components[0].outline == (middle, (780, 405), (780, 445), (781, 445))
    assert [line.value for line in board.components[0].info] == ["A chip"]
    assert [one for one in check(folder / "board.yaml") if one.severity == "error"] == []


def test_the_focus_is_never_lost_nor_caught(page: Page) -> None:
    page.choose("CPU")
    seen = []
    for _ in range(STEPS):
        page.press(Keys.TAB)
        where = page.run("return document.activeElement.outerHTML.slice(0, 120)")
        if where in seen:
            break
        seen.append(where)
        visible = "return document.activeElement.matches(':focus-visible, body')"
        assert page.run(visible), where
    assert any("surface" in where or "svg" in where for where in seen)
    assert any("Undo" in where or "Draw" in where for where in seen)
    assert len(seen) < STEPS


def unnamed(page: Page) -> list[str]:
    """Controls that a screen reader has no name for."""
    page.driver.execute_cdp_cmd("Accessibility.enable", {})
    tree: dict[str, Any] = page.driver.execute_cdp_cmd("Accessibility.getFullAXTree", {})
    return [
        f"{node['role']['value']} {node.get('properties')}"
        for node in tree["nodes"]
        if not node["ignored"]
        and node["role"]["value"] in CONTROLS - {"MenuListPopup"}
        and not node.get("name", {}).get("value")
    ]


def test_every_control_has_a_name(page: Page) -> None:
    assert unnamed(page) == []
    page.choose("CPU")
    page.run("for (const one of document.querySelectorAll('details')) one.open = true")
    page.press(Keys.ENTER, Keys.PAGE_DOWN)
    assert unnamed(page) == []
    page.one("#tab-board").click()
    assert unnamed(page) == []
    page.press_with(Keys.CONTROL, "d")
    assert unnamed(page) == []


def test_what_happens_is_said(page: Page) -> None:
    page.choose("CPU")
    page.press(Keys.ENTER, Keys.PAGE_DOWN)
    page.wait(".said[role=status]", lambda text: text == "Corner 1 of 4, 500, 250")
    page.press(Keys.ARROW_RIGHT)
    page.wait(".said", lambda text: text == "Corner 1 of 4, 501, 250")


def contrast(page: Page, selector: str) -> float:
    """Between an element's text and what lies under it, as the rules for legible pages have it."""
    script = """
        const element = document.querySelector(arguments[0]);
        let under = element;
        const clear = (one) => getComputedStyle(one).backgroundColor === "rgba(0, 0, 0, 0)";
        while (clear(under)) under = under.parentElement;
        const of = (color) => color.match(/[\\d.]+/g).slice(0, 3).map(Number);
        return [of(getComputedStyle(element).color), of(getComputedStyle(under).backgroundColor)];
    """
    shades = []
    for channels in page.run(script, selector):
        linear = [
            c / 255 / 12.92 if c <= 10 else ((c / 255 + 0.055) / 1.055) ** 2.4 for c in channels
        ]
        shades.append(0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2])
    dark, light = sorted(shades)
    return (light + 0.05) / (dark + 0.05)


@pytest.mark.parametrize("scheme", ["light", "dark"])
def test_light_and_dark_after_the_systems_wish(page: Page, scheme: str) -> None:
    wish = {"features": [{"name": "prefers-color-scheme", "value": scheme}]}
    page.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", wish)
    try:
        page.choose("CPU")
        ground = page.run("return getComputedStyle(document.body).backgroundColor")
        red = int(ground.removeprefix("rgb(").split(",")[0])
        assert red > 200 if scheme == "light" else red < 60
        for selector in (
            "h1",
            ".hint",
            ".list .name",
            "button.primary",
            "label",
            ".saved",
            ".said",
        ):
            assert contrast(page, selector) >= 4.5, selector
    finally:
        page.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": []})
