"""Data frames of shipments in, data frames of bills out."""
from __future__ import annotations

import json
import os
import subprocess
import tempfile
import warnings
from pathlib import Path
from typing import Any, Iterable, Optional, Union

import numpy
import pandas

from . import _native

_CHUNK = 1 << 20  # Bytes of the rows that are read at once.


class FrameShipments:
    """A frame, told apart into columns that are read and others that are passed on.

    Raises TypeError and ValueError, with the column's name, for what cannot be relied on.
    """

    def __init__(self, shipments: pandas.DataFrame, passed: Iterable[str]) -> None:
        if not isinstance(shipments, pandas.DataFrame):
            raise TypeError(f"a pandas DataFrame of shipments is wanted, not a "
                            f"{type(shipments).__name__}")
        if isinstance(passed, str):
            raise TypeError("passed: a list of the columns' names is wanted, not one text")
        for name in shipments.columns:
            if not isinstance(name, (str, int)):
                raise TypeError(f"the column {name!r}: a name is a text")
        names = [str(name) for name in shipments.columns]
        is_read = _native.read_columns(names, list(passed))
        self.index = shipments.index
        self._read = [name for name, read in zip(names, is_read) if read]
        self._cells = [_cells(name, shipments.iloc[:, place])
                       for place, (name, read) in enumerate(zip(names, is_read)) if read]
        #: Columns that nobody reads, by their names, with the type that they have.
        self.passed = {name: shipments.iloc[:, place].array
                       for place, (name, read) in enumerate(zip(names, is_read)) if not read}

    def rows(self) -> _native.FrameRows:
        return _native.FrameRows(self._read, self._cells)


def _cells(name: str, column: pandas.Series) -> numpy.ndarray[Any, Any]:
    kind = column.dtype.kind
    if kind in "mMc":
        raise TypeError(f"the column \"{name}\" is of the type {column.dtype}; texts, numbers and "
                        "true or false are read")
    if kind == "f" and column.dtype.itemsize < 8:
        # As a longer binary fraction it would have decimals that nobody wrote.
        column = column.astype(str).where(column.notna(), None)
    cells: numpy.ndarray[Any, Any] = column.to_numpy(dtype=object)
    return cells


def frame_of(columns: _native.RowColumns, shipments: FrameShipments) -> pandas.DataFrame:
    """The frame of rows that are rated, behind the shipments' index. No row is lost."""
    if columns.rows != len(shipments.index) or not columns.is_whole:
        raise _native.Broken(f"{columns.rows} rows came of {len(shipments.index)} shipments")
    taken = columns.take()
    values = {name: _array(name, kind, *data) for name, kind, *data in taken}
    names = _native.passed_names(list(shipments.passed), list(values))
    passed = dict(zip(names, shipments.passed.values()))
    first = {name: values.pop(name) for name in ("id", "status")}
    return pandas.DataFrame({**first, **passed, **values}, index=shipments.index)


def _array(name: str, kind: str, values: Any, missing: Any = None) -> Any:
    if kind == "whole":
        return pandas.arrays.IntegerArray(values, missing)
    if kind == "percent":
        return pandas.arrays.FloatingArray(values / 100, missing)
    texts = numpy.array(values, dtype=object)
    return pandas.to_datetime(texts, format="%Y-%m-%d").array if name == "tariff_date" else texts


def empty_frame(shipments: pandas.DataFrame, passed: Iterable[str]) -> pandas.DataFrame:
    """The frame of no rows, with the columns and types that every other has."""
    return frame_of(_native.RowColumns(), FrameShipments(shipments.iloc[:0], passed))


def rate_frame(shipments: pandas.DataFrame, data: Union[str, os.PathLike[str], None] = None, *,
               set: str = "SAMPLE", jobs: Optional[int] = None, engine: str = "tolvex",
               service_guide: str = "servgd", passed: Iterable[str] = (),
               timeout: int = 60) -> pandas.DataFrame:
    """Rates a frame of shipments in worker processes, by ``cwt batch``.

    shipments: a row each, in the columns of ``docs/shipment.md``; weights are whole pounds. A value
    that is missing (None, NaN, NA) is a key left out. Other columns are passed on as they are; one
    whose name is nearly that of one that is read is an error, unless it is in ``passed``.
    data, set, engine, service_guide: as of Session.
    jobs: worker processes; None: as many as there are processors.
    timeout: seconds after which a row that has no answer is given up.

    Result: a frame with the same index and a row for every row, in their order, with the columns of
    ``docs/rows.md`` but ``row``. ``status`` is "rated", "refused" or "failed"; ``code``, ``place``
    and ``reason`` tell why there is no bill. Amounts are whole cents, in columns whose names say so
    (``total_due_cents``; of a rate, cents per hundredweight).

    Raises Broken when data, partners or disk are; then there are no rows at all. TypeError and
    ValueError, with the column's name, for a frame that cannot be read.
    """
    frame = FrameShipments(shipments, passed)
    jobs = (os.cpu_count() or 1) if jobs is None else jobs
    if jobs < 1:
        raise ValueError("jobs: at least one worker process is wanted")
    columns = _native.RowColumns()
    data = _native.find_data("" if data is None else os.fspath(data), set)
    with tempfile.TemporaryDirectory(prefix="hundredweight-") as folder:
        rows, summary, said = (Path(folder, name)
                               for name in ("rows.csv", "summary.json", "said.log"))
        with open(rows, "wb") as file:
            frame.rows().write(file.write)
        options = {"from": "csv", "to": "csv", "data": data, "set": set, "jobs": jobs,
                   "engine": engine, "service-guide": service_guide, "timeout": timeout,
                   "summary": summary}
        command = [str(Path(__file__).parent / _native.CWT), "batch", str(rows), "--no-progress"]
        command += [f"--{name}={value}" for name, value in options.items()]
        _run(command, columns, said)
        _confirm(summary, said)
    return frame_of(columns, frame)


def _run(command: list[str], columns: _native.RowColumns, said: Path) -> None:
    """Runs a batch, and takes its rows."""
    with open(said, "wb") as errors, subprocess.Popen(
            command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=errors) as batch:
        assert batch.stdout is not None
        try:
            header = batch.stdout.read(len(columns.header))
            if header not in (b"", columns.header):
                raise _native.Broken(f"{command[0]} is of another version: its columns differ")
            while chunk := batch.stdout.read(_CHUNK):
                columns.append(chunk)
        except BaseException:
            batch.kill()
            raise


def _confirm(summary: Path, said: Path) -> None:
    """Raises Broken for a batch that has not come to its end, and tells what it noted."""
    lines = said.read_text("utf-8", "replace").splitlines()
    try:
        outcome = json.loads(summary.read_text("utf-8"))
    except (OSError, ValueError):
        outcome = {"complete": False, "failure": None}
    if not outcome["complete"]:
        last = lines[-1].removeprefix("cwt: ") if lines else "it has ended without a word"
        raise _native.Broken(last or outcome["failure"])
    for line in lines:
        # A text of several lines is no mishap in a frame, whose rows are known.
        if line.startswith("cwt: note: ") and "of several lines" not in line:
            warnings.warn(line.removeprefix("cwt: note: "), stacklevel=3)
