"""The Debian packages that each purpose needs, and their installation."""

import os
import shutil
import subprocess
from collections.abc import Iterable

from support.failure import Failure
from support.running import run, say

FIRMWARE = ("acpica-tools", "dpkg-dev", "g++", "gcc", "make", "nasm", "uuid-dev")
PYTHON = ("python3-pip", "python3-venv")
FONTS = ("fonts-droid-fallback", "fonts-open-sans")
# What the view of a board for its author is built with.
VIEW = (
    "ccache",
    "cmake",
    "g++",
    "gcc",
    "libcli11-dev",
    "libdecor-0-plugin-1-cairo",  # Title and frame of a window on Wayland.
    "libpng-dev",
    "libsdl2-dev",
    "libsdl2-ttf-dev",
    "nasm",
    "ninja-build",
    "nlohmann-json3-dev",
    "pkg-config",
)
NATIVE = (
    "fonts-dejavu-core",  # The test host's font.
    "gcovr",
    "libgmock-dev",
    "libgtest-dev",
    "weston",
    "xdotool",  # A hand on the virtual desktop.
    "xvfb",
    *VIEW,
)

PACKAGES: dict[str, tuple[str, ...]] = {
    "python": PYTHON,
    # LVGL and FreeType for a platform's own build of the package, and nothing else.
    "sources": (),
    # EFI files: the application, the reference host, the pointer drivers for tests.
    "build": (*FIRMWARE, *FONTS, *PYTHON),
    # The same with the other compiler that EDK2 has.
    "clang": (*FIRMWARE, *FONTS, *PYTHON, "clang", "lld", "llvm"),
    # The application on the development machine, against the fake firmware.
    "native": (*NATIVE, *FIRMWARE, *FONTS, *PYTHON),
    "view": (*VIEW, *FIRMWARE, *FONTS, *PYTHON),
    # QEMU and the disks that it boots from.
    "system": (
        "dosfstools",
        "mtools",
        "openssl",
        "ovmf",
        "qemu-system-x86",
        "sbsigntool",
        *PYTHON,
    ),
    # The page on which boards are described, and a browser that tests it.
    "page": PYTHON,
    "browser": ("chromium", "chromium-driver", *FONTS),
    # QEMU's window on a desktop.
    "window": ("qemu-system-gui",),
    "bench": (
        *NATIVE,
        "libopencv-imgproc-dev",
        "libpixman-1-dev",
        "libspng-dev",
        "libyuv-dev",
        "pkg-config",
    ),
    "fuzz": (*NATIVE, "clang", "libclang-rt-dev"),
    "valgrind": (*NATIVE, "valgrind"),
    "check": ("clang", "clang-format", "clang-tidy", "universal-ctags", *PYTHON),
    # Regenerating the committed pictures and the built-in font.
    "art": ("fonts-dejavu-core", "fonts-noto-core", "povray"),
}


def install(purposes: Iterable[str]) -> None:
    """Installs what the purposes need and the machine has not; silent when nothing is missing."""
    wanted = sorted({package for purpose in purposes for package in PACKAGES[purpose]})
    install_packages(wanted)


def install_packages(wanted: list[str]) -> None:
    """Installs the packages of a list that are missing."""
    if not wanted:
        return
    if shutil.which("dpkg-query") is None:
        raise Failure(
            "this machine has no dpkg, so packages can't be installed here. Use Debian 12 "
            f"(bookworm) or one of its relatives. Needed are: {' '.join(wanted)}"
        )
    missing = [package for package in wanted if package not in _installed(wanted)]
    if not missing:
        return
    say(f"Missing Debian packages: {' '.join(missing)}")
    apt = [*_become_root(missing), "apt-get", "-o", "DPkg::Lock::Timeout=600"]
    hint = "Is the network up, and are Debian's package sources set up? Then run this again."
    run("Updating the list of Debian packages", [*apt, "update"], hint=hint)
    run(
        f"Installing {len(missing)} Debian packages",
        [*apt, "install", "--yes", "--no-install-recommends", *missing],
        hint=hint,
    )


def _installed(names: list[str]) -> set[str]:
    query = subprocess.run(
        ["dpkg-query", "-W", "-f=${db:Status-Status} ${Package}\\n", *names],
        capture_output=True,
        text=True,
        check=False,  # It fails when one of the names is unknown and still lists the others.
    )
    rows = (line.split() for line in query.stdout.splitlines())
    return {row[1] for row in rows if len(row) == 2 and row[0] == "installed"}


def _become_root(missing: list[str]) -> list[str]:
    # Through env, as sudo drops the variables of its caller.
    environment = ["env", "DEBIAN_FRONTEND=noninteractive"]
    if os.geteuid() == 0:
        return environment
    if shutil.which("sudo") is None:
        raise Failure(
            "packages are missing, and you are neither root nor is there sudo. As root, run: "
            f"apt-get install {' '.join(missing)}"
        )
    return ["sudo", *environment]
