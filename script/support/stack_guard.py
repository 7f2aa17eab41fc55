"""Whether the code of an EFI image checks its stack, read from the image's symbol file."""

import re
from collections.abc import Iterable
from pathlib import Path

from support.failure import Failure
from support.running import run

HANDLER = "__stack_chk_fail"
# Where the compiler takes the value from unless told otherwise. Firmware has nothing there.
THREAD_VALUE = "%fs:0x28"

# Where firmware enters an image, in EDK2's code: the guard gets its value below.
ENTRIES = {"_ModuleEntryPoint", "ProcessModuleEntryPointList"}

FUNCTION = re.compile(r"^[0-9a-f]+ <(\S+)>:$")
OPTIONS = "-fstack-protector-strong -mstack-protector-guard=global"

# By image: one function of each library in it that has to be guarded whatever the compiler makes of
# it, as it hands out the address of something on its stack. Named as the linker names it.
GUARDED = {
    "Boardscope": {
        "Boardscope.inf": "_Z10KeypadRead",
        "third_party/lvgl/Lvgl.inf": "lv_draw_label",
        "third_party/freetype/FreeType.inf": "TT_Load_Simple_Glyph",
    },
    "ObvHost": {"host/ObvHost.inf": "_ZN8obv_host14HostDebugPrint"},
    "BoardscopeInventory": {
        "host/inventory/BoardscopeInventory.inf": "_ZN8obv_host8TellFact",
    },
    "BoardscopeHostCheck": {
        "hostcheck/BoardscopeHostCheck.inf": "_ZN9hostcheck10CheckColor",
        "third_party/lvgl/Lvgl.inf": "lv_img_decoder_built_in_info",
        "third_party/freetype/FreeType.inf": "TT_Load_Simple_Glyph",
    },
    "ObvSetup": {"setup/ObvSetup.inf": "_ZN9obv_setup12LoadSettings"},
}


def check(symbols: Path) -> None:
    """Raises a Failure when an image that ships does not check its stack."""
    text = run(
        f"Looking for the stack guard in {symbols.stem}.efi",
        ["objdump", "--disassemble", "--no-show-raw-insn", symbols],
    )
    check_disassembly(symbols.stem, text.splitlines())


def check_disassembly(image: str, lines: Iterable[str]) -> None:
    """The same for a disassembly as objdump prints it."""
    guarded = set()
    foreign = set()
    function = ""
    for line in lines:
        if start := FUNCTION.match(line):
            function = start.group(1)
        elif f"<{HANDLER}>" in line:
            guarded.add(function)
        elif THREAD_VALUE in line:
            foreign.add(function)
    for module, name in GUARDED[image].items():
        if not any(found.startswith(name) for found in guarded):
            raise Failure(
                f"{image}.efi: {name} does not check its stack before it returns. {module} has to "
                f"be compiled with {OPTIONS}."
            )
    for name in sorted(guarded & ENTRIES):
        raise Failure(
            f"{image}.efi: {name} checks its stack, though the guard's value changes under it. "
            "Keep the module's own entry point out of it, with noinline."
        )
    # Data among the code may read like anything, but it calls no handler.
    for name in sorted(guarded & foreign):
        raise Failure(
            f"{image}.efi: {name} looks for the guard's value at {THREAD_VALUE}, where firmware "
            f"has none. Compile with {OPTIONS}."
        )
