"""One browser for all tests; each test has a folder and a server of its own."""

import sys
from collections.abc import Iterator
from pathlib import Path

import pytest
from selenium import webdriver

CLONE = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(CLONE / "script"), str(CLONE / "tool"), str(CLONE / "test" / "page")]

from browser import Page, open_browser, served
from pictures import draw_board


@pytest.fixture(scope="session")
def driver() -> Iterator[webdriver.Chrome]:
    browser = open_browser()
    try:
        yield browser
    finally:
        browser.quit()


@pytest.fixture
def folder(tmp_path: Path) -> Path:
    """A folder with nothing but a picture."""
    draw_board().save(tmp_path / "board.png")
    return tmp_path


@pytest.fixture
def bare(driver: webdriver.Chrome, folder: Path) -> Iterator[Page]:
    """The page of that folder; whatever happens on it, its scripts have no errors."""
    with served(folder) as address:
        page = Page(driver, address)
        page.complaints()
        page.requests()
        page.open()
        yield page
        assert [text for text in page.complaints() if "Failed to load" not in text] == []
        assert [url for url in page.requests() if not url.startswith((address, "blob:"))] == []
        driver.get("about:blank")
