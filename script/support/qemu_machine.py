"""An emulated computer: QEMU with OVMF firmware, its host log, its console and its screens."""

from __future__ import annotations

import os
import shutil
import subprocess
import tempfile
import time
from collections.abc import Callable
from dataclasses import dataclass, field
from pathlib import Path

from support.failure import Failure
from support.qemu_input import Input
from support.qemu_qmp import Qmp, QmpError

_FIRMWARE_CODE = Path("/usr/share/OVMF/OVMF_CODE_4M.fd")
_FIRMWARE_VARIABLES = Path("/usr/share/OVMF/OVMF_VARS_4M.fd")
GDB_PORT = 1234
_PRESS_A_KEY = "startup.nsh"
# Where boards find them; the first screen and the USB host controller of a common PC.
SCREEN_ADDRESS = 0x02
USB_ADDRESS = 0x14
# Of each kind: the controller's first ports are 3.x, the others 2.0. As many as there can be.
USB_PORTS = 15


class MachineError(Failure):
    """The machine did not do what was waited for; the text is a plain sentence."""


@dataclass
class Options:
    """What to build the machine from; the defaults are the commonest computer."""

    esp: Path  # FAT image with startup.nsh
    folder: Path  # logs and variables are written here
    resolution: tuple[int, int] = (1920, 1080)  # the setup screen, each output
    outputs: int = 1  # graphics adapters, 1 to 4
    adapter: str | None = None  # QEMU's model of each; VGA when it is not given
    code: Path = _FIRMWARE_CODE
    variables: Path = _FIRMWARE_VARIABLES
    secure: bool = False  # the variables are written in system management mode alone
    pointers: tuple[str, ...] = ("tablet",)  # of "mouse", "tablet"
    display: str = "none"  # QEMU's -display
    accel: str = "tcg"
    memory_mib: int = 1024
    gdb: bool = False  # listen on GDB_PORT
    typing: bool = False  # a Shell will be connected
    extra: list[str] = field(default_factory=list)


