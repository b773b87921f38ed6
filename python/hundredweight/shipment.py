"""A shipment, as ``docs/shipment.md`` describes it key by key; a plain dict."""
from __future__ import annotations

import json
import math
from decimal import Decimal
from typing import Any, Mapping, TypedDict, Union

import numpy

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


def text_of(shipment: Mapping[str, Any]) -> str:
    """The shipment in JSON. Raises TypeError and ValueError, with the place, for what it cannot
    hold."""
    if not isinstance(shipment, Mapping):
        raise TypeError(f"a dict of a shipment is wanted, not a {type(shipment).__name__}")
    return json.dumps(_plain(shipment, ""))


def _plain(value: Any, place: str) -> Any:
    """The value in JSON's own types."""
    if isinstance(value, Mapping):
        return {_key(key, place): _plain(inner, f"{place}.{key}" if place else key)
                for key, inner in value.items()}
    if isinstance(value, (list, tuple)):
        return [_plain(inner, f"{place}[{number}]") for number, inner in enumerate(value)]
    if value is None or isinstance(value, (str, int)):
        return value
    if isinstance(value, numpy.generic) and value.dtype.kind in "biu":
        return value.item()
    if isinstance(value, (float, Decimal, numpy.floating)):
        return _fraction(value, place)
    raise TypeError(f"{place}: a shipment holds no {type(value).__name__}")


def _key(key: Any, place: str) -> str:
    if isinstance(key, str):
        return key
    raise TypeError(f"{place or 'the shipment'}: the key {key!r} is no text")


def _fraction(value: Union[float, Decimal, numpy.floating[Any]], place: str) -> Union[float, str]:
    """The number whose shortest text is that of the value."""
    number = float(str(value))
    if not math.isfinite(number):
        raise ValueError(f"{place}: {value} is no number")
    # What a number would not hold is refused as it is written.
    return number if Decimal(repr(number)) == Decimal(str(value)) else str(value)
