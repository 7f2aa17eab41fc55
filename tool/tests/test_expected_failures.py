"""What must not build or pass the checks does not: the checks themselves are alive."""

import shutil
import subprocess
import sys
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "script"))

from support import hygiene, paths, rooms

CONTRACT = ("ObvComponent.h", "ObvConfig.h", "ObvProtocol.h", "VeltSetupEventHandler.h")


def compile_contract(include: Path, header: str) -> subprocess.CompletedProcess[str]:
    """Compiles one header of the contract as a host in C would."""
    edk2 = paths.edk2_dir() / "MdePkg" / "Include"
    command = ["gcc", "-fsyntax-only", "-fshort-wchar", "-x", "c", "-"]
    command += [f"-I{include}", f"-I{edk2}", f"-I{edk2 / 'X64'}"]
    text = f"#include <Uefi.h>\n#include <Protocol/{header}>\n"
    return subprocess.run(command, input=text, capture_output=True, text=True)


@pytest.mark.parametrize("header", CONTRACT)
def test_contract_compiles(header: str) -> None:
    done = compile_contract(ROOT / "include", header)
    assert done.returncode == 0, done.stderr


@pytest.mark.parametrize("header", CONTRACT)
def test_shifted_field_does_not_compile(tmp_path: Path, header: str) -> None:
    include = tmp_path / "include"
    shutil.copytree(ROOT / "include", include)
    file = include / "Protocol" / header
    before, last, after = file.read_text().rpartition("struct ")
    assert last
    file.write_text(before + last + after.replace("{", "{\n  UINT8    Stray;", 1))
    done = compile_contract(include, header)
    assert done.returncode != 0
    assert "must be at" in done.stderr or "must have a size" in done.stderr


def test_source_listed_twice_is_refused(tmp_path: Path) -> None:
    (tmp_path / "A.cpp").touch()
    inf = tmp_path / "A.inf"
    inf.write_text("[Sources]\n  A.cpp\n")
    assert hygiene.source_problems(inf, "A.inf") == []
    inf.write_text("[Sources]\n  A.cpp\n  A.cpp\n")
    assert hygiene.source_problems(inf, "A.inf") == ["A.inf lists A.cpp more than once."]


def test_second_list_of_sources_is_refused(tmp_path: Path) -> None:
    cmake = tmp_path / "Other.cmake"
    cmake.write_text("add_library(other ${PROJECT_SOURCE_DIR}/view/Jump.cpp)\n")
    assert hygiene.second_listings(cmake, "Other.cmake") == [
        "Other.cmake:1 lists ${PROJECT_SOURCE_DIR}/view/Jump.cpp; sources stand in "
        "Boardscope.inf alone."
    ]
    cmake.write_text("add_library(other ${PROJECT_SOURCE_DIR}/test/unit/view/JumpTest.cpp)\n")
    assert hygiene.second_listings(cmake, "Other.cmake") == []


def test_include_that_climbs_is_refused(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(paths, "CLONE", tmp_path)
    file = tmp_path / "platform" / "Pointer.cpp"
    file.parent.mkdir()
    file.write_text('#include "view/Look.h"\n')
    assert rooms.problems([file]) == [
        "platform/Pointer.cpp includes view/Look.h: view stands above platform."
    ]
    file.write_text('#include "app/base/Run.h"\n')
    assert rooms.problems([file]) == []
