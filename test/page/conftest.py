"""One browser for all tests; each test has a folder and a server of its own."""

import os
import sys
from collections.abc import Iterator
from pathlib import Path

import pytest
from selenium import webdriver

CLONE = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(CLONE / "script"), str(CLONE / "tool"), str(CLONE / "test" / "page")]

# The one that the native tests are built with: its sanitizers look on.
os.environ.setdefault("BOARDSCOPE_VIEW_PROGRAM", str(CLONE / "build" / "native" / "board-view"))

from boards import describe_board
from browser import Page, open_browser, origin_of, served
from pictures import draw_board


@pytest.fixture(scope="session")
def driver() -> Iterator[webdriver.Chrome]:
    browser = open_browser()
    try:
        yield browser
    finally:
        browser.quit()


@pytest.fixture(scope="session")
def address(tmp_path_factory: pytest.TempPathFactory) -> Iterator[tuple[Path, str]]:
    """One server, as it takes a second to start; its folder is made anew for each test."""
    place = tmp_path_factory.mktemp("board")
    with served(place) as found:
        yield place, found


@pytest.fixture
def folder(address: tuple[Path, str]) -> Path:
    """The folder that is served, with nothing but a picture."""
    place, _ = address
    for file in place.iterdir():
        file.unlink()
    draw_board().save(place / "board.png")
    return place


@pytest.fixture
def bare(driver: webdriver.Chrome, folder: Path, address: tuple[Path, str]) -> Iterator[Page]:
    """The page of a folder with nothing but a picture."""
    yield from _opened(driver, address[1])


@pytest.fixture
def page(driver: webdriver.Chrome, folder: Path, address: tuple[Path, str]) -> Iterator[Page]:
    """The page of a folder with a described board."""
    describe_board(folder)
    yield from _opened(driver, address[1])


def _opened(driver: webdriver.Chrome, address: str) -> Iterator[Page]:
    """Whatever happens on it: its scripts have no errors, and it asks nobody else for anything."""
    page = Page(driver, address)
    page.complaints()
    page.requests()
    page.open()
    yield page
    if page.away:
        return
    complaints, urls = page.complaints(), page.requests()
    page.close()
    assert [text for text in complaints if "Failed to load" not in text] == []
    assert address in urls
    own = (address, f"blob:{origin_of(address)}/")
    assert [url for url in urls if not url.startswith(own)] == []
