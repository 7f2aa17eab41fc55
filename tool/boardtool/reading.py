"""From the description that a person writes to a checked board."""

from pathlib import Path

import yaml

from boardtool import limits
from boardtool.colors import LEGIBLE, contrast, read_color
from boardtool.components import read_components
from boardtool.cursor import Cursor
from boardtool.fields import read_panel_text, warn_of_comment
from boardtool.model import Board, Look, Point, Style
from boardtool.picture import PictureError, load_picture
from boardtool.points import Canvas
from boardtool.problems import BoardError, Problems, Severity, has_errors
from boardtool.syntax import compose

# Points are checked against this when the picture cannot be read.
UNKNOWN_PICTURE: Point = (limits.PICTURE_PIXELS, limits.PICTURE_PIXELS)


def read_board(path: Path, text: str | None = None) -> Board:
    """Reads the description, or a text that is to be the file's. Raises BoardError with everything
    that keeps it from being a board."""
    problems = Problems(str(path))
    board = read_into(problems, path, text)
    if board is None:
        errors = [one for one in problems.sorted() if one.severity is Severity.ERROR]
        raise BoardError(errors)
    return board


def read_into(problems: Problems, path: Path, text: str | None = None) -> Board | None:
    """The same, with all problems, warnings as well; None when there are errors among them."""
    root = compose(problems, path, text)
    return read_node(problems, path.parent, root) if root is not None else None


def read_node(problems: Problems, folder: Path, root: yaml.Node) -> Board | None:
    """The same for a description that is parsed; its picture lies in the folder."""
    board = _read_root(Cursor(root, "", problems), folder)
    return None if has_errors(problems.found) else board


def _read_root(cursor: Cursor, folder: Path) -> Board | None:
    fields = cursor.fields(
        ("picture", "styles", "components"), ("board", "logo", "marker", "system_info")
    )
    title = _read_title(fields.get("board"))
    picture, size = _read_picture(fields.get("picture"), folder)
    logo = fields["logo"].choice(limits.LOGOS) if "logo" in fields else limits.LOGOS["A"]
    marker = (
        fields["marker"].choice(limits.MARKERS) if "marker" in fields else limits.MARKERS["green"]
    )
    style_names, styles = _read_styles(fields.get("styles"))
    texts = _read_system_info(fields.get("system_info"))
    canvas = Canvas(size)
    components = read_components(fields.get("components"), canvas, style_names)
    canvas.report_outside(fields.get("picture"))
    if title is None or picture is None or logo is None or marker is None:
        return None
    return Board(
        title=title,
        picture=picture,
        picture_size=size,
        logo=logo,
        marker=marker,
        styles=styles,
        system_info=texts,
        components=components,
    )


def _read_title(cursor: Cursor | None) -> str | None:
    if cursor is None:
        return ""
    warn_of_comment(cursor)
    title = cursor.text(limits.TITLE)
    strange = next((c for c in title or "" if not " " <= c <= "~"), None)
    if strange is not None:
        cursor.warn(f"the log cannot show {strange!r}; use printable ASCII characters")
    return title


def _read_picture(cursor: Cursor | None, folder: Path) -> tuple[Path | None, Point]:
    name = cursor.text(limits.WORD) if cursor else None
    if cursor is None or name is None:
        return None, UNKNOWN_PICTURE
    warn_of_comment(cursor)
    try:
        return folder / name, load_picture(folder / name).size
    except PictureError as error:
        cursor.report(str(error))
        return None, UNKNOWN_PICTURE


def _read_styles(cursor: Cursor | None) -> tuple[list[str], tuple[Style, ...]]:
    """The styles and their names; no names when what is wrong is said already."""
    entries = (cursor.entries() if cursor else None) or {}
    if cursor is not None and cursor.is_mapping() and not entries:
        cursor.report("is empty; describe at least one style")
    if cursor is not None and len(entries) > limits.STYLES:
        cursor.report(f"{len(entries)} styles, at most {limits.STYLES} are allowed")
    styles = [_read_style(entry) for entry in entries.values()]
    return list(entries), tuple(style for style in styles if style is not None)


def _read_style(cursor: Cursor) -> Style | None:
    fields = cursor.fields(("default", "focus"), ())
    default = _read_look(fields.get("default"))
    focus = _read_look(fields.get("focus"))
    return Style(default=default, focus=focus) if default and focus else None


def _read_look(cursor: Cursor | None) -> Look | None:
    if cursor is None:
        return None
    fields = cursor.fields(("text", "background", "mark"), ("border", "border_width", "radius"))
    colors = {
        name: read_color(fields[name]) if name in fields else "0,0,0"
        for name in ("text", "background", "mark", "border")
    }
    numbers = {
        name: fields[name].integer(0, limits.BYTE) if name in fields else 0
        for name in ("border_width", "radius")
    }
    if "border" not in fields and numbers["border_width"]:
        cursor.report("field 'border' is missing: the border has a width but no colour")
    _warn_of_contrast(fields, colors)
    return Look(
        text=colors["text"] or "",
        background=colors["background"] or "",
        mark=colors["mark"] or "",
        border=colors["border"] or "",
        border_width=numbers["border_width"] or 0,
        radius=numbers["radius"] or 0,
    )


def _warn_of_contrast(fields: dict[str, Cursor], colors: dict[str, str | None]) -> None:
    background = colors["background"]
    for name in ("text", "mark"):
        color = colors[name]
        if name not in fields or "background" not in fields or not color or not background:
            continue
        share = contrast(color, background)
        if share < LEGIBLE:
            fields[name].warn(
                f"hard to read: its contrast to the background is {share:.2f}, from {LEGIBLE} on "
                "texts are legible"
            )


def _read_system_info(cursor: Cursor | None) -> tuple[str, ...]:
    items = (cursor.items() if cursor else None) or []
    if cursor is not None and len(items) > limits.SYSTEM_INFO_TEXTS:
        cursor.report(f"{len(items)} texts, at most {limits.SYSTEM_INFO_TEXTS} are allowed")
    texts = [read_panel_text(item, limits.SYSTEM_INFO_TEXT) or "" for item in items]
    # The application uses the third text as a print format without arguments.
    if len(texts) > 2 and "%" in texts[2]:
        items[2].report("'%' is not allowed in the third text")
    return tuple(texts)
