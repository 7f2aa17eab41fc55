"""The setup of the firmware: the view from its entries, the jump to the very question, and the look
and the language that its user chooses."""

import itertools
import subprocess
from collections.abc import Iterator
from pathlib import Path

import pytest

from conftest import CLONE, FOLDER, programs
from pictures import Picture
from setup_pages import Setup, pages_at, setup
from support.qemu_boot import BOARD

# Components of three pages: the page, the component, its question, its token.
PLACES = [
    ("PCI Express slots", "PCIEX16_1", "PCIEX16_1: link speed", 0x2201),
    ("M.2 sockets", "M2_2", "M2_2: link speed", 0x2302),
    ("Fans", "SYS_FAN1", "SYS_FAN1: mode", 0x2703),
]
Pixel = tuple[int, int, int]
SCREEN: Pixel = (44, 44, 44)
GREY_SPREAD = 8


@pytest.fixture(scope="module")
def pages() -> Iterator[Setup]:
    """The setup's first page; each test leaves it as it found it.

    OVMF shows it at 640x480, whatever the screen's size.
    """
    with setup(FOLDER / "setup", programs()) as at:
        at.open_pages()
        yield at


def visit_component(at: Setup, page: str, name: str, *keys: str) -> list[str]:
    """From the first page, show a component of a page on the board, and leave with the keys."""
    at.choose(page)
    first = at.open_view(name)
    return at.leave_view(first, *keys)


def focus_of(lines: list[str]) -> int:
    (ended,) = [line for line in lines if "[Host] Application ended" in line]
    return int(ended.split("focus ")[1].split(",")[0])


@pytest.mark.parametrize(("page", "name", "question", "token"), PLACES)
def test_a_jump_lands_on_the_very_question(
    pages: Setup, page: str, name: str, question: str, token: int
) -> None:
    lines = visit_component(pages, page, name, "ret")
    assert any(f"[Host] Setup shows option 0x{token:X} " in line for line in lines), lines
    pages.wait_for(page)
    assert pages.is_at(question), pages.screen().standing_out()
    pages.press("esc")
    pages.wait_for("Board view")


@pytest.mark.parametrize("size", [(1024, 768), (1920, 1080)])
def test_the_pages_come_back_on_a_screen_of_any_size(size: tuple[int, int]) -> None:
    page, name, question, token = PLACES[2]
    with pages_at(FOLDER / f"setup-{size[0]}", programs(), size) as at:
        for _ in range(2):
            at.go_to("Board view")
            before = Picture(at.machine.still_picture())
            assert before.pixels.shape[:2] == size[::-1]
            lines = at.leave_view(at.open_view(), "esc")
            assert any(f"current resolution: {size[0]} {size[1]}" in line for line in lines), lines
            after = Picture(at.machine.still_picture())
            assert (after.pixels == before.pixels).all()
            lines = visit_component(at, page, name, "ret")
            assert any(f"[Host] Setup shows option 0x{token:X} " in line for line in lines), lines
            assert at.is_at(question), at.screen().standing_out()
            at.press("esc")
            at.wait_for("Board view")


def test_the_view_stands_as_it_was_left_and_jumps_to_another_page(pages: Setup) -> None:
    page, name, question, token = PLACES[1]
    left = focus_of(visit_component(pages, page, name, "esc"))
    assert left != 0
    pages.press("esc")
    first = pages.open_view()
    lines = pages.leave_view(first, "ret")
    assert focus_of(lines) == left
    assert any(f"[Host] Setup shows option 0x{token:X} " in line for line in lines), lines
    assert pages.is_at(question), pages.screen().standing_out()
    pages.press("esc")
    pages.wait_for("Board view")


def test_a_visit_without_a_choice_stays_on_its_page(pages: Setup) -> None:
    before = Picture(pages.machine.still_picture())
    lines = pages.leave_view(pages.open_view(), "esc")
    assert not any("Setup shows option" in line for line in lines)
    pages.wait_for("Board view")
    assert Picture(pages.machine.still_picture()).pixels.shape == before.pixels.shape


