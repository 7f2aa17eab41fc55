"""Where things are: the clone, its build output, the shared cache and what was fetched into it."""

import hashlib
import os
from pathlib import Path

CLONE = Path(__file__).resolve().parents[2]
BUILD = CLONE / "build"
REQUIREMENTS = CLONE / "script" / "requirements.txt"

# The three font faces in the order in which a host hands them over. Face 1 is the one that the
# other two fall back to: it has the East Asian glyphs, but no Latin ones.
FONT_FILES = (
    Path("/usr/share/fonts/truetype/open-sans/OpenSans-Regular.ttf"),
    Path("/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf"),
    Path("/usr/share/fonts/truetype/open-sans/OpenSans-Bold.ttf"),
)


def cache() -> Path:
    """The folder that all clones share; created when missing."""
    base = os.environ.get("XDG_CACHE_HOME", "")
    # The XDG rules say to ignore a relative path.
    root = Path(base) if os.path.isabs(base) else Path.home() / ".cache"
    folder = root / "boardscope"
    folder.mkdir(parents=True, exist_ok=True)
    return folder


def override(name: str) -> Path | None:
    """The local tree that an environment variable puts in place of a fetched one."""
    value = os.environ.get(name, "")
    return Path(value).expanduser().resolve() if value else None


def edk2_dir() -> Path:
    """The EDK2 source tree, with BaseTools built."""
    return override("EDK2_DIR") or cache() / "edk2"


def lvgl_dir() -> Path:
    """LVGL with the widened image header."""
    return override("LVGL_DIR") or cache() / "lvgl"


def freetype_dir() -> Path:
    """The FreeType source tree."""
    return override("FREETYPE_DIR") or cache() / "freetype"


def venv_dir() -> Path:
    """The Python environment that tests and checks run in: one for each list of requirements, so
    that clones of different revisions leave each other's alone."""
    digest = hashlib.sha256(REQUIREMENTS.read_bytes()).hexdigest()
    return cache() / f"venv-{digest[:12]}"


def all_paths() -> dict[str, str]:
    """The paths that CMake and other scripts ask for, by name."""
    paths = {
        "EDK2_DIR": edk2_dir(),
        "LVGL_DIR": lvgl_dir(),
        "FREETYPE_DIR": freetype_dir(),
        "VENV_DIR": venv_dir(),
    }
    fonts = {f"FONT_FILE_{index}": path for index, path in enumerate(FONT_FILES)}
    return {name: str(path) for name, path in (paths | fonts).items()}
