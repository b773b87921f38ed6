"""A freight bill as a value. Weights are whole pounds; amounts are US dollars and rates dollars per
hundredweight, each a ``Decimal`` of two decimals."""
from __future__ import annotations

import copy
from dataclasses import dataclass, field
from datetime import date
from decimal import Decimal
from typing import Any, Callable, Optional


@dataclass(frozen=True)
class Tariff:
    name: str
    date: date  #: From which on it is in force.
    rate_code: str


@dataclass(frozen=True)
class Point:
    zip: str
    city: Optional[str]
    state: Optional[str]
    terminal: Optional[str]  #: Of the service guide, when it was asked.
    service: Optional[str]  #: "D" direct, "I" through another carrier.


@dataclass(frozen=True)
class TransitDays:
    """Business days between the terminals; None where the service guide does not know them."""

    standard: Optional[int]
    guaranteed: Optional[int]
    border: Optional[int]  #: Added at the border.


@dataclass(frozen=True)
class Line:
    class_code: str  #: As entered.
    rated_as: str  #: Another class where the profile puts one in its place.
    weight: int
    rate: Decimal
    charge: Decimal


@dataclass(frozen=True)
class Deficit:
    """Weight that was added to reach a cheaper weight break."""

    weight: int
    rate: Decimal
    charge: Decimal


@dataclass(frozen=True)
class Discount:
    percent: Decimal
    amount: Decimal


@dataclass(frozen=True)
class BreakCharge:
    """What the shipment would come to at the lowest weight of a break."""

    label: str
    weight: int
    amount: int  #: Whole dollars.
    raised_to_floor: bool


@dataclass(frozen=True)
class ChargesByBreak:
    minimum: tuple[BreakCharge, ...]  #: With discount and minimum.
    single_shipment: tuple[BreakCharge, ...]  #: Without.


@dataclass(frozen=True)
class Statement:
    """One reason of a bill, in the words of a rate clerk."""

    topic: str  #: "origin", "line", "discount", ...
    words: str
    figures: dict[str, Any]  #: Decimal texts, and whole numbers, by name.
    adds_up: Optional[bool]  #: Whether exact arithmetic gives the same; None: nothing is reckoned.
    sources: tuple[dict[str, Any], ...]  #: File and record, field, or place in the shipment.


@dataclass(frozen=True)
class Explanation:
    """Why a bill says what it says; as a text the page that ``cwt rate --explain`` prints."""

    statements: tuple[Statement, ...]
    text: str = field(repr=False)

    def __str__(self) -> str:
        return self.text


@dataclass(frozen=True)
class Bill:
    """A freight bill; as a text the page that ``cwt rate`` prints."""

    id: Optional[str]  #: The shipment's, like its description.
    description: str
    currency: str
    tariff: Tariff
    origin: Point
    destination: Point
    transit_days: Optional[TransitDays]  #: None when no service guide was asked.
    lines: tuple[Line, ...]
    deficit: Optional[Deficit]
    total_weight: int  #: The sum of the lines.
    billed_weight: int  #: With the deficit.
    gross_charge: Decimal  #: The lines and the deficit.
    discount: Discount
    net_charge: Decimal  #: Gross charge less discount, not below the minimum.
    minimum_charge: Decimal
    surcharge: Decimal
    total_due: Decimal  #: Net charge and surcharge.
    charges_by_break: ChargesByBreak
    notes: tuple[str, ...]  #: What was taken in another way than it was written, or defaulted.
    _document: dict[str, Any] = field(repr=False, compare=False)
    _text: str = field(repr=False, compare=False)
    _explain: Callable[[], Explanation] = field(repr=False, compare=False)

    def __str__(self) -> str:
        return self._text

    def __reduce__(self) -> tuple[Any, ...]:
        return bill_of, (self._document, self._text)

    def to_dict(self) -> dict[str, Any]:
        """What ``cwt rate --json`` prints, of the schema hundredweight/bill/1: amounts are texts
        with two decimals."""
        return copy.deepcopy(self._document)

    def explain(self) -> Explanation:
        """Why the bill says what it says. The shipment is rated once more for it.

        Raises ValueError when the session that made the bill is closed, or the bill has come from
        another process; Broken when the data have changed since, so that the bill is another now.
        """
        return self._explain()


def _no_session() -> Explanation:
    raise ValueError("the session of this bill is not here; explain it where it was made")


def _line(line: dict[str, Any]) -> Line:
    return Line(line["class"], line["rated_as"], line["weight"], Decimal(line["rate"]),
                Decimal(line["charge"]))


def _deficit(deficit: dict[str, Any]) -> Deficit:
    return Deficit(deficit["weight"], Decimal(deficit["rate"]), Decimal(deficit["charge"]))


def _charges(charges: list[dict[str, Any]]) -> tuple[BreakCharge, ...]:
    return tuple(BreakCharge(**charge) for charge in charges)


def bill_of(document: dict[str, Any], text: str,
            explain: Callable[[], Explanation] = _no_session) -> Bill:
    """The bill of a document of the schema hundredweight/bill/1."""
    amounts = ("gross_charge", "net_charge", "minimum_charge", "surcharge", "total_due")
    tariff, discount, days = document["tariff"], document["discount"], document["transit_days"]
    by_break = document["charges_by_break"]
    values: dict[str, Any] = {
        **document,
        **{name: Decimal(document[name]) for name in amounts},
        "tariff": Tariff(tariff["name"], date.fromisoformat(tariff["date"]), tariff["rate_code"]),
        "origin": Point(**document["origin"]),
        "destination": Point(**document["destination"]),
        "transit_days": TransitDays(**days) if days else None,
        "lines": tuple(_line(line) for line in document["lines"]),
        "deficit": _deficit(document["deficit"]) if document["deficit"] else None,
        "discount": Discount(Decimal(discount["percent"]), Decimal(discount["amount"])),
        "charges_by_break": ChargesByBreak(_charges(by_break["minimum"]),
                                           _charges(by_break["single_shipment"])),
        "notes": tuple(document["notes"]),
    }
    del values["schema"]
    return Bill(**values, _document=document, _text=text, _explain=explain)


def explanation_of(document: dict[str, Any], text: str) -> Explanation:
    """The explanation of a document of the schema hundredweight/explanation/1."""
    statements = (Statement(statement["topic"], statement["words"], statement["figures"],
                            statement["adds_up"], tuple(statement["sources"]))
                  for statement in document["statements"])
    return Explanation(tuple(statements), text)
