"""Draws the application's small pictures and writes them as PNG files and C++ sources.

Needs Pillow, numpy and the DejaVu fonts (Debian: fonts-dejavu-core).
"""

import argparse
import io
import sys
from pathlib import Path

import numpy as np
from PIL import Image

import logos
import marks
from cpp_source import Source

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent


def png_stream(pixels: np.ndarray) -> bytes:
    """A complete PNG stream, 8-bit RGBA, without metadata."""
    stream = io.BytesIO()
    Image.fromarray(pixels).save(stream, "PNG", optimize=True, compress_level=9)
    return stream.getvalue()


def size_of(pixels: np.ndarray) -> tuple[int, int]:
    return pixels.shape[1], pixels.shape[0]


def write_embedded_images(pictures: dict[str, np.ndarray], out: Path) -> None:
    source = Source(
        "The logos and status dots that are built into the application.", "EmbeddedImages.h"
    )
    for name, pixels in pictures.items():
        stream = png_stream(pixels)
        (HERE / f"{name}.png").write_bytes(stream)
        constant = "k" + "".join(word.capitalize() for word in name.split("-"))
        source.add(constant, "LV_IMG_CF_RAW_ALPHA", size_of(pixels), stream)
    source.write(out)


def write_cursor(block: np.ndarray, out: Path) -> None:
    (HERE / "cursor.png").write_bytes(png_stream(block))
    source = Source("The pointer's arrow, built into the application.", "CursorImage.h")
    shown = (marks.CURSOR_SHOWN_WIDTH, marks.CURSOR_SHOWN_HEIGHT)
    # LVGL reads the block through 32-bit colours, blue first in memory.
    data = block[..., [2, 1, 0, 3]].tobytes()
    source.add("kCursorImage", "LV_IMG_CF_TRUE_COLOR_ALPHA", shown, data, alignment=4)
    source.write(out)


def write_preview(pictures: dict[str, np.ndarray], out: Path) -> None:
    """All pictures on the view's background, enlarged, for a person to look at."""
    zoom = 8
    sheet = Image.new("RGBA", (93 * zoom + 20, 1900), (0x2C, 0x2C, 0x2C, 255))
    y = 10
    for pixels in pictures.values():
        picture = Image.fromarray(pixels)
        large = picture.resize(
            (picture.width * zoom, picture.height * zoom), Image.Resampling.NEAREST
        )
        sheet.alpha_composite(large, (10, y))
        sheet.alpha_composite(picture, (sheet.width - picture.width - 5, y))
        y += large.height + 10
    sheet.crop((0, 0, sheet.width, y)).save(out)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--preview", type=Path, help="also write an enlarged overview picture")
    arguments = parser.parse_args()
    if not logos.FONT_BOLD.exists():
        print(f"The font {logos.FONT_BOLD} is missing: install fonts-dejavu-core.", file=sys.stderr)
        return 1
    pictures = {
        "logo-a": logos.logo_a(),
        "logo-b": logos.logo_b(),
        "logo-c": logos.logo_c(),
        "marker-a": marks.dot((0x00, 0xFF, 0x00)),
        "marker-b": marks.dot((0xFF, 0x00, 0x00)),
        "marker-c": marks.dot((0xFF, 0xDB, 0x4B)),
    }
    cursor = marks.cursor()
    write_embedded_images(pictures, ROOT / "view" / "EmbeddedImages.cpp")
    write_cursor(cursor, ROOT / "platform" / "CursorImage.cpp")
    if arguments.preview:
        shown = marks.cursor_as_shown(cursor)
        write_preview(pictures | {"cursor": cursor, "shown": shown}, arguments.preview)
    return 0


if __name__ == "__main__":
    sys.exit(main())
