"""A year to rate: its shipments in the forms that the engines read, and what cwt batch makes of them."""
import atexit
import json
import os
import pathlib
import shutil
import subprocess
import tempfile

import pandas

import page

CWT = os.environ["CWT"]


def folder():
    """An empty directory that every host sees, with the scripts of the page and the sample set."""
    path = pathlib.Path(tempfile.mkdtemp(prefix="hundredweight-cluster-"))
    atexit.register(shutil.rmtree, path, ignore_errors=True)
    page.write_scripts(path)
    subprocess.run([CWT, "sample", path / "sample"], check=True, stdout=subprocess.DEVNULL)
    return path


def environment(**more):
    """That of a host on which Hundredweight is installed."""
    binaries = f"{os.path.dirname(CWT)}:{os.environ['PATH']}"
    return {**os.environ, "PATH": binaries, "PYTHONWARNINGS": "ignore", **more}


def batch(path, shipments, bills):
    """Rates a file by one process of this machine. Result: the bytes of the bills."""
    done = subprocess.run([CWT, "batch", shipments, "-o", bills, "--data", "sample"], cwd=path,
                          capture_output=True, text=True)
    assert done.returncode == 1, done.stderr  # Some shipments are refused.
    return (path / bills).read_bytes()


def write_rows(path, count):
    with open(path / "shipments.ndjson", "wb") as file:
        subprocess.run([CWT, "sample", "--shipments", str(count)], check=True, stdout=file)


def write_table(path):
    """The same shipments as CSV, from those of JSON."""
    with open(path / "shipments.ndjson") as lines:
        rows = [_cells(json.loads(line)) for line in lines]
    frame = pandas.DataFrame(rows, dtype=object)
    frame.to_csv(path / "shipments.csv", index=False)


def _cells(shipment):
    cells = {}
    for key, value in shipment.items():
        if key == "lines":
            for number, line in enumerate(value, 1):
                cells.update({f"class_{number}": line["class"], f"weight_{number}": line["weight"]})
        elif isinstance(value, dict):
            cells.update({f"{key}_{name}": inner for name, inner in value.items()})
        else:
            cells[key] = value
    cells.pop("destination_intrastate", None)  # An unknown key; as a column it would be passed on.
    return cells
