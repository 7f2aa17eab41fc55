"""Texts with a meaning of their own: names and what panels show."""

from boardtool import limits
from boardtool.cursor import Cursor


def read_name(cursor: Cursor) -> str | None:
    """The callout's text: it is cut to bytes and drawn with recolouring."""
    name = cursor.text(limits.NAME)
    if name is None:
        return None
    warn_of_comment(cursor, "a name cannot hold '#'")
    if not name:
        cursor.report("is empty")
        return None
    bad = next((c for c in name if not " " <= c <= "~" or c == "#"), None)
    if bad is not None:
        cursor.report(f"{bad!r} is not allowed; use printable ASCII characters other than '#'")
        return None
    return name


QUOTE = 'put it between "quotes" if it belongs to the text'


def warn_of_comment(cursor: Cursor, advice: str = QUOTE) -> None:
    """Warns when a '#' may have ended the text without its author's knowing."""
    comment = cursor.comment()
    if comment is not None:
        cursor.warn(f"the text ends before {comment!r}, which YAML takes for a comment; {advice}")


def read_panel_text(cursor: Cursor, limit: int) -> str | None:
    """A text that a panel draws with recolouring."""
    text = cursor.text(limit)
    comment = cursor.comment()
    if text is None:
        return None
    if comment is not None:
        doubled = comment.replace("##", "#").replace("#", "##")
        warn_of_comment(cursor, f'if it belongs to the text, write "{text} {doubled}"')
    bad = next((c for c in text if not " " <= c <= "~" and c != "\n"), None)
    if bad is not None:
        # The application narrows these texts to bytes.
        cursor.report(f"{bad!r} is not allowed; the panel shows printable ASCII characters only")
        return None
    if "#" in text.replace("##", ""):
        cursor.report("a single '#' would start a colour in the panel; write '##' for one '#'")
        return None
    return text
