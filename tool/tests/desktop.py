"""A virtual desktop on which `tool/board view` opens its window, and a person before it."""

import contextlib
import os
import signal
import subprocess
import sys
import time
from collections.abc import Callable, Iterator
from pathlib import Path

from PIL import Image, ImageGrab

CLONE = Path(__file__).resolve().parents[2]
PATIENCE = 60.0


@contextlib.contextmanager
def virtual_desktop(size: str) -> Iterator[str]:
    """Its name, for DISPLAY."""
    reading, writing = os.pipe()
    # Without a reset when its last client goes, which would turn the next one away.
    command = ["Xvfb", "-noreset", "-nolisten", "tcp", "-screen", "0", f"{size}x24"]
    server = subprocess.Popen(
        [*command, "-displayfd", str(writing)], pass_fds=[writing], stderr=subprocess.DEVNULL
    )
    os.close(writing)
    with open(reading) as pipe:
        number = pipe.readline().strip()
    try:
        yield f":{number}"
    finally:
        server.terminate()
        server.wait()


def wait_for(condition: Callable[[], bool], what: str) -> None:
    end = time.monotonic() + PATIENCE
    while not condition():
        assert time.monotonic() < end, f"waited in vain for {what}"
        time.sleep(0.02)


class Desktop:
    """The command in its window, and a person before it."""

    driver = "x11"

    def __init__(self, display: str, folder: Path, *options: str) -> None:
        self.display = display
        self.folder = folder
        self.environment = {**os.environ, "DISPLAY": display, "SDL_VIDEODRIVER": self.driver}
        # The desktop's libraries keep some memory to the end.
        self.environment["ASAN_OPTIONS"] = "detect_leaks=0"
        self.log = folder / "terminal.txt"
        command: list[str | Path] = [
            sys.executable,
            CLONE / "tool" / "board",
            "view",
            folder,
            *options,
        ]
        with self.log.open("w") as output:
            self.process = subprocess.Popen(
                command,
                env=self.environment,
                stdout=output,
                stderr=subprocess.STDOUT,
                start_new_session=True,
            )
        wait_for(self.is_open, "the window")

    def is_open(self) -> bool:
        return self.title() != ""

    def interrupt(self) -> None:
        """Ctrl+C on the terminal."""
        os.killpg(self.process.pid, signal.SIGINT)

    def end(self) -> None:
        """Whatever is left of it."""
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()
        # The next test must not take this window for its own.
        wait_for(lambda: not self.is_open(), "the window to close")

    def xdotool(self, *arguments: str) -> str:
        command = ["xdotool", *arguments]
        run = subprocess.run(command, env=self.environment, capture_output=True, text=True)
        return run.stdout.strip()

    def title(self) -> str:
        return self.xdotool("search", "--onlyvisible", "--name", "Boardscope", "getwindowname")

    def corner(self) -> tuple[int, int]:
        search = ("search", "--onlyvisible", "--name", "Boardscope", "getwindowgeometry")
        geometry = self.xdotool(*search, "--shell")
        values = dict(line.split("=") for line in geometry.splitlines())
        return int(values["X"]), int(values["Y"])

    def move(self, place: tuple[int, int]) -> None:
        left, top = self.corner()
        self.xdotool("mousemove", str(left + place[0]), str(top + place[1]))

    def press(self, key: str) -> None:
        # The application takes no keys in its first 200 ms.
        time.sleep(0.3)
        self.xdotool("key", key)

    def screen(self, size: tuple[int, int]) -> Image.Image:
        """The window's upper left part of this size."""
        left, top = self.corner()
        box = (left, top, left + size[0], top + size[1])
        return ImageGrab.grab(bbox=box, xdisplay=self.display).convert("RGB")

    def terminal(self) -> str:
        return self.log.read_text()

    def wait_for_line(self, line: str) -> None:
        wait_for(lambda: line in self.terminal(), f"{line!r} on the terminal")


class WaylandDesktop(Desktop):
    """The command on the Wayland desktop `wayland` is around; its window fills the screen."""

    driver = "wayland"

    def is_open(self) -> bool:
        return self.process.poll() is None

    def corner(self) -> tuple[int, int]:
        return 0, 0


@contextlib.contextmanager
def wayland(display: str, size: str, folder: Path) -> Iterator[None]:
    """A Wayland desktop in a window that fills the virtual one; where programs find it is in the
    environment meanwhile."""
    folder.chmod(0o700)
    width, height = size.split("x")
    before = dict(os.environ)
    os.environ |= {"XDG_RUNTIME_DIR": str(folder), "WAYLAND_DISPLAY": "boardscope"}
    command = ["weston", "--backend=x11-backend.so", "--shell=kiosk-shell.so", "--no-config"]
    command += [f"--width={width}", f"--height={height}", "--socket=boardscope"]
    with (folder / "weston.txt").open("w") as log:
        compositor = subprocess.Popen(
            command, env={**os.environ, "DISPLAY": display}, stdout=log, stderr=log
        )
    try:
        wait_for((folder / "boardscope").exists, "the Wayland desktop")
        yield
    finally:
        compositor.terminate()
        compositor.wait()
        os.environ.clear()
        os.environ.update(before)
