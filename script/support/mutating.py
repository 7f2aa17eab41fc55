"""Small changes to the sources, one at a time, and whether the tests notice them.

A change is made line by line from a list of operators; comments, texts and includes are left alone.
The changed sources are a copy of the clone's in build/mutation, with a build of their own.
"""

import random
import re
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path

import yaml

from support import native, paths
from support.failure import Failure
from support.running import run, say

ROOMS = (
    "app",
    "platform",
    "resources",
    "view",
    "capture",
    "host/portable",
    "host/sources",
    "host/inventory",
    "hostcheck",
    "setup/portable",
)
COPY = paths.BUILD / "mutation" / "copy"
BINARY = paths.BUILD / "mutation" / "build"
SURVIVORS = paths.CLONE / "test" / "mutation" / "survivors.yaml"

# What is looked for, and what stands there instead.
OPERATORS: tuple[tuple[str, str], ...] = (
    (r" < ", " <= "),
    (r" <= ", " < "),
    (r" > ", " >= "),
    (r" >= ", " > "),
    (r" == ", " != "),
    (r" != ", " == "),
    (r" && ", " || "),
    (r" \|\| ", " && "),
    (r"!(?=[A-Za-z(])", ""),
    (r" \+ ", " - "),
    (r" - ", " + "),
    (r" \* (?=[\w(])", " / "),
    (r" / ", " * "),
    (r" >> ", " << "),
    (r" << ", " >> "),
    (r"\btrue\b", "false"),
    (r"\bfalse\b", "true"),
    (r"(?<![\w.])0(?![\w.])", "1"),
    (r"(?<![\w.])([1-9]\d*)(?![\w.])", r"(\1 + 1)"),
    (r"\bcontinue;", "break;"),
    (r"\bbreak;", "continue;"),
)
# A whole statement on a line of its own: a call, or an assignment to something that exists.
STATEMENT = re.compile(r"^\s+(\(void\))?[\w:.\[\]]+((->|\.)[\w\[\]]+)*(\(.*\)| [-+*|&]?= .*);$")
# What must not be changed: the line says nothing to the machine, or only to the compiler.
PASSED_OVER = re.compile(r"^\s*(//|\*|#|static_assert|template|using|namespace|extern|return;)")
TEXT_OR_COMMENT = re.compile(r'u?"(\\.|[^"\\])*"|\'(\\.|[^\'\\])\'|//.*$|<[\w/.]+>$')
# Long loops: they come last, for what nothing else has noticed.
LONG = "^(AllocationFailures|ServiceFailures?|RandomWalks)[.]"
# A change that hangs is noticed; the longest test takes a fraction of this.
SECONDS_PER_TEST = 60


@dataclass(frozen=True)
class Mutant:
    """One changed line; `file` is relative to the clone, `line` counts from 1."""

    file: str
    line: int
    was: str
    becomes: str

    def __str__(self) -> str:
        return (
            f"{self.file}:{self.line}: {self.was.strip()}  ->  {self.becomes.strip() or '(gone)'}"
        )


def sources() -> list[str]:
    """The files that may be changed; what lies under "uefi" runs in firmware alone."""
    found = [path for room in ROOMS for path in (paths.CLONE / room).rglob("*.cpp")]
    names = [path.relative_to(paths.CLONE) for path in found]
    return sorted(str(name) for name in names if "uefi" not in name.parts)


def mutants_of(file: str, text: str) -> list[Mutant]:
    """All changes that the operators can make to a source."""
    found = []
    for number, line in enumerate(text.splitlines(), start=1):
        if PASSED_OVER.match(line):
            continue
        found += [Mutant(file, number, line, changed) for changed in _changes(line)]
    return found


def _changes(line: str) -> list[str]:
    # Texts and comments are blanked, so that positions stay.
    bare = TEXT_OR_COMMENT.sub(lambda match: "\0" * len(match.group()), line)
    changes = []
    for pattern, replacement in OPERATORS:
        for match in re.finditer(pattern, bare):
            changes.append(line[: match.start()] + match.expand(replacement) + line[match.end() :])
    if STATEMENT.match(line):
        changes.append("")
    return changes


def choose(files: list[str], count: int | None, seed: int) -> list[Mutant]:
    """A sample of the files' mutants, the same for the same seed; all of them without a count."""
    everything: list[Mutant] = []
    for file in files:
        everything += mutants_of(file, (paths.CLONE / file).read_text())
    if count is None or count >= len(everything):
        return everything
    chosen = random.Random(seed).sample(everything, count)
    return sorted(chosen, key=lambda mutant: (mutant.file, mutant.line, mutant.becomes))


def prepare() -> None:
    """Copies the sources, builds them unchanged, and makes sure that the tests pass."""
    listing = run(
        "Listing the sources", ["git", "ls-files", "-co", "--exclude-standard"], paths.CLONE
    )
    for name in listing.splitlines():
        _copy(paths.CLONE / name, COPY / name)
    for name in ("lvgl", "freetype"):
        link = COPY / "third_party" / name / "source"
        if not link.is_symlink():
            link.symlink_to((paths.CLONE / "third_party" / name / "source").readlink())
    if not (BINARY / "build.ninja").exists():
        options = ["-G", "Ninja", "-DBOARDSCOPE_SANITIZE=OFF"]
        options += [f"-DBOARDSCOPE_TEST_TIMEOUT={SECONDS_PER_TEST}"]
        run("Configuring", ["cmake", "-S", COPY, "-B", BINARY, *options])
    run("Building", [*_build()])
    say("Running the tests on the unchanged sources")
    if _tests_fail([]):
        raise Failure(
            "Tests fail without any change; see script/test unit and script/test picture."
        )


def _copy(source: Path, target: Path) -> None:
    if not source.is_file():
        return  # Deleted, but still listed.
    if target.exists() and target.read_bytes() == source.read_bytes():
        return  # Its time decides what is built anew.
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy(source, target)


def _build() -> list[str]:
    return ["cmake", "--build", str(BINARY), "--parallel", native.jobs()]


def _tests_fail(selection: list[str]) -> bool:
    command = ["ctest", "--test-dir", str(BINARY), "--parallel", native.jobs(), "--stop-on-failure"]
    command += selection
    return (
        subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode
        != 0
    )


def outcome(mutant: Mutant) -> str:
    """What the compiler or the tests say to a mutant: "refused", "noticed" or "survived"."""
    file = COPY / mutant.file
    before = file.read_text()
    lines = before.split("\n")
    lines[mutant.line - 1] = mutant.becomes
    file.write_text("\n".join(lines))
    try:
        built = subprocess.run(_build(), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if built.returncode != 0:
            return "refused"
        noticed = _tests_fail(["-E", LONG]) or _tests_fail(["-R", LONG])
        return "noticed" if noticed else "survived"
    finally:
        file.write_text(before)


def reasons() -> dict[tuple[str, str, str], str]:
    """Why some mutants may survive, by file, line and change, blanks at the ends left out."""
    entries = yaml.safe_load(SURVIVORS.read_text()) or []
    return {(entry["file"], entry["was"], entry["becomes"]): entry["reason"] for entry in entries}


def reason(known: dict[tuple[str, str, str], str], mutant: Mutant) -> str | None:
    """The reason on record, or None."""
    return known.get((mutant.file, mutant.was.strip(), mutant.becomes.strip()))
