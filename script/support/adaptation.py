"""The one change to a dependency: LVGL's image header with 12 bits each for width and height.

LVGL 8.3 gives them 11 bits, which ends at 2047 pixels; the board picture of a 3840-pixel view is
2880 wide. The two bits come from a field that LVGL reserves and never reads.
"""

from pathlib import Path

from support.failure import Failure
from support.storing import checksum

# Part of the cache's stamps: to be changed together with what `adapt` does.
RECIPE = "image-header-12-bits"

HEADER = Path("src/draw/lv_img_buf.h")
ORIGINAL_SHA256 = "a9e5eb5360b2bb310b6f737e3695d323be6c33622dfe100c36ca00993077f49c"

# The declaration for little-endian machines; LVGL's other one, for big-endian ones, stays.
ORIGINAL = """\

    uint32_t reserved : 2; /*Reserved to be used later*/

    uint32_t w : 11; /*Width of the image map*/
    uint32_t h : 11; /*Height of the image map*/
} lv_img_header_t;
"""
ADAPTED = """\

    uint32_t w : 12; /*Width of the image map*/
    uint32_t h : 12; /*Height of the image map*/
} lv_img_header_t;
"""


def is_adapted(lvgl: Path) -> bool:
    """Whether a tree has the wide header already."""
    try:
        return ADAPTED in (lvgl / HEADER).read_text()
    except OSError:
        return False


def adapt(lvgl: Path) -> None:
    """Widens the two fields and verifies that nothing else changed."""
    header = lvgl / HEADER
    if not header.is_file():
        raise Failure(f"{lvgl} is not LVGL: it has no {HEADER}.")
    if is_adapted(lvgl):
        return
    if checksum(header) != ORIGINAL_SHA256:
        raise Failure(
            f"{header} is not the file of LVGL 8.3.5 that this project knows how to widen. "
            "Give w and h of lv_img_header_t 12 bits each, in place of reserved, by hand."
        )
    before = header.read_text()
    if before.count(ORIGINAL) != 1:
        raise Failure(f"{header} does not declare lv_img_header_t as expected.")
    after = before.replace(ORIGINAL, ADAPTED)
    if after.replace(ADAPTED, ORIGINAL) != before:
        raise Failure(f"Widening the image header would change more of {header} than it should.")
    header.write_text(after)
