"""Another revision of this repository, built in the build folder to be compared with."""

import shutil
import subprocess
import tarfile
from pathlib import Path

from support import paths
from support.failure import Failure
from support.running import run

_FOLDER = paths.BUILD / "against"
_TREE = _FOLDER / "tree"
_COMMIT = _FOLDER / "commit"


def build(revision: str) -> Path:
    """Builds the EFI files of a revision with its own scripts; returns their folder.

    Its tree stays for the next comparison with the same commit.
    """
    commit = _commit_of(revision)
    if not _COMMIT.exists() or _COMMIT.read_text() != commit:
        _export(commit)
        _COMMIT.write_text(commit)
    run(f"Building the EFI files of {revision}", [_TREE / "script" / "build"], cwd=_TREE)
    return _TREE / "build" / "RELEASE"


def _commit_of(revision: str) -> str:
    command = ["git", "rev-parse", "--verify", "--quiet", "--end-of-options"]
    found = subprocess.run(
        [*command, f"{revision}^{{commit}}"],
        cwd=paths.CLONE,
        capture_output=True,
        text=True,
        check=False,
    )
    if found.returncode != 0:
        raise Failure(f"git knows no commit {revision}.")
    return found.stdout.strip()


def _export(commit: str) -> None:
    shutil.rmtree(_FOLDER, ignore_errors=True)
    _TREE.mkdir(parents=True)
    archive = _FOLDER / "tree.tar"
    command: list[str | Path] = ["git", "archive", f"--output={archive}", commit]
    run(f"Exporting {commit}", command, cwd=paths.CLONE)
    with tarfile.open(archive) as tar:
        tar.extractall(_TREE)
    archive.unlink()
