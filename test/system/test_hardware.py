"""The demo machine's hardware, as the host tells of it, against what QEMU was given."""

import re
from collections.abc import Iterator

import pytest
import yaml

from computer import PATIENCE, Computer, boot
from conftest import CLONE, FOLDER, programs
from support.qemu_boot import DEMO_SENSORS, HOST, SETUP
from support.qemu_disk import read_file
from support.qemu_hardware import BRAND, LAN_ADDRESS, Stick, demo_options
from test_pointer import tablet_to

Told = dict[str, tuple[str, dict[str, str]]]

# Where a stick is plugged in while the view is up.
SOCKET = "U32G1_34"
SIZE = (1920, 1080)
INVENTORY = "inventory.yaml"
# Names that stand for what the inventory lists by its designation.
IN_OTHER_WORDS = {("processor", "boot"), ("memory-total", "all")}


@pytest.fixture(scope="module")
def demo() -> Iterator[Computer]:
    """The computer of script/run, its host loaded and no view shown yet."""
    folder = FOLDER / "demo"
    with boot(folder, programs(), hardware=demo_options(folder)) as computer:
        computer.load(DEMO_SENSORS)
        yield computer


@pytest.fixture(scope="module")
def cycled(demo: Computer) -> str:
    """What loading and unloading host and setup twice leaves behind."""
    return demo.probe("cycle", HOST, SETUP)


@pytest.fixture(scope="module")
def told(demo: Computer, cycled: str) -> Told:
    assert cycled
    demo.load_host()
    return ask(demo)


def ask(computer: Computer) -> Told:
    """What the host answers for each component: status and lines by their labels."""
    first = len(computer.machine.log_lines())
    computer.probe("states")
    found: Told = {}
    lines: dict[str, str] = {}
    for line in computer.machine.log_lines()[first:]:
        if line.startswith("[Probe] state "):
            name, _, status = line.removeprefix("[Probe] state ").partition(": ")
            lines = {}
            found[name] = (status, lines)
        elif line.startswith("[Probe] line "):
            label, _, value = line.removeprefix("[Probe] line ").partition(": ")
            lines[label] = value
    assert found, "The host told of no component."
    return found


def test_unloading_host_and_setup_leaves_nothing_behind(cycled: str) -> None:
    found = re.search(r"handles (\d+) (\d+), pages (\d+) (\d+)", cycled)
    assert found, cycled
    handles_before, handles_after, pages_before, pages_after = map(int, found.groups())
    assert handles_after == handles_before
    assert pages_after == pages_before


def test_the_processor_is_the_one_that_the_machine_has(told: Told) -> None:
    status, lines = told["CPU"]
    assert status == "Success"
    assert lines["Brand"] == BRAND
    assert lines["Speed"] == "3800 MHz"
    assert lines["Cores"] == "8"
    assert lines["Threads"] == "16"


def test_memory_stands_in_two_of_four_slots(told: Told) -> None:
    assert [told[f"DIMM_{name}"][0] for name in ("A1", "A2", "B1", "B2")] == [
        "Not Found",
        "Success",
        "Not Found",
        "Success",
    ]
    assert told["DIMM_A2"][1]["Size"] == "16 GB"
    assert told["DIMM_B2"][1]["Size"] == "8 GB"
    assert told["DIMM_B2"][1]["Part number"] == "BS56-8G-A"
    assert told["MEMORY"][1]["Total Memory"] == "24 GB"
    assert told["MEMORY"][1]["Frequency"] == "5600 MT/s"


def test_a_card_behind_a_root_port_is_told(told: Told) -> None:
    status, lines = told["PCIEX16_1"]
    assert status == "Success"
    assert "8086:10D3" in " ".join(lines.values()).upper()
    assert told["PCIEX1_1"][0] == "Not Found"
    assert told["M2_WIFI"][0] == "Not Found"


def test_a_slot_that_needs_another_processor_is_unavailable(told: Told) -> None:
    assert told["PCIEX16_2"][0] == "No mapping"


