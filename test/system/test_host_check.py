"""The host check in real firmware: the reference host whole, and with one mistake at a time."""

import re

import pytest

from computer import Computer

CHECK = "BoardscopeHostCheck.efi"
ABORTED = 0x15

# What the probe spoils, the point that finds it, and how it is named.
MISTAKES = {
    "clock": ("clock", "GetTime stands still at 4711."),
    "query": ("slots", "QueryComponentStatus (offset 0x38) is NULL."),
    "state": ("slots", "SharedState (offset 0x78) is NULL."),
    "look": ("appearance", "Config is NULL"),
    "picture": ("picture", "the picture's header says"),
    "font": ("font files", 'face 0, "DroidSans"'),
    "type": ("components", 'component 0, "CPU", has type 12'),
    "few": ("components", "ComponentCount is "),
    "nowhere": ("components", 'FocusStyle of component 0, "CPU" is 700000000000, where'),
    "text": ("texts", "text 4 in en-US has 2 directives"),
}


def points(said: str) -> dict[str, str]:
    """The verdict on each point."""
    return {
        point: verdict
        for verdict, point in re.findall(r"^(ok|warn|skip|BAD) +([\w ]+)$", said, re.M)
    }


def test_the_reference_host_has_no_mistake(computer: Computer) -> None:
    before = computer.probe("outputs")
    said = computer.run(CHECK)
    verdicts = points(said)
    assert len(verdicts) == 13, said
    assert set(verdicts.values()) == {"ok"}, said
    assert "0 mistakes, 0 warnings" in said
    assert computer.probe("outputs") == before


@pytest.mark.parametrize("word", MISTAKES)
def test_a_mistake_is_found_and_named(computer: Computer, word: str) -> None:
    point, sentence = MISTAKES[word]
    said, status = computer.run_and_tell("SystemProbe.efi", "spoil", word, CHECK)
    assert status == ABORTED, said
    assert points(said)[point] == "BAD", said
    # A long line is broken at a blank.
    assert f"BAD {point}: {sentence}" in " ".join(said.split()), said
