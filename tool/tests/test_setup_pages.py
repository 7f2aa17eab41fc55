"""The setup's pages: one question for each token, numbers of their own, all languages."""

import re
import struct
import sys
import unicodedata
from dataclasses import replace
from pathlib import Path

import pytest

CLONE = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(CLONE / "setup"))

import generate
from boardtool.limits import CATEGORIES
from boardtool.model import Component
from boardtool.reading import read_board
from formset import files, glyphs, kinds, model, vfr
from formset.building import ORDER, build
from formset.model import Formset, FormsetError
from formset.texts import Texts

BOARD = CLONE / "assets" / "board"
TEXTS = CLONE / "setup" / "texts.yaml"
FONT = Path("/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf")


@pytest.fixture(scope="module")
def components() -> tuple[Component, ...]:
    return read_board(BOARD / "board.yaml").components


@pytest.fixture(scope="module")
def formset(components: tuple[Component, ...]) -> Formset:
    return build(components, Texts(TEXTS))


def test_each_token_has_one_question(components: tuple[Component, ...], formset: Formset) -> None:
    tokens = {one.token for one in components} - {0}
    numbers = [one.number for one in formset.questions()]
    assert tokens
    assert all(numbers.count(token) == 1 for token in tokens)
    own = [number for number in numbers if number not in tokens]
    assert all(number in model.OWN_QUESTIONS for number in own)


def test_each_question_is_on_the_page_of_its_components(
    components: tuple[Component, ...], formset: Formset
) -> None:
    for page in formset.pages:
        category = page.form - model.FIRST_PAGE_FORM
        on_page = {one.number for one in page.questions}
        of_category = {
            one.token
            for one in components
            if one.token and one.category == CATEGORIES[ORDER[category]]
        }
        assert of_category <= on_page


def test_numbers_and_indices_are_unique(formset: Formset) -> None:
    source = vfr.write(formset, generate.read_guids())
    numbers = re.findall(r"(?:questionid|key) = (0x[0-9a-f]+)", source)
    assert len(numbers) == len(set(numbers))
    forms = re.findall(r"form formid = (\w+)", source)
    assert len(forms) == len(set(forms)) == len(formset.pages) + 1
    indices = [one.index for one in formset.questions()]
    assert indices == list(range(len(indices)))


def test_each_selectable_component_with_a_token_can_be_shown_on_the_board(
    components: tuple[Component, ...], formset: Formset
) -> None:
    expected = sorted(one.name for one in components if one.token and one.selectable)
    assert sorted(one.name for one in formset.entries()) == expected


def test_each_text_has_all_languages_and_is_used(components: tuple[Component, ...]) -> None:
    texts = Texts(TEXTS)
    formset = build(components, texts)
    assert texts.unused() == []
    for text in formset.texts:
        assert list(text.words) == list(model.LANGUAGES)
        assert all(word.strip() for word in text.words.values())
        assert not any("{" in word for word in text.words.values())


def test_each_string_that_the_pages_name_is_there(formset: Formset) -> None:
    source = vfr.write(formset, generate.read_guids())
    named = set(re.findall(r"STRING_TOKEN\((\w+)\)", source))
    there = set(re.findall(r"#string (\w+)", files.strings(formset)))
    assert named <= there
    # The rest are messages that the driver shows.
    assert {name[:9] for name in there - named} == {"STR_ERROR"}


@pytest.mark.parametrize(
    ("language", "words"),
    [
        ("en-US", "demo machine cannot obey"),
        ("de-DE", "Demo-Maschine kann dieser Option nicht folgen"),
        ("fr-FR", "machine de démonstration ne peut pas suivre"),
        ("es-ES", "máquina de demostración no puede seguir"),
        ("zh-Hans", "演示机"),
        ("ja-JP", "デモ機"),
    ],
)
def test_each_option_says_that_the_demo_machine_cannot_obey(
    formset: Formset, language: str, words: str
) -> None:
    for question in formset.questions():
        assert words in question.help.words[language], question.number


def test_defaults_are_values_that_the_pages_offer(formset: Formset) -> None:
    for question in formset.questions():
        assert 0 <= question.default <= question.limit
        if question.choices:
            assert [one.value for one in question.choices] == list(range(question.limit + 1))