class Machine:
    """A running machine; a context manager that ends QEMU on leaving."""

    def __init__(self, options: Options) -> None:
        self.options = options
        self.log_path = options.folder / "boardscope.log"
        self.console_path = options.folder / "console.log"
        self._qemu_log = options.folder / "qemu.log"
        self._private = Path(tempfile.mkdtemp(prefix="boardscope-"))
        self._process: subprocess.Popen[bytes] | None = None
        self._qmp: Qmp | None = None
        self._input: Input | None = None

    def __enter__(self) -> Machine:
        try:
            self._start()
        except BaseException:
            self.stop()
            raise
        return self

    def __exit__(self, *_: object) -> None:
        self.stop()

    @property
    def qmp(self) -> Qmp:
        if self._qmp is None:
            raise MachineError("The machine is not running.")
        return self._qmp

    @property
    def input(self) -> Input:
        """Keyboard, mouse and tablet."""
        if self._input is None:
            self._input = Input(self.qmp)
        return self._input

    @property
    def console_pipes(self) -> tuple[Path, Path]:
        """With `typing`: what the firmware's console reads and what it writes."""
        return self._private / "console.in", self._private / "console.out"

    def _start(self) -> None:
        self.options.folder.mkdir(parents=True, exist_ok=True)
        for log in (self.log_path, self.console_path, self._qemu_log):
            log.write_bytes(b"")
        variables = self._private / "variables.fd"
        if not self.options.variables.exists():
            raise MachineError("OVMF is not installed; run script/fetch.")
        shutil.copyfile(self.options.variables, variables)
        if self.options.typing:
            for pipe in self.console_pipes:
                os.mkfifo(pipe)
        with self._qemu_log.open("wb") as errors:
            self._process = subprocess.Popen(
                self._command(variables),
                stdin=subprocess.DEVNULL,
                stdout=errors,
                stderr=errors,
                start_new_session=True,
            )
        try:
            self._qmp = Qmp(self._private / "qmp", 20.0)
        except QmpError as error:
            raise MachineError(f"QEMU did not start. {self._qemu_said()}") from error

    def stop(self) -> None:
        """End QEMU, at once; harmless when it has ended already."""
        if self._qmp is not None:
            try:
                self._qmp.command("quit")
            except QmpError:
                pass
            self._qmp.close()
            self._qmp = None
        if self._process is not None:
            try:
                self._process.wait(5.0)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()
        shutil.rmtree(self._private, ignore_errors=True)

    def wait_until_closed(self) -> None:
        """Wait until the user closes QEMU's window or the guest switches itself off."""
        if self._process is not None:
            self._process.wait()

    @property
    def running(self) -> bool:
        return self._process is not None and self._process.poll() is None

    def log_lines(self) -> list[str]:
        """The host's complete log lines until now."""
        text = self.log_path.read_text(errors="replace")
        return text[: text.rfind("\n") + 1].split("\n")[:-1]

    def console_text(self) -> str:
        """What the firmware's console has written until now, with its terminal codes."""
        return self.console_path.read_text(errors="replace")

    def wait_for(self, done: Callable[[], bool], what: str, timeout: float) -> None:
        """Wait until `done` answers true; `what` ends the sentence of an error."""
        deadline = time.monotonic() + timeout
        while not done():
            if not self.running:
                raise MachineError(f"QEMU ended during the wait for {what}. {self._qemu_said()}")
            if time.monotonic() > deadline:
                raise MachineError(f"Waited {timeout:.0f} seconds in vain for {what}.")
            time.sleep(0.05)

    def wait_for_log(self, text: str, timeout: float, start: int = 0) -> str:
        """Wait for a host log line, number `start` or later, that contains `text`; return it."""
        found: list[str] = []

        def seen() -> bool:
            found[:] = [line for line in self.log_lines()[start:] if text in line]
            return bool(found)

        self.wait_for(seen, f'the log line "{text}"', timeout)
        return found[0]

    def wait_for_shell(self, timeout: float = 90.0) -> None:
        """Wait until the firmware's shell offers to skip startup.nsh, and press a key instead.

        Any key but Esc starts the script at once, which saves the shell's five seconds.
        """
        self.wait_for(
            lambda: _PRESS_A_KEY in self.console_text(), "the firmware's shell to start", timeout
        )
        self.input.press("ret")

    def screenshot(self, picture: Path, output: int = 0) -> None:
        """Write what output number `output` shows as a PNG file."""
        part = picture.with_suffix(".part")
        self.qmp.command(
            "screendump", filename=str(part.resolve()), device=f"video{output}", format="png"
        )
        os.replace(part, picture)

    def still_picture(self, output: int = 0, timeout: float = 30.0) -> bytes:
        """Wait until an output shows the same twice in a row, and not one plain colour; as PPM."""
        before = b""
        deadline = time.monotonic() + timeout
        while True:
            picture = self.picture(output)
            if picture == before and not _is_plain(picture):
                return picture
            if time.monotonic() > deadline:
                raise MachineError(f"Waited {timeout:.0f} seconds for output {output} to rest.")
            before = picture
            time.sleep(0.3)

    def picture(self, output: int = 0) -> bytes:
        """What an output shows now, as PPM."""
        dump = self._private / "screen.ppm"
        self.qmp.command("screendump", filename=str(dump), device=f"video{output}", format="ppm")
        return dump.read_bytes()

    def _qemu_said(self) -> str:
        said = self._qemu_log.read_text(errors="replace").strip()
        return f"QEMU said: {said}" if said else "QEMU said nothing."

    def _command(self, variables: Path) -> list[str]:
        options = self.options
        # However its parent ends, QEMU does not stay behind.
        command = ["setpriv", "--pdeathsig", "KILL"]
        command += ["qemu-system-x86_64", "-nodefaults", "-no-user-config"]
        command += ["-machine", f"q35,accel={options.accel}", "-m", str(options.memory_mib)]
        command += ["-nic", "none", "-vga", "none", "-display", options.display]
        command += ["-name", "Boardscope"]
        command += _drive("pflash", options.code, "readonly=on")
        command += _drive("pflash", variables)
        if options.secure:
            command += ["-global", "driver=cfi.pflash01,property=secure,value=on"]
        command += _drive("none", options.esp, "id=esp")
        # With an order of boot devices, OVMF leaves out what is not in it: no network, no sticks.
        command += ["-device", "virtio-blk-pci,drive=esp,bootindex=0"]
        command += ["-qmp", f"unix:{self._private / 'qmp'},server=on,wait=off"]
        command += self._serial_ports() + self._screens() + self._inputs()
        if options.gdb:
            command += ["-gdb", f"tcp:127.0.0.1:{GDB_PORT}"]
        return command + options.extra

    def _serial_ports(self) -> list[str]:
        if self.options.typing:
            # Not a socket: each byte is a packet there, so that it soon is full and loses bytes.
            pipe = self._private / "console"
            console = f"pipe,id=console,path={pipe},logfile={escape(self.console_path)}"
        else:
            console = f"file,id=console,path={escape(self.console_path)}"
        return [
            "-chardev",
            console,
            "-serial",
            "chardev:console",
            # The third port: the firmware's console never writes there, so it is the host's alone.
            "-chardev",
            f"file,id=obvlog,path={escape(self.log_path)}",
            "-device",
            "isa-serial,index=2,iobase=0x3e8,irq=4,chardev=obvlog",
        ]

    def _screens(self) -> list[str]:
        width, height = self.options.resolution
        screens: list[str] = []
        for number in range(self.options.outputs):
            if self.options.adapter is not None:
                screens += ["-device", f"{self.options.adapter},id=video{number}"]
                continue
            model = "VGA" if number == 0 else "secondary-vga"
            # In mHz: at the default rate, the pixel clock of a large screen does not fit the EDID
            # and the firmware falls back to another size.
            size = f"vgamem_mb=64,edid=on,refresh_rate=30000,xres={width},yres={height}"
            place = f",addr={SCREEN_ADDRESS:#x}" if number == 0 else ""
            screens += ["-device", f"{model},id=video{number}{place},{size}"]
        return screens

    def _inputs(self) -> list[str]:
        ports = f"addr={USB_ADDRESS:#x},p2={USB_PORTS},p3={USB_PORTS}"
        inputs = ["-device", f"qemu-xhci,id=usb,{ports}", "-device", "usb-kbd,bus=usb.0,port=1"]
        for port, pointer in enumerate(self.options.pointers, start=2):
            inputs += ["-device", f"usb-{pointer},id={pointer},bus=usb.0,port={port}"]
        return inputs


def _drive(interface: str, file: Path, *more: str) -> list[str]:
    return ["-drive", ",".join([f"if={interface},format=raw,file={escape(file)}", *more])]


def escape(path: Path) -> str:
    """A path inside a QEMU option list, where a comma is written twice."""
    return str(path).replace(",", ",,")


def _is_plain(picture: bytes) -> bool:
    pixels = picture.split(b"\n", 3)[3]
    return pixels == pixels[:3] * (len(pixels) // 3)
