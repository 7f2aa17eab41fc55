"""The firmware of the system tests that watches over memory: the distribution's OVMF, in which the
modules that set up memory are built anew with every guard of EDK2 on."""

import hashlib
import uuid
from pathlib import Path

from support import edk2, firmware, paths
from support.failure import Failure
from support.flash_image import Kind, Section, make_file, replace
from support.storing import checksum, exclusive, is_current, locked, put

PLATFORM = Path("test/system/uefi/guarded/Guarded.dsc")
# The modules of this one are all for X64; the larger ones of Debian begin in 32 bits.
ORIGINAL = Path("/usr/share/OVMF/OVMF_CODE.fd")
VARIABLES = Path("/usr/share/OVMF/OVMF_VARS.fd")
_TARGET = "RELEASE"
_FILE = "OVMF_CODE.guarded.fd"
_MODULES = {
    "DxeIpl": (Kind.PEIM, Section.PEI_DEPEX, "86d70125-baa3-4296-a62f-602bebbb9081"),
    "DxeCore": (Kind.DXE_CORE, None, "d6a2cb7f-6a18-4e2f-b43b-9920a733700a"),
    "CpuDxe": (Kind.DRIVER, Section.DXE_DEPEX, "1a1e4886-9517-440e-9fde-3be44cee2136"),
}


def image() -> Path:
    """The firmware's flash image, once it was made."""
    return paths.cache() / "guarded" / _FILE


def make() -> None:
    """Brings the firmware into the cache, unless it is there."""
    if not ORIGINAL.exists():
        raise Failure("OVMF is not installed; run script/fetch.")
    stamp = _stamp()
    with locked():
        if not is_current(image().parent, stamp):
            put(image().parent, stamp, _make)


def _stamp() -> str:
    """What goes into the image: a change of any of it makes another."""
    support = paths.CLONE / "script" / "support"
    recipe = [paths.CLONE / PLATFORM, support / "flash_image.py", support / "guarded.py"]
    digest = hashlib.sha256("".join(map(checksum, [*recipe, ORIGINAL])).encode()).hexdigest()
    return f"{edk2.STAMP}{paths.override('EDK2_DIR') or ''}\n{digest}\n"


def _make(scratch: Path) -> Path:
    with exclusive(paths.BUILD / "workspace", "is building the EFI files"):
        firmware.make_workspace()
        what = "Building the guards of the system tests' firmware"
        firmware.run_edk2(what, f"Boardscope/{PLATFORM}", _TARGET)
        modules = {uuid.UUID(name[2]): _module(module) for module, name in _MODULES.items()}
    made = scratch / "guarded"
    made.mkdir()
    (made / _FILE).write_bytes(replace(ORIGINAL.read_bytes(), modules))
    return made


def _module(name: str) -> bytes:
    kind, conditions, identity = _MODULES[name]
    output = firmware.output_folder(_TARGET, PLATFORM.stem)
    sections = {Section.PE32: (output / f"{name}.efi").read_bytes()}
    if conditions is not None:
        (found,) = output.glob(f"**/OUTPUT/{name}.depex")
        sections = {conditions: found.read_bytes(), **sections}
    return make_file(uuid.UUID(identity), kind, sections)
