"""The libraries of the page that boards are described on: packages of npm, taken as they are."""

import shutil
import tarfile
from dataclasses import dataclass
from pathlib import Path

from support import packages, paths
from support.failure import Failure
from support.running import run, say
from support.storing import is_current, put, verify


@dataclass(frozen=True)
class Package:
    """A pinned package, and the modules of it that a browser takes as they are."""

    name: str
    version: str
    sha256: str
    modules: dict[str, str]
    """By the name that other modules import."""

    @property
    def archive(self) -> str:
        return f"{self.name.removeprefix('@').replace('/', '-')}-{self.version}.tgz"


@dataclass(frozen=True)
class Module:
    name: str
    path: Path

    @property
    def address(self) -> str:
        """Under which a server offers it."""
        return self.path.name


PACKAGES = (
    # Shapes: MIT.
    Package(
        name="@svgdotjs/svg.js",
        version="3.2.8",
        sha256="71c1798f9f542a2cee5a1ddd078972c119caec34778be4b8a947f56f69f785a7",
        modules={"@svgdotjs/svg.js": "dist/svg.esm.js"},
    ),
    # Zoom and pan: MIT.
    Package(
        name="@svgdotjs/svg.panzoom.js",
        version="2.1.2",
        sha256="c457a9f3ac028431d9ed0915c2d0b5e6a0587672c7f36556d360da4a9dc3f3b0",
        modules={"@svgdotjs/svg.panzoom.js": "dist/svg.panzoom.esm.js"},
    ),
    # Forms: MIT.
    Package(
        name="preact",
        version="11.2.0",
        sha256="3c4456766bd32b6b534d52bf4e9c2a29b33e7eedf6e96ed479300ba1a7888ebf",
        modules={"preact": "dist/preact.mjs", "preact/hooks": "hooks/dist/hooks.mjs"},
    ),
    # Forms written as templates, without a build step: Apache 2.0.
    Package(
        name="htm",
        version="3.1.1",
        sha256="2425b9bee11409177bcabc7f32e319926fc6690c1701c0b257c88bdff2d5ba90",
        modules={"htm": "dist/htm.mjs"},
    ),
)


def folder() -> Path:
    return paths.override("PAGE_LIBRARIES_DIR") or paths.cache() / "page-libraries"


def modules() -> list[Module]:
    """The files, each of another name."""
    return [
        Module(name, folder() / Path(file).name)
        for package in PACKAGES
        for name, file in package.modules.items()
    ]


def fetch() -> None:
    """Brings the libraries into the cache, unless they are there or replaced."""
    stamp = "".join(f"{package}\n" for package in PACKAGES)
    if paths.override("PAGE_LIBRARIES_DIR") is None and not is_current(folder(), stamp):
        put(folder(), stamp, _fill)
        say("The libraries of the page are ready")


def _fill(scratch: Path) -> Path:
    if shutil.which("npm") is None:
        packages.install_packages(["npm"])
    made = scratch / "made"
    made.mkdir()
    for package in PACKAGES:
        _unpack(_download(package, scratch), package, made)
    return made


def _download(package: Package, scratch: Path) -> Path:
    # As an archive, not installed: none of its scripts runs, and nothing that it depends on comes.
    run(
        f"Downloading {package.name} {package.version}",
        ["npm", "pack", "--silent", f"{package.name}@{package.version}"],
        cwd=scratch,
        hint="Is the network up? Then run this again.",
    )
    archive = scratch / package.archive
    if not archive.exists():
        raise Failure(f"npm did not leave {package.archive} where it was expected.")
    verify(archive, package.sha256)
    return archive


def _unpack(archive: Path, package: Package, made: Path) -> None:
    with tarfile.open(archive) as tar:
        for file in package.modules.values():
            content = tar.extractfile(f"package/{file}")
            if content is None:
                raise Failure(f"{package.name} {package.version} has no file {file}.")
            with content, (made / Path(file).name).open("wb") as target:
                shutil.copyfileobj(content, target)
