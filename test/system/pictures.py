"""Pictures of a screen, and the setup screen that the probe paints."""

from dataclasses import dataclass
from functools import cache
from pathlib import Path

import numpy as np
from numpy.typing import NDArray
from PIL import Image

Pixels = NDArray[np.uint8]


@dataclass(frozen=True)
class Picture:
    """A screen as a PPM file in memory, as QEMU dumps it."""

    ppm: bytes

    @property
    def size(self) -> tuple[int, int]:
        width, height = self.ppm.split(b"\n", 2)[1].split()
        return int(width), int(height)

    @property
    def pixels(self) -> Pixels:
        """Red, green and blue by row and column."""
        width, height = self.size
        body = self.ppm.split(b"\n", 3)[3]
        return np.frombuffer(body, np.uint8).reshape(height, width, 3)

    def differs_at(self, other: "Picture", box: tuple[int, int, int, int]) -> bool:
        """Whether anything differs within left, top, right, bottom."""
        left, top, right, bottom = box
        part = np.s_[top:bottom, left:right]
        return not np.array_equal(self.pixels[part], other.pixels[part])

    def assert_equal(self, expected: "Picture", name: Path) -> None:
        """Compare exactly; a failure leaves both pictures and their difference beside `name`."""
        if self.ppm == expected.ppm:
            return
        Image.fromarray(self.pixels).save(name.with_suffix(".actual.png"))
        Image.fromarray(expected.pixels).save(name.with_suffix(".expected.png"))
        assert self.size == expected.size, f"{name}: {self.size} instead of {expected.size}"
        wrong = np.any(self.pixels != expected.pixels, axis=2)
        Image.fromarray(wrong.astype(np.uint8) * 255).save(name.with_suffix(".difference.png"))
        row, column = np.argwhere(wrong)[0]
        raise AssertionError(
            f"{wrong.sum()} pixels differ, the first at {column},{row}; "
            f"see {name}.difference.png and its neighbours"
        )


@cache
def setup_picture(size: tuple[int, int]) -> Picture:
    """What SystemProbe.efi paints as the setup screen."""
    width, height = size
    x = np.arange(width, dtype=np.uint32)[np.newaxis, :]
    y = np.arange(height, dtype=np.uint32)[:, np.newaxis]
    red, green, blue = (x * y) >> 8, (x >> 3) ^ y, x + y * 3
    pixels = np.stack([red, green, blue], axis=2).astype(np.uint8)
    return Picture(f"P6\n{width} {height}\n255\n".encode("ascii") + pixels.tobytes())
