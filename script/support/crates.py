"""LVGL and FreeType, which two Rust crates carry whole."""

import functools
import shutil
import tarfile
from dataclasses import dataclass
from pathlib import Path

from support import adaptation, packages, paths
from support.failure import Failure
from support.running import run, say
from support.storing import is_current, put, verify


@dataclass(frozen=True)
class Crate:
    """A pinned package, the folder inside it that is wanted, and where that goes."""

    title: str
    name: str
    version: str
    sha256: str
    inner: str
    variable: str
    target: str

    def stamp(self) -> str:
        """What the folder in the cache was made from."""
        return f"{self.name} {self.version} {self.sha256} {adaptation.RECIPE}\n"


CRATES = (
    Crate(
        title="LVGL 8.3.5",
        name="lvgl-sys",
        version="0.6.2",
        sha256="d697d889a2fd6bdfd350843cb9c9d8dc5b6a33f4eb8962a42f205e147a4643c2",
        inner="vendor/lvgl",
        variable="LVGL_DIR",
        target="lvgl",
    ),
    Crate(
        title="FreeType 2.13.2",
        name="freetype-sys",
        version="0.23.0",
        sha256="eab537ce43cab850c64b4cdc390ce7e4f47f877485ddc323208e268280c308ae",
        inner="freetype2",
        variable="FREETYPE_DIR",
        target="freetype",
    ),
)

# Debian's plain cargo package is too old for today's registry protocol.
CARGO_PACKAGE = "cargo-web"

# What the two crates need only when they are compiled as Rust. Empty local packages stand in, so
# that nothing but the two crates is downloaded, and whatever else changes in the registry, or
# needs a newer cargo, does not matter.
STAND_INS = {
    "bindgen": "0.64.0",
    "cc": "1.0.79",
    "cty": "0.2.2",
    "libz-sys": "1.1.20",
    "pkg-config": "0.3.11",
}


def fetch(*, installing: bool) -> None:
    """Brings LVGL and FreeType into the cache, unless they are there or replaced; `installing`
    says whether the package of cargo may be installed for that."""
    for crate in CRATES:
        folder = paths.cache() / crate.target
        replaced = paths.override(crate.variable)
        if replaced is not None:
            check_replacement(crate, replaced)
        elif not is_current(folder, crate.stamp()):
            _ensure_cargo(installing)
            put(folder, crate.stamp(), functools.partial(_make, crate))
            say(f"{crate.title} is ready")


def check_replacement(crate: Crate, folder: Path) -> None:
    """Looks at a tree that a variable names before a compiler stumbles over it."""
    if not folder.is_dir():
        raise Failure(f"{crate.variable} names {folder}, which is not a folder.")
    if crate.target == "lvgl" and not adaptation.is_adapted(folder):
        raise Failure(
            f"LVGL in {folder} (LVGL_DIR) has the original image header, whose 11-bit sizes end "
            f"at 2047 pixels. Widen it with: script/fetch --adapt {folder}"
        )


def _ensure_cargo(installing: bool) -> None:
    if shutil.which("cargo") is not None:
        return
    if not installing:
        raise Failure(
            "cargo is missing, which downloads LVGL and FreeType. Install it (on Debian 12: "
            f"apt-get install {CARGO_PACKAGE}) and run this again; or let LVGL_DIR and "
            "FREETYPE_DIR name trees of LVGL 8.3.5 and FreeType 2.13.2 that you have."
        )
    packages.install_packages([CARGO_PACKAGE])


def _make(crate: Crate, scratch: Path) -> Path:
    archive = _download(crate, scratch)
    verify(archive, crate.sha256)
    unpacked = scratch / "unpacked"
    with tarfile.open(archive) as tar:
        tar.extractall(unpacked)
    made = unpacked / f"{crate.name}-{crate.version}" / crate.inner
    if crate.target == "lvgl":
        adaptation.adapt(made)
    return made


def _download(crate: Crate, scratch: Path) -> Path:
    project = scratch / "project"
    _write_package(project, "fetch", "0.0.0", _manifest_tail(crate))
    for name, version in STAND_INS.items():
        _write_package(project / name, name, version, "")
    home = scratch / "cargo-home"
    run(
        f"Downloading {crate.title} (crate {crate.name} {crate.version})",
        ["cargo", "fetch"],
        cwd=project,
        environment={"CARGO_HOME": str(home)},
        hint="Is the network up? Then run this again.",
    )
    found = list(home.glob(f"registry/cache/*/{crate.name}-{crate.version}.crate"))
    if len(found) != 1:
        raise Failure(f"cargo did not leave {crate.name} {crate.version} where it was expected.")
    return found[0]


def _manifest_tail(crate: Crate) -> str:
    lines = ["[workspace]", "[dependencies]", f'{crate.name} = "={crate.version}"']
    lines.append("[patch.crates-io]")
    lines += [f'{name} = {{ path = "{name}" }}' for name in STAND_INS]
    return "\n".join(lines) + "\n"


def _write_package(folder: Path, name: str, version: str, tail: str) -> None:
    (folder / "src").mkdir(parents=True)
    (folder / "src" / "lib.rs").touch()
    (folder / "Cargo.toml").write_text(
        f'[package]\nname = "{name}"\nversion = "{version}"\nedition = "2018"\n{tail}'
    )
