"""A service under load, the two tariff sets that it rates by in turns, and their bills."""
import collections
import json
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import tempfile
import time
import urllib.request

PLACE = b"%08d" % 0  # Where the id of a request stands, which no other request has.
EVENT = re.compile(rb'\{[^\n]*"event":"(?:listening|loading|serving|reload-failed)"[^\n]*\}\n')


class Sets:
    """Two tariff sets behind a link, the second a year later and 4.9 % dearer, and their bills."""

    def __init__(self, cwt, root):
        self.link, self.paths = root / "data", [root / "old", root / "new"]
        for path in self.paths:
            subprocess.run([cwt, "sample", path], check=True, stdout=subprocess.DEVNULL)
        dearer = lambda rate: b"%.2f" % (float(rate[0]) * 1.049)
        for name, pattern, newer in (("SAMPLE.LVL", rb"2025", b"2026"),
                                     ("tolvex-rates.txt", rb"\d+\.\d\d", dearer)):
            file = self.paths[1] / name
            file.write_bytes(re.sub(pattern, newer, file.read_bytes()))
        self.requests, self.bills, self.right, self.swaps = [], [], set(), -1
        for shipment in sorted((self.paths[0] / "shipments").glob("*.json")):
            body = json.dumps({**json.loads(shipment.read_bytes()), "id": PLACE.decode()}).encode()
            (root / "shipment.json").write_bytes(body)
            self.requests.append(b"POST /v1/rate HTTP/1.1\r\nHost: localhost\r\nContent-Length: "
                                 b"%d\r\n\r\n%s" % (len(body), body))
            self.bills.append([subprocess.run(
                [cwt, "rate", "--json", "--data", path, root / "shipment.json"],
                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout for path in self.paths])
        if any(old == new and b"/bill/" in old for old, new in self.bills):
            sys.exit("the two sets have a bill in common")
        self.swap()

    def swap(self):
        self.swaps += 1
        self.link.with_name("next").symlink_to(self.paths[self.swaps % 2])
        os.replace(self.link.with_name("next"), self.link)

    def is_right(self, *answer):
        """Whether this answers a shipment by one of these sets, or is one of these problems."""
        which, status, body, sets, kinds = answer
        if answer not in self.right:
            told, bills = json.loads(body), [self.bills[which][one] for one in sets]
            if status == 200:
                is_right = told["schema"].startswith("hundredweight/bill/") and body in bills
            elif status == 422:
                refused = [told["id"], told.get("refusals")]
                is_right = refused in [[PLACE.decode(), json.loads(bill).get("refusals", 0)]
                                       for bill in bills]
            else:
                kind = told["type"].removeprefix("urn:hundredweight:problem:")
                is_right = kind in kinds and told["status"] == status
            if not is_right:
                return False
            self.right.add(answer)
        return True


class Service:
    def __init__(self, cwt, sets, options):
        self.sets, self.serves, self.loads, self.counts = sets, None, {}, collections.Counter()
        self.log, self.place, self.port = tempfile.TemporaryFile(), 0, None
        self.process = subprocess.Popen([cwt, "serve", "--data", sets.link, "--listen",
                                         "127.0.0.1:0", *options], stderr=self.log)
        self.proc = pathlib.Path(f"/proc/{self.process.pid}")
        self.settle()

    def see(self):
        """Reads what the log has besides requests."""
        text = os.pread(self.log.fileno(), 1 << 24, self.place)
        text = text[:text.rfind(b"\n") + 1]
        self.place += len(text)
        for event in map(json.loads, EVENT.findall(text)):
            self.counts[event["event"]] += 1
            if event["event"] == "listening":
                self.port = int(event["address"].rpartition(":")[2])
            elif event["event"] == "loading":
                self.loads[event["generation"]] = self.sets.paths.index(pathlib.Path(event["data"]))
            elif event["event"] == "serving":
                self.serves = self.loads[event["generation"]]
            else:  # A process was killed while it loaded.
                self.process.send_signal(signal.SIGHUP)

    def is_settled(self):
        return self.serves == self.sets.swaps % 2

    def settle(self):
        end = time.monotonic() + 20
        while not self.port or not self.is_settled():
            if time.monotonic() > end or self.process.poll() is not None:
                sys.exit("the service does not come to serve the data")
            time.sleep(0.02)
            self.see()

    def children(self):
        return [int(one) for one in
                (self.proc / "task" / self.proc.name / "children").read_text().split()]

    def disturb(self):
        """Swaps the sets, or kills a process, but not the first, which speaks HTTP."""
        self.counts["disturbed"] += 1
        if self.counts["disturbed"] % 2 == 0:
            os.kill(random.choice(self.children()[1:]), signal.SIGKILL)
            self.counts["killed"] += 1
        elif self.is_settled():
            self.sets.swap()
            self.process.send_signal(signal.SIGHUP)

    def seconds(self):
        """CPU time of all its processes, with those that have ended."""
        times = (self.proc / "stat").read_text().rpartition(")")[2].split()
        total = sum(map(int, times[13:15])) / os.sysconf("SC_CLK_TCK")
        for number in (self.process.pid, *self.children()):
            try:
                total += time.clock_gettime(~number << 3 | 2)  # The clock of a process.
            except OSError:
                pass
        return total

    def memory(self):
        """MB of each process, in the order of their start: all, and its share of what is shared."""
        sizes = []
        for number in (self.process.pid, *self.children()):
            text = pathlib.Path(f"/proc/{number}/smaps_rollup").read_text()
            sizes.append([int(re.search(rf"^{name}: +(\d+)", text, re.M)[1]) / 1000
                          for name in ("Rss", "Pss")])
        return sizes

    def answered(self):
        """Answers by status, as the service has counted them."""
        text = urllib.request.urlopen(f"http://127.0.0.1:{self.port}/metrics", timeout=10).read()
        return collections.Counter({int(status): int(count) for status, count in re.findall(
            rb'requests_total\{route="/v1/rate",status="(\d+)"\} (\d+)', text)})
