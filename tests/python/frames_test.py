"""Frames: the bills of a batch, rows and index kept, and what columns may hold."""
import decimal
import unittest
from unittest import mock

import numpy
import pandas
from pandas.testing import assert_frame_equal, assert_series_equal

import hundredweight as hw
from samples import DATA, ROOT, copied_data, cwt, generated

LANE = {"origin_zip": "30303", "destination_zip": "60601", "class_1": "70", "weight_1": 1205,
        "tariff": "SMPLNATL"}


def as_batch_writes(frame):
    """A frame of bills as texts, under the names of the batch's CSV form."""
    texts = {"row": [str(row) for row in range(1, len(frame) + 1)]}
    for name, column in frame.items():
        if "_cents" in name:
            name = name.replace("_cents", "")
            texts[name] = ["" if value is pandas.NA else str(decimal.Decimal(int(value)).scaleb(-2)) for value in column]
        elif name == "discount_percent":
            texts[name] = ["" if value is pandas.NA else f"{value:.2f}" for value in column]
        elif name == "tariff_date":
            texts[name] = ["" if value is pandas.NaT else f"{value:%Y-%m-%d}" for value in column]
        else:
            texts[name] = ["" if value is None or value is pandas.NA else str(value) for value in column]
    return pandas.DataFrame(texts)


