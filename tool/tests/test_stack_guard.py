"""An EFI image that does not check its stack is noticed, whichever library it is."""

import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "script"))

from support import stack_guard
from support.failure import Failure

VALUE = "   10:\tmov    0x200(%rip),%rax        # 400 <__stack_chk_guard>"
CALL = "   20:\tcall   30 <__stack_chk_fail>"
FUNCTIONS = [
    "_Z10KeypadReadP15_lv_indev_drv_t",
    "lv_draw_label",
    "TT_Load_Simple_Glyph.constprop.0",
]


def disassembly(guarded: list[str], value: str = VALUE) -> list[str]:
    lines = ["0000000000000030 <__stack_chk_fail>:", "   30:\tret"]
    for name in FUNCTIONS:
        lines.append(f"0000000000000010 <{name}>:")
        lines += [value, CALL] if name in guarded else ["   10:\tret"]
    return lines


def test_image_with_guards_passes() -> None:
    stack_guard.check_disassembly("Boardscope", disassembly(FUNCTIONS))


@pytest.mark.parametrize(
    ("name", "module"),
    list(zip(FUNCTIONS, ["Boardscope.inf", "Lvgl.inf", "FreeType.inf"], strict=True)),
)
def test_library_without_guards_is_named(name: str, module: str) -> None:
    others = [other for other in FUNCTIONS if other != name]
    with pytest.raises(Failure, match=f"does not check its stack.*{module}"):
        stack_guard.check_disassembly("Boardscope", disassembly(others))


def test_value_where_firmware_has_none() -> None:
    lines = disassembly(FUNCTIONS, "   10:\tmov    %fs:0x28,%rax")
    with pytest.raises(
        Failure, match="TT_Load_Simple_Glyph.* looks for the guard's value at %fs:0x28"
    ):
        stack_guard.check_disassembly("Boardscope", lines)


def test_data_that_reads_like_the_value_passes() -> None:
    lines = [*disassembly(FUNCTIONS), "0000000000000050 <kTable>:", "   50:\tmov    %fs:0x28,%rax"]
    stack_guard.check_disassembly("Boardscope", lines)


def test_an_entry_point_that_the_new_value_would_trip_is_named() -> None:
    lines = [*disassembly(FUNCTIONS), "0000000000000060 <_ModuleEntryPoint>:", VALUE, CALL]
    with pytest.raises(Failure, match="_ModuleEntryPoint checks its stack, though the guard's"):
        stack_guard.check_disassembly("Boardscope", lines)
