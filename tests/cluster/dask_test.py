"""A Dask cluster of which one host dies and another is cut off while it rates."""
import collections
import hashlib
import os
import subprocess
import time
import unittest

import pandas
from distributed import Client

import page
import year
from hosts import Hosts, wait_for

ROWS, ROWS_A_FILE = 200_000, 2_500
NODES = ("node1", "node2", "node3")
# Seconds where a cluster would wait for minutes; Dask takes no less than 11 of its connections.
TERMS = {"COMM__TIMEOUTS__CONNECT": "5s", "COMM__TIMEOUTS__TCP": "11s", "SCHEDULER__WORKER_TTL": "15s"}
# The interpreters of all workers start at once on few processors.
START = 60


def batch_row(cells, names):
    """A row of the frame in the words of cwt batch: dollars for cents, two decimals for percents."""
    for name, cell in zip(names, cells):
        if cell and "_cents" in name:
            yield f"{int(cell) // 100}.{int(cell) % 100:02}"
        elif cell and name == "discount_percent":
            yield f"{float(cell):.2f}"
        else:
            yield cell


def as_batch_writes(files):
    """The bytes that cwt batch makes of the same shipments, from the frames' files."""
    rows = 0
    for file in files:
        frame = pandas.read_csv(file, dtype=str, keep_default_na=False)
        names = list(frame)
        texts = pandas.DataFrame(
            [[str(rows + number), *batch_row(cells, names)]
             for number, cells in enumerate(frame.itertuples(index=False, name=None), 1)],
            columns=["row", *(name.replace("_cents", "") for name in names)])
        yield texts.to_csv(index=False, header=rows == 0, lineterminator="\r\n").encode()
        rows += len(frame)


class LostHosts(unittest.TestCase):
    def setUp(self):
        self.hosts = Hosts("head", *NODES)
        self.addCleanup(self.hosts.close)
        self.folder = year.folder()
        year.write_rows(self.folder, ROWS)
        year.write_table(self.folder)
        self.whole = year.batch(self.folder, "shipments.csv", "whole.csv")
        self.split()
        self.start_cluster()

    def split(self):
        lines = (self.folder / "shipments.csv").read_text().splitlines(keepends=True)
        (self.folder / "shipments").mkdir()
        for number, begin in enumerate(range(1, len(lines), ROWS_A_FILE)):
            text = lines[0] + "".join(lines[begin:begin + ROWS_A_FILE])
            (self.folder / f"shipments/{number:06}.csv").write_text(text)

    def start_cluster(self):
        terms = {f"DASK_DISTRIBUTED__{name}": value for name, value in TERMS.items()}
        self.environment = year.environment(**terms)
        scheduler, worker = page.commands("Dask")
        self.logs = {}
        for name, command in (("head", scheduler), *((node, worker) for node in NODES)):
            self.logs[name] = open(self.folder / f"{name}.log", "w+")
            self.addCleanup(self.logs[name].close)
            self.hosts[name].start("bash", "-c", command, cwd=self.folder, env=self.environment,
                                   stdout=self.logs[name], stderr=self.logs[name])
        wait_for(lambda: "Scheduler at" in self.log("head"), START, "the scheduler")
        self.client = Client("tcp://head:8786", timeout=START)
        self.addCleanup(self.client.close)
        self.workers_a_host = len(os.sched_getaffinity(0))
        self.client.wait_for_workers(len(NODES) * self.workers_a_host, timeout=START)

    def log(self, name):
        return (self.folder / f"{name}.log").read_text()

    def bills(self):
        return sorted((self.folder / "bills").glob("??????.csv"))

    def hosts_with_workers(self):
        addresses = {worker.split("/")[2].split(":")[0] for worker in self.client.scheduler_info()["workers"]}
        return {name for name in NODES if self.hosts[name].address in addresses}

    def test_every_row_is_there_once(self):
        begun = time.monotonic()
        run = subprocess.Popen(["/usr/bin/python3", "-B", "year.py"], cwd=self.folder, text=True,
                               env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        partitions = ROWS // ROWS_A_FILE
        self.after(run, partitions // 16)
        self.hosts["node3"].cut()
        time.sleep(2)  # Shorter than anybody notices.
        self.hosts["node3"].mend()
        self.after(run, partitions // 8)
        self.hosts["node1"].die()
        self.after(run, partitions // 4)
        self.hosts["node2"].cut()
        said, errors = run.communicate(timeout=150)
        seconds = time.monotonic() - begun
        self.assertEqual(run.returncode, 0, errors)
        self.assertRegex(said, rf"^{partitions} partitions, {ROWS} rows, \d+ refused\n$")
        self.assertEqual(self.hosts_with_workers(), {"node3"})
        self.hosts["node2"].mend()
        wait_for(lambda: "End worker" in self.log("node2"), START, "workers that were given up")
        starts = self.starts_of_partitions()
        again = sum(1 for times in starts.values() if times > 1)
        self.assertEqual(len(starts), partitions)
        self.assertGreater(again, 0)
        digest, size = hashlib.sha256(), 0
        for text in as_batch_writes(self.bills()):
            digest.update(text)
            size += len(text)
        print(f"\n{ROWS} rows in {partitions} partitions; 3 hosts: 1 killed, 1 cut off, 1 cut off for 2 seconds; "
              f"{again} partitions given out again, {sum(starts.values()) - partitions} times; "
              f"{2 * self.workers_a_host} workers lost; {seconds:.1f} seconds; {size} bytes, those of "
              f"cwt batch {len(self.whole)}")
        self.assertEqual(digest.hexdigest(), hashlib.sha256(self.whole).hexdigest())

    def starts_of_partitions(self):
        """How often each was given to a worker."""
        log = self.client.run_on_scheduler(lambda dask_scheduler: [
            (str(entry[0]), entry[2]) for entry in dask_scheduler.transition_log])
        return collections.Counter(key for key, state in log
                                   if state == "processing" and key.startswith("('write-"))

    def after(self, run, count):
        wait_for(lambda: run.poll() is not None or len(self.bills()) >= count, START, f"{count} partitions")
        if run.poll() is not None:
            self.fail(f"the run ended before its hosts did: {run.communicate()}")


if __name__ == "__main__":
    unittest.main()
