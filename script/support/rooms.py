"""The rooms of the house: who may include whom, and what belongs into the same room."""

import json
import re
import subprocess
from collections.abc import Iterable, Iterator
from pathlib import Path

from support import paths
from support.failure import Failure

# From the ground up. A file includes its own room and those below it, never one above. The host
# check stands on the application's rooms, and none of them knows of it.
ORDER = ("app/base", "platform", "resources", "view", "capture", "app", "hostcheck")

# Apart from the rooms: the reference host and the reference setup. Neither includes anything of the
# other or of the application, nor the application of them.
APART = ("host", "setup")

# Above all of them: programs for this machine, which stand on the fake firmware as the tests do.
# They may include anything, and only tests include them.
ABOVE = ("tool/view",)

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
SUFFIXES = {".c", ".cpp", ".h"}


def room_of(name: str) -> str | None:
    """The room that a file of the repository lies in; the innermost, as app/base lies in app."""
    inside = [room for room in (*ORDER, *APART, *ABOVE) if name.startswith(f"{room}/")]
    return max(inside, key=len, default=None)


def includes_of(files: Iterable[Path]) -> dict[str, list[str]]:
    """What each C and C++ file in a room includes of the rooms, by names in the repository."""
    found = {}
    for file in files:
        name = file.relative_to(paths.CLONE).as_posix()
        if file.suffix in SUFFIXES and room_of(name):
            included = INCLUDE.findall(file.read_text())
            found[name] = [other for other in included if room_of(other)]
    return found


def problems(files: Iterable[Path]) -> list[str]:
    """One sentence for each include that climbs, each circle, each definition in another room."""
    includes = includes_of(files)
    return [*climbing(includes), *circles(includes), *strayed_definitions(includes)]


def climbing(includes: dict[str, list[str]]) -> Iterator[str]:
    for name, others in includes.items():
        room = room_of(name)
        for other in others:
            below = room_of(other)
            if room == below or room in ABOVE:
                continue
            if below in ABOVE:
                yield f"{name} includes {other}: {below} stands above everything."
            elif room in APART or below in APART:
                yield f"{name} includes {other}: they share include/ alone."
            elif room and below and ORDER.index(below) > ORDER.index(room):
                yield f"{name} includes {other}: {below} stands above {room}."


def circles(includes: dict[str, list[str]]) -> Iterator[str]:
    """Circles between units: a header and the source of its name are one."""
    needs: dict[str, set[str]] = {}
    for name, others in includes.items():
        unit = _unit(name)
        needs.setdefault(unit, set()).update(
            _unit(other) for other in others if _unit(other) != unit
        )
    done: set[str] = set()
    for unit in sorted(needs):
        yield from _walk(unit, needs, done, [])


def _walk(unit: str, needs: dict[str, set[str]], done: set[str], trail: list[str]) -> Iterator[str]:
    if unit in trail:
        circle = [*trail[trail.index(unit) :], unit]
        yield f"{' includes '.join(circle)}: a circle."
        return
    if unit in done:
        return
    for other in sorted(needs.get(unit, ())):
        yield from _walk(other, needs, done, [*trail, unit])
    done.add(unit)


def _unit(name: str) -> str:
    return name.rpartition(".")[0]


def strayed_definitions(includes: dict[str, list[str]]) -> Iterator[str]:
    """Names that a header of one room declares and only another room defines."""
    declared: dict[str, str] = {}
    defined: dict[str, set[str]] = {}
    for tag in _tags(sorted(includes)):
        name, file = tag["name"], tag["path"]
        if tag["kind"] in ("prototype", "externvar") and file.endswith(".h"):
            declared.setdefault(name, file)
        elif tag["kind"] in ("function", "variable"):
            defined.setdefault(name, set()).add(file)
    for name, header in sorted(declared.items()):
        rooms = {room_of(file) for file in defined.get(name, ())}
        if rooms and room_of(header) not in rooms:
            places = ", ".join(sorted(defined[name]))
            yield f"{header} declares {name}, which {places} defines: not the same room."


def _tags(names: list[str]) -> Iterator[dict[str, str]]:
    command = ["ctags", "--languages=C,C++", "--langmap=C++:+.h", "--kinds-C=fpvx"]
    command += ["--kinds-C++=fpvx", "--extras=-F", "--output-format=json", "--fields=+K"]
    listing = subprocess.run(
        [*command, "-f", "-", *names], cwd=paths.CLONE, capture_output=True, text=True
    )
    if listing.returncode != 0:
        raise Failure(f"ctags cannot read the sources:\n{listing.stderr}")
    for line in listing.stdout.splitlines():
        tag = json.loads(line)
        if tag["_type"] == "tag" and tag.get("scopeKind") not in ("struct", "class", "function"):
            yield tag
