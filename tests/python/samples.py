"""What the tests of the Python package share: the sample data, and what cwt makes of them."""
import atexit
import contextlib
import json
import os
import pathlib
import shutil
import subprocess
import tempfile

import pandas

import hundredweight

CWT = pathlib.Path(os.environ["CWT"])
DOCS = pathlib.Path(__file__).parents[2] / "docs"
ROOT = pathlib.Path(tempfile.mkdtemp(prefix="hundredweight-test-"))
atexit.register(shutil.rmtree, ROOT)
DATA = ROOT / "sample"

# Not of a build that another prefix has.
assert pathlib.Path(hundredweight.__file__).is_relative_to(os.environ["PYTHONPATH"].split(":")[0])


def cwt(*arguments, codes=(0, 1), **options):
    done = subprocess.run([CWT, *map(str, arguments)], capture_output=True, text=True, **options)
    assert done.returncode in codes, done.stderr
    return done.stdout


cwt("sample", DATA)
SAMPLES = {path.stem: json.loads(path.read_text()) for path in sorted(DATA.glob("shipments/*.json"))}


def flat(shipment):
    """A shipment's row: what its columns hold, as docs/shipment.md names them."""
    row = {}
    for key, value in shipment.items():
        if key == "lines":
            for number, line in enumerate(value, 1):
                row.update({f"{name}_{number}": line.get(name) for name in ("class", "weight")})
        elif isinstance(value, dict):
            row.update({f"{key}_{name}": inner for name, inner in value.items()})
        elif key != "schema":
            row[key] = value
    return row


def generated(count):
    """Shipments as a frame, of which some are refused."""
    lines = cwt("sample", "--shipments", count).splitlines()
    frame = pandas.DataFrame([flat(json.loads(line)) for line in lines])
    # An unknown key, which refuses a shipment in JSON; a column of that name is passed on.
    return frame.drop(columns="destination_intrastate")


@contextlib.contextmanager
def copied_data(name):
    """A tariff set of a test's own."""
    copy = ROOT / name
    shutil.copytree(DATA, copy)
    yield copy
    shutil.rmtree(copy)
