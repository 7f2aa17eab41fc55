"""The EFI system partition that the emulated machine boots from: a FAT image made with mtools."""

from __future__ import annotations

import os
import subprocess
from collections.abc import Mapping
from pathlib import Path

_MIB = 1024 * 1024
# FAT16 needs at least 4085 clusters; the slack is room for what the guest writes.
_SLACK = 24 * _MIB


def make_image(image: Path, files: Mapping[str, Path | bytes]) -> None:
    """Write a FAT image to `image`; keys are paths on it ("EFI/Boardscope/board.bin").

    Values are files of this computer or the content itself. Folders are made as needed.
    Raises FileNotFoundError for a missing source and CalledProcessError when mtools fails.
    """
    size = _SLACK
    for source in files.values():
        size += len(source) if isinstance(source, bytes) else source.stat().st_size
    image.parent.mkdir(parents=True, exist_ok=True)
    with image.open("wb") as stream:
        stream.truncate((size + _MIB - 1) // _MIB * _MIB)
    _mtool("mformat", image, "-v", "BOARDSCOPE", "::")
    for folder in _folders(files):
        _mtool("mmd", image, f"::{folder}")
    for name, source in files.items():
        if isinstance(source, bytes):
            _mtool("mcopy", image, "-", f"::{name}", content=source)
        else:
            _mtool("mcopy", image, str(source), f"::{name}")


def read_file(image: Path, name: str) -> bytes:
    """A file of a FAT image, as it is now."""
    return _mtool("mcopy", image, f"::{name}", "-")


def _folders(files: Mapping[str, Path | bytes]) -> list[str]:
    """Every folder that the files need, parents first."""
    found: set[str] = set()
    for name in files:
        parent = os.path.dirname(name)
        while parent:
            found.add(parent)
            parent = os.path.dirname(parent)
    return sorted(found)


def _mtool(tool: str, image: Path, *arguments: str, content: bytes | None = None) -> bytes:
    # A damaged or foreign ~/.mtoolsrc must not matter, and neither must a size mtools finds odd.
    environment = {**os.environ, "MTOOLSRC": os.devnull, "MTOOLS_SKIP_CHECK": "1"}
    ended = subprocess.run(
        [tool, "-i", str(image), *arguments],
        input=content,
        stdin=subprocess.DEVNULL if content is None else None,
        stdout=subprocess.PIPE,
        check=True,
        env=environment,
    )
    return ended.stdout
