"""A shipment, as ``docs/shipment.md`` describes it key by key; a plain dict."""
from __future__ import annotations

from decimal import Decimal
from typing import TypedDict, Union

Number = Union[int, float, Decimal]


class _Zip(TypedDict):
    zip: Union[str, int]


class ShipmentPoint(_Zip, total=False):
    """Where the goods come from or go to."""

    city: str
    state: str
    territory: str
    intrastate: bool  #: Of the origin alone.


#: A class of the tariff, as text or number, and its weight in whole pounds.
ShipmentLine = TypedDict("ShipmentLine", {"class": Union[str, Number], "weight": int})


class EnteredDiscount(TypedDict, total=False):
    """Per cent with two decimals; the floor in dollars."""

    percent: Number
    flat_percent: Number
    floor: Number


class EnteredSurcharge(TypedDict, total=False):
    """Per cent below the weight break of ``break_index``, from 0, and from it on."""

    low_percent: Number
    high_percent: Number
    break_index: int


class _Wanted(TypedDict):
    origin: ShipmentPoint
    destination: ShipmentPoint
    lines: list[ShipmentLine]


class Shipment(_Wanted, total=False):
    """What is rated."""

    schema: str
    id: Union[str, int]
    description: str
    tariff: str
    profile: str
    factor: Number
    discount: EnteredDiscount
    surcharge: EnteredSurcharge
    service_guide: bool
