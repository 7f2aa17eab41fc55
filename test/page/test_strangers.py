"""Other pages, wrong addresses and what is too large; files that somebody else has changed."""

import http.client
import json
import threading
from collections.abc import Iterator
from functools import partial
from http.server import SimpleHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path
from urllib.parse import urlsplit

import pytest
from selenium.webdriver.common.keys import Keys

from boards import TEXT
from browser import Page, origin_of

LARGE = 100_000_000


class Quiet(SimpleHTTPRequestHandler):
    def log_message(self, format: str, *arguments: object) -> None:
        pass


@pytest.fixture
def stranger(tmp_path: Path) -> Iterator[str]:
    """The address of a page that has nothing to do with ours."""
    (tmp_path / "index.html").write_text("<!doctype html><title>Stranger</title><p>Hello")
    server = ThreadingHTTPServer(("127.0.0.1", 0), partial(Quiet, directory=str(tmp_path)))
    threading.Thread(target=server.serve_forever, daemon=True).start()
    yield f"http://127.0.0.1:{server.server_port}/"
    server.shutdown()
    server.server_close()


def test_a_foreign_page_can_neither_write_nor_read(page: Page, folder: Path, stranger: str) -> None:
    """Even if it knew the token."""
    loaded = page.run("return fetch('./board').then((answer) => answer.json())")
    ask = {"key": loaded["key"], "document": loaded["document"] | {"board": "Stranger"}}
    page.leave(stranger)
    script = """
        const [address, body, done] = arguments;
        const attempts = [["cors", "application/json"], ["no-cors", "text/plain"]];
        Promise.all(attempts.map(([mode, type]) =>
          fetch(`${address}save`, { method: "POST", mode, body, headers: { "Content-Type": type } })
            .then((answer) => answer.type, (error) => error.name))).then(done);
    """
    answers = page.driver.execute_async_script(script, page.address, json.dumps(ask))
    assert answers == ["TypeError", "TypeError"]
    reading = """
        const [address, done] = arguments;
        fetch(`${address}board`).then(() => done("read"), (error) => done(error.name));
    """
    assert page.driver.execute_async_script(reading, page.address) == "TypeError"
    form = """
        const [address, body] = arguments;
        const form = document.body.appendChild(document.createElement("form"));
        Object.assign(form, { method: "post", enctype: "text/plain", action: `${address}save` });
        const field = form.appendChild(document.createElement("input"));
        [field.name, field.value] = [body, ""];
        form.submit();
    """
    page.run(form, page.address, json.dumps(ask))
    page.wait("body", lambda text: "another page may not talk to this one" in text)
    assert (folder / "board.yaml").read_text() == TEXT


def test_a_foreign_page_cannot_show_it_in_a_frame(page: Page, stranger: str) -> None:
    page.leave(stranger)
    script = """
        const [address, done] = arguments;
        const frame = document.createElement("iframe");
        frame.onload = () => done(frame.contentDocument === null);
        frame.src = address;
        document.body.append(frame);
    """
    assert page.driver.execute_async_script(script, page.address)
    assert any("frame-ancestors" in text or "X-Frame" in text for text in page.complaints())


def test_a_wrong_token_is_told(page: Page) -> None:
    wrong = f"{origin_of(page.address)}/wrong/"
    page.leave(wrong)
    assert "wrong token: open the address that 'tool/board edit' has printed" in page.text("body")


def ask(page: Page, method: str, path: str, headers: dict[str, str], body: bytes = b"") -> str:
    """Asks as no browser would."""
    parts = urlsplit(page.address)
    connection = http.client.HTTPConnection(parts.hostname or "", parts.port, timeout=20)
    connection.request(method, parts.path + path, body, headers)
    answer = connection.getresponse()
    text = answer.read().decode()
    connection.close()
    return f"{answer.status} {text}"


def test_paths_outside_and_bodies_too_large(page: Page, folder: Path) -> None:
    secret = folder.parent / "secret.png"
    secret.write_bytes((folder / "board.png").read_bytes())
    for path in ("pictures/../../secret.png", "pictures/%2e%2e/secret.png", "../../etc/passwd"):
        answer = ask(page, "GET", path, {})
        assert answer[:3] in ("403", "404") and '"error"' in answer
    told = ask(page, "POST", "save", {"Content-Length": str(LARGE)})
    assert told == '413 {"error":"that is too large: at most 32 MB are taken"}'
    sent = ask(page, "POST", "save", {}, b"x" * LARGE)
    assert sent == '413 {"error":"that is too large: at most 32 MB are taken"}'
    # The page itself does not even send it.
    script = """
        const data = new DataTransfer();
        data.items.add(new File([new Uint8Array(arguments[0])], "huge.yaml"));
        document.body.dispatchEvent(new DragEvent("drop", { dataTransfer: data, bubbles: true }));
    """
    page.run(script, LARGE)
    page.wait(
        ".foot [role=alert]", lambda text: text == "huge.yaml has 100 MB; at most 32 MB are taken."
    )


def test_what_changed_on_the_disk_is_shown_and_kept(page: Page, folder: Path) -> None:
    page.choose("CPU")
    page.type("name", "SOCKET")
    theirs = TEXT.replace("Tests", "Theirs")
    (folder / "board.yaml").write_text(theirs)
    page.press_with(Keys.CONTROL, "s")
    page.wait("dialog h2", lambda text: text == "The file was changed on the disk")
    marked = [mark.text for mark in page.all("dialog mark")]
    assert marked == ["board: Theirs", "  - name: CPU", "board: Tests", "  - name: SOCKET"]
    page.button("Go on editing").click()
    assert (folder / "board.yaml").read_text() == theirs
    page.press_with(Keys.CONTROL, "s")
    page.wait("dialog h2")
    page.button("Overwrite it with what is here").click()
    page.wait(".saved", lambda text: text == "Saved")
    assert (folder / "board.yaml").read_text() == TEXT.replace("name: CPU", "name: SOCKET")


def test_what_is_on_the_disk_can_be_taken(page: Page, folder: Path) -> None:
    page.choose("CPU")
    page.type("name", "SOCKET")
    (folder / "board.yaml").write_text(TEXT.replace("DIMM_1", "THEIRS"))
    page.press_with(Keys.CONTROL, "s")
    page.wait("dialog h2")
    page.button("Take what is on the disk").click()
    page.wait_for("return !document.querySelector('dialog')")
    assert page.names() == ["CPU", "THEIRS"]


def test_a_board_that_cannot_be_shown_says_why(page: Page, folder: Path) -> None:
    (folder / "board.yaml").write_text(TEXT.replace("[[500, 250]", "[[left, 250]"))
    page.open()
    assert "This board cannot be shown" in page.text("h1")
    assert "Line 12, components[0] (CPU).outline" in page.text(".messages")
    (folder / "board.yaml").write_text(TEXT)
    page.button("Look again").click()
    page.wait(".list .name", lambda text: text == "CPU")
