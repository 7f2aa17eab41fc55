"""What the page changes in a description, and what it leaves as its author wrote it."""

import copy
import random
from pathlib import Path
from typing import Any

import pytest
import yaml

from boardtool.edit.nodes import plain, repeated, same
from boardtool.edit.rewriting import rewrite

CLONE = Path(__file__).resolve().parents[2]

TEXT = """\
# My board
board: Bench   # on the bench
picture: board.png
styles:
  normal: {text: "1,2,3",
           background: '4,5,6'}
components:
  # the first fan
  - category: fan     # spins
    name: FAN 1
    outline: [[10, 10],  [20, 10],   # a wide gap
              [20, 20]]
    token: 0x1001
    marker: [11, 11]

  # --- memory ---

  # next to the processor
  - name: "DIMM_A1"
    category: memory
    outline:
      - [1, 1]
      # the notch
      - [2, 2]
    marker: [3, 3]
    info:
      - {label: Speed, value: "1200 RPM"}

  - name: LAST
    marker: [4, 4]
"""


def compose(text: str) -> yaml.Node:
    root = yaml.compose(text, Loader=yaml.SafeLoader)
    assert root is not None
    return root


def edited(text: str, new: Any) -> str:
    return rewrite(text, compose(text), new)


def document(text: str = TEXT) -> Any:
    """What the page gets: each component with the place that it has in the file."""
    value = plain(compose(text))
    for place, component in enumerate(value["components"]):
        component["origin"] = place
    return value


def without_origin(value: Any) -> Any:
    value = copy.deepcopy(value)
    for component in value["components"]:
        component.pop("origin", None)
    return value


def changed_lines(new: str, old: str = TEXT) -> tuple[list[str], list[str]]:
    before, after = old.splitlines(), new.splitlines()
    return [line for line in before if line not in after], [
        line for line in after if line not in before
    ]


def test_nothing_changed_nothing_written() -> None:
    assert edited(TEXT, document()) == TEXT


def test_one_value_changes_where_it_stands() -> None:
    new = document()
    new["components"][0]["outline"][1] = [21, 10]
    text = edited(TEXT, new)
    assert changed_lines(text) == (
        ["    outline: [[10, 10],  [20, 10],   # a wide gap"],
        ["    outline: [[10, 10],  [21, 10],   # a wide gap"],
    )


def test_a_corner_in_lines_comes_and_goes() -> None:
    new = document()
    new["components"][1]["outline"] = [[1, 1], [5, 5], [2, 2]]
    text = edited(TEXT, new)
    assert changed_lines(text) == ([], ["      - [5, 5]"])
    assert "      - [1, 1]\n      - [5, 5]\n      # the notch\n      - [2, 2]\n" in text


def test_fields_come_in_their_order_and_go() -> None:
    new = document()
    first = new["components"][0]
    del first["category"], first["token"]
    first |= {"status": "absent", "callout": "left", "info": [{"value": "8"}, {"value": "a b"}]}
    text = edited(TEXT, new)
    assert without_origin(document(text)) == without_origin(new)
    removed, added = changed_lines(text)
    assert removed == ["  - category: fan     # spins", "    name: FAN 1", "    token: 0x1001"]
    assert added == [
        "  - name: FAN 1",
        "    callout: left",
        "    status: absent",
        '      - value: "8"',
        '      - value: "a b"',
    ]


def test_components_move_with_their_comments() -> None:
    new = document()
    new["components"] = [new["components"][i] for i in (1, 2, 0)]
    text = edited(TEXT, new)
    assert changed_lines(text) == ([], [])
    assert text.index("# the first fan") > text.index("name: LAST")
    assert text.index("# --- memory ---") < text.index("# next to the processor")
    assert "marker: [4, 4]\n\n  # the first fan\n  - category: fan" in text
    assert without_origin(document(text)) == without_origin(new)


