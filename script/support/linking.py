"""The links through which the sources of LVGL and FreeType appear inside the package."""

from pathlib import Path

from support import paths


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
    link(paths.CLONE / "third_party" / "lvgl" / "source", paths.lvgl_dir())
    link(paths.CLONE / "third_party" / "freetype" / "source", paths.freetype_dir())