def test_a_fan_has_its_curve_behind_its_mode(formset: Formset) -> None:
    modes = [one for one in formset.questions() if one.help.identifier == "STR_FAN_HELP"]
    assert modes
    for mode in modes:
        points = [
            one for one in formset.questions() if one.shown_with == (mode.index, kinds.CURVE_MODE)
        ]
        assert len(points) == 2 * len(kinds.CURVE)


def test_another_board_has_another_layout(
    components: tuple[Component, ...], formset: Formset
) -> None:
    fewer = build([one for one in components if one.name != "LAN"], Texts(TEXTS))
    assert fewer.layout() != formset.layout()
    assert 0 < formset.layout() <= 0xFFFF


@pytest.mark.parametrize("token", [0x7000, 0x7FFF, 0x0001, 0x00FF])
def test_tokens_of_the_setups_own_questions_are_refused(
    components: tuple[Component, ...], token: int
) -> None:
    with pytest.raises(FormsetError, match="not free"):
        build([replace(components[0], token=token)], Texts(TEXTS))


def test_a_board_without_options_has_no_setup(components: tuple[Component, ...]) -> None:
    with pytest.raises(FormsetError, match="one option at least"):
        build([replace(one, token=0) for one in components], Texts(TEXTS))


def test_a_token_of_two_categories_is_refused(components: tuple[Component, ...]) -> None:
    usb = next(one for one in components if one.name == "USB_12")
    lan = next(one for one in components if one.name == "LAN")
    with pytest.raises(FormsetError, match="usb and rear"):
        build([usb, replace(lan, token=usb.token)], Texts(TEXTS))


def test_a_missing_language_is_refused(tmp_path: Path) -> None:
    part = tmp_path / "texts.yaml"
    part.write_text("view:\n  en-US: Board view\n", encoding="utf-8")
    with pytest.raises(FormsetError, match="ja-JP"):
        Texts(part)


def test_an_empty_text_is_refused(tmp_path: Path) -> None:
    part = tmp_path / "texts.yaml"
    lines = [f"  {code}: {'' if code == 'fr-FR' else 'x'!r}" for code in model.LANGUAGES]
    part.write_text("\n".join(["view:", *lines, ""]), encoding="utf-8")
    with pytest.raises(FormsetError, match="fr-FR"):
        Texts(part)


def test_the_font_has_every_character_that_others_lack(formset: Formset) -> None:
    package = glyphs.package(formset, FONT)
    length, header, narrow, wide = struct.unpack_from("<IIHH", package)
    assert length == len(package)
    assert header >> 24 == 0x07
    assert header & 0xFFFFFF == len(package) - 4
    assert (narrow, wide) == (0, len(glyphs.characters(formset)))
    size = (len(package) - 12) // wide
    assert size == 2 + 1 + 19 + 19 + 3
    codes = [struct.unpack_from("<H", package, 12 + size * i)[0] for i in range(wide)]
    assert [chr(code) for code in codes] == glyphs.characters(formset)
    # Blank is the space of East Asia alone, which these texts do not have.
    assert all(any(package[12 + size * i + 3 :][:38]) for i in range(wide))


def test_a_second_run_leaves_the_files_alone(tmp_path: Path) -> None:
    generate.generate(BOARD, FONT, tmp_path)
    before = {file.name: file.stat().st_mtime_ns for file in tmp_path.iterdir()}
    assert set(before) == {generate.FORMS, generate.STRINGS, generate.TABLE}
    generate.generate(BOARD, FONT, tmp_path)
    assert before == {file.name: file.stat().st_mtime_ns for file in tmp_path.iterdir()}


def test_a_sign_of_two_columns_counts_as_two(formset: Formset) -> None:
    """EDK2's console gives a text a column for each of its signs, and cuts off the rest."""
    assert files.with_widths("PCI 插槽") == "PCI 插\u200b槽\u200b"
    assert files.with_widths("Steckplätze") == "Steckplätze"
    strings = files.strings(formset)
    written = strings[strings.index("#string") :]
    wide = [sign for sign in written if unicodedata.east_asian_width(sign) in "WF"]
    assert wide
    assert written.count(files.UNDRAWN) == len(wide)
    assert files.UNDRAWN not in glyphs.characters(formset)


def test_a_name_is_written_as_its_characters(components: tuple[Component, ...]) -> None:
    odd = replace(components[0], name='A"\\n"B')
    assert 'u"A\\"\\\\n\\"B"' in files.table(build((odd,), Texts(TEXTS)), b"")
