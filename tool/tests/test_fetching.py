"""What is fetched for a platform's own build, and where everything is said to be."""

import os
import shutil
import subprocess
from pathlib import Path

import pytest

from support import crates, linking, packages, paths
from support.failure import Failure
from support.fetching import ensure
from support.storing import STAMP

CLONE = Path(__file__).resolve().parents[2]
TREES = {"EDK2_DIR": "my edk2", "LVGL_DIR": "it's lvgl", "FREETYPE_DIR": "free $type"}


@pytest.fixture
def trees(tmp_path: Path) -> dict[str, str]:
    """An environment in which paths have what a shell takes apart."""
    for name in TREES.values():
        (tmp_path / name).mkdir()
    return {**os.environ, **{key: str(tmp_path / name) for key, name in TREES.items()}}


@pytest.mark.parametrize("name", TREES)
def test_a_shell_gets_each_path_whole(trees: dict[str, str], name: str) -> None:
    command = f'eval "$(script/fetch --paths)"; unset PATH; printf %s "${name}"'
    said = subprocess.run(
        ["bash", "-c", command], cwd=CLONE, env=trees, capture_output=True, text=True, check=True
    )
    assert said.stdout == trees[name]


def test_cmake_gets_each_path_whole(trees: dict[str, str], tmp_path: Path) -> None:
    lines = [f"set(PROJECT_SOURCE_DIR {CLONE})", "include(${PROJECT_SOURCE_DIR}/cmake/Paths.cmake)"]
    lines += [f'message("{name}=${{{name}}}")' for name in TREES]
    (tmp_path / "say.cmake").write_text("\n".join(lines))
    said = subprocess.run(
        ["cmake", "-P", tmp_path / "say.cmake"],
        env=trees,
        capture_output=True,
        text=True,
        check=True,
    )
    assert said.stderr.splitlines() == [f"{name}={trees[name]}" for name in TREES]


@pytest.fixture
def package(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> Path:
    """A clone with empty folders for the two libraries, and a cache that has both."""
    clone, cache = tmp_path / "clone", tmp_path / "cache"
    for name in ("lvgl", "freetype"):
        (clone / "third_party" / name).mkdir(parents=True)
        (cache / name / "src").mkdir(parents=True)
        (cache / name / "src" / "file.c").write_text(name)
        (cache / name / STAMP).write_text("1")
    monkeypatch.setattr(linking, "THIRD_PARTY", clone / "third_party")
    monkeypatch.setattr(linking, "COPIES", clone / "third_party" / "sources")
    monkeypatch.setattr(linking, "_trees", lambda: {n: cache / n for n in ("lvgl", "freetype")})
    return clone


def test_the_sources_move_with_the_package(package: Path, tmp_path: Path) -> None:
    linking.copy_dependencies()
    package.rename(tmp_path / "moved")
    shutil.rmtree(tmp_path / "cache")
    for name in ("lvgl", "freetype"):
        source = tmp_path / "moved" / "third_party" / name / "source"
        assert source.is_symlink()
        assert (source / "src" / "file.c").read_text() == name


def test_only_other_sources_are_copied_again(package: Path, tmp_path: Path) -> None:
    linking.copy_dependencies()
    mark = package / "third_party" / "sources" / "lvgl" / "mark"
    mark.touch()
    linking.copy_dependencies()
    assert mark.exists()
    (tmp_path / "cache" / "lvgl" / STAMP).write_text("2")
    linking.copy_dependencies()
    assert not mark.exists()


def test_a_copy_that_was_interrupted_is_made_anew(package: Path) -> None:
    linking.copy_dependencies()
    copy = package / "third_party" / "sources" / "lvgl"
    (copy / STAMP).unlink()
    (copy / "src" / "file.c").unlink()
    linking.copy_dependencies()
    assert (copy / "src" / "file.c").exists()


def test_sources_need_no_packages(
    package: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    def forbidden(*_: object) -> None:
        raise AssertionError("a maker's machine is left as it is")

    monkeypatch.setenv("XDG_CACHE_HOME", str(tmp_path / "home"))
    monkeypatch.setattr(shutil, "which", lambda _: None)
    monkeypatch.setattr(packages, "run", forbidden)
    monkeypatch.setattr(crates, "run", forbidden)
    with pytest.raises(Failure, match="cargo is missing.*LVGL_DIR and FREETYPE_DIR"):
        ensure(["sources"])
    assert not list((tmp_path / "home" / "boardscope").glob("venv*"))
    for crate in crates.CRATES:
        folder = paths.cache() / crate.target
        folder.mkdir()
        (folder / STAMP).write_text(crate.stamp())
    ensure(["sources"])
    assert (package / "third_party" / "lvgl" / "source" / "src" / "file.c").exists()
