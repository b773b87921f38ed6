#!/usr/bin/python3
"""Loads cwt serve on this machine, and holds every answer against cwt rate: CWT DIRECTORY.

DIRECTORY gets load.md, the tables. Exit code 1 when an answer is wrong, lost or given twice.
"""
import argparse
import collections
import os
import pathlib
import random
import re
import select
import socket
import sys
import tempfile
import time

sys.dont_write_bytecode = True
from loaded_service import PLACE, Service, Sets

# What disturbs a run: the service's options, and the problems that may be answered then.
RUNS = {"nothing": (("--queue", "64"), ()), "a queue of 1": (("--queue", "1"), ("busy",)),
        "reloads and kills": (("--queue", "64"), ("partner-ended", "not-ready"))}


class Connection:
    """Asks again when it is answered, for one shipment after another."""
    count = 0

    def __init__(self, service, which):
        self.service, self.which, self.socket = service, which, None

    def ask(self, poll):
        sets = self.service.sets
        if self.socket is None:
            self.socket = socket.create_connection(("127.0.0.1", self.service.port))
            self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            poll.register(self.socket, select.EPOLLIN)
        self.buffer, self.which = b"", (self.which + 1) % len(sets.requests)
        Connection.count += 1
        self.id = b"%08d" % Connection.count
        self.settled = sets.swaps if self.service.is_settled() else None
        self.since = time.perf_counter()
        self.socket.sendall(sets.requests[self.which].replace(PLACE, self.id))

    def take(self, kinds):
        """None when more is to come; else the status, 0 for none, and whether that is right."""
        try:
            piece = self.socket.recv(1 << 16)
        except ConnectionError:
            piece = b""
        self.buffer += piece
        head, gap, body = self.buffer.partition(b"\r\n\r\n")
        size = int(re.search(rb"\nContent-Length: (\d+)", head)[1]) if gap else 1
        if piece and len(body) < size:
            return None
        if not piece or b"\nConnection: close" in head:
            self.socket.close()
            self.socket = None
        if not piece:
            return 0, True
        sets = self.service.sets
        is_one = self.settled == sets.swaps
        self.service.counts["held against one set"] += is_one
        now = (sets.swaps % 2,) if is_one else (0, 1)
        status, whole = int(head[9:12]), len(body) == size
        body = body.replace(self.id, PLACE)
        return status, whole and sets.is_right(self.which, status, body, now, kinds)


def drive(service, name, count, seconds):
    """Answers by status with the wrong ones, their times, and how many never came."""
    counts, times, poll = collections.Counter(), [], select.epoll()
    every = [Connection(service, 5 * i) for i in range(count)]
    end = time.perf_counter() + seconds
    for one in every:
        one.ask(poll)
    waiting, next_blow = {one.socket.fileno(): one for one in every}, time.perf_counter() + 0.2
    while waiting and time.perf_counter() < end + 40:
        for number, _ in poll.poll(0.05):
            one = waiting[number]
            answer = one.take(RUNS[name][1])
            if answer is None:
                continue
            del waiting[number]
            now = time.perf_counter()
            times.append(now - one.since)
            counts[answer[0]] += 1
            if not answer[1]:
                counts["wrong"] += 1
                print("wrong:", answer[0], one.which, one.buffer, file=sys.stderr)
            if now < end:
                one.ask(poll)
                waiting[one.socket.fileno()] = one
        if name == "reloads and kills" and next_blow < time.perf_counter() < end:
            next_blow += 0.2
            service.disturb()
        service.see()
    for one in every:
        if one.socket:
            one.socket.close()
    return counts, sorted(times), counts[0] + len(waiting)


def load(service, name, count, seconds):
    """A row of the table, and whether all was right."""
    before, asked, killed = service.answered(), Connection.count, service.counts["killed"]
    begin, cpu = time.perf_counter(), (service.seconds(), time.process_time())
    counts, times, lost = drive(service, name, count, seconds)
    passed = time.perf_counter() - begin
    client, served = time.process_time() - cpu[1], service.seconds() - cpu[0]
    asked = Connection.count - asked
    # A kill costs one request at most.
    wrong = counts.pop("wrong", 0) + max(0, counts[502] - service.counts["killed"] + killed)
    end = time.monotonic() + 2  # It counts an answer when it has written it.
    while (answered := service.answered() - before) != counts and time.monotonic() < end:
        time.sleep(0.02)
    middle, late = (times[len(times) * part // 100] * 1000 for part in (50, 99))
    cells = [count, name, f"{asked:,}", f"{answered.total():,}"]
    cells += [f"{counts[status]:,}" for status in (200, 422, 502, 503)]
    cells += [wrong, lost, f"{len(times) / passed:,.0f}", f"{middle:.2f}", f"{late:.2f}",
              f"{served / len(times) * 1e6:.0f}", f"{client / (client + served):.0%}"]
    row = "| " + " | ".join(map(str, cells)) + " |"
    return row, not wrong and not lost and answered == counts and answered.total() == asked


def memory_table(before, after):
    names = ["owner", "HTTP", "looks at the data"] + ["rates"] * (len(before) - 3)
    return ["| Process | MB at the start | of its own | MB after the load | of its own |",
            "|---|---|---|---|---|"] + [
        f"| {name} | {old[0]:.1f} | {old[1]:.1f} | {new[0]:.1f} | {new[1]:.1f} |"
        for name, old, new in zip(names, before, after, strict=True)]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("cwt")
    parser.add_argument("directory", type=pathlib.Path)
    parser.add_argument("--seconds", type=float, default=5, help="of each run")
    parser.add_argument("--connections", type=int, nargs="+", default=[1, 8, 64])
    terms = parser.parse_args()
    random.seed(1)
    all_right = True
    notes = [f"On {os.cpu_count()} processors, for which {os.getloadavg()[0]:.0f} processes "
             "contended already when the run began."]
    lines = ["| Connections | Disturbed by | Requests | Answered | 200 | 422 | 502 | 503 | Wrong "
             "| Lost | A second | p50 ms | p99 ms | CPU µs each | Client's CPU |",
             "|---" * 15 + "|"]
    for name, (options, _) in RUNS.items():
        with tempfile.TemporaryDirectory() as root:
            service = Service(terms.cwt, Sets(terms.cwt, pathlib.Path(root).resolve()), options)
            at_start = service.memory()
            for count in terms.connections:
                row, is_right = load(service, name, count, terms.seconds)
                print(row, flush=True)
                lines.append(row)
                all_right = all_right and is_right
                service.settle()
            if name == "nothing":
                table = memory_table(at_start, service.memory())
                seconds = service.seconds()
                time.sleep(10)
                notes.append(f"Idle, all its processes took {service.seconds() - seconds:.3f} "
                             "seconds of CPU time in 10 seconds.")
            elif name == "reloads and kills":
                if not service.counts["killed"]:
                    print("nothing was killed: --seconds is too few", file=sys.stderr)
                    all_right = False
                counts = service.counts
                notes.append(
                    "With reloads and kills, {killed} processes were lost, and it loaded {loading} "
                    "times, {reload-failed} in vain for a kill; {held against one set} answers "
                    "were asked for and given while one set alone served.".format_map(counts))
            service.process.terminate()
            all_right = service.process.wait(40) == 0 and all_right
    terms.directory.mkdir(parents=True, exist_ok=True)
    text = "\n".join([*lines, "", *notes, "", *table]) + "\n"
    (terms.directory / "load.md").write_text(text, "utf-8")
    print("\n".join(["", *notes, "", *table]))
    return 0 if all_right else 1


if __name__ == "__main__":
    sys.exit(main())
