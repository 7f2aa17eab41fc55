"""What keeps the tree in order and no compiler looks at."""

import re
import subprocess
from pathlib import Path

from support import paths

# Spelt in two parts, as this file is looked at, too.
MARKS = re.compile(r"\b(TO" r"DO|FIX" r"ME|XX" r"X|HA" r"CK)\b")
TEXT_SUFFIXES = {".S", ".c", ".cmake", ".cpp", ".dec", ".dsc", ".h", ".inf", ".md", ".nasm"}
TEXT_SUFFIXES |= {".pov", ".py", ".sh", ".toml", ".txt", ".yaml", ".yml", ""}


def tracked_files() -> list[Path]:
    """Every file of the repository that is there, the ones not yet committed included."""
    listed = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=paths.CLONE,
        capture_output=True,
        text=True,
        check=True,
    )
    files = [paths.CLONE / name for name in listed.stdout.split("\0") if name]
    return [file for file in files if file.is_file()]


def problems(files: list[Path]) -> list[str]:
    """One sentence for each thing that is out of order."""
    return [*_package_problems(files), *_mark_problems(files)]


def _package_problems(files: list[Path]) -> list[str]:
    components = (paths.CLONE / "Boardscope.dsc").read_text()
    declarations = (paths.CLONE / "Boardscope.dec").read_text()
    found = []
    for file in files:
        name = file.relative_to(paths.CLONE).as_posix()
        if file.suffix == ".inf" and f"Boardscope/{name}" not in components:
            found.append(f"{name} is not built: name it in Boardscope.dsc.")
        if name.startswith("include/") and file.suffix == ".h" and name not in declarations:
            found.append(f"{name} is a public header: name it in Boardscope.dec.")
        if file.suffix == ".inf":
            found += _source_problems(file, name)
    return found


def _source_problems(inf: Path, name: str) -> list[str]:
    """Files that a module lists and that are not there; fetched and generated ones apart."""
    sources = re.findall(r"^\s*([\w./-]+\.(?:c|cpp|h))\s*$", inf.read_text(), re.MULTILINE)
    return [
        f"{name} lists {source}, which is not there."
        for source in sources
        if not source.startswith(("source/", "../build/")) and not (inf.parent / source).is_file()
    ]


def _mark_problems(files: list[Path]) -> list[str]:
    found = []
    for file in files:
        if file.suffix not in TEXT_SUFFIXES or file.is_symlink():
            continue
        for number, line in enumerate(file.read_text(errors="replace").splitlines(), 1):
            if MARKS.search(line):
                name = file.relative_to(paths.CLONE)
                found.append(f"{name}:{number} has a mark of unfinished work: {line.strip()}")
    return found
