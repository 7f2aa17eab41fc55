"""A platform's firmware with the view in its volume: OVMF, built as docs/firmware.md says, by the
very lines of that page."""

import re
import shlex
import shutil
from pathlib import Path

from support import edk2, firmware, paths
from support.failure import Failure
from support.running import run
from support.storing import STAMP, exclusive, is_current

PAGE = paths.CLONE / "docs" / "firmware.md"
VARIABLES = "OVMF_VARS.fd"
CODE = "OVMF_CODE.fd"

_TARGET = "RELEASE"
_PLATFORM = "Maker"
_VOLUME = "[FV.DXEFV]"
# OVMF's own switch; with it, the EDK2 of Debian needs nothing that OVMF does not name.
_SWITCHES = ("BUILD_SHELL=FALSE",)
_BOOT_MANAGER = Path("OvmfPkg/Library/PlatformBootManagerLib")
_SHELL_OPTION = "  PlatformRegisterFvBootOption (\n    &gUefiShellFileGuid,"


def folder() -> Path:
    """Where the flash image is, once it was made."""
    return paths.BUILD / "platform"


def make() -> None:
    """Builds the firmware. What EDK2 itself contributes stays in the cache."""
    workspace = paths.cache() / "platform"
    with (
        exclusive(workspace, "is building OVMF with the view"),
        exclusive(firmware.WORKSPACE, "is building the EFI files"),
    ):
        _forget_others(workspace)
        firmware.make_workspace(workspace)
        _embed()
        _write_platform(workspace / _PLATFORM)
        what = "Building OVMF with the view in its volume"
        platform = f"{_PLATFORM}/{_PLATFORM}.dsc"
        firmware.run_edk2(what, platform, _TARGET, workspace=workspace, switches=_SWITCHES)
        _collect(workspace / "Build" / "OvmfX64" / f"{_TARGET}_{firmware.GCC}" / "FV")


def _forget_others(workspace: Path) -> None:
    """Drops what was built from another EDK2, and what was built from another clone: its files may
    be older than what was made of ours."""
    build = workspace / "Build"
    stamp = f"{edk2.STAMP}{paths.override('EDK2_DIR') or ''}\n"
    if not is_current(workspace, stamp):
        shutil.rmtree(build, ignore_errors=True)
        (workspace / STAMP).write_text(stamp)
    package = workspace / "Boardscope"
    if package.is_symlink() and package.readlink() != paths.CLONE:
        for made in build.glob("*/*/X64/Boardscope"):
            shutil.rmtree(made)


def _embed() -> None:
    """Step 2 of the page, with the Python that has what it needs."""
    (command,) = _blocks("sh")
    words = shlex.split(command.replace("\\\n", " "))
    python = paths.venv_dir() / "bin" / "python"
    run("Writing the driver's files as the page says", [python, *words[1:]], cwd=paths.CLONE)


def _write_platform(folder: Path) -> None:
    """OVMF's own description, library and layout, with the page's lines in their places."""
    edk2_dir = paths.edk2_dir()
    library = _BOOT_MANAGER.name
    (option,) = [block for block in _blocks("c") if "PlatformRegisterFvBootOption" in block]
    changes = {
        "BdsPlatform.c": {_SHELL_OPTION: f"  {option}\n{_SHELL_OPTION}"},
        f"{library}.inf": {
            "[Packages]\n": "[Packages]\n  Boardscope/Boardscope.dec\n",
            "[Guids]\n": "[Guids]\n  gBoardscopeStartFileGuid\n",
        },
    }
    for file in (edk2_dir / _BOOT_MANAGER).iterdir():
        content = _edited(file.name, file.read_text(), changes.get(file.name, {}))
        _write(folder / library / file.name, content)
    _write(folder / f"{_PLATFORM}.dsc", _description(edk2_dir / "OvmfPkg" / "OvmfPkgX64.dsc"))
    _write(folder / f"{_PLATFORM}.fdf", _layout(edk2_dir / "OvmfPkg" / "OvmfPkgX64.fdf"))


def _description(file: Path) -> str:
    text = file.read_text().replace("OvmfPkg/OvmfPkgX64.fdf", f"{_PLATFORM}/{_PLATFORM}.fdf")
    text = text.replace(str(_BOOT_MANAGER), f"{_PLATFORM}/{_BOOT_MANAGER.name}")
    return "\n".join([text, *_blocks("dsc")])


def _layout(file: Path) -> str:
    # Those beside it.
    includes = re.compile(r"^!include (?=\w+\.fdf)", re.MULTILINE)
    text = includes.sub("!include OvmfPkg/", file.read_text())
    end = text.index("\n[", text.index(_VOLUME))
    return "\n".join([text[:end], *_blocks("fdf"), text[end:]])


def _write(file: Path, content: str) -> None:
    """Leaves a file alone that has this content: EDK2 goes by the times of files."""
    if not file.exists() or file.read_text() != content:
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(content)


def _blocks(language: str) -> list[str]:
    """The page's examples in a language."""
    found = re.findall(rf"```{language}\n(.*?)```", PAGE.read_text(encoding="utf-8"), re.DOTALL)
    if not found:
        raise Failure(f"docs/firmware.md has no example in {language}.")
    return found


def _edited(name: str, text: str, edits: dict[str, str]) -> str:
    for old, new in edits.items():
        if text.count(old) != 1:
            raise Failure(f"{name} of OVMF is not as it was: where is {old!r}?")
        text = text.replace(old, new)
    return text


def _collect(volumes: Path) -> None:
    folder().mkdir(exist_ok=True)
    for name in (CODE, VARIABLES):
        shutil.copy2(volumes / name, folder() / name)
