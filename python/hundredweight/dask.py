"""Frames of a cluster: one session in each worker process, loaded once and kept."""
from __future__ import annotations

import logging
import os
import socket
import threading
from dataclasses import dataclass
from typing import TYPE_CHECKING, Iterable, Optional, Union

import pandas

from . import _native
from .frames import FrameShipments, frame_of
from .session import Session
from .terms import require_texts

if TYPE_CHECKING:
    from dask.dataframe import DataFrame

_log = logging.getLogger(__name__)


@dataclass(frozen=True)
class Terms:
    """What a bill depends on besides its shipment."""

    data: str
    set: str
    engine: str
    service_guide: str
    files: tuple[tuple[str, str], ...]  #: Size and digest by name, as the caller has them.

    def difference(self, here: dict[str, str]) -> Optional[str]:
        """The first file of a host that is another than the caller's; None when all are the same."""
        differing = set(self.files) ^ set(here.items())
        if not differing:
            return None
        name = min(name for name, _ in differing)
        if name not in here:
            return f"{name} is not there"
        article = "the" if name in dict(self.files) else "a"
        return f"{name} is not {article} file that the caller has"


_turn = threading.Lock()
_kept: Optional[tuple[Terms, Session, _native.DataWatch]] = None


def rate(shipments: DataFrame, data: Union[str, os.PathLike[str], None] = None, *,
         set: str = "SAMPLE", engine: str = "tolvex", service_guide: str = "servgd",
         passed: Iterable[str] = ()) -> DataFrame:
    """Rates a Dask frame of shipments, as ``hundredweight.rate_frame`` does one of pandas.

    data: a directory that every worker sees by the same path, as the caller does, with the same
    files in it, byte for byte. The other parameters are those of ``rate_frame``.

    Result: a frame of the same partitions, divisions and index. Each worker process loads the set
    once. Threads of one worker take turns at its session: start workers with one thread each.
    ColumnsPassedOn is warned of here, once.

    Raises Broken, ValueError and TypeError at once for what can be seen here. When it is computed,
    Broken for a host whose data are not there, are other ones, or change while they are rated from;
    ValueError for a partition that has other columns than the frame.
    """
    from dask.dataframe import DataFrame

    if not isinstance(shipments, DataFrame):
        raise TypeError(f"a Dask DataFrame of shipments is wanted, not a {type(shipments).__name__} "
                        f"of {type(shipments).__module__.partition('.')[0]}")
    directory = "" if data is None else os.fspath(data)
    require_texts(data=directory, set=set, engine=engine, service_guide=service_guide)
    data = _native.find_data(directory, set)
    files = _native.DataWatch(data, set, engine, service_guide).files
    terms = Terms(data, set, engine, service_guide, tuple(sorted(files.items())))
    # Told here once, and not by every partition.
    empty = FrameShipments(shipments._meta.iloc[:0], passed)
    empty.tell_of_passed()
    meta = frame_of(_native.RowColumns(), empty)
    return shipments.map_partitions(_rate_partition, terms, list(shipments.columns),
                                    list(empty.passed), meta=meta)


def close_session() -> None:
    """Closes the session that this process keeps, so that it may have another."""
    with _turn:
        _close()


def _close() -> None:
    global _kept
    if _kept is not None:
        _kept[1].close()
        _kept = None


def _rate_partition(shipments: pandas.DataFrame, terms: Terms, columns: list[str],
                    passed: list[str]) -> pandas.DataFrame:
    others = shipments.columns.symmetric_difference(columns)
    if len(others):  # A discount that a partition has lost would be lost in silence.
        raise ValueError(f'the column "{others[0]}" is not in every partition of the frame')
    with _turn:
        try:
            session, watch = _session(terms)
            bills = session.rate_frame(shipments, passed=passed)
            change = watch.change()  # A session reads profiles while it rates.
            if change:
                raise _native.Broken(f"{change} since this worker loaded the data")
            return bills
        except _native.Broken as error:
            _close()
            raise _native.Broken(f"{socket.gethostname()}: {error}") from None


def _session(terms: Terms) -> tuple[Session, _native.DataWatch]:
    """The session that is kept, or another in its place when it is of other terms."""
    global _kept
    if _kept is None or _kept[0] != terms:
        _close()
        _tell_of_threads()
        if not os.path.isdir(terms.data):
            raise _native.Broken(f"{terms.data} is not there; every worker must see the data by "
                                 "the path that the caller gave")
        watch = _native.DataWatch(terms.data, terms.set, terms.engine, terms.service_guide)
        difference = terms.difference(watch.files)
        if difference is not None:
            raise _native.Broken(difference)
        session = Session(terms.data, terms.set, engine=terms.engine,
                          service_guide=terms.service_guide)
        _kept = terms, session, watch
    return _kept[1:]


def _tell_of_threads() -> None:
    try:
        from distributed import get_worker

        threads = get_worker().state.nthreads
    except (ImportError, ValueError):
        return  # No worker of a cluster.
    if threads > 1:
        _log.warning("this worker has %d threads, which take turns at its one session; start "
                     "workers with one thread each", threads)
