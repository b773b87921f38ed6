"""Shipments one by one: bills, refusals, and what is broken."""
import decimal
import json
import multiprocessing
import os
import pickle
import subprocess
import sys
import threading
import unittest

import numpy

import hundredweight as hw
from samples import DATA, SAMPLES, copied_data, cwt, generated

FIRST = SAMPLES["01-deficit-and-discount"]


class Rating(unittest.TestCase):
    def setUp(self):
        self.session = hw.Session(DATA)
        self.addCleanup(self.session.close)

    def test_bills_and_refusals_are_those_of_the_command(self):
        for name, shipment in SAMPLES.items():
            with self.subTest(name):
                expected = json.loads(cwt("rate", DATA / "shipments" / f"{name}.json", "--json"))
                try:
                    bill = self.session.rate(shipment)
                except hw.Refused as refused:
                    first = expected["refusals"][0]
                    told = [vars(refusal) | {"alternatives": list(refusal.alternatives)}
                            for refusal in refused.refusals]
                    self.assertEqual(told, expected["refusals"])
                    self.assertEqual([refused.code, refused.text, refused.place],
                                     [first["code"], first["text"], first["place"]])
                    continue
                self.assertEqual(bill.to_dict(), expected)
                self.assertEqual(str(bill.total_due), expected["total_due"])
                self.assertEqual(sum(line.charge for line in bill.lines) +
                                 (bill.deficit.charge if bill.deficit else 0), bill.gross_charge)
                explained = cwt("rate", DATA / "shipments" / f"{name}.json", "--explain")
                self.assertEqual(f"{bill}\n{bill.explain()}", explained)

    def test_bills_and_refusals_go_to_another_process(self):
        with self.assertRaises(hw.Refused) as caught:
            self.session.rate(SAMPLES["15-unknown-class"])
        copy = pickle.loads(pickle.dumps(caught.exception))
        self.assertEqual((str(copy), copy.refusals), (str(caught.exception), caught.exception.refusals))
        bill = self.session.rate(FIRST)
        copy = pickle.loads(pickle.dumps(bill))
        self.assertEqual(copy, bill)
        self.assertRaises(ValueError, copy.explain)
        self.session.close()
        self.assertRaises(ValueError, bill.explain)

    def test_numbers_of_a_shipment_may_be_decimals_and_of_numpy(self):
        for number in (decimal.Decimal("45.6"), numpy.float32(45.6), numpy.longdouble("45.6")):
            bill = self.session.rate({**FIRST, "discount": {"percent": number}})
            self.assertEqual(bill.discount.percent, decimal.Decimal("45.60"))
        line = {"class": numpy.int64(70), "weight": numpy.uint16(500)}
        self.assertEqual(self.session.rate({**FIRST, "lines": [line], "service_guide": numpy.bool_(False)}).total_weight, 500)

    def test_values_that_are_none_of_a_shipment_are_named(self):
        cases = [
            (TypeError, "^id: a shipment holds no bytes", {"id": b"1"}),
            (TypeError, r"^lines\[0\].weight: .* no ndarray", {"lines": [{"class": 70, "weight": numpy.array(5)}]}),
            (TypeError, "^factor: .* no timedelta64", {"factor": numpy.timedelta64(1, "D")}),
            (TypeError, "^origin: the key 1 is no text", {"origin": {1: 2}}),
            (ValueError, "^factor: nan is no number", {"factor": float("nan")}),
            (hw.Refused, "^factor: a number is wanted", {"factor": decimal.Decimal("0.9" + "0" * 20 + "1")})]
        for kind, words, changes in cases:
            self.assertRaisesRegex(kind, words, self.session.rate, {**FIRST, **changes})


class Sessions(unittest.TestCase):
    def test_a_process_has_one_at_a_time(self):
        with hw.Session(DATA) as first:
            with self.assertRaisesRegex(hw.SessionInUse, "has a session already, on .*sample"):
                hw.Session(DATA)
            due = first.rate(FIRST).total_due
        self.assertRaisesRegex(ValueError, "closed", first.rate, FIRST)
        for _ in range(5):
            with hw.Session(DATA) as another:
                self.assertEqual(another.rate(FIRST).total_due, due)

    def test_a_set_that_is_changed_between_two_is_read_anew(self):
        with copied_data("dearer") as data:
            with hw.Session(data) as before:
                due = before.rate(FIRST).total_due
            rates = data / "tolvex-rates.txt"
            rates.write_text(rates.read_text().replace("38.30", "48.30"))
            with hw.Session(data) as after:
                self.assertGreater(after.rate(FIRST).total_due, due)

    def test_what_is_broken_is_named_and_leaves_room_for_another(self):
        with copied_data("broken") as data:
            (data / "SAMPLE.SET").write_bytes(b"")
            self.assertRaisesRegex(hw.Broken, "SAMPLE.SET", hw.Session, data)
        self.assertRaisesRegex(hw.Broken, "/nowhere: No such file", hw.Session, "/nowhere")
        self.assertRaisesRegex(hw.Broken, "noengine", hw.Session, DATA, engine="noengine")
        hw.Session(DATA).close()

    def test_threads_take_turns_and_the_interpreter_goes_on(self):
        frame = generated(3000)
        with hw.Session(DATA) as session:
            expected, results = session.rate_frame(frame), {}

            def work(place):
                results[place] = session.rate_frame(frame)

            threads = [threading.Thread(target=work, args=(place,)) for place in range(3)]
            for thread in threads:
                thread.start()
            bill = session.rate(FIRST)
            steps = 0
            while any(thread.is_alive() for thread in threads):
                steps += 1
            for thread in threads:
                thread.join()
            self.assertEqual(bill, session.rate(FIRST))
        # With the lock held while it is rated, this thread would hardly have had a step.
        self.assertGreater(steps, 1000)
        for place in range(3):
            self.assertTrue(results[place].equals(expected))

    def test_a_forked_process_is_told(self):
        def use(session, queue):
            try:
                session.rate(FIRST)
            except hw.SessionInUse as error:
                queue.put(str(error))

        with hw.Session(DATA) as session:
            fork = multiprocessing.get_context("fork")
            queue = fork.Queue()
            process = fork.Process(target=use, args=(session, queue))
            process.start()
            self.assertIn(f"of the process {os.getpid()}", queue.get(timeout=60))
            process.join()

    def test_a_process_forked_while_a_session_is_opened_goes_on(self):
        code = """if True:
            import os, signal, threading, hundredweight as hw
            def work():
                while True:
                    hw.Session(%r).close()
            threading.Thread(target=work, daemon=True).start()
            for _ in range(20):
                child = os.fork()
                if child == 0:
                    signal.alarm(30)
                    try:
                        hw.Session(%r).close()
                    except hw.SessionInUse:
                        pass
                    os._exit(0)
                assert os.waitpid(child, 0)[1] == 0"""
        self.assert_ends_well(code % (str(DATA), str(DATA)))

    def test_the_interpreter_ends_while_a_daemon_thread_rates(self):
        code = """if True:
            import json, pathlib, threading, time, hundredweight as hw
            session = hw.Session(%r)
            shipment = json.loads(pathlib.Path(session.data, "shipments/01-deficit-and-discount.json").read_text())
            def work():
                while True:
                    session.rate(shipment)
            for _ in range(3):
                threading.Thread(target=work, daemon=True).start()
            time.sleep(0.1)"""
        self.assert_ends_well(code % str(DATA))

    def assert_ends_well(self, code):
        done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, timeout=60)
        self.assertEqual(done.returncode, 0, done.stderr)


if __name__ == "__main__":
    unittest.main()
