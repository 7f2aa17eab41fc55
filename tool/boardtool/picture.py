"""The board picture: what may go in, and what goes into the binary."""

import io
from pathlib import Path

from PIL import Image, UnidentifiedImageError

from boardtool import limits
from boardtool.model import Point


class PictureError(Exception):
    """A picture that cannot be used; the text says why."""


def probe_picture(path: Path) -> Point:
    """Width and height of a usable PNG; raises PictureError for any other file."""
    try:
        with Image.open(path, formats=("PNG",)) as image:
            width, height = image.size
    except FileNotFoundError:
        raise PictureError(f"there is no file {path}") from None
    except UnidentifiedImageError:
        raise PictureError(f"{path} is not a PNG picture") from None
    except (OSError, ValueError, SyntaxError, Image.DecompressionBombError) as error:
        raise PictureError(f"{path} cannot be read: {error}") from None
    if width > limits.PICTURE_PIXELS or height > limits.PICTURE_PIXELS:
        raise PictureError(
            f"{path} has {width} x {height} pixels, at most {limits.PICTURE_PIXELS} in each "
            "direction are allowed"
        )
    return width, height


def load_picture(path: Path) -> Image.Image:
    """The picture as 8-bit RGBA; raises PictureError when its data is damaged."""
    try:
        # Decoding alone does not compare the checksums of the picture's data.
        with Image.open(path, formats=("PNG",)) as image:
            image.verify()
        with Image.open(path, formats=("PNG",)) as image:
            return image.convert("RGBA")
    except (OSError, ValueError, SyntaxError, Image.DecompressionBombError) as error:
        raise PictureError(f"{path} cannot be decoded: {error}") from None


def encode_for_firmware(image: Image.Image) -> bytes:
    """A PNG whose samples are stored blue, green, red, alpha.

    The application copies the decoder's bytes to a frame buffer in that order without conversion.
    """
    red, green, blue, alpha = image.split()
    output = io.BytesIO()
    Image.merge("RGBA", (blue, green, red, alpha)).save(output, "PNG", compress_level=9)
    return output.getvalue()
