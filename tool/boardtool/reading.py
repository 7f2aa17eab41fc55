"""From the description that a person writes to a checked board."""

from pathlib import Path

import yaml

from boardtool import limits
from boardtool.components import read_components
from boardtool.cursor import Cursor
from boardtool.fields import read_color, read_panel_text
from boardtool.model import Board, Look, Point, Style
from boardtool.picture import PictureError, probe_picture
from boardtool.problems import BoardError, Problems

# Points are checked against this when the picture cannot be read.
UNKNOWN_PICTURE: Point = (limits.PICTURE_PIXELS, limits.PICTURE_PIXELS)


def read_board(path: Path) -> Board:
    """Reads and checks the description. Raises BoardError with every problem found."""
    problems = Problems(str(path))
    root = _compose(path, problems)
    board = _read_root(Cursor(root, "", problems), path.parent) if root is not None else None
    if problems.found or board is None:
        raise BoardError(problems.sorted())
    return board


def _compose(path: Path, problems: Problems) -> yaml.Node | None:
    try:
        text = path.read_text(encoding="utf-8")
        node = yaml.compose(text, Loader=yaml.SafeLoader)
    except OSError as error:
        problems.add(1, "", f"cannot be read: {error.strerror}")
    except UnicodeDecodeError:
        problems.add(1, "", "is not UTF-8 text")
    except RecursionError:
        problems.add(1, "", "is nested too deeply")
    except yaml.MarkedYAMLError as error:
        line = error.problem_mark.line + 1 if error.problem_mark else 1
        problems.add(line, "", f"is not YAML: {error.problem}")
    except yaml.YAMLError as error:
        problems.add(1, "", f"is not YAML: {error}")
    else:
        if node is not None:
            return node
        problems.add(1, "", "is empty")
    return None


def _read_root(cursor: Cursor, folder: Path) -> Board | None:
    fields = cursor.fields(
        ("picture", "styles", "components"), ("board", "logo", "marker", "system_info")
    )
    title = fields["board"].text(limits.TITLE) if "board" in fields else ""
    picture, size = _read_picture(fields.get("picture"), folder)
    logo = fields["logo"].choice(limits.LOGOS) if "logo" in fields else limits.LOGOS["A"]
    marker = (
        fields["marker"].choice(limits.MARKERS) if "marker" in fields else limits.MARKERS["green"]
    )
    style_names, styles = _read_styles(fields.get("styles"))
    texts = _read_system_info(fields.get("system_info"))
    components = read_components(fields.get("components"), size, style_names)
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


def _read_picture(cursor: Cursor | None, folder: Path) -> tuple[Path | None, Point]:
    name = cursor.text(limits.WORD) if cursor else None
    if cursor is None or name is None:
        return None, UNKNOWN_PICTURE
    try:
        return folder / name, probe_picture(folder / name)
    except PictureError as error:
        cursor.report(str(error))
        return None, UNKNOWN_PICTURE


def _read_styles(cursor: Cursor | None) -> tuple[list[str], tuple[Style, ...]]:
    entries = (cursor.entries() if cursor else None) or {}
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
    return Look(
        text=colors["text"] or "",
        background=colors["background"] or "",
        mark=colors["mark"] or "",
        border=colors["border"] or "",
        border_width=numbers["border_width"] or 0,
        radius=numbers["radius"] or 0,
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
