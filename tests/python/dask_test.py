"""A cluster of worker processes."""
import logging
import os
import unittest
import warnings

import dask
import dask.dataframe
import pandas
from distributed import Client, LocalCluster

import hundredweight as hw
from samples import DATA, copied_data, generated


def session_of_worker():
    kept = hw.dask._kept
    return os.getpid(), id(kept[1]) if kept else None


class Cluster(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.cluster = LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None,
                                   silence_logs=logging.CRITICAL)
        cls.client = Client(cls.cluster)
        cls.frame = generated(4000).set_index(pandas.RangeIndex(10, 4010, name="order"))
        cls.shipments = dask.dataframe.from_pandas(cls.frame, npartitions=7)

    @classmethod
    def tearDownClass(cls):
        cls.client.close()
        cls.cluster.close()

    def test_the_rows_are_those_of_one_process(self):
        bills = hw.dask.rate(self.shipments, data=DATA)
        self.assertEqual(bills.divisions, self.shipments.divisions)
        computed = bills.compute()
        pandas.testing.assert_frame_equal(computed, hw.rate_frame(self.frame, DATA, jobs=2))
        pandas.testing.assert_series_equal(bills.dtypes, computed.dtypes)
        due = bills.groupby("tariff").total_due_cents.sum().compute()
        self.assertEqual(due.sum(), computed.total_due_cents.sum())

    def test_columns_that_nobody_reads_are_warned_of_once(self):
        shipments = self.shipments.assign(pct_off=5)
        with self.assertWarnsRegex(hw.ColumnsPassedOn, '"pct_off"'):
            bills = hw.dask.rate(shipments, data=DATA)
        self.addCleanup(hw.dask.close_session)
        with warnings.catch_warnings():
            warnings.simplefilter("error", hw.ColumnsPassedOn)
            self.assertEqual(bills.partitions[0].compute(scheduler="synchronous").pct_off.unique(), 5)

    def test_a_worker_keeps_one_session(self):
        bills = hw.dask.rate(self.shipments, data=DATA)
        bills.compute()
        before = self.client.run(session_of_worker)
        bills.compute()
        self.assertEqual(self.client.run(session_of_worker), before)
        self.assertEqual(len({process for process, _ in before.values()}), 2)

    def test_two_tariffs_in_one_graph(self):
        with copied_data("second") as second:
            rates = second / "tolvex-rates.txt"
            rates.write_text(rates.read_text().replace("38.30", "48.30"))
            sides = [hw.dask.rate(self.shipments, data=data) for data in (DATA, second)]
            for data, bills in zip((DATA, second), dask.compute(*sides)):
                pandas.testing.assert_frame_equal(bills, hw.rate_frame(self.frame, data, jobs=2))

    def test_data_that_are_others_on_a_worker_are_refused(self):
        with copied_data("moved") as data:
            bills = hw.dask.rate(self.shipments, data=data)
            # Of other keys: the scheduler may still remember how those of the first have ended.
            later = hw.dask.rate(self.shipments.repartition(npartitions=1), data=data)
            rates = data / "tolvex-rates.txt"
            rates.write_text(rates.read_text() + "\n")
            self.assertRaisesRegex(hw.Broken, "tolvex-rates.txt is not the file that the caller has",
                                   bills.compute)
        self.assertRaisesRegex(hw.Broken, "moved is not there", later.compute)
        self.assertRaisesRegex(hw.Broken, "/nowhere: No such file", hw.dask.rate, self.shipments, data="/nowhere")
        self.assertRaisesRegex(ValueError, "weight_1", hw.dask.rate,
                               self.shipments.drop(columns="weight_1"), data=DATA)

    def test_data_that_change_under_a_kept_session_end_the_run(self):
        self.addCleanup(hw.dask.close_session)
        with copied_data("changing") as data:
            bills = hw.dask.rate(self.shipments, data=data).partitions[0]
            before = bills.compute(scheduler="synchronous")
            profiles = data / "PROFILE.FIL"  # Read while a session rates, not when it begins.
            kept = profiles.read_bytes()
            profiles.write_bytes(kept.replace(b"Northeast", b"Southeast"))
            for reason in ("PROFILE.FIL: has changed", "PROFILE.FIL is not the file"):
                with self.assertRaisesRegex(hw.Broken, reason):
                    bills.compute(scheduler="synchronous")
            profiles.write_bytes(kept)
            stray = data / "notes.txt"
            stray.touch()
            with self.assertRaisesRegex(hw.Broken, "notes.txt is not a file that the caller has"):
                bills.compute(scheduler="synchronous")
            stray.unlink()
            pandas.testing.assert_frame_equal(bills.compute(scheduler="synchronous"), before)

    def test_a_partition_of_other_columns_is_refused(self):
        parts = [self.frame[:10], self.frame[10:20].drop(columns="discount_percent")]
        frame = dask.dataframe.from_delayed([dask.delayed(part) for part in parts],
                                            meta=self.frame[:0], verify_meta=False)
        self.assertRaisesRegex(ValueError, '"discount_percent" is not in every partition',
                               hw.dask.rate(frame, data=DATA).compute)
        self.assertRaisesRegex(TypeError, "not a DataFrame of pandas", hw.dask.rate, self.frame, data=DATA)

    def test_threads_of_one_process_take_turns(self):
        self.addCleanup(hw.dask.close_session)
        bills = hw.dask.rate(self.shipments, data=DATA)
        expected = bills.compute()
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")  # That there is a cluster too.
            here = bills.compute(scheduler="threads", num_workers=4)
        pandas.testing.assert_frame_equal(here, expected)
        self.assertRaises(hw.SessionInUse, hw.Session, DATA)


if __name__ == "__main__":
    unittest.main()
