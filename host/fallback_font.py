"""The fallback font, cut down to the characters that the host's texts have."""

import io
from pathlib import Path

from fontTools import subset
from fontTools.ttLib import TTLibError

TEXTS = Path(__file__).resolve().parent / "portable" / "Texts.cpp"
_LAST_ASCII = 0x7F


class FontError(Exception):
    """A font that cannot be used; the text says why."""


def characters(texts: list[Path]) -> set[str]:
    """What is beyond ASCII in these files: the other faces have the rest."""
    every = "".join(file.read_text(encoding="utf-8") for file in texts)
    return {sign for sign in every if ord(sign) > _LAST_ASCII}


def cut(font_file: Path, kept: set[str]) -> bytes:
    """The font with these characters alone, as far as it has them. Outlines, hints, metrics and
    names stay, so that each is drawn as before."""
    options = subset.Options(
        hinting=True,
        layout_features=[],
        name_IDs=["*"],
        notdef_outline=True,
        recalc_bounds=False,
        recalc_timestamp=False,
    )
    output = io.BytesIO()
    try:
        font = subset.load_font(str(font_file), options)
        subsetter = subset.Subsetter(options)
        subsetter.populate(text="".join(sorted(kept)))
        subsetter.subset(font)
        subset.save_font(font, output, options)
    except TTLibError as error:
        raise FontError(f"{font_file} is no font: {error}") from None
    return output.getvalue()
