"""The server behind the page: who may ask, what it answers, and what it writes."""

import json
import os
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import httpx2 as httpx
import pytest
from PIL import Image
from starlette.testclient import TestClient

from boardtool.edit import app, files
from boardtool.edit.app import Editor
from boardtool.edit.guard import MOST_BYTES
from boardtool.edit.live import View
from boardtool.reading import read_board
from conftest import BOARD, MakeBoard

TOKEN = "a-token-for-tests"
PORT = 4711


def client_of(folder: Path) -> TestClient:
    guarded = Editor(folder, View()).application(TOKEN, PORT)
    return TestClient(guarded, base_url=f"http://127.0.0.1:{PORT}/{TOKEN}/")


@pytest.fixture
def folder(make_board: MakeBoard) -> Path:
    return make_board().parent


@pytest.fixture
def client(folder: Path) -> TestClient:
    return client_of(folder)


def loaded(client: TestClient) -> dict[str, Any]:
    answer = client.get("board")
    assert answer.status_code == 200
    fields = answer.json()
    return {"key": fields["key"], "document": fields["document"]}


def said(answer: httpx.Response) -> str:
    return str(answer.json()["error"])


def test_the_board_comes_with_limits_and_pictures(client: TestClient) -> None:
    answer = client.get("board").json()
    assert answer["document"]["components"][0]["name"] == "FAN 1"
    assert answer["document"]["components"][0]["origin"] == 0
    assert answer["limits"]["NAME"] == 19
    assert answer["pictures"] == [{"name": "board.png", "size": [64, 48]}]


def test_a_picture_that_lies_deeper_comes_with_its_size(folder: Path, client: TestClient) -> None:
    (folder / "pictures").mkdir()
    (folder / "board.png").rename(folder / "pictures" / "board.png")
    (folder / "board.yaml").write_text(BOARD.replace("board.png", "pictures/board.png"))
    name = "pictures/board.png"
    assert client.get("board").json()["pictures"] == [{"name": name, "size": [64, 48]}]
    assert client.get(f"pictures/{name}").headers["content-type"] == "image/png"


def test_old_texts_are_forgotten(folder: Path, client: TestClient) -> None:
    ask = loaded(client)
    for number in range(app.MOST_GIVEN):
        (folder / "board.yaml").write_text(f"{BOARD}# {number}\n")
        loaded(client)
    assert "load it again" in said(client.post("check", json=ask))


def test_the_page_holds_the_libraries_addresses(client: TestClient) -> None:
    answer = client.get("")
    policy = answer.headers["content-security-policy"]
    assert files.import_map() in answer.text
    assert files.import_map_hash() in policy
    assert "default-src 'none'" in policy and "http" not in policy
    assert client.get("main.js").headers["content-type"].startswith("text/javascript")


@pytest.mark.parametrize(
    ("address", "headers", "sentence"),
    [
        ("/another-token/board", {}, "wrong token"),
        ("/", {}, "wrong token"),
        (f"/{TOKEN}x/board", {}, "wrong token"),
        (f"/{TOKEN}/board", {"Host": "board.example"}, "not called 'board.example'"),
        (f"/{TOKEN}/board", {"Host": "127.0.0.1:80"}, "not called"),
        (f"/{TOKEN}/board", {"Origin": "http://board.example"}, "another page"),
        (f"/{TOKEN}/board", {"Origin": "null"}, "another page"),
    ],
)
def test_strangers_are_refused(
    client: TestClient, address: str, headers: dict[str, str], sentence: str
) -> None:
    for method in ("GET", "POST", "PUT"):
        url = f"http://127.0.0.1:{PORT}{address}"
        answer = client.request(method, url, headers=headers)
        assert answer.status_code == 403
        assert sentence in said(answer)


@pytest.mark.parametrize(
    "name", ["../secret.png", "%2e%2e/secret.png", "link.png", "a/../../secret.png", "%00.png"]
)
def test_pictures_outside_the_folder_are_out_of_reach(
    folder: Path, client: TestClient, name: str
) -> None:
    Image.new("RGB", (4, 4)).save(folder.parent / "secret.png")
    os.symlink(folder.parent / "secret.png", folder / "link.png")
    answer = client.get(f"http://127.0.0.1:{PORT}/{TOKEN}/pictures/{name}")
    assert answer.status_code in (403, 404)
    assert answer.headers["content-type"] == "application/json"
    ask = loaded(client)
    ask["document"]["picture"] = "../secret.png"
    for what in ("check", "save", "view"):
        assert "outside the folder" in said(client.post(what, json=ask))


