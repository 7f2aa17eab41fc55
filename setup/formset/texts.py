"""The texts of texts.yaml: read, checked for completeness, and filled in."""

from pathlib import Path

import yaml

from formset.model import LANGUAGES, FormsetError, Text


class Texts:
    """Hands out texts by name, and remembers every one that was handed out."""

    def __init__(self, path: Path) -> None:
        """Raises FormsetError when a text lacks a language."""
        self._words: dict[str, dict[str, str]] = yaml.safe_load(path.read_text(encoding="utf-8"))
        self._used: dict[str, Text] = {}
        self._asked: set[str] = set()
        for name, words in self._words.items():
            if list(words) != list(LANGUAGES):
                raise FormsetError(
                    f"{path.name}: {name} has {', '.join(words)}; "
                    f"every text needs {', '.join(LANGUAGES)}, in this order."
                )
            empty = [code for code, word in words.items() if not str(word).strip()]
            if empty:
                raise FormsetError(f"{path.name}: {name} is empty in {', '.join(empty)}.")

    def get(self, name: str, suffix: str = "", /, **fields: object) -> Text:
        """A text, with {field} filled in; `suffix` tells texts of one name apart."""
        if name not in self._words:
            raise FormsetError(f"There is no text {name}.")
        self._asked.add(name)
        words = {code: str(word).format(**fields) for code, word in self._words[name].items()}
        return self._keep("_".join(filter(None, [name, suffix])), words)

    def literal(self, name: str, word: str) -> Text:
        """A text that is the same in all languages."""
        return self._keep(name, dict.fromkeys(LANGUAGES, word))

    def used(self) -> tuple[Text, ...]:
        return tuple(self._used.values())

    def unused(self) -> list[str]:
        """Texts that nobody asked for."""
        return sorted(set(self._words) - self._asked)

    def _keep(self, name: str, words: dict[str, str]) -> Text:
        identifier = "STR_" + "".join(c if c.isalnum() else "_" for c in name).upper()
        text = Text(identifier, words)
        kept = self._used.setdefault(identifier, text)
        if kept != text:
            raise FormsetError(f"{identifier} would stand for two texts.")
        return kept
