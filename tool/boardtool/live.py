"""The application itself, on a firmware in memory: pictures of a board, and where everything
stands on them."""

import json
import os
import subprocess
import tempfile
import threading
from collections.abc import Mapping
from dataclasses import dataclass, field
from pathlib import Path
from types import TracebackType
from typing import Any, NamedTuple, Self

from support import fetching, native

PROGRAM = "BOARDSCOPE_VIEW_PROGRAM"
"""The environment variable that names another program than the one that is built here."""


class ViewError(Exception):
    """The view cannot be shown; the text says why."""


def program() -> Path:
    """The native program, built first where it is missing or out of date."""
    chosen = os.environ.get(PROGRAM)
    if chosen:
        return Path(chosen)
    fetching.ensure(["view"])
    return native.build("view", ("-DBOARDSCOPE_VIEW=ON",), "board-view") / "board-view"


@dataclass(frozen=True, kw_only=True)
class ViewOptions:
    """Texts as `board-view --help` has them."""

    resolution: str = "1920x1080"
    language: str = "en-US"
    appearance: str = "standard"
    statuses: Mapping[str, str] = field(default_factory=dict)
    """By component: what the host answers in place of what the description says."""
    hover: str | None = None
    """The component that the pointer stands on."""
    pointer: str | None = None
    """Where the pointer stands, as in "960,540"."""
    filter: str | None = None
    fonts: tuple[Path, ...] = ()
    """Files in place of the host's fonts, in the order of its faces."""

    def request(self) -> dict[str, Any]:
        """What the program gets of it."""
        request = {name: getattr(self, name) for name in ("resolution", "language", "appearance")}
        request["statuses"] = dict(self.statuses)
        request["fonts"] = [str(font.absolute()) for font in self.fonts]
        for name in ("hover", "pointer", "filter"):
            if getattr(self, name) is not None:
                request[name] = getattr(self, name)
        return request


class Box(NamedTuple):
    """In pixels of the screen."""

    x: float
    y: float
    width: float
    height: float


Points = tuple[tuple[int, int], ...]


@dataclass(frozen=True)
class Panel:
    """The panel of a component that has the focus."""

    lines: int
    """Lines of text under the heading, as they are wrapped."""
    bottom: int
    """Where the last one ends, or would end if there were room."""
    limit: int
    """Where the next thing begins."""


@dataclass(frozen=True)
class ComponentMeasures:
    name: str
    text: str
    """What the callout says, with its marks."""
    callout: Box
    shown: bool
    """Whether the filter shows the callout."""
    marker: Box
    dot: bool
    """Whether there is a dot in the marker's place."""
    outline: Points
    leader: Points
    panel: Panel | None
    """None for a component without one."""


@dataclass(frozen=True)
class Measures:
    """Where the view's objects are, after layout."""

    screen: tuple[int, int]
    pointer: tuple[int, int]
    """Where hover has led it."""
    picture: Box
    panel: Box
    summary: Box
    filters: tuple[Box, ...]
    keys: Box
    title: Box
    footer: Box
    close: Box
    components: tuple[ComponentMeasures, ...]


BOXES = ("picture", "panel", "summary", "keys", "title", "footer", "close")


def _measures(data: dict[str, Any]) -> Measures:
    width, height = data["screen"]
    x, y = data["pointer"]
    return Measures(
        screen=(width, height),
        pointer=(x, y),
        filters=tuple(Box(*box) for box in data["filters"]),
        components=tuple(_component(component) for component in data["components"]),
        **{name: Box(*data[name]) for name in BOXES},
    )


def _component(data: dict[str, Any]) -> ComponentMeasures:
    panel = data["panel"]
    return ComponentMeasures(
        name=data["name"],
        text=data["text"],
        callout=Box(*data["callout"]),
        shown=data["shown"],
        marker=Box(*data["marker"]),
        dot=data["dot"],
        outline=tuple((x, y) for x, y in data["outline"]),
        leader=tuple((x, y) for x, y in data["leader"]),
        panel=Panel(**panel) if panel else None,
    )


class LiveView:
    """One program, which shows one board after the other; any thread may ask."""

    def __init__(self) -> None:
        self._lock = threading.Lock()

    def __enter__(self) -> Self:
        self._folder = tempfile.TemporaryDirectory(prefix="board-view-")
        self._process = subprocess.Popen(
            [program(), "--serve"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True
        )
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        error: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        # Its input ends, so it does.
        self._process.communicate()
        self._folder.cleanup()

    def picture(self, board: bytes, options: ViewOptions = ViewOptions()) -> bytes:
        """The screen as a PNG file; board is a board.bin."""
        shot = Path(self._folder.name) / "shot.png"
        with self._lock:
            self._ask(board, {**options.request(), "shot": str(shot)})
            return shot.read_bytes()

    def measure(self, board: bytes, options: ViewOptions = ViewOptions()) -> Measures:
        """Where everything stands on the screen."""
        with self._lock:
            answer = self._ask(board, {**options.request(), "measure": True})
        return _measures(answer["measures"])

    def _ask(self, board: bytes, request: dict[str, Any]) -> dict[str, Any]:
        path = Path(self._folder.name) / "board.bin"
        path.write_bytes(board)
        assert self._process.stdin and self._process.stdout
        try:
            self._process.stdin.write(json.dumps({**request, "board": str(path)}) + "\n")
            self._process.stdin.flush()
        except BrokenPipeError:
            raise ViewError("the program that shows boards has ended") from None
        line = self._process.stdout.readline()
        if not line:
            raise ViewError("the program that shows boards has ended")
        answer: dict[str, Any] = json.loads(line)
        if "error" in answer:
            raise ViewError(answer["error"])
        return answer