def test_the_language_is_the_views_at_once(pages: Setup) -> None:
    english = view_of(pages)
    pages.choose("Language")
    pages.press("down", "ret")
    pages.wait_for("Platinenansicht")
    german = view_of(pages, "Platinenansicht")
    assert (english.pixels != german.pixels).any()
    pages.choose("Sprache")
    pages.press("up", "ret")
    pages.wait_for("Board view")


def test_high_contrast_and_large_text_reach_the_next_view(pages: Setup) -> None:
    usual = view_of(pages)
    change(pages, "Contrast of the board view", "down")
    assert contrast_of_texts(usual) >= 4.5
    high = view_of(pages)
    assert contrast_of_texts(high) >= 7
    change(pages, "Contrast of the board view", "up")
    change(pages, "Text of the board view", "down")
    large = view_of(pages)
    assert rows_of_key_help(large) > rows_of_key_help(usual)
    change(pages, "Text of the board view", "up")


def change(pages: Setup, option: str, key: str) -> None:
    pages.choose(option)
    pages.press(key, "ret")


def view_of(pages: Setup, entry: str = "Board view") -> Picture:
    first = pages.open_view(entry)
    picture = Picture(pages.machine.still_picture())
    pages.leave_view(first, "esc")
    pages.wait_for(entry)
    return picture


def key_help(picture: Picture) -> list[list[Pixel]]:
    """The lines of the screen below the lower rule."""
    height = picture.pixels.shape[0]
    strip = picture.pixels[int(height * 0.9375) + 3 :]
    return [[(int(red), int(green), int(blue)) for red, green, blue in row] for row in strip]


def contrast_of_texts(picture: Picture) -> float:
    """The least contrast of the key help's and the footer's colours on the screen's ground.

    Thin strokes hardly ever reach a text's full colour, so in each line the strongest pixel counts,
    of the coloured words and of the grey ones.
    """
    strongest = []
    for line in text_lines(key_help(picture)):
        for coloured in (False, True):
            found = [contrast(pixel, SCREEN) for pixel in line if is_coloured(pixel) == coloured]
            strongest += [max(found)] if found else []
    return min(strongest)


def text_lines(rows: list[list[Pixel]]) -> Iterator[set[Pixel]]:
    """The colours of each line of text: rows with something on them, between empty ones."""
    for empty, group in itertools.groupby(rows, lambda row: all(pixel == SCREEN for pixel in row)):
        if not empty:
            yield {pixel for row in group for pixel in row} - {SCREEN}


def is_coloured(pixel: Pixel) -> bool:
    return max(pixel) - min(pixel) > GREY_SPREAD


def rows_of_key_help(picture: Picture) -> int:
    return sum(any(pixel != SCREEN for pixel in row) for row in key_help(picture))


def contrast(first: Pixel, second: Pixel) -> float:
    bright, dark = sorted((luminance(first), luminance(second)), reverse=True)
    return (bright + 0.05) / (dark + 0.05)


def luminance(color: Pixel) -> float:
    shares = [channel / 255 for channel in color]
    red, green, blue = (
        share / 12.92 if share <= 0.04045 else ((share + 0.055) / 1.055) ** 2.4 for share in shares
    )
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def test_an_option_of_no_formset_is_told(tmp_path: Path) -> None:
    source = CLONE / "assets" / "board"
    text = (source / "board.yaml").read_text(encoding="utf-8")
    assert "token: 0x2001" in text
    (tmp_path / "board.yaml").write_text(text.replace("token: 0x2001", "token: 0x6abc"))
    (tmp_path / "board.png").write_bytes((source / "board.png").read_bytes())
    made = tmp_path / "board.bin"
    tool = CLONE / "tool" / "board"
    subprocess.run([tool, "build", tmp_path / "board.yaml", "-o", made], check=True)
    with setup(FOLDER / "setup-none", programs(), more={BOARD: made}) as at:
        at.open_pages()
        lines = visit_component(at, "Processor", "CPU", "ret")
        assert any("Option 0x6ABC" in line and "Not Found" in line for line in lines), lines
        at.wait_for("No page of this setup")
        at.press("ret")
        assert at.is_at("CPU"), at.screen().standing_out()
