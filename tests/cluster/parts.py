"""A year's rows on three hosts, and what is left of them when parts of them were rated."""
import contextlib
import subprocess
import unittest

import year
from hosts import Hosts

ROWS = 80_000
START, END = 60, 120  # Seconds, on a machine that has other work.


def begin():
    """The hosts, the folder that they share, and the whole outputs by their forms; until the module ends."""
    global folder, whole
    hosts = Hosts("head", "node1", "node2")
    unittest.addModuleCleanup(hosts.close)
    folder = year.folder()
    year.write_rows(folder, ROWS)
    year.write_table(folder)
    whole = {form: year.batch(folder, f"shipments.{form}", f"whole.{form}") for form in ("ndjson", "csv")}
    return hosts, folder, whole


@contextlib.contextmanager
def broken_rates():
    rates = folder / "sample/tolvex-rates.txt"
    kept = rates.read_bytes()
    rates.write_bytes(kept[:-40])
    yield
    rates.write_bytes(kept)


class Parts(unittest.TestCase):
    def setUp(self):
        for pattern in ("bills*", "summary-*", "parts.log", "part-*.log"):
            for path in folder.glob(pattern):
                path.unlink()

    def run_page(self, command, **environment):
        return subprocess.run(["bash", "-c", command], cwd=folder, capture_output=True, text=True,
                              env=year.environment(**environment))

    def assert_whole(self):
        joined = self.run_page("./whole.sh && python3 rows.py")
        self.assertEqual((joined.returncode, joined.stderr), (0, ""))
        self.assertIn(f"'rows': {ROWS}", joined.stdout)
        self.assertTrue((folder / "bills.ndjson").read_bytes() == whole["ndjson"])
