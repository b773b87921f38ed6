"""Data frames of shipments in, data frames of bills out."""
from __future__ import annotations

import json
import os
import signal
import subprocess
import tempfile
import warnings
from pathlib import Path
from typing import Any, BinaryIO, Iterable, Iterator, Optional, Union

import numpy
import pandas

from . import _native
from .terms import is_unicode, require_texts, require_whole

_CHUNK = 1 << 20  # Bytes of the rows that are read at once.
_MOST_JOBS = 1024
_LONGEST_TIMEOUT = 86400  # Seconds.


class ColumnsPassedOn(UserWarning):
    """A frame has columns that nobody reads and that ``passed`` does not name: a discount in one of
    them is no discount."""


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
            if isinstance(name, bool) or not isinstance(name, (str, int)):
                raise TypeError(f"the column {name!r}: a name is a text")
            if not is_unicode(str(name)):
                raise ValueError(f"the column {name!r}: half a character is in its name")
        names = [str(name) for name in shipments.columns]
        meant = [str(name) for name in passed]
        is_read = _native.read_columns(names, [name for name in meant if name in names])
        self.index = shipments.index
        self._read = [name for name, read in zip(names, is_read) if read]
        self._cells = [_cells(name, shipments.iloc[:, place])
                       for place, (name, read) in enumerate(zip(names, is_read)) if read]
        #: Columns that nobody reads, by their names, with the type that they have.
        self.passed = {name: shipments.iloc[:, place].array
                       for place, (name, read) in enumerate(zip(names, is_read)) if not read}
        for name in meant:
            if name not in self.passed:
                raise ValueError(f"passed: no column that is passed on is called {name!r}")
        self._unmentioned = [name for name in self.passed if name not in meant]
        self.id = shipments["id"].array if "id" in self._read else None

    def tell_of_passed(self) -> None:
        """Warns who called the function that was called, of columns that nobody reads."""
        if self._unmentioned:
            names = ", ".join(f'"{name}"' for name in self._unmentioned)
            warnings.warn(f"nobody reads these columns, which are passed on: {names}; "
                          "passed=[...] says which are meant to be", ColumnsPassedOn, stacklevel=3)

    def rows(self) -> _native.FrameRows:
        return _native.FrameRows(self._read, self._cells, self.index)

    def texts(self) -> Iterator[bytes]:
        """The table of the columns that are read, part by part."""
        rows, row = self.rows(), 0
        yield rows.header
        while row < len(self.index):
            text, count = rows.text_from(row)
            yield text
            row += count


def _cells(name: str, column: pandas.Series) -> numpy.ndarray[Any, Any]:
    if isinstance(column.dtype, pandas.SparseDtype):
        column = column.sparse.to_dense()
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
    if shipments.id is not None:
        first["id"] = shipments.id
    return pandas.DataFrame({**first, **passed, **values}, index=shipments.index)


def _array(name: str, kind: str, values: Any, missing: Any = None) -> Any:
    if kind == "whole":
        return pandas.arrays.IntegerArray(values, missing)
    if kind == "percent":
        return pandas.arrays.FloatingArray(values / 100, missing)
    texts = numpy.array(values, dtype=object)
    return pandas.to_datetime(texts, format="%Y-%m-%d").array if name == "tariff_date" else texts


def rate_frame(shipments: pandas.DataFrame, data: Union[str, os.PathLike[str], None] = None, *,
               set: str = "SAMPLE", jobs: Optional[int] = None, engine: str = "tolvex",
               service_guide: str = "servgd", passed: Iterable[str] = (),
               timeout: int = 60) -> pandas.DataFrame:
    """Rates a frame of shipments in worker processes, by ``cwt batch``.

    shipments: a row each, in the columns of ``docs/shipment.md``; weights are whole pounds. A value
    that is missing (None, NaN, NA) is a key left out. Other columns are passed on as they are.
    passed: the columns that are meant to be passed on. Of others there is a warning,
    ColumnsPassedOn; one whose name is nearly that of one that is read is an error.
    data, set, engine, service_guide: as of Session.
    jobs: worker processes; None: as many as there are processors.
    timeout: seconds after which a row that has no answer is given up.

    Result: a frame with the same index and a row for every row, in their order, with the columns of
    ``docs/rows.md`` but ``row``. ``id`` has the values that it had. ``status`` is "rated", "refused" or "failed"; ``code``, ``place``
    and ``reason`` tell why there is no bill. Amounts are whole cents, in columns whose names say so
    (``total_due_cents``; of a rate, cents per hundredweight).

    Raises Broken when data, partners or disk are; then there are no rows at all. TypeError and
    ValueError, with the column's name, for a frame that cannot be read.
    """
    jobs = min(os.cpu_count() or 1, _MOST_JOBS) if jobs is None else jobs
    require_whole(_MOST_JOBS, jobs=jobs)
    require_whole(_LONGEST_TIMEOUT, timeout=timeout)
    directory = "" if data is None else os.fspath(data)
    require_texts(data=directory, set=set, engine=engine, service_guide=service_guide)
    frame = FrameShipments(shipments, passed)
    frame.tell_of_passed()
    columns = _native.RowColumns()
    directory = _native.find_data(directory, set)
    with tempfile.TemporaryDirectory(prefix="hundredweight-") as folder:
        rows, summary, said = (Path(folder, name)
                               for name in ("rows.csv", "summary.json", "said.log"))
        with open(rows, "wb") as file:
            file.writelines(frame.texts())
        options = {"from": "csv", "to": "csv", "data": directory, "set": set, "jobs": jobs,
                   "engine": engine, "service-guide": service_guide, "timeout": timeout,
                   "summary": summary}
        command = [str(Path(__file__).parent / _native.CWT), "batch", str(rows), "--no-progress"]
        command += [f"--{name}={value}" for name, value in options.items()]
        _confirm(summary, said, _run(command, columns, said))
    return frame_of(columns, frame)


def _start(command: list[str], errors: BinaryIO) -> subprocess.Popen[bytes]:
    try:
        return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=errors)
    except OSError as error:
        raise _native.Broken(f"{command[0]}: {error.strerror}") from None


def _run(command: list[str], columns: _native.RowColumns, said: Path) -> int:
    """Runs a batch, and takes its rows. Result: how it ended."""
    with open(said, "wb") as errors, _start(command, errors) as batch:
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
    return batch.returncode


def _confirm(summary: Path, said: Path, code: int) -> None:
    """Raises Broken for a batch that has not come to its end, and tells what it noted."""
    lines = said.read_text("utf-8", "replace").splitlines()
    try:
        outcome = json.loads(summary.read_text("utf-8"))
    except (OSError, ValueError):
        outcome = {"complete": False, "failure": None}
    if not outcome["complete"]:
        if code < 0:
            lines.append(f"cwt batch was ended by signal {-code} ({signal.strsignal(-code)})")
        last = lines[-1].removeprefix("cwt: ") if lines else "cwt batch has ended without a word"
        raise _native.Broken(last or outcome["failure"])
    for line in lines:
        # A text of several lines is no mishap in a frame, whose rows are known.
        if line.startswith("cwt: note: ") and "of several lines" not in line:
            warnings.warn(line.removeprefix("cwt: note: "), stacklevel=3)
