"""Why a shipment is not rated."""
from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Optional


@dataclass(frozen=True)
class Refusal:
    """One thing that is wrong with a shipment."""

    place: str  #: "destination.zip", "lines[2].class"; empty: the whole.
    text: str  #: In the library's or the engine's words where they have some.
    code: Optional[int]  #: The library's; None when it has none for this.
    written: str  #: The value at the place, where that helps.
    alternatives: tuple[str, ...]  #: What would be right, where it can be listed.


class Refused(ValueError):
    """A shipment that is not rated. ``code``, ``text``, ``place`` and ``alternatives`` are those of
    the first refusal; ``refusals`` has all of them."""

    def __init__(self, refusals: tuple[Refusal, ...], reason: str) -> None:
        super().__init__(refusals, reason)
        self.refusals = refusals

    def __str__(self) -> str:
        return str(self.args[1])

    @property
    def code(self) -> Optional[int]:
        return self.refusals[0].code

    @property
    def text(self) -> str:
        return self.refusals[0].text

    @property
    def place(self) -> str:
        return self.refusals[0].place

    @property
    def alternatives(self) -> tuple[str, ...]:
        return self.refusals[0].alternatives


def refused(document: dict[str, Any], reason: str) -> Refused:
    """The exception for a document of the schema hundredweight/refusals/1."""
    refusals = (Refusal(refusal["place"], refusal["text"], refusal["code"], refusal["written"],
                        tuple(refusal["alternatives"]))
                for refusal in document["refusals"])
    return Refused(tuple(refusals), reason)