def test_disks_tell_model_serial_and_capacity(told: Told) -> None:
    status, lines = told["M2_1"]
    assert status == "Success"
    assert lines["Serial number"] == "BS-NVME-0001"
    assert lines["Capacity"] == "1 TB"
    status, lines = told["SATA6G_1"]
    assert status == "Success"
    assert (lines["Model"], lines["Serial number"]) == ("BS SSD 500GB", "BS-SSD-0001")
    assert lines["Capacity"] == "500 GB"
    assert told["SATA6G_2"][0] == "Success"
    assert told["SATA6G_3"][0] == "Not Found"
    assert told["M2_3"][0] == "Not Found"


def test_a_failing_disk_says_so_in_words(told: Told) -> None:
    status, lines = told["M2_2"]
    assert status == "Device Error"
    assert "spare" in lines["Health"].lower()


def test_a_hub_tells_what_hangs_on_it(told: Told) -> None:
    status, lines = told["USB_89"]
    assert status == "Success"
    assert "QEMU USB HARDDRIVE" in " ".join(lines.values()).upper()


def test_the_network_port_tells_its_address_and_its_link(told: Told) -> None:
    status, lines = told["LAN"]
    assert status == "Success"
    assert lines["MAC address"].lower() == LAN_ADDRESS
    assert lines["Connection"] == "Connected"


def test_fans_and_probes_tell_what_the_tables_say(told: Told) -> None:
    assert told["SYS_FAN1"][0] == "Success"
    assert told["SYS_FAN2"][0] == "Device Error"
    assert told["SYS_FAN3"][0] == "Not Found"
    assert told["CHIPSET"][0] == "Success"
    assert told["CPU_FAN"][0] == "Success"
    assert told["CPU_FAN"][1]["Speed"].endswith(" RPM")


def test_a_question_is_answered_within_a_millisecond(demo: Computer, told: Told) -> None:
    """Once everything was read; emulated, which is slower than any PC."""
    line = next(line for line in demo.machine.log_lines() if "[Probe] slowest" in line)
    assert int(line.split()[-2]) < 1000, line


def test_the_inventory_names_what_the_board_names(demo: Computer, told: Told) -> None:
    """In the very form that a description takes, so that a line can be copied."""
    demo.run("BoardscopeInventory.efi")
    written = yaml.safe_load(read_file(demo.machine.options.esp, INVENTORY))
    found = {(kind, str(name)) for entry in written["hardware"] for kind, name in entry.items()}
    board = yaml.safe_load((CLONE / "assets" / "board" / "board.yaml").read_text("ascii"))
    present = [c for c in board["components"] if told[c["name"]][0] == "Success"]
    checked = 0
    for component in present:
        names = {
            as_found(kind, name)
            for one in component.get("hardware", [])
            for kind, name in one.items()
        }
        if names and not names & IN_OTHER_WORDS:
            assert names & found, component["name"]
            checked += 1
    assert checked > 10


def as_found(kind: str, name: str) -> tuple[str, str]:
    """How the inventory has it: memory with its bank, a disk by its controller."""
    if kind == "memory":
        return kind, str({"locator": name, "bank": f"Channel {name[5]}"})
    return kind, f"{name}/Pci(0x0,0x0)" if kind == "nvme" else name


def test_a_stick_comes_and_goes_while_the_view_is_up(demo: Computer, told: Told) -> None:
    assert told[SOCKET][0] == "Not Found"
    stick = Stick(demo.machine)
    socket = next(one for one in demo.components() if one.name == SOCKET)
    width, height = SIZE
    panel = (width * 3 // 4, 0, width, height)
    with demo.visit(SIZE) as visit:
        visit.open()
        # Its panel stands beside the board while the pointer is on its callout.
        tablet_to(visit, socket.callout_point)
        empty = visit.picture()
        for _ in range(2):
            stick.plug_in()
            demo.machine.wait_for(
                lambda: visit.picture().differs_at(empty, panel), "the panel to tell", PATIENCE
            )
            assert visit.picture().differs_at(empty, (0, 0, width * 3 // 4, height)), "no dot"
            stick.pull_out()
            demo.machine.wait_for(
                lambda: visit.picture() == empty, "dot and panel to tell of nothing", PATIENCE
            )
        visit.leave()
        visit.assert_setup_is_back()
    assert visit.status == 0
