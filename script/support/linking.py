"""How the sources of LVGL and FreeType appear inside the package."""

import shutil
from pathlib import Path

from support import paths
from support.storing import STAMP, is_current

THIRD_PARTY = paths.CLONE / "third_party"
COPIES = THIRD_PARTY / "sources"


def link(place: Path, target: Path) -> None:
    """Makes `place` a link to `target`, in one step, unless it is that already."""
    if place.is_symlink() and place.readlink() == target:
        return
    fresh = place.with_name(place.name + ".new")
    fresh.unlink(missing_ok=True)
    fresh.symlink_to(target)
    fresh.replace(place)


def link_dependencies() -> None:
    """Points the package's two "source" folders to the trees in use."""
    for name, tree in _trees().items():
        link(THIRD_PARTY / name / "source", tree)


def copy_dependencies() -> None:
    """Copies the two trees into the package, with links that stay right when it moves."""
    for name, tree in _trees().items():
        copy = COPIES / name
        if not _is_copy(copy, tree):
            shutil.rmtree(copy, ignore_errors=True)
            # The stamp comes last: an interrupted copy is none.
            shutil.copytree(tree, copy, symlinks=True, ignore=shutil.ignore_patterns(STAMP))
            if (tree / STAMP).exists():
                shutil.copyfile(tree / STAMP, copy / STAMP)
        link(THIRD_PARTY / name / "source", Path("..") / "sources" / name)


def _trees() -> dict[str, Path]:
    return {"lvgl": paths.lvgl_dir(), "freetype": paths.freetype_dir()}


def _is_copy(copy: Path, tree: Path) -> bool:
    """Whether it was completed from a fetched tree as it is now; of others nobody knows."""
    try:
        return is_current(copy, (tree / STAMP).read_text())
    except OSError:
        return False
