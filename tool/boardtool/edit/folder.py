"""The folder that is worked in: the one place of the disk that the page reaches."""

import re
from pathlib import Path

from boardtool.picture import PictureError, load_picture

NAME = re.compile(r"[\w .()-]*\.png", re.IGNORECASE)


class Outside(Exception):
    """A name that leads out of the folder."""

    def __init__(self, name: str) -> None:
        super().__init__(f"{name!r} lies outside the folder; the page reaches nothing there")


def inside(folder: Path, name: str) -> Path:
    """The file of that name, links followed; raises Outside."""
    try:
        path = (folder / name).resolve()
        if path.is_relative_to(folder.resolve()):
            return path
    except (ValueError, OSError, RuntimeError):  # A zero byte; a circle of links.
        pass
    raise Outside(name)


def pictures(folder: Path, named: str = "") -> list[dict[str, object]]:
    """The pictures that a board can be made of, with their sizes, by name; and the one that its
    description names, which may lie deeper."""
    names = {path.name for path in folder.iterdir() if NAME.fullmatch(path.name)}
    found: list[dict[str, object]] = []
    for name in sorted(names | {named}):
        if inside_quietly(folder, name):
            try:
                found.append({"name": name, "size": load_picture(folder / name).size})
            except PictureError:
                continue
    return found


def inside_quietly(folder: Path, name: str) -> bool:
    try:
        return inside(folder, name).is_file()
    except Outside:
        return False


def put_picture(folder: Path, name: str, data: bytes) -> None:
    """Puts a picture that was dropped onto the page into the folder, unless there is one of that
    name; raises PictureError."""
    if not NAME.fullmatch(name) or name.startswith("."):
        raise PictureError(f"{name!r} is no name for a picture; use letters, digits and '.png'")
    path = inside(folder, name)
    fresh = path.with_name(f".{name}.new")
    try:
        fresh.write_bytes(data)
        load_picture(fresh)
        path.hardlink_to(fresh)
    except FileExistsError:
        raise PictureError(f"there is {name!r} in the folder already; rename one of them") from None
    finally:
        fresh.unlink(missing_ok=True)
