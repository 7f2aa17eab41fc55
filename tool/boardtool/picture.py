"""The board picture: what may go in, and what goes into the binary."""

import functools
import io
from pathlib import Path

from PIL import Image, UnidentifiedImageError

from boardtool import limits
from boardtool.cursor import suggestion
from boardtool.model import Point

# How much time goes into making the binary's picture small.
SMALL = 9
QUICK = 1


class PictureError(Exception):
    """A picture that cannot be used; the text says why."""


State = tuple[int, int]
"""When a file was written, and its size: as long as it stays so, it is read once."""


def state_of(path: Path) -> State:
    try:
        stat = path.stat()
    except OSError:
        return 0, 0
    return stat.st_mtime_ns, stat.st_size


def load_picture(path: Path) -> Image.Image:
    """The picture as 8-bit RGBA; raises PictureError for any file that is no sound PNG."""
    return _load(path, state_of(path))


@functools.lru_cache(maxsize=2)
def _load(path: Path, state: State) -> Image.Image:
    try:
        # Decoding alone does not compare the checksums of the picture's data.
        with Image.open(path, formats=("PNG",)) as image:
            _check_size(path, image.size)
            image.verify()
        with Image.open(path, formats=("PNG",)) as image:
            return image.convert("RGBA")
    except FileNotFoundError:
        raise PictureError(f"there is no file {path}{_meant(path)}") from None
    except UnidentifiedImageError:
        raise PictureError(f"{path} is not a PNG picture") from None
    except (OSError, ValueError, SyntaxError, Image.DecompressionBombError) as error:
        raise PictureError(f"{path} is damaged or cut off: {error}") from None


def _check_size(path: Path, size: Point) -> None:
    width, height = size
    if max(size) > limits.PICTURE_PIXELS:
        raise PictureError(
            f"{path} has {width} x {height} pixels, at most {limits.PICTURE_PIXELS} in each "
            "direction are allowed"
        )


def _meant(path: Path) -> str:
    """The file beside it that has nearly this name, as the end of a sentence."""
    names = [one.name for one in path.parent.glob("*") if one.suffix.lower() == ".png"]
    for name in names:
        if name.lower() == path.name.lower():
            return f"; {name!r} is another name, as capital and small letters count"
    return suggestion(path.name, names) if names else ""


def picture_for_firmware(path: Path, level: int = SMALL) -> bytes:
    """The picture as it goes into the binary, SMALL or QUICK; raises PictureError."""
    return _encoded(path, state_of(path), level)


@functools.lru_cache(maxsize=2)
def _encoded(path: Path, state: State, level: int) -> bytes:
    return encode_for_firmware(load_picture(path), level)


def encode_for_firmware(image: Image.Image, level: int = SMALL) -> bytes:
    """A PNG whose samples are stored blue, green, red, alpha.

    The application copies the decoder's bytes to a frame buffer in that order without conversion.
    """
    red, green, blue, alpha = image.split()
    output = io.BytesIO()
    Image.merge("RGBA", (blue, green, red, alpha)).save(output, "PNG", compress_level=level)
    return output.getvalue()
