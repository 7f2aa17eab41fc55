"""Building the EFI files with EDK2."""

import hashlib
import os
import re
import shutil
import tempfile
from collections.abc import Sequence
from pathlib import Path

from support import hardening, paths, stack_guard
from support.failure import Failure
from support.linking import link
from support.running import run, say
from support.storing import exclusive

WORKSPACE = paths.BUILD / "workspace"
GCC = "GCC5"
CLANG = "CLANGDWARF"
SHIPPED = (
    "Boardscope",
    "ObvHost",
    "ObvDemoSensors",
    "MinimalHost",
    "BoardscopeStart",
    "BoardscopeInventory",
    "BoardscopeHostCheck",
    "ObvSetup",
)
# What the tests run beside them; with GCC alone.
FOR_TESTS = (
    "SystemProbe",
    "UsbMouseDxe",
    "UsbTabletDxe",
    "LateOutputDxe",
    "FirmwareContract",
    "FirmwareBench",
)
IMAGES = {GCC: SHIPPED + FOR_TESTS, CLANG: SHIPPED}

# Who takes the tables first matters: the later ones use the earlier ones. This order is part of
# what the application promises.
CONSTRUCTORS = (
    "UefiBootServicesTableLibConstructor",
    "UefiRuntimeServicesTableLibConstructor",
    "UefiLibConstructor",
    "HobLibConstructor",
    "UefiHiiServicesLibConstructor",
)


def build(target: str, toolchain: str = GCC) -> None:
    """Builds everything in the DSC; target is DEBUG, RELEASE or NOOPT."""
    with exclusive(WORKSPACE, "is building the EFI files"):
        _build(target, toolchain)


def _build(target: str, toolchain: str) -> None:
    make_workspace()
    embed_host_files()
    embed_minimal_host_files()
    generate_setup_files()
    what = f"Building the EFI files ({target}, {toolchain})"
    run_edk2(what, "Boardscope/Boardscope.dsc", target, toolchain)
    output = output_folder(target, toolchain=toolchain)
    check_constructors(output)
    check_headers(output)
    harden(output, IMAGES[toolchain])
    collect(output, IMAGES[toolchain], images_folder(target, toolchain))


def run_edk2(
    what: str,
    platform: str,
    target: str,
    toolchain: str = GCC,
    workspace: Path = WORKSPACE,
    switches: Sequence[str] = (),
) -> None:
    """EDK2's build of a platform, in a workspace that was made; switches are the platform's."""
    workspace = without_blanks(workspace)
    edk2 = paths.edk2_dir()
    tools = edk2 / "BaseTools"
    environment = {
        "WORKSPACE": str(workspace),
        "PACKAGES_PATH": str(edk2),
        "EDK_TOOLS_PATH": str(tools),
        "CONF_PATH": str(workspace / "Conf"),
        "PYTHON_COMMAND": "python3",
        "PATH": f"{tools / 'BinWrappers' / 'PosixLike'}:{os.environ['PATH']}",
    }
    command = ["build", "-p", platform, "-a", "X64", "-t", toolchain]
    command += ["-b", target, "-n", str(os.cpu_count() or 1), "-s"]
    command += [word for switch in switches for word in ("-D", switch)]
    run(what, command, cwd=workspace, environment=environment)


def output_folder(target: str, platform: str = "Boardscope", toolchain: str = GCC) -> Path:
    """Where EDK2 leaves the images of a target, and their symbols beside them."""
    return WORKSPACE / "Build" / platform / f"{target}_{toolchain}" / "X64"


def images_folder(target: str, toolchain: str = GCC) -> Path:
    """Where people look for the images of a target."""
    return paths.BUILD / (target if toolchain == GCC else f"{target}-{toolchain}")


def make_workspace(workspace: Path = WORKSPACE) -> Path:
    """The folder that EDK2 sees: the clone by the package's name, and the tools' settings."""
    conf = workspace / "Conf"
    conf.mkdir(parents=True, exist_ok=True)
    link(workspace / "Boardscope", paths.CLONE)
    templates = paths.edk2_dir() / "BaseTools" / "Conf"
    for name in ("build_rule", "target", "tools_def"):
        template = templates / f"{name}.template"
        settings = conf / f"{name}.txt"
        if not settings.exists() or settings.read_bytes() != template.read_bytes():
            shutil.copyfile(template, settings)
    return without_blanks(workspace)


