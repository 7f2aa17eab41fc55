"""Fetched folders in the cache: put in place in one step, marked with what they were made from."""

import contextlib
import fcntl
import hashlib
import shutil
import tempfile
from collections.abc import Callable, Iterator
from pathlib import Path

from support.failure import Failure
from support.paths import cache
from support.running import say

STAMP = ".boardscope-stamp"


def checksum(path: Path) -> str:
    """The SHA-256 of a file."""
    with path.open("rb") as file:
        return hashlib.file_digest(file, "sha256").hexdigest()


def verify(path: Path, expected: str) -> None:
    """Compares a download with its pinned checksum."""
    actual = checksum(path)
    if actual != expected:
        raise Failure(
            f"{path.name} has the checksum {actual}, expected was {expected}. Run this again; "
            "if it stays so, what is offered for download has changed."
        )


@contextlib.contextmanager
def exclusive(folder: Path, what: str) -> Iterator[None]:
    """Holds a folder against other runs that would write to it; `what` is what they do there."""
    folder.mkdir(parents=True, exist_ok=True)
    with (folder / ".lock").open("w") as file:
        try:
            fcntl.flock(file, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            say(f"Waiting for another run that {what}")
            fcntl.flock(file, fcntl.LOCK_EX)
        yield


def locked() -> contextlib.AbstractContextManager[None]:
    """Holds the cache against other runs, of this clone or another."""
    return exclusive(cache(), "is filling the cache")


@contextlib.contextmanager
def scratch() -> Iterator[Path]:
    """A folder beside its final place, so that a rename completes it; gone at the end."""
    for left in cache().glob(".scratch-*"):  # An interrupted run may have left one.
        shutil.rmtree(left, ignore_errors=True)
    with tempfile.TemporaryDirectory(prefix=".scratch-", dir=cache()) as folder:
        yield Path(folder)


def is_current(folder: Path, stamp: str) -> bool:
    """Whether a folder was completed from the same pins by the same steps."""
    try:
        return (folder / STAMP).read_text() == stamp
    except OSError:
        return False


def put(folder: Path, stamp: str, fill: Callable[[Path], Path]) -> None:
    """Lets `fill` make a folder inside a scratch folder, then puts it in place in one step."""
    with scratch() as temporary:
        made = fill(temporary)
        (made / STAMP).write_text(stamp)
        if folder.exists():
            folder.rename(temporary / "replaced")
        made.rename(folder)
