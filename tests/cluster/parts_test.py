"""Parts and pipes of cwt batch over hosts by GNU parallel, and filters on one."""
import subprocess

import pandas

import hundredweight
import page
import parts
import year
from hosts import wait_for
from parts import END, START, Parts, broken_rates


def setUpModule():
    global hosts, folder, whole
    hosts, folder, whole = parts.begin()


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