def without_blanks(folder: Path) -> Path:
    """The folder by a path that EDK2 accepts: a link stands in for one with blanks in it."""
    if " " not in str(folder):
        return folder
    name = hashlib.sha256(str(folder).encode()).hexdigest()[:16]
    alias = Path(tempfile.gettempdir()) / f"boardscope-{os.getuid()}-{name}"
    link(alias, folder)
    return alias


def embed_host_files() -> None:
    """Writes the default board and the fonts as the reference host's driver embeds them."""
    python = paths.venv_dir() / "bin" / "python"
    command: list[str | Path] = [python, paths.CLONE / "host" / "embed.py"]
    command += ["--board-dir", paths.CLONE / "assets" / "board", "--out", paths.BUILD / "host"]
    for font in paths.FONT_FILES:
        command += ["--font", font]
    run("Embedding the default board and the fonts in the reference host", command)


def embed_minimal_host_files() -> None:
    """Writes picture and font as the minimal host's driver embeds them."""
    python = paths.venv_dir() / "bin" / "python"
    command: list[str | Path] = [python, paths.CLONE / "host" / "minimal" / "files.py"]
    command += ["--font", paths.FONT_FILES[0], "--out", paths.BUILD / "minimal"]
    run("Drawing the minimal host's picture", command)


def embedded_files() -> dict[str, Path]:
    """What the reference host's driver embeds, by what it is; embed_host_files has written it."""
    return {
        "default board": paths.BUILD / "host" / "board.bin",
        "font, regular": paths.FONT_FILES[0],
        "font, East Asian part": paths.BUILD / "host" / "fallback.ttf",
        "font, bold": paths.FONT_FILES[2],
    }


def generate_setup_files() -> None:
    """Writes the setup's pages, their texts and the tables of its driver."""
    python = paths.venv_dir() / "bin" / "python"
    command: list[str | Path] = [python, paths.CLONE / "setup" / "generate.py"]
    command += ["--board-dir", paths.CLONE / "assets" / "board", "--font", paths.FONT_FILES[1]]
    run("Writing the pages of the setup", [*command, "--out", paths.BUILD / "setup"])


def check_constructors(output: Path) -> None:
    """Compares the order in which EDK2 calls the libraries' constructors with the promised one."""
    autogen = output / "Boardscope" / "Boardscope" / "DEBUG" / "AutoGen.c"
    body = autogen.read_text().split("ProcessLibraryConstructorList", 1)[1]
    body = body.split("ProcessLibraryDestructorList", 1)[0]
    found = tuple(re.findall(r"Status = (\w+Constructor) \(", body))
    if found != CONSTRUCTORS:
        raise Failure(
            "EDK2 calls the library constructors of the application in another order than "
            f"promised. Expected: {', '.join(CONSTRUCTORS)}. Found: {', '.join(found)}. Look at "
            "the library classes in Boardscope.inf and Boardscope.dsc."
        )


def check_headers(output: Path) -> None:
    """Makes sure that no header of this machine's C library slipped into the firmware."""
    for dependencies in (output / "Boardscope").rglob("*.deps"):
        strays = re.findall(r"/usr/include/\S+", dependencies.read_text())
        if strays:
            raise Failure(
                f"{dependencies.stem} includes {strays[0]}, a header of this machine's C library. "
                "Firmware code takes the headers under app/base/libc/include."
            )


def harden(output: Path, images: tuple[str, ...]) -> None:
    """Marks the images as NX compatible, and makes sure that firmware can protect their memory and
    that those which ship check their stack."""
    for name in images:
        image = output / f"{name}.efi"
        hardening.mark(image)
        hardening.check(image)
    for name in stack_guard.GUARDED:
        stack_guard.check(output / f"{name}.debug")


def collect(output: Path, images: tuple[str, ...], folder: Path) -> None:
    """Puts the images where people look for them."""
    folder.mkdir(exist_ok=True)
    for name in images:
        shutil.copy2(output / f"{name}.efi", folder / f"{name}.efi")
    size = (folder / "Boardscope.efi").stat().st_size
    say(f"build/{folder.name}: {', '.join(f'{name}.efi' for name in images)}")
    say(f"build/{folder.name}/Boardscope.efi has {size:,} bytes")
