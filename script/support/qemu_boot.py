"""What the emulated machine starts: the boot disk's files and the shell script that runs them."""

from __future__ import annotations

import re
from collections.abc import Mapping
from pathlib import Path

from support.failure import Failure
from support.qemu_disk import make_image

APPLICATION = "Boardscope.efi"
HOST = "ObvHost.efi"
SETUP = "ObvSetup.efi"
PROBE = "SystemProbe.efi"
DEMO_SENSORS = "ObvDemoSensors.efi"
# OVMF has no driver for USB pointers.
POINTER_DRIVERS = ("UsbMouseDxe.efi", "UsbTabletDxe.efi")
BOARD = "EFI/Boardscope/board.bin"
END_MARK = "boardscope ended with"

_GLOBAL_VARIABLES = "8be4df61-93ca-11d2-aa0d-00e098032b8c"
_ADDRESS = re.compile(re.escape(APPLICATION) + r" is at (0x[0-9A-Fa-f]+)")
_END = re.compile(END_MARK + r" (0x[0-9A-Fa-f]+)")


def set_language(language: str) -> str:
    """The shell command that makes `language` (RFC 4646, "de-DE") the platform's language."""
    if not re.fullmatch(r"[A-Za-z0-9-]{2,30}", language):
        raise Failure(f'"{language}" is not a language code; write it like "de-DE" or "zh-Hans".')
    # As bytes: the shell's own text form leaves out the terminating zero.
    value = (language.encode("ascii") + b"\0").hex().upper()
    return f"setvar PlatformLang -guid {_GLOBAL_VARIABLES} -bs -rt -nv =H{value}"


def driver_commands() -> list[str]:
    """The shell commands that go to the boot disk and start the drivers."""
    loads = [f"load {driver}" for driver in POINTER_DRIVERS]
    return ["@echo -off", "fs0:", *loads, "connect -r"]


def host_commands(language: str | None, host: str = HOST) -> list[str]:
    """The shell commands after which the application can be started."""
    commands = [] if language is None else [set_language(language)]
    return [*commands, f"load {host}"]


def setup_commands(language: str | None) -> list[str]:
    """The shell commands that load host and setup, and leave for the firmware's setup."""
    return [*host_commands(language), f"load {SETUP}", "cls", "exit"]


def run_commands(gdb: bool) -> list[str]:
    """The shell commands that start the application, and again after each key press."""
    return [
        "cls",
        "echo This screen stands for the setup utility.",
        ":again",
        f"{PROBE} debug {APPLICATION}" if gdb else APPLICATION,
        f"echo {END_MARK} %lasterror%",
        "echo Press Enter to open the board view again, or Q to stay in the shell.",
        "pause -q",
        "goto again",
    ]


def load_address(console: str) -> str | None:
    """Where the application lies, once it was loaded for gdb."""
    found = _ADDRESS.search(console)
    return found.group(1) if found else None


def end_status(console: str) -> int | None:
    """The application's status from the console's text, or None while it is still running."""
    found = _END.search(console)
    return int(found.group(1), 16) if found else None


def make_boot_disk(
    image: Path,
    programs: Path,
    commands: list[str],
    more: Mapping[str, Path | bytes] | None = None,
) -> None:
    """Write the boot disk: the EFI files of the folder `programs`, startup.nsh, and `more`."""
    files: dict[str, Path | bytes] = {
        program.name: program for program in sorted(programs.glob("*.efi"))
    }
    missing = [
        name for name in (APPLICATION, HOST, SETUP, PROBE, *POINTER_DRIVERS) if name not in files
    ]
    if missing:
        raise Failure(f"{', '.join(missing)} is missing in {programs}; run script/build.")
    files["startup.nsh"] = "\r\n".join([*commands, ""]).encode("ascii")
    make_image(image, {**files, **(more or {})})
