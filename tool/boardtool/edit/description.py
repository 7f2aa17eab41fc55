"""The description that the page works on: loading it, changing it, saving it."""

import hashlib
import os
import tempfile
from dataclasses import dataclass
from pathlib import Path

import yaml

from boardtool.building import DESCRIPTION
from boardtool.edit import nodes
from boardtool.edit.lists import ORIGIN
from boardtool.edit.nodes import Plain
from boardtool.edit.rewriting import rewrite

FIRST = """\
board: My board
picture: {picture}
styles:
  normal:
    default: {{text: "226,228,230", background: "58,61,65", mark: "255,190,60",
              border: "132,138,144", border_width: 1, radius: 3}}
    focus: {{text: "20,20,20", background: "255,203,72", mark: "150,40,0",
            border: "255,240,200", border_width: 1, radius: 3}}
components: []
"""
"""A description of a picture on which nothing is described yet."""


class Unfit(Exception):
    """A description that the page cannot show; the text says why, and what to do."""


class Changed(Exception):
    """The file on the disk is not what was loaded; `text` is what it holds now, if it is there."""

    def __init__(self, text: str | None) -> None:
        super().__init__(f"{DESCRIPTION} was changed on the disk since it was loaded")
        self.text = text


@dataclass(frozen=True)
class Description:
    """A text, parsed. `on_disk` tells whether the file holds it, or is still to be written."""

    text: str
    root: yaml.Node
    document: Plain
    on_disk: bool

    @property
    def key(self) -> str:
        """Names the text towards the page."""
        return _key(self.text)

    def changed(self, document: Plain) -> str:
        """The text with everything in it that `document` says."""
        return rewrite(self.text, self.root, document)


def _key(text: str) -> str:
    return hashlib.sha256(text.encode()).hexdigest()


def parse(text: str, on_disk: bool = True) -> Description:
    """Raises Unfit for a text that is no description, not even one with mistakes."""
    try:
        root = yaml.compose(text, Loader=yaml.SafeLoader)
        if root is not None and nodes.repeated(root) is not None:
            raise Unfit("it uses anchors (&name) and aliases (*name); write their values out")
        document: Plain = nodes.plain(root) if root is not None else None
    except (yaml.YAMLError, RecursionError) as error:
        raise Unfit(f"it is not YAML: {error}") from None
    if root is None or not _can_be_shown(document):
        raise Unfit("the page cannot show it before these are mended")
    for place, component in enumerate(document["components"]):
        component[ORIGIN] = place
    return Description(text, root, document, on_disk)


def _can_be_shown(document: Plain) -> bool:
    """Whether what the page draws has the shape that it relies on; all else is for the checks."""
    if not isinstance(document, dict) or not isinstance(document.get("components"), list):
        return False
    return isinstance(document.get("styles"), dict) and all(
        isinstance(component, dict)
        and _are_points(component.get("outline", []))
        and _are_points(component.get("leader", []))
        and _are_points([component.get("marker", [0, 0])])
        and all(_are_mappings(component.get(name, [])) for name in ("info", "hardware"))
        for component in document["components"]
    )


def _are_points(points: Plain) -> bool:
    return isinstance(points, list) and all(
        isinstance(point, list) and len(point) == 2 and all(type(number) is int for number in point)
        for point in points
    )


def _are_mappings(items: Plain) -> bool:
    # One alone needs no list.
    items = [items] if isinstance(items, dict) else items
    return isinstance(items, list) and all(isinstance(item, dict) for item in items)


def load(folder: Path) -> Description | None:
    """The folder's description; None when there is none yet. Raises Unfit and OSError."""
    text = read(folder)
    return parse(text) if text is not None else None


def read(folder: Path) -> str | None:
    """The text on the disk, line ends as they are."""
    try:
        return (folder / DESCRIPTION).read_bytes().decode("utf-8")
    except FileNotFoundError:
        return None
    except UnicodeDecodeError:
        raise Unfit("it is not UTF-8 text") from None


def first(picture: str) -> Description:
    """What a board begins as."""
    return parse(FIRST.format(picture=picture), on_disk=False)


def save(folder: Path, expected: str | None, text: str) -> Description:
    """Writes the file whole or not at all, if it holds what is expected. Raises Changed, Unfit and
    OSError."""
    there = read(folder)
    if there != expected:
        raise Changed(there)
    saved = parse(text)
    path = (folder / DESCRIPTION).resolve()  # A link stays one.
    handle, name = tempfile.mkstemp(dir=path.parent, prefix=f".{DESCRIPTION}-")
    try:
        with os.fdopen(handle, "wb") as file:
            file.write(text.encode())
            file.flush()
            os.fsync(file.fileno())
        os.chmod(name, path.stat().st_mode & 0o777 if path.exists() else 0o644)
        os.replace(name, path)
    except BaseException:
        Path(name).unlink(missing_ok=True)
        raise
    return saved
