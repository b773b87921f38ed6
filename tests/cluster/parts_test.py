"""Parts and pipes of cwt batch over hosts, by GNU parallel and by Slurm."""
import contextlib
import subprocess
import unittest

import pandas

import hundredweight
import page
import year
from hosts import Hosts, wait_for
from slurm import Slurm

ROWS = 80_000
START, END = 60, 120  # Seconds, on a machine that has other work.


def setUpModule():
    global hosts, folder, whole
    hosts = Hosts("head", "node1", "node2")
    unittest.addModuleCleanup(hosts.close)
    folder = year.folder()
    year.write_rows(folder, ROWS)
    year.write_table(folder)
    whole = {form: year.batch(folder, f"shipments.{form}", f"whole.{form}") for form in ("ndjson", "csv")}


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


class OnPaper(Parts):
    def test_frames_through_the_generator_are_those_of_one_call(self):
        (code,) = page.commands("Spark, on paper")
        names = {}
        exec(code, names)
        table = pandas.read_csv(folder / "shipments.csv", dtype=str, keep_default_na=False, nrows=3000)
        frames = (table[begin:begin + 1000] for begin in range(0, len(table), 1000))
        bills = pandas.concat(names["rate_rows"](frames, data=folder / "sample"))
        pandas.testing.assert_frame_equal(bills, hundredweight.rate_frame(table, folder / "sample"))

    def test_a_filter_fails_for_broken_data_and_not_for_refused_rows(self):
        filtered = self.run_page("head -n 100 shipments.ndjson | ./filter.sh")
        self.assertEqual(filtered.returncode, 0)
        self.assertIn('"status":"refused"', filtered.stdout)
        with broken_rates():
            self.assertEqual(self.run_page("head -n 100 shipments.ndjson | ./filter.sh").returncode, 2)


class GnuParallel(Parts):
    def start(self, block):
        command = page.commands("GNU parallel")[block]
        return subprocess.Popen(["bash", "-c", command], cwd=folder, stderr=subprocess.PIPE, text=True,
                                env=year.environment(PARALLEL_SSH=hosts.shell(folder)))

    def finish(self, run):
        said = run.communicate(timeout=END)[1]
        return run.returncode, said

    def test_parts_of_a_host_that_dies_go_on_elsewhere(self):
        run = self.start(0)
        wait_for(lambda: hosts["node1"].processes("cwt"), START, "parts at work")
        hosts.restart("node1")
        code, said = self.finish(run)
        self.assertEqual(code, 0, said)
        tries = (folder / "parts.log").read_text().splitlines()[1:]
        self.assertEqual(len(tries), 8)
        self.assert_whole()

    def test_a_part_that_is_broken_is_a_failure_and_is_done_by_the_next_run(self):
        with broken_rates():
            code, said = self.finish(self.start(0))
        self.assertEqual(code, 8, said)
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
        wait_for(lambda: hosts["node1"].processes("cwt"), START, "blocks at work")
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
        wait_for(lambda: hosts["node1"].processes("cwt"), START, "parts at work")
        hosts["node1"].die()
        said = run.communicate(timeout=END)
        self.assertEqual(run.returncode, 0, said)
        states = self.states()
        self.assertEqual([(state, code) for state, code, _ in states], [("COMPLETED", "0:0")] * 8)
        self.assertGreater(sum(restarts for _, _, restarts in states), 0)
        self.assert_whole()

    def test_a_part_that_is_broken_has_failed(self):
        with broken_rates():
            run = self.submit()
            run.communicate(timeout=END)
        self.assertNotEqual(run.returncode, 0)
        self.assertEqual({(state, code) for state, code, _ in self.states()}, {("FAILED", "2:0")})
