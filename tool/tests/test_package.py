"""The package as a maker's build sees it."""

import re
import subprocess
import sys
from pathlib import Path

CLONE = Path(__file__).resolve().parents[2]


def folders_of(declaration: str) -> list[str]:
    """What the package of this declaration includes; EDK2 wants each folder to exist."""
    text = (CLONE / declaration).read_text()
    sections = re.findall(r"^\[Includes[^]]*\]\n((?:(?!\[).*\n)*)", text, re.MULTILINE)
    lines = [line.strip() for section in sections for line in section.splitlines()]
    return [line for line in lines if line and not line.startswith("#")]


def test_a_host_needs_nothing_that_is_fetched() -> None:
    listed = subprocess.run(
        ["git", "ls-files"], cwd=CLONE, capture_output=True, text=True, check=True
    ).stdout.splitlines()
    folders = folders_of("Boardscope.dec")
    assert "include" in folders
    for folder in folders:
        assert folder == "." or any(name.startswith(f"{folder}/") for name in listed), folder


def test_the_minimal_host_takes_the_contract_alone() -> None:
    text = (CLONE / "host" / "minimal" / "MinimalHost.inf").read_text()
    assert "Boardscope/Boardscope.dec" in text
    assert "third_party" not in text
    source = (CLONE / "host" / "minimal" / "MinimalHost.c").read_text()
    included = re.findall(r'#include [<"]([^>"]+)[>"]', source)
    ours = [name for name in included if (CLONE / "include" / name).exists()]
    assert ours == ["Protocol/ObvProtocol.h"]
    assert len(source.splitlines()) < 300


def test_a_python_without_the_libraries_is_told_what_it_lacks() -> None:
    bare: list[str | Path] = [sys.executable, "-S", CLONE / "host" / "embed.py", "--help"]
    done = subprocess.run(bare, capture_output=True, text=True)
    assert done.returncode == 1
    assert "has no module" in done.stderr
    assert "docs/firmware.md" in done.stderr
    assert "Traceback" not in done.stderr
