"""The fallback font that the host embeds: what its texts need, drawn as by the whole font."""

import io
import sys
from pathlib import Path

import pytest
from fontTools.ttLib import TTFont
from PIL import Image, ImageChops, ImageDraw, ImageFont

CLONE = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(CLONE / "host"))

from fallback_font import TEXTS, FontError, characters, cut

FONT = Path("/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf")
ROOM = 40_000  # bytes
SIZES = (11, 18, 20, 40)


@pytest.fixture(scope="module")
def small() -> bytes:
    return cut(FONT, characters([TEXTS]))


def drawn(font: Path | io.BytesIO, size: int, text: str) -> Image.Image:
    picture = Image.new("L", (size * len(text) + size, 2 * size))
    ImageDraw.Draw(picture).text((0, 0), text, fill=255, font=ImageFont.truetype(font, size))
    return picture


def test_it_has_the_characters_of_the_texts_and_no_others(small: bytes) -> None:
    whole = TTFont(FONT).getBestCmap().keys()
    wanted = {ord(sign) for sign in characters([TEXTS])}
    assert {ord(sign) for sign in "简体中文日本語ボード。"} <= wanted
    assert TTFont(io.BytesIO(small)).getBestCmap().keys() == wanted & whole
    assert len(small) < ROOM < FONT.stat().st_size


def test_each_character_is_drawn_as_before(small: bytes) -> None:
    text = "".join(sorted(characters([TEXTS])))
    for size in SIZES:
        whole, part = drawn(FONT, size, text), drawn(io.BytesIO(small), size, text)
        assert whole.getbbox() is not None
        assert ImageChops.difference(whole, part).getbbox() is None


def test_lines_are_as_high_as_before(small: bytes) -> None:
    for size in SIZES:
        whole = ImageFont.truetype(str(FONT), size).getmetrics()
        assert ImageFont.truetype(io.BytesIO(small), size).getmetrics() == whole


def test_each_time_it_is_the_same(small: bytes) -> None:
    assert cut(FONT, characters([TEXTS])) == small


def test_texts_of_ones_own(tmp_path: Path) -> None:
    (tmp_path / "one.txt").write_text("Hello 電", encoding="utf-8")
    (tmp_path / "two.txt").write_text("電源", encoding="utf-8")
    assert characters([tmp_path / "one.txt", tmp_path / "two.txt"]) == {"電", "源"}


def test_a_file_that_is_no_font(tmp_path: Path) -> None:
    (tmp_path / "font.ttf").write_bytes(b"no font")
    with pytest.raises(FontError, match="font.ttf is no font"):
        cut(tmp_path / "font.ttf", {"電"})
