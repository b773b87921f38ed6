"""What Dask adds to rating: processor seconds of workers and scheduler, by workers and partitions.

Run by scripts/test_cluster.sh costs_of_dask.py; wall-clock seconds say something on an idle machine alone.
"""
import os
import subprocess
import time
import unittest

import dask.dataframe as dd
from distributed import Client

import hundredweight as hw
import year
from hosts import Hosts

ROWS = 200_000


class Costs(unittest.TestCase):
    def setUp(self):
        self.hosts = Hosts("head", "node1", "node2", "node3")
        self.addCleanup(self.hosts.close)
        self.folder = year.folder()
        year.write_rows(self.folder, ROWS)
        year.write_table(self.folder)
        self.lines = (self.folder / "shipments.csv").read_text().splitlines(keepends=True)
        self.start("head", "dask", "scheduler")
        self.client = Client("tcp://head:8786", timeout=60)
        self.addCleanup(self.client.close)

    def start(self, host, *command):
        self.hosts[host].start(*command, cwd=self.folder, env=year.environment(),
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def split(self, rows):
        folder = self.folder / f"by-{rows}"
        folder.mkdir(exist_ok=True)
        for number, begin in enumerate(range(1, len(self.lines), rows)):
            (folder / f"{number:06}.csv").write_text(self.lines[0] + "".join(self.lines[begin:begin + rows]))
        return f"{folder}/*.csv"

    def spent(self):
        scheduler = self.client.run_on_scheduler(time.process_time)
        return scheduler, sum(self.client.run(time.process_time).values())

    def measure(self, work):
        before, begun = self.spent(), time.monotonic()
        work()
        seconds = time.monotonic() - begun
        return seconds, *(late - early for late, early in zip(self.spent(), before))

    def test_costs(self):
        for workers in (1, 2, 3):
            self.start(f"node{workers}", "dask", "worker", "tcp://head:8786", "--nthreads", "1")
            self.client.wait_for_workers(workers, timeout=60)
            for rows in (1_000, 10_000, 50_000):
                frame = dd.read_csv(self.split(rows), dtype=str, keep_default_na=False, blocksize=None)
                bills = hw.dask.rate(frame, data=self.folder / "sample")
                counts = bills.map_partitions(self.write(rows), meta=("rows", int))
                if rows == 1_000:
                    counts.partitions[:3 * workers].compute()  # The set is loaded.
                seconds, scheduler, rating = self.measure(counts.compute)
                print(f"{workers} workers, {rows} rows a partition: {seconds:.1f} s; "
                      f"a row {rating / ROWS * 1e6:.1f} us on workers; "
                      f"a partition {scheduler / (ROWS / rows) * 1e3:.2f} ms on the scheduler", flush=True)
        seconds, scheduler, working = self.measure(
            lambda: self.client.gather(self.client.map(lambda number: number, range(10_000))))
        print(f"10000 tasks of nothing: {seconds:.1f} s, {scheduler:.1f} on the scheduler, "
              f"{working:.1f} on workers")

    def write(self, rows):
        folder = str(self.folder / f"bills-{rows}")
        os.makedirs(folder, exist_ok=True)

        def write(bills, partition_info=None):
            bills.to_csv(f"{folder}/{partition_info['number']}.csv", index=False)
            return bills.status.head(1).map(len)

        return write
