"""What is asked besides shipments, held against what can be had."""
from __future__ import annotations


def require_texts(**terms: object) -> None:
    """Raises TypeError and ValueError, with the name, for what is no text that a path can have."""
    for name, text in terms.items():
        if not isinstance(text, str):
            raise TypeError(f"{name}: a text is wanted, not {text!r}")
        if "\0" in text or not is_unicode(text):
            raise ValueError(f"{name}: no path holds {text!r}")


def require_whole(highest: int, **terms: object) -> None:
    """Raises ValueError, with the name, for what is no whole number from 1 on."""
    for name, number in terms.items():
        if type(number) is not int or not 1 <= number <= highest:
            raise ValueError(f"{name}: a whole number from 1 to {highest} is wanted, not {number!r}")


def is_unicode(text: str) -> bool:
    """False of half a character."""
    return not any("\ud800" <= character <= "\udfff" for character in text)
