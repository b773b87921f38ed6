"""Rates less-than-truckload (LTL) freight.

    import hundredweight as hw

    with hw.Session("sample") as session:
        bill = session.rate({"origin": {"zip": "30303"}, "destination": {"zip": "60601"},
                             "lines": [{"class": "70", "weight": 1205}], "tariff": "SMPLNATL"})
        bills = session.rate_frame(shipments)
    bills = hw.rate_frame(shipments, data="sample", jobs=2)

Weights are whole pounds and amounts US dollars: ``decimal.Decimal`` in a bill, whole cents in a
frame, never binary fractions. ``hundredweight.dask`` rates the frames of a cluster.
"""
from ._native import Broken, SessionInUse, __version__
from .bill import (Bill, BreakCharge, ChargesByBreak, Deficit, Discount, Explanation, Line, Point,
                   Statement, Tariff, TransitDays)
from .frames import ColumnsPassedOn, rate_frame
from .refusals import Refusal, Refused
from .session import Session
from .shipment import Shipment

Broken.__doc__ = """The tariff set, a partner library or an output is broken: no shipment's fault.
The text names the file and the reason. What was asked for is not rated, not even in part."""
SessionInUse.__doc__ = """This process has a session already; a second one is for another process,
or for after the first is closed."""

__all__ = ["Bill", "BreakCharge", "Broken", "ChargesByBreak", "ColumnsPassedOn", "Deficit",
           "Discount", "Explanation", "Line", "Point", "Refusal", "Refused", "Session",
           "SessionInUse", "Shipment", "Statement", "Tariff", "TransitDays", "rate_frame"]


def __getattr__(name: str) -> object:
    # Who has no cluster need not have Dask.
    if name == "dask":
        import importlib

        return importlib.import_module("hundredweight.dask")
    raise AttributeError(f"module 'hundredweight' has no attribute '{name}'")