class Frames(unittest.TestCase):
    def setUp(self):
        self.session = hw.Session(DATA)
        self.addCleanup(self.session.close)

    def test_the_rows_are_those_of_a_batch_in_one_process_and_in_two(self):
        frame = generated(5000)
        frame.to_csv(ROOT / "frame.csv", index=False)
        cwt("batch", ROOT / "frame.csv", "-o", ROOT / "bills.csv", "--data", DATA)
        expected = pandas.read_csv(ROOT / "bills.csv", dtype=str, keep_default_na=False)
        self.assertEqual(set(expected.status), {"rated", "refused"})
        here = self.session.rate_frame(frame)
        assert_frame_equal(as_batch_writes(here), expected[as_batch_writes(here).columns])
        self.assertEqual(len(here.columns), len(expected.columns) - 1)
        assert_frame_equal(hw.rate_frame(frame, DATA, jobs=2), here)

    def test_index_and_columns_that_nobody_reads_stay_as_they_are(self):
        frame = pandas.DataFrame([LANE] * 3, index=pandas.Index([7, 7, 2], name="order"))
        frame["shipped"] = pandas.date_range("2025-01-06", periods=3)
        frame["status"] = pandas.Categorical(["a", "b", "a"])
        frame["id"] = [7, 8, 8]
        passed = ["shipped", "status"]
        for bills in (self.session.rate_frame(frame, passed=passed),
                      hw.rate_frame(frame, DATA, jobs=1, passed=passed)):
            self.assertTrue(bills.index.equals(frame.index))
            self.assertEqual(bills.index.name, "order")
            self.assertTrue(bills.shipped.array.equals(frame.shipped.array))
            self.assertTrue((bills.input_status.array == frame.status.array).all())
            assert_series_equal(bills.id, frame.id)
            self.assertEqual(list(bills.columns[:4]), ["id", "status", "shipped", "input_status"])

    def test_columns_that_nobody_reads_are_warned_of(self):
        frame = pandas.DataFrame([LANE]).assign(pct_off=5, lane=7)
        with self.assertWarnsRegex(hw.ColumnsPassedOn, 'passed on: "pct_off"; ') as caught:
            self.session.rate_frame(frame, passed=["lane"])
        self.assertEqual(caught.filename, __file__)
        self.assertWarns(hw.ColumnsPassedOn, hw.rate_frame, frame, DATA, jobs=1)
        self.assertRaisesRegex(ValueError, "nosuch", self.session.rate_frame, frame, passed=["nosuch"])

    def test_values_are_taken_as_those_of_spreadsheets(self):
        same = {
            "origin_zip": [30303, 30303.0, numpy.int32(30303), " 30303-1234 ", decimal.Decimal(30303)],
            "class_1": [70, 70.0, numpy.float32(70), "70", decimal.Decimal(70)],
            "weight_1": [1205.0, "1205.0", "1205", numpy.int64(1205), decimal.Decimal("1205.0")],
            "factor": [None, numpy.nan, pandas.NA, pandas.NaT, ""]}
        expected = self.session.rate_frame(pandas.DataFrame([LANE])).total_due_cents[0]
        for name, values in same.items():
            frame = pandas.DataFrame([LANE] * 5).assign(**{name: pandas.Series(values, dtype=object)})
            self.assertEqual(list(self.session.rate_frame(frame).total_due_cents), [expected] * 5, name)
        frame = pandas.DataFrame([LANE] * 2).assign(factor=numpy.array([0.9, 1], dtype="float32"))
        self.assertEqual(list(self.session.rate_frame(frame).status), ["rated"] * 2)
        frame = pandas.DataFrame([LANE] * 2).assign(origin_zip=[99.0, None])
        bills = self.session.rate_frame(frame)
        self.assertEqual(list(bills.place), ["origin.zip"] * 2)
        self.assertIn('"00099"', bills.reason[0])

    def test_texts_of_every_kind_keep_their_row(self):
        names = ["a,b", 'say "so"', "two\nlines", "ö\u20ac", "zero\0byte", "\ud800", ""]
        frame = pandas.DataFrame([LANE] * len(names)).assign(id=names)
        bills = self.session.rate_frame(frame)
        self.assertEqual(list(bills.status), ["rated"] * 4 + ["refused"] * 2 + ["rated"])
        self.assertEqual(list(bills.id[:4]), names[:4])
        assert_frame_equal(hw.rate_frame(frame, DATA, jobs=2), bills)

    def test_columns_that_cannot_be_relied_on_are_named(self):
        frame = pandas.DataFrame([LANE])
        cases = [
            (ValueError, "lacks what every shipment has: weight_1", frame.drop(columns="weight_1")),
            (ValueError, '"discont_percent".*"discount_percent" is most likely meant',
             frame.assign(discont_percent=5)),
            (ValueError, '"tariff" is there twice', pandas.concat([frame, frame[["tariff"]]], axis=1)),
            (TypeError, r'"weight_1" holds a list in row 1 \(index 0\)', frame.assign(weight_1=[[1]])),
            (TypeError, "the column True: a name is a text", frame.assign(**{"x": 1}).rename(columns={"x": True})),
            (ValueError, r"the column '\\ud800'", frame.assign(**{"\ud800": 1})),
            (ValueError, r'"id" holds \d+ bytes in row 1 \(index 0\)', frame.assign(id="x\n" * (1 << 20))),
            (TypeError, '"id" is of the type datetime64', frame.assign(id=pandas.Timestamp("2025-01-06"))),
            (TypeError, "a pandas DataFrame of shipments is wanted, not a dict", LANE)]
        for kind, words, shipments in cases:
            for rate in (self.session.rate_frame, lambda frame: hw.rate_frame(frame, DATA)):
                self.assertRaisesRegex(kind, words, rate, shipments)
        slip = frame.assign(discont_percent=5)
        self.assertEqual(self.session.rate_frame(slip, passed=["discont_percent"]).discont_percent[0], 5)

    def test_an_empty_frame_has_the_same_columns_and_types(self):
        frame = pandas.DataFrame([LANE])
        here = self.session.rate_frame(frame.iloc[:0])
        assert_frame_equal(here, hw.rate_frame(frame.iloc[:0], DATA))
        self.assertTrue((here.dtypes == self.session.rate_frame(frame).dtypes).all())

    def test_what_breaks_gives_no_rows(self):
        frame = pandas.DataFrame([LANE] * 10)
        with copied_data("no-engine") as data:
            (data / "tolvex-rates.txt").write_text("no rates")
            self.assertRaisesRegex(hw.Broken, "tolvex-rates", hw.rate_frame, frame, data, jobs=2)
        self.assertRaisesRegex(hw.Broken, "noengine", hw.rate_frame, frame, DATA, engine="noengine")
        for name, number in (("jobs", 0), ("jobs", 1.5), ("jobs", 9999), ("timeout", 0)):
            self.assertRaisesRegex(ValueError, f"^{name}: a whole number", hw.rate_frame, frame, DATA, **{name: number})
        self.assertRaisesRegex(ValueError, "^set: no path", hw.rate_frame, frame, DATA, set="a\0b")

    def test_a_command_that_does_not_start_or_is_killed_is_named(self):
        frame = pandas.DataFrame([LANE])
        for lines, words in ((None, "no-cwt: No such file"), ("kill -9 $$", "signal 9 .Killed"), ("", "without a word")):
            command = ROOT / "no-cwt"
            if lines is not None:
                command.write_text(f"#!/bin/sh\n{lines}\n")
                command.chmod(0o755)
            with mock.patch("hundredweight._native.CWT", str(command)):
                self.assertRaisesRegex(hw.Broken, words, hw.rate_frame, frame, DATA)


if __name__ == "__main__":
    unittest.main()
