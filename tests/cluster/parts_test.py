"""Parts and pipes of cwt batch over hosts, by GNU parallel and by Slurm."""
import json
import os
import subprocess
import time
import unittest

import page
import year
from hosts import Hosts, wait_for
from slurm import Slurm

ROWS = 100_000


def setUpModule():
    global hosts, folder, whole
    hosts = Hosts("head", "node1", "node2")
    unittest.addModuleCleanup(hosts.close)
    folder = year.folder()
    year.write_rows(folder, ROWS)
    year.write_table(folder)
    whole = {form: year.batch(folder, f"shipments.{form}", f"whole.{form}") for form in ("ndjson", "csv")}


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

    def rows_rated_twice(self):
        """Rows that a run did not have to rate, for another had kept them."""
        parts = [json.loads(path.read_text()) for path in folder.glob("summary-*.json")]
        return sum(part["rows"] - part["rows_in_this_run"] for part in parts)


class GnuParallel(Parts):
    def start(self, block):
        command = page.commands("GNU parallel")[block]
        return subprocess.Popen(["bash", "-c", command], cwd=folder, stderr=subprocess.PIPE, text=True,
                                env=year.environment(PARALLEL_SSH=hosts.shell(folder)))

    def finish(self, run):
        said = run.communicate(timeout=60)[1]
        return run.returncode, said

    def test_parts_of_a_host_that_dies_go_on_elsewhere(self):
        run = self.start(0)
        wait_for(lambda: len(list(folder.glob("bills-*.journal"))) >= 6, 20, "parts at work")
        hosts.restart("node1")
        code, said = self.finish(run)
        self.assertEqual(code, 0, said)
        tries = (folder / "parts.log").read_text().splitlines()[1:]
        self.assertEqual(len(tries), 16)
        self.assert_whole()

    def test_a_part_that_is_broken_is_a_failure_and_is_done_by_the_next_run(self):
        rates = folder / "sample/tolvex-rates.txt"
        kept = rates.read_bytes()
        rates.write_bytes(kept[:-40])
        code, said = self.finish(self.start(0))
        rates.write_bytes(kept)
        self.assertEqual(code, 16, said)
        self.assertNotEqual(self.run_page("./whole.sh").returncode, 0)
        code, said = self.finish(self.start(0))
        self.assertEqual(code, 0, said)
        self.assert_whole()

    def test_pipes(self):
        for block, form in ((1, "ndjson"), (2, "csv")):
            code, said = self.finish(self.start(block))
            self.assertEqual(code, 0, said)
            self.assertTrue((folder / f"bills.{form}").read_bytes() == whole[form], form)

    def test_a_pipe_that_breaks_is_a_failure(self):
        run = self.start(1)
        wait_for(lambda: hosts["node1"].processes("cwt"), 20, "blocks at work")
        hosts.restart("node1")
        code, _ = self.finish(run)
        self.assertNotEqual(code, 0)


class SlurmArray(Parts):
    @classmethod
    def setUpClass(cls):
        cls.slurm = Slurm(hosts)
        cls.addClassCleanup(cls.slurm.close)

    def submit(self):
        (command,) = page.commands("Slurm")
        return subprocess.Popen(["bash", "-c", command], cwd=folder, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True,
                                env=year.environment(**self.slurm.variables))

    def states(self):
        """State and exit code of every task of the last array, and how often it was begun anew."""
        tasks = [dict(field.split("=", 1) for field in line.split() if "=" in field)
                 for line in self.slurm("scontrol", "show", "job", "-o").splitlines()]
        last = max(int(task["ArrayJobId"]) for task in tasks)
        return [(task["JobState"], task["ExitCode"], int(task["Restarts"]))
                for task in tasks if int(task["ArrayJobId"]) == last]

    def test_parts_of_a_node_that_dies_go_on_elsewhere(self):
        run = self.submit()
        wait_for(lambda: hosts["node1"].processes("cwt"), 20, "parts at work")
        hosts["node1"].die()
        said = run.communicate(timeout=60)
        self.assertEqual(run.returncode, 0, said)
        states = self.states()
        self.assertEqual([(state, code) for state, code, _ in states], [("COMPLETED", "0:0")] * 16)
        self.assertGreater(sum(restarts for _, _, restarts in states), 0)
        self.assert_whole()

    def test_a_part_that_is_broken_has_failed(self):
        rates = folder / "sample/tolvex-rates.txt"
        kept = rates.read_bytes()
        rates.write_bytes(kept[:-40])
        run = self.submit()
        run.communicate(timeout=60)
        rates.write_bytes(kept)
        self.assertNotEqual(run.returncode, 0)
        self.assertEqual({(state, code) for state, code, _ in self.states()}, {("FAILED", "2:0")})
