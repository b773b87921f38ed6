"""Holds cwt serve against its description, as a client and an attacker would: CWT ENGINE."""
import concurrent.futures
import fcntl
import http.client
import json
import os
import pathlib
import re
import resource
import select
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

import jsonschema

sys.dont_write_bytecode = True
import service_requests

CWT, ENGINE = sys.argv[1:3]
ROOT = pathlib.Path(tempfile.mkdtemp())
subprocess.run([CWT, "sample", ROOT / "sample"], check=True, stdout=subprocess.DEVNULL)
SAMPLES = sorted((ROOT / "sample" / "shipments").glob("*.json"))
GOOD = SAMPLES[0].read_bytes()
shutil.copytree(ROOT / "sample", ROOT / "broken")
(ROOT / "broken" / "SAMPLE.SET").write_bytes(b"")


def shipment(city="Atlanta", **more):
    """A shipment that the unreliable engine does by its origin's city what it should not."""
    return json.dumps({"origin": {"zip": "30303", "city": city}, "destination": {"zip": "60601"},
                       "tariff": "SMPLNATL", "lines": [{"class": "70", "weight": 500}],
                       **more}).encode()


def run(*arguments, **more):
    return subprocess.run([CWT, *arguments], capture_output=True, **more)


class Service:
    """A service of a test, on a port of its own."""

    def __init__(self, *arguments, data=ROOT / "sample", jobs=2, largest_file=None):
        def limit():
            if largest_file:
                resource.setrlimit(resource.RLIMIT_FSIZE, (largest_file, largest_file))

        self.process = subprocess.Popen(
            [CWT, "serve", "--data", data, "--listen", "127.0.0.1:0", "--jobs", str(jobs),
             *arguments], stderr=subprocess.PIPE, preexec_fn=limit)
        os.set_blocking(self.process.stderr.fileno(), False)
        self.rest, self.log = b"", []
        self.port = int(self.wait_for("listening")["address"].rpartition(":")[2])
        self.wait_for("serving")

    def read_log(self, seconds=0.0):
        select.select([self.process.stderr], [], [], seconds)
        *lines, self.rest = (self.rest + (self.process.stderr.read() or b"")).split(b"\n")
        # A partner may say something too.
        self.log += [json.loads(line) for line in lines if line.startswith(b"{")]

    def wait_for(self, event, **members):
        """The first such line of the log that was not waited for before."""
        end = time.monotonic() + 15
        while time.monotonic() < end:
            for line in self.log:
                if line["event"] == event and members.items() <= line.items():
                    self.log.remove(line)
                    return line
            self.read_log(0.2)
        raise AssertionError(f"no {event} {members}: {self.log}")

    def ask(self, method, path, body=None, **fields):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=20)
        names = {name.replace("_", "-"): value for name, value in fields.items()}
        connection.request(method, path, body, names)
        answer = connection.getresponse()
        answer.text = answer.read()
        connection.close()
        return answer

    def rate(self, body=GOOD, **fields):
        return self.ask("POST", "/v1/rate", body, **fields)

    def raw(self, *pieces, pause=0.05):
        """All that comes back for bytes, written in pieces."""
        with socket.create_connection(("127.0.0.1", self.port), timeout=20) as connection:
            try:
                for piece in pieces[:-1]:
                    connection.sendall(piece)
                    time.sleep(pause)
                connection.sendall(pieces[-1])
                connection.shutdown(socket.SHUT_WR)
                return b"".join(iter(lambda: connection.recv(65536), b""))
            except (ConnectionResetError, BrokenPipeError):
                return b""

    def metric(self, name):
        text = self.ask("GET", "/metrics").text.decode()
        return sum(float(value) for value in
                   re.findall(rf"^hundredweight_{name}(?:{{.*}})? (.+)$", text, re.M))

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        try:
            return self.process.wait(20)
        finally:
            self.read_log()


class ServiceTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        """Begins what takes long while the others are tested."""
        cls.plagued = Service()
        pool = concurrent.futures.ThreadPoolExecutor(2)
        begin = b"POST /v1/rate HTTP/1.1\r\nHost: localhost\r\n"
        cls.slow = [pool.submit(cls.plagued.raw, begin, *[b"a"] * 22, pause=0.5), pool.submit(
            cls.plagued.raw, begin + b"Content-Length: 99\r\n\r\n", *[b" "] * 22, pause=0.5)]

    @classmethod
    def tearDownClass(cls):
        cls.plagued.process.kill()
        cls.plagued.process.wait()
        cls.plagued.process.stderr.close()

    def test_slow_senders_are_dropped(self):
        for sender in self.slow:
            self.assertIn(sender.result()[:12], (b"HTTP/1.1 408", b""))
        statuses = self.plagued.ask("GET", "/metrics").text
        self.assertEqual(re.findall(rb'requests_total.*"408"} (\d)', statuses), [b"1", b"1"])
        self.assertEqual(self.plagued.stop(), 0)

    def start(self, *arguments, **more):
        service = Service(*arguments, **more)
        self.addCleanup(service.process.stderr.close)
        self.addCleanup(service.process.wait)
        self.addCleanup(service.process.kill)
        return service

    def check(self, answer, status, kind=None):
        self.assertEqual(answer.status, status, answer.text)
        if kind:
            problem = json.loads(answer.text)
            self.assertEqual(answer.getheader("Content-Type"), "application/problem+json")
            self.assertEqual(problem["type"], "urn:hundredweight:problem:" + kind)
            self.assertEqual(answer.getheader("Retry-After"), "1" if status == 503 else None)
        for name in ("Content-Security-Policy", "X-Content-Type-Options", "Referrer-Policy",
                     "Cross-Origin-Resource-Policy", "Cache-Control"):
            self.assertIsNotNone(answer.getheader(name), name)

    def test_answers_are_those_of_the_command_and_of_the_description(self):
        service = self.start()
        description = json.loads(service.ask("GET", "/openapi.json").text)

        def validate(path, method, answer):
            responses = description["paths"][path][method]["responses"]
            told = responses.get(str(answer.status), responses["default"])
            if "$ref" in told:
                told = description["components"]["responses"][told["$ref"].rpartition("/")[2]]
            schema = told["content"][answer.getheader("Content-Type").partition(";")[0]]["schema"]
            document = (json.loads(answer.text) if "json" in answer.getheader("Content-Type")
                        else answer.text.decode())
            jsonschema.Draft202012Validator(
                {**schema, "components": description["components"]}).validate(document)

        refused = 0
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            ways = [(sample, *way) for sample in SAMPLES for way in (
                ("/v1/rate", "", "rate"), ("/v1/rate", "?explain=1", "rate", "--explain"),
                ("/v1/check", "", "check"))]
            printed = pool.map(lambda way: run(*way[3:], "--json", way[0]).stdout, ways)
            for (sample, path, query, *_), text in zip(ways, printed):
                answer = service.ask("POST", path + query, sample.read_bytes())
                validate(path, "post", answer)
                if answer.status == 200:
                    self.assertEqual(answer.text, text, sample)
                else:
                    self.check(answer, 422, "refused")
                    wanted = json.loads(text)
                    told = json.loads(answer.text)
                    self.assertEqual(told["refusals"], wanted["refusals"], sample)
                    refused += 1
        self.assertTrue(9 <= refused < len(ways) / 2, refused)
        self.assertEqual(service.metric("shipments_total"), len(ways))
        self.assertEqual(service.metric("refusals_total"), refused)
        for path, status, *command in (
                ("/v1/set", 200, "inspect", ROOT / "sample"), ("/v1/profiles", 200, "profiles"),
                ("/v1/profiles/Default", 200, "profiles", "Default"),
                ("/v1/profiles/Defualt", 404), ("/v1/states/30303", 200, "states", "30303"),
                ("/v1/states/00000", 422), ("/v1/states/no%00code", 422),
                ("/v1/cities/30303", 200), ("/v1/classes", 200), ("/v1/classes?tariff=SMPLNATL", 200),
                ("/v1/classes?tariff=NONE", 422), ("/readyz", 200), ("/healthz", 200),
                ("/metrics", 200), ("/openapi.json", 200)):
            answer = service.ask("GET", path)
            self.check(answer, status)
            route = re.sub(r"(profiles|states|cities)/.*", lambda match: match[1] + (
                "/{name}" if match[1] == "profiles" else "/{code}"), path.partition("?")[0])
            validate(route, "get", answer)
            if command:
                more = [] if command[0] == "inspect" else ["--data", ROOT / "sample"]
                self.assertEqual(answer.text, run(*command, "--json", *more).stdout, path)
            head = service.ask("HEAD", path)
            self.assertEqual((head.status, head.text), (status, b""))
        validate("/v1/curve", "post", service.ask("POST", "/v1/curve?from=100&to=2000", GOOD))
        page = service.ask("GET", "/")
        self.check(page, 200)
        self.check(service.ask("GET", "/", If_None_Match=page.getheader("ETag")), 304)

    def test_rows_are_those_of_a_batch(self):
        good = run("sample", "--shipments", "1000").stdout
        rows = ROOT / "rows.ndjson"
        table = ROOT / "rows.csv"
        rows.write_bytes(good)
        table.write_text("id,origin_zip,destination_zip,class_1,weight_1,tariff,spare\n" + "".join(
            f"{i},30303,60601,70,{i * 9},SMPLNATL,x\n" for i in range(1, 600)))
        service = self.start()
        for file, kind, accept, form in ((rows, "application/x-ndjson", "*/*", "ndjson"),
                                         (table, "text/csv", "*/*", "csv"),
                                         (table, "text/csv", "application/x-ndjson", "ndjson")):
            wanted = run("batch", file, "--to", form, "--data", ROOT / "sample").stdout
            answer = service.ask("POST", "/v1/batch", file.read_bytes(), Content_Type=kind,
                                 Accept=accept)
            self.check(answer, 200)
            self.assertEqual(answer.text, wanted)
        self.assertEqual(service.metric("shipments_total"), 2198)
        empty = service.ask("POST", "/v1/batch", b"", Content_Type="application/x-ndjson")
        self.assertEqual((empty.status, empty.text), (200, b""))
        for body, kind, status, problem in (
                (b"id,weight_1,discont_percent\n", "text/csv", 400, "bad-request"),
                (b"\x1f\x8b\x08\x00 packed", "text/csv", 415, "wrong-type"),
                (good, "application/json", 415, "wrong-type")):
            self.check(service.ask("POST", "/v1/batch", body, Content_Type=kind), status, problem)
        joined = "origin_zip,destination_zip,tariff,class_1,weight_1,Discount %,ä\n" + "".join(
            f"30303,60601,SMPLNATL,70,500,{rest}\n" for rest in ("1,", '1,"6 inch', '1,x"', "1,"))
        told = service.ask("POST", "/v1/batch?pass=Discount%20%25", joined.encode(),
                           Content_Type="text/csv")
        self.assertEqual(told.text.count(b",rated,"), 3)
        self.assertEqual([told.getheader("Cwt-" + name) for name in (
            "Rows", "Rows-Of-Several-Lines", "Columns-Passed")],
            ["3", "1; first=2", "Discount%20%25,%C3%A4"])
        full = self.start(largest_file=len(good) // 2)
        self.check(full.ask("POST", "/v1/batch", good), 503, "not-ready")
        self.check(full.rate(), 200)

    def test_a_partner_costs_the_request_that_it_fails(self):
        service = self.start("--engine", ENGINE, "--timeout", "1")
        wanted = service.rate(shipment()).text
        for city, status, kind in (("Crash", 502, "partner-ended"), ("Exit", 502, "partner-ended"),
                                   ("Hang", 504, "partner-late")):
            self.check(service.rate(shipment(city)), status, kind)
            self.assertEqual(service.rate(shipment()).text, wanted)
        self.assertEqual(service.metric("workers_lost_total"), 3)
        cities = ["Atlanta"] * 300
        cities[7], cities[290] = "Crash", "Hang"
        rows = service.ask("POST", "/v1/batch", b"\n".join(map(shipment, cities))).text.splitlines()
        states = [json.loads(row)["status"] for row in rows]
        self.assertEqual([i for i, state in enumerate(states) if state == "failed"], [7, 290])
        self.assertEqual(states.count("rated"), 298)
        # A worker that is killed from without costs nothing when it has nothing to do.
        children = pathlib.Path(f"/proc/{service.process.pid}/task/{service.process.pid}/children")
        front, *others = map(int, children.read_text().split())
        for child in others:
            os.kill(child, signal.SIGKILL)
        service.wait_for("worker-lost")
        service.wait_for("serving")
        self.assertEqual(service.rate(shipment()).text, wanted)
        # Another front does not get what the one before had asked for.
        with concurrent.futures.ThreadPoolExecutor(1) as pool:
            lost = pool.submit(service.rate, shipment("Hang"))
            time.sleep(0.3)
            os.kill(front, signal.SIGKILL)
            service.wait_for("front-lost")
            service.wait_for("listening")
            self.assertEqual([service.rate(shipment()).text for _ in range(8)], [wanted] * 8)
            with self.assertRaises((ConnectionError, http.client.HTTPException)):
                lost.result()
        self.assertEqual(service.stop(), 0)

    def test_the_queue_is_bounded_and_what_was_accepted_is_answered(self):
        service = self.start("--engine", ENGINE, "--timeout", "2", "--queue", "2",
                             "--connections", "5", jobs=1)
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            hung = pool.submit(service.rate, shipment("Hang"))
            time.sleep(0.5)
            waiting = [pool.submit(service.rate, shipment()) for _ in range(2)]
            time.sleep(0.3)
            self.check(service.rate(shipment()), 503, "busy")
            idle = [socket.create_connection(("127.0.0.1", service.port)) for _ in range(3)]
            time.sleep(0.3)
            self.check(service.ask("GET", "/healthz"), 503, "busy")
            for connection in idle:
                connection.close()
            service.process.send_signal(signal.SIGTERM)
            self.check(hung.result(), 504, "partner-late")
            for one in waiting:
                self.check(one.result(), 200)
        self.assertEqual(service.process.wait(10), 0)
        with self.assertRaises(ConnectionRefusedError):
            service.ask("GET", "/healthz")

    def test_new_data_serve_when_they_are_loaded(self):
        for name in ("old", "new"):
            shutil.copytree(ROOT / "sample", ROOT / name)
        levels = ROOT / "new" / "SAMPLE.LVL"
        levels.write_bytes(levels.read_bytes().replace(b"2025", b"2031"))
        data = ROOT / "data"

        def swap(name):
            (ROOT / "link").symlink_to(ROOT / name)
            os.replace(ROOT / "link", data)

        swap("old")
        service = self.start(data=data)
        wanted = {name: run("rate", "--json", SAMPLES[0], "--data", ROOT / name).stdout
                  for name in ("old", "new")}
        self.assertNotEqual(wanted["old"], wanted["new"])
        for name, event, serves in (("broken", "reload-failed", "old"), ("new", "serving", "new"),
                                    ("old", "serving", "old")):
            swap(name)
            service.process.send_signal(signal.SIGHUP)
            service.wait_for("loading")
            seen = set()
            end = time.monotonic() + 15
            while not any(line["event"] == event for line in service.log):
                self.assertLess(time.monotonic(), end)
                seen.add(service.rate().text)
                service.read_log()
            service.wait_for(event)
            self.assertLessEqual(seen, set(wanted.values()))
            self.assertEqual(service.rate().text, wanted[serves])
            readiness = json.loads(service.ask("GET", "/readyz").text)
            self.assertEqual(readiness["reload_failure"] is None, name != "broken")
        self.assertEqual(service.metric("reload_failures_total"), 1)
        watching = self.start("--watch", data=data)
        swap("new")
        watching.wait_for("serving")
        self.assertEqual(watching.rate().text, wanted["new"])
        levels.write_bytes(levels.read_bytes().replace(b"2031", b"2032"))
        watching.wait_for("serving")
        self.assertIn(b"2032", watching.rate().text)
        profiles = ROOT / "new" / "PROFILE.FIL"
        profiles.write_bytes(profiles.read_bytes().replace(b"Northeast", b"Northwest"))
        watching.wait_for("serving")
        self.assertEqual(watching.ask("GET", "/v1/profiles/Northwest").status, 200)

    def test_a_log_that_nobody_reads_holds_nothing_up(self):
        service = self.start()
        fcntl.fcntl(service.process.stderr, fcntl.F_SETPIPE_SZ, 4096)
        for _ in range(60):
            self.check(service.rate(), 200)
        service.read_log()
        self.check(service.rate(), 200)
        service.read_log(1)
        self.assertGreater(max(line.get("lines_dropped_before", 0) for line in service.log), 9)
        self.assertEqual(service.stop(), 0)

    def test_a_token_is_wanted_where_one_is_told(self):
        secret, short, told = (ROOT / name for name in ("secret", "short", "told"))
        for file, text, mode in ((secret, "0123456789abcdef\n", 0o600), (short, "short", 0o600),
                                 (told, "0123456789abcdef", 0o644)):
            file.write_text(text)
            file.chmod(mode)
        service = self.start("--token-file", secret)
        self.check(service.rate(Authorization="Bearer 0123456789abcdef"), 200)
        for value in ("Bearer 0123456789abcdeg", "Bearer 0123456789abcde", "Bearer ",
                      "Basic 0123456789abcdef", "Bearer 0123456789abcdef0123456789abcdef"):
            answer = service.rate(Authorization=value)
            self.check(answer, 401, "unauthorized")
            self.assertEqual(answer.getheader("WWW-Authenticate"), "Bearer")
        for path, status in (("/", 200), ("/healthz", 200), ("/readyz", 200), ("/metrics", 401),
                             ("/v1/set", 401)):
            self.check(service.ask("GET", path, Host="proxy.example"), status)
        service.stop()
        self.assertNotIn("0123456789", json.dumps(service.log))
        data = ["--data", ROOT / "sample"]
        port = self.start().port
        for arguments, reason in (
                ([*data, "--token-file", short], "16 characters"),
                ([*data, "--token-file", told], "everybody may read it"),
                ([*data, "--listen", "0.0.0.0:0"], "--token-file is wanted"),
                ([*data, "--listen", "127.0.0.1"], "an address and a port"),
                ([*data, "--listen", f"127.0.0.1:{port}"], "in use"),
                (["--data", ROOT / "broken", "--listen", "127.0.0.1:0"], "SET"),
                ([*data, "--engine", "none", "--listen", "127.0.0.1:0"], "none cannot be loaded")):
            ended = run("serve", *arguments, text=True, timeout=20)
            self.assertEqual(ended.returncode, 2, arguments)
            self.assertIn(reason, ended.stderr)

    def test_wrong_requests_are_answered_and_leave_it_serving(self):
        service = self.start("--max-body", "1")
        requests = service_requests.Requests(service.port, GOOD)
        for status, *pieces in requests.cases:
            with self.subTest(pieces=pieces):
                answer = service.raw(*pieces)
                self.assertEqual(answer[:12], b"HTTP/1.1 %d" % status, answer[:200])
                if status >= 400 and b"Connection: close" in answer:
                    self.assertEqual(answer.count(b"HTTP/1.1 "), 1)
        for bytes_sent, statuses in ((requests.four, [b"200"] * 4), (requests.one, [b"400"])):
            answers = service.raw(bytes_sent)
            self.assertEqual(re.findall(rb"HTTP/1.1 (\d+)", answers), statuses)
        self.check(service.rate(), 200)
        self.assertEqual(service.stop(), 0)


try:
    result = unittest.main(argv=[sys.argv[0], *sys.argv[3:]], exit=False).result
finally:
    shutil.rmtree(ROOT)
sys.exit(not result.wasSuccessful())