def test_a_heading_stays_when_its_component_goes() -> None:
    new = document()
    del new["components"][1]
    text = edited(TEXT, new)
    assert "  # --- memory ---\n" in text
    assert "next to the processor" not in text
    assert without_origin(document(text)) == without_origin(new)


def test_a_new_component_is_written_like_the_documentation_does() -> None:
    new = document()
    fan = {"marker": [1, 2], "name": "CPU FAN", "category": "fan", "token": 4097, "origin": None}
    new["components"].append(fan | {"outline": [[1, 2], [3, 4], [5, 6]]})
    text = edited(TEXT, new)
    assert text == TEXT + (
        '\n  - name: "CPU FAN"\n    category: fan\n'
        "    outline: [[1, 2], [3, 4], [5, 6]]\n    marker: [1, 2]\n    token: 0x1001\n"
    )


def test_the_first_and_the_last_component() -> None:
    empty = "picture: a.png\nstyles: {}\ncomponents: []  # none yet\n"
    new = document(empty)
    new["components"] = [{"name": "A", "info": [{"value": "x"}], "origin": None}]
    text = edited(empty, new)
    assert "components:\n  - name: A\n    info:\n      - value: x  # none yet\n" in text
    new["components"] = []
    assert "components: []" in edited(text, new)
    assert document(edited(text, new))["components"] == []


def test_words_that_yaml_takes_for_something_else_are_quoted() -> None:
    new = document()
    for word in ("yes", "1.5", "0x10", "a: b", "- x", "#1", "null", "12:30", "ä", "", "x\ny", "]"):
        new["board"] = word
        assert document(edited(TEXT, new))["board"] == word


def test_line_ends_and_a_missing_last_one_are_kept() -> None:
    for source in (TEXT.replace("\n", "\r\n"), TEXT.rstrip()):
        new = document(source)
        new["components"][2] |= {"name": "END", "status": "absent"}
        new["components"].append({"name": "MORE", "origin": None})
        text = edited(source, new)
        assert without_origin(document(text)) == without_origin(new)
        assert text.count("\r\n") in (0, text.count("\n"))


def test_an_alias_is_found() -> None:
    assert repeated(compose("a: &x [1]\nb: *x\n")) is not None
    assert repeated(compose("a: &x [1, *x]\n")) is not None
    assert repeated(compose(TEXT)) is None


def test_true_is_not_one() -> None:
    assert not same(True, 1)
    assert same({"a": 1, "b": [2]}, {"b": [2], "a": 1})


def _spoil(new: Any, dice: random.Random) -> None:
    components = new["components"]
    component = dice.choice(components)
    what = dice.randrange(8)
    if what == 0:
        component["outline"] = [[dice.randrange(9), 1] for _ in range(dice.randrange(1, 5))]
    elif what == 1:
        component.pop(dice.choice(["token", "marker", "category", "info", "outline"]), None)
    elif what == 2:
        component["info"] = [{"value": str(dice.randrange(9))} for _ in range(dice.randrange(4))]
    elif what == 3:
        dice.shuffle(components)
    elif what == 4:
        components.insert(
            dice.randrange(len(components)), {"name": f"N{dice.random()}", "origin": None}
        )
    elif what == 5 and len(components) > 1:
        components.remove(component)
    elif what == 6:
        component["status"] = "absent"
    else:
        new["board"] = f"{dice.random()}"


@pytest.mark.parametrize("name", ["small", "default"])
def test_any_changes_say_what_the_page_says(name: str) -> None:
    default = (CLONE / "assets" / "board" / "board.yaml").read_text()
    for seed in range(200 if name == "small" else 4):
        dice = random.Random(seed)
        text = TEXT if name == "small" else default
        for _ in range(4):
            new = document(text)
            for _ in range(dice.randrange(1, 6)):
                _spoil(new, dice)
            text = edited(text, new)
            assert without_origin(document(text)) == without_origin(new), seed
