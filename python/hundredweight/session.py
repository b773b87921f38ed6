"""A loaded tariff set that rates one shipment after another, in this process."""
from __future__ import annotations

import json
import os
import warnings
import weakref
from types import TracebackType
from typing import TYPE_CHECKING, Any, Iterable, Mapping, Optional, Union

from . import _native
from .bill import Bill, Explanation, bill_of, explanation_of
from .refusals import refused
from .shipment import text_of
from .terms import require_texts

if TYPE_CHECKING:
    import pandas

    from .shipment import Shipment


class Session:
    """A tariff set with its discounts and a running engine.

    A process has one session at a time, since the library has one engine in a process: a second one
    raises SessionInUse until the first is closed. Its shipments do not see one another. Several
    threads may use it; they take turns, and the interpreter's lock is released while one rates.

    data: the directory of the tariff set, the partners' data and the profiles. None: the nearest
    that holds the set, from the current directory upward.
    set: the base name of the tariff set.
    engine, service_guide: partner libraries, by path, or by a name that is looked for beside
    Hundredweight's own libraries.

    Raises Broken, naming the file, for data or a partner that cannot be relied on; SessionInUse.
    """

    def __init__(self, data: Union[str, os.PathLike[str], None] = None, set: str = "SAMPLE", *,
                 engine: str = "tolvex", service_guide: str = "servgd") -> None:
        directory = "" if data is None else os.fspath(data)
        require_texts(data=directory, set=set, engine=engine, service_guide=service_guide)
        self._native = _native.Session(directory, set, engine, service_guide)
        self._process = os.getpid()
        if self._native.said:
            warnings.warn(self._native.said, stacklevel=2)

    def __enter__(self) -> Session:
        return self

    def __exit__(self, kind: Optional[type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self.close()

    @property
    def data(self) -> str:
        """The directory that the set was loaded from."""
        return self._native.data

    @property
    def said(self) -> str:
        """What the partners said at their start; empty when nothing."""
        return self._native.said

    def rate(self, shipment: Union[Shipment, Mapping[str, Any]]) -> Bill:
        """Rates a shipment, as ``docs/shipment.md`` describes it; weights are whole pounds.

        Raises Refused, with every reason at once, for a shipment that is not rated; Broken when the
        data or a partner are; TypeError and ValueError, with the place, for a value that is none of
        a shipment's; ValueError when the session is closed.
        """
        text = text_of(shipment)
        rated, document, reason = self._own().rate(text)
        if not rated:
            raise refused(json.loads(document), reason)
        session = weakref.ref(self)
        bill = json.loads(document)
        return bill_of(bill, reason, lambda: _explain(session(), text, bill))

    def rate_frame(self, shipments: pandas.DataFrame, *,
                   passed: Iterable[str] = ()) -> pandas.DataFrame:
        """Rates a frame of shipments, as rate_frame of the package does, in this process, and warns
        like it.

        Raises Broken when the data or a partner are; TypeError and ValueError, with the column's
        name, for a frame that cannot be read; ValueError when the session is closed.
        """
        from .frames import FrameShipments, frame_of

        frame = FrameShipments(shipments, passed)
        frame.tell_of_passed()
        columns = _native.RowColumns()
        self._own().rate_rows(frame.rows(), columns)
        return frame_of(columns, frame)

    def close(self) -> None:
        """Ends the session, so that there may be another. Closing twice is allowed."""
        if os.getpid() == self._process:
            self._native.close()

    def _own(self) -> _native.Session:
        if os.getpid() != self._process:
            raise _native.SessionInUse(
                f"this session is of the process {self._process}, of which this one is a fork; "
                "start processes anew (multiprocessing's spawn) and give each its own session")
        return self._native


def _explain(session: Optional[Session], shipment: str, bill: dict[str, Any]) -> Explanation:
    if session is None:
        raise ValueError("the session is closed")
    rated, document, text = session._own().explain(shipment)
    explained = json.loads(document)
    if not rated or explained["bill"] != bill:
        raise _native.Broken("the data have changed since the bill was made, which would be "
                             "another now")
    return explanation_of(explained, text)