def test_only_the_table_of_files_is_served(client: TestClient) -> None:
    for name in ("board.yaml", "server.py", "%2e%2e/boardtool/limits.py", "%2fetc%2fpasswd"):
        answer = client.get(f"http://127.0.0.1:{PORT}/{TOKEN}/{name}")
        assert (answer.status_code, answer.headers["content-type"]) == (404, "application/json")


def test_a_body_that_is_too_large_is_not_read(client: TestClient) -> None:
    def endless() -> Iterator[bytes]:
        for _ in range(MOST_BYTES // 1_000_000 + 2):
            yield b"x" * 1_000_000

    told = client.post("check", content=b"", headers={"Content-Length": "100000000"})
    for answer in (told, client.post("check", content=endless())):
        assert answer.status_code == 413
        assert said(answer) == "that is too large: at most 32 MB are taken"


@pytest.mark.parametrize("body", ["", "[", "[]", "{}", '{"key": 1, "document": {}}', "[" * 100_000])
def test_nonsense_gets_an_answer(client: TestClient, body: str) -> None:
    assert client.post("check", content=body).status_code == 400


def test_a_document_of_nonsense_gets_an_answer(client: TestClient) -> None:
    ask = loaded(client)
    spoilt: list[Any] = [[1], [{"origin": 99}], [{"origin": "x"}], {"a": 1}, None, [{"name": {}}]]
    for components in spoilt:
        answer = client.post("check", json=ask | {"document": {"components": components}})
        assert answer.status_code in (200, 400)


def test_the_check_says_what_the_command_says(client: TestClient) -> None:
    ask = loaded(client)
    ask["document"]["components"][0] |= {"category": "fans", "outline": [[1, 1], [2, 2]]}
    problems = client.post("check", json=ask).json()["problems"]
    assert [(one["component"], one["field"]) for one in problems] == [
        (0, "category"),
        (0, "outline"),
    ]
    assert "did you mean 'fan'?" in problems[0]["text"]


def test_saving_changes_only_what_was_changed(folder: Path, client: TestClient) -> None:
    (folder / "board.yaml").write_text(BOARD.replace("category: fan", "category: fan  # mine"))
    (folder / "board.yaml").chmod(0o640)
    ask = loaded(client)
    ask["document"]["components"][0]["marker"] = [12, 13]
    answer = client.post("save", json=ask)
    assert answer.status_code == 200
    text = BOARD.replace("category: fan", "category: fan  # mine")
    assert (folder / "board.yaml").read_text() == text.replace("[11, 11]", "[12, 13]")
    assert (folder / "board.yaml").stat().st_mode & 0o777 == 0o640
    assert sorted(path.name for path in folder.iterdir()) == ["board.png", "board.yaml"]
    # What was saved is what goes on.
    ask = {"key": answer.json()["key"], "document": answer.json()["document"]}
    ask["document"]["components"][0]["marker"] = [14, 15]
    assert client.post("save", json=ask).status_code == 200
    assert "[14, 15]" in (folder / "board.yaml").read_text()


def test_what_changed_on_the_disk_is_not_overwritten(folder: Path, client: TestClient) -> None:
    ask = loaded(client)
    ask["document"]["board"] = "Mine"
    theirs = BOARD.replace("Bench", "Theirs")
    (folder / "board.yaml").write_text(theirs)
    answer = client.post("save", json=ask)
    assert answer.status_code == 409
    conflict = answer.json()
    assert (conflict["disk"], "Mine" in conflict["mine"]) == (theirs, True)
    assert (folder / "board.yaml").read_text() == theirs
    # Seen and decided: but only over what was seen.
    (folder / "board.yaml").write_text(theirs + "# more\n")
    again = client.post("save", json=ask | {"instead": conflict["seen"]})
    assert again.status_code == 409
    last = client.post("save", json=ask | {"instead": again.json()["seen"]})
    assert last.status_code == 200
    assert (folder / "board.yaml").read_text() == conflict["mine"]


def test_a_failed_write_leaves_the_file(
    folder: Path, client: TestClient, monkeypatch: pytest.MonkeyPatch
) -> None:
    ask = loaded(client)
    ask["document"]["board"] = "Mine"

    def fail(handle: int) -> None:
        raise OSError(28, "No space left on device", "board.yaml")

    monkeypatch.setattr(os, "fsync", fail)
    answer = client.post("save", json=ask)
    assert (answer.status_code, said(answer)) == (500, "board.yaml: No space left on device")
    assert (folder / "board.yaml").read_text() == BOARD
    assert sorted(path.name for path in folder.iterdir()) == ["board.png", "board.yaml"]


def test_a_board_begins_with_a_picture(folder: Path, client: TestClient) -> None:
    (folder / "board.yaml").unlink()
    assert "document" not in client.get("board").json()
    first = client.post("first", json={"picture": "board.png"}).json()
    assert not (folder / "board.yaml").exists()
    component = {
        "name": "FAN",
        "category": "fan",
        "outline": [[1, 1], [9, 1], [9, 9]],
        "leader": [[5, 5]],
        "callout": "left",
        "marker": [5, 5],
        "origin": None,
    }
    first["document"]["components"] = [component]
    assert client.post("save", json=first).status_code == 200
    board = read_board(folder / "board.yaml")
    assert [one.name for one in board.components] == ["FAN"]
    # Somebody else may have begun meanwhile.
    assert client.post("save", json=first).status_code == 409


@pytest.mark.parametrize(
    ("text", "sentence"),
    [
        ("a: [", "not YAML"),
        ("a: &x 1\nb: *x\n", "anchors"),
        (BOARD.replace("outline: [[10, 10]", "outline: [[ten, 10]"), "before these are mended"),
        ("", "before these are mended"),
    ],
)
def test_what_cannot_be_shown_says_why(
    folder: Path, client: TestClient, text: str, sentence: str
) -> None:
    (folder / "board.yaml").write_text(text)
    answer = client.get("board").json()
    assert sentence in answer["unfit"]
    assert answer["problems"]


INVENTORY = """\
hardware:
  # Model BS SSD 500GB, Capacity 500 GB
  - sata: "PciRoot(0x0)/Pci(0x1F,0x2)/Sata(0x0,0xFFFF,0x0)"
  # Kingston
  # 8 GB
  - memory: {locator: DIMM, bank: A}
  - slot: "J1"
"""


def test_an_inventory_is_a_list_to_choose_from(client: TestClient) -> None:
    found = client.post("inventory", content=INVENTORY.encode()).json()["hardware"]
    assert [one["kind"] for one in found] == ["sata", "memory", "slot"]
    assert found[1] == {
        "kind": "memory",
        "name": {"locator": "DIMM", "bank": "A"},
        "about": "Kingston 8 GB",
    }
    assert found[2]["about"] == ""
    for text in (b"a: [", b"", b"- x", b"\xff\x00"):
        assert client.post("inventory", content=text).status_code == 422


def test_a_dropped_picture_goes_into_the_folder_once(folder: Path, client: TestClient) -> None:
    data = (folder / "board.png").read_bytes()
    answer = client.put("pictures/other.png", content=data).json()
    assert [one["name"] for one in answer["pictures"]] == ["board.png", "other.png"]
    assert "already" in said(client.put("pictures/board.png", content=data))
    for name in ("x.yaml", ".x.png", "a%2fb.png", "..%2fx.png"):
        address = f"http://127.0.0.1:{PORT}/{TOKEN}/pictures/{name}"
        assert client.put(address, content=data).status_code in (403, 422)
    assert client.put("pictures/bad.png", content=b"no picture").status_code == 422
    names = ["board.png", "board.yaml", "other.png"]
    assert sorted(path.name for path in folder.iterdir()) == names


def test_every_error_has_an_answer() -> None:
    assert all(issubclass(kind, Exception) for kind in app.STATUSES)
    assert json.dumps(app.LIMITS)
