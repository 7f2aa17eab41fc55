"""EDK2 2022.11 from Debian's source package, with Debian's patches, and its BaseTools."""

import os
import subprocess
from pathlib import Path

from support import paths
from support.failure import Failure
from support.running import run, say
from support.storing import is_current, put, verify

# Debian's revision is not pinned: older ones disappear with each security update. The tarball of
# the release stays the same.
UPSTREAM = "edk2_2022.11.orig.tar.xz"
UPSTREAM_SHA256 = "64257dd8a2778c969b8a869cd3b6eda2db2a346bfcf24dc729859745968f1fd6"
STAMP = f"{UPSTREAM} {UPSTREAM_SHA256} basetools\n"
GENFW = Path("BaseTools/Source/C/bin/GenFw")
NETWORK_HINT = "Is the network up? Then run this again."


def fetch() -> None:
    """Brings EDK2 into the cache and builds its tools, unless they are there or replaced."""
    replaced = paths.override("EDK2_DIR")
    if replaced is not None:
        if not (replaced / GENFW).is_file():
            raise Failure(
                f"EDK2_DIR names {replaced}, where BaseTools is not built. Build it with: "
                f"make -C {replaced}/BaseTools"
            )
        return
    folder = paths.cache() / "edk2"
    if not is_current(folder, STAMP):
        put(folder, STAMP, _make)
        say("EDK2 2022.11 is ready")


def _make(scratch: Path) -> Path:
    downloads = scratch / "downloads"
    downloads.mkdir()
    apt = _private_apt(scratch)
    run("Reading Debian's list of source packages", [*apt, "update"], hint=NETWORK_HINT)
    run(
        "Downloading the source of EDK2 (17 MB)",
        [*apt, "source", "--download-only", "edk2"],
        cwd=downloads,
        hint=NETWORK_HINT,
    )
    upstream = downloads / UPSTREAM
    descriptions = list(downloads.glob("*.dsc"))
    if not upstream.is_file() or len(descriptions) != 1:
        raise Failure(
            f"Debian's source package edk2 did not bring {UPSTREAM}. This project is built with "
            "the EDK2 of Debian 12 (bookworm); elsewhere, set EDK2_DIR to a tree of that release."
        )
    verify(upstream, UPSTREAM_SHA256)
    tree = scratch / "tree"
    run("Unpacking EDK2", ["dpkg-source", "--no-check", "-x", descriptions[0], tree])
    # Make would pick up the settings of an EDK2 shell that this was started from.
    clean = {name: "" for name in ("WORKSPACE", "EDK_TOOLS_PATH", "CONF_PATH", "MAKEFLAGS")}
    jobs = f"-j{os.cpu_count() or 1}"
    tools: list[str | Path] = ["make", "-C", tree / "BaseTools/Source/C", jobs]
    run("Building EDK2's BaseTools", tools, environment=clean)
    return tree


def _private_apt(scratch: Path) -> list[str]:
    """An apt-get that sees source packages, without touching how the machine is set up."""
    for folder in ("lists/partial", "cache/archives/partial"):
        (scratch / folder).mkdir(parents=True)
    (scratch / "sources.list").write_text("".join(_source_lines()))
    options = {
        "Dir::Etc::SourceList": scratch / "sources.list",
        "Dir::Etc::SourceParts": "/dev/null",
        "Dir::State::Lists": scratch / "lists",
        "Dir::Cache": scratch / "cache",
        "Acquire::Languages": "none",
        # Apt's own user may not reach a folder in a home.
        "APT::Sandbox::User": "root",
    }
    return ["apt-get", *(f"-o{name}={value}" for name, value in options.items())]


def _source_lines() -> list[str]:
    """The machine's binary package sources of Debian, as source package sources."""
    fields = "$(REPO_URI)|$(CODENAME)|$(COMPONENT)|$(ORIGIN)|$(SIGNED_BY)"
    listed = subprocess.run(
        ["apt-get", "indextargets", "--format", fields, "Created-By: Packages"],
        capture_output=True,
        text=True,
        check=False,
    )
    lines = set()
    for row in listed.stdout.splitlines():
        uri, codename, component, origin, signed_by = row.split("|")
        if origin == "Debian":
            key = "" if signed_by.startswith("$") or not signed_by else signed_by
            option = f"[signed-by={key}] " if key else ""
            lines.add(f"deb-src {option}{uri} {codename} {component}\n")
    if not lines:
        raise Failure("apt knows no package source of Debian. Set one up, run apt-get update.")
    return sorted(lines)
