"""Runs every command and every piece of code of the pages, and holds what they print against what
stands there. Each page begins in a folder of its own with the sample data in sample/.

    BUILD=build/release tests/pages/pages_test.py [Pages.test_...]

Of a block the language tells what is done with it: sh is run, console is run and compared, text is
what the block before it has printed, c and cpp are compiled, sql is asked of the page's database,
json is read, held against the schema that it names, and checked if it is a shipment.
"""
import json
import os
import pathlib
import re
import shutil
import signal
import socket
import sqlite3
import subprocess
import tempfile
import time
import unittest
import urllib.request

import jsonschema

from blocks import blocks, commands, same, unmarked
from not_run import NOT_RUN, TESTED_BY

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["BUILD"]).resolve()
# What is there before a page begins, besides the sample data.
BEFORE = {"reference/samples/template/README.md": "cwt build --new tariff"}
PAGES = sorted(path for path in [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md"), ROOT / "fuzz/README.md",
                *(ROOT / name for name in BEFORE)])
# A batch with a refused row ends with 1, which is no failure of the page.
CWT = '#!/bin/sh\n"{cwt}" "$@"\ncode=$?\n[ "$1" != batch ] || [ $code -ne 1 ] || code=0\nexit $code\n'
SERVE = re.compile(r"^cwt serve .*\n", re.MULTILINE)


def free_port():
    with socket.socket() as free:
        free.bind(("127.0.0.1", 0))
        return free.getsockname()[1]


class Page:
    """A page as a person works through it: a folder, a service, and what was printed last."""

    def __init__(self, path, folder):
        self.path, self.folder = path, folder
        self.printed, self.service, self.port = None, None, free_port()
        self.places = {"8080": str(self.port), "rates.example": "localhost",
                       "/srv/freight": f"{folder}/srv", "/etc/hundredweight": f"{folder}/etc",
                       "build/release/bin/cwt": "cwt", "build/release": str(BUILD),
                       "docs/hosts": f"{ROOT}/docs/hosts"}
        (folder / "bin").mkdir()
        (folder / "bin/cwt").write_text(CWT.format(cwt=BUILD / "bin/cwt"))
        (folder / "bin/cwt").chmod(0o755)
        (folder / "srv").mkdir()
        library = next((BUILD / "lib").glob("python3.*/dist-packages"), BUILD)
        self.environment = os.environ | {"PATH": f"{BUILD}/bin:{os.environ['PATH']}", "LC_ALL": "C.UTF-8",
                                         "PYTHONPATH": str(library), "TMPDIR": str(folder)}
        self.strict = self.environment | {"PATH": f"{folder}/bin:{self.environment['PATH']}"}
        self.must_run("cwt sample sample")
        self.must_run(BEFORE.get(str(path.relative_to(ROOT)), ""))

    def here(self, text):
        """The text with the ports and folders of this test in the place of the page's."""
        for place, own in self.places.items():
            text = text.replace(place, own)
        return text

    def run(self, *shell, **options):
        done = subprocess.run(["bash", *shell], cwd=self.folder, text=True, stdout=subprocess.PIPE,
                              stdin=subprocess.DEVNULL, timeout=120, **options)
        self.printed = done.stdout
        return done

    def must_run(self, script, what="sh"):
        done = self.run("-euo", "pipefail", "-c", script, stderr=subprocess.PIPE, env=self.strict)
        assert done.returncode == 0, f"{what} ended with {done.returncode}\n{script}\n{done.stderr}"

    def sh(self, text):
        text, at = self.here(text), 0
        for serve in SERVE.finditer(text):
            self.must_run(text[at:serve.start()])
            self.serve(serve[0])
            at = serve.end()
        self.must_run(text[at:])

    def console(self, text):
        for command, shown in commands(text):
            self.run("-c", self.here(command), stderr=subprocess.STDOUT, env=self.environment)
            printed = self.printed.replace(str(self.port), "8080")
            assert same(shown, printed), f"$ {command}\nprints\n{printed}\nnot\n{shown}"

    def text(self, text):
        assert self.printed is not None and same(text, self.printed), f"printed\n{self.printed}\nnot\n{text}"

    def python(self, text):
        self.must_run(f"/usr/bin/python3 -B - <<'END'\n{text}\nEND\n")

    def sql(self, text):
        database, = self.folder.glob("*.sqlite")
        for statement in filter(str.strip, text.split(";")):
            assert sqlite3.connect(database).execute(statement).fetchall(), f"nothing comes of {statement}"

    def json(self, text):
        document = json.loads(text)
        kind = re.fullmatch(r"hundredweight/([\w-]+)/1", document.get("schema", ""))
        if kind:
            jsonschema.validate(document, json.loads((ROOT / f"docs/schema/{kind[1]}.json").read_text()))
        if "origin" in document and not kind:
            self.must_run(f"cwt check - --data sample <<'END'\n{text}\nEND\n")

    def c(self, text, compiler="gcc -std=c11 -x c"):
        """Statements that stand alone are put into a function."""
        if "main(" not in text:
            includes = "".join(re.findall(r"^#include.*\n", text, re.MULTILINE))
            rest = text.removeprefix(includes)
            text = f"#include <stdlib.h>\n#include <string.h>\n{includes}void example(void);\nvoid example(void) {{\n{rest}}}\n"
        self.must_run(f"{compiler} -fsyntax-only -Wall -Wextra -Werror -I{ROOT}/include - <<'END'\n{text}END\n", "c")

    def cpp(self, text):
        self.c(text, "g++ -std=c++20 -x c++")

    def serve(self, command):
        self.stop()
        listen = "" if "--listen" in command else f" --listen 127.0.0.1:{self.port}"
        with open(self.folder / "service.log", "w") as log:
            self.service = subprocess.Popen(["bash", "-c", f"exec {command.strip()}{listen}"], cwd=self.folder, stderr=log,
                                            env=self.environment)
        end = time.monotonic() + 20
        while not self.answers():
            assert time.monotonic() < end and self.service.poll() is None, f"{command} does not serve: " \
                + (self.folder / "service.log").read_text()
            time.sleep(0.05)

    def answers(self):
        try:
            return urllib.request.urlopen(f"http://127.0.0.1:{self.port}/readyz").status == 200
        except OSError:
            return False

    def stop(self):
        if self.service:
            self.service.send_signal(signal.SIGTERM)
            self.service.wait(20)
            self.service = None


def reason_not_to_run(page, block):
    return next((key for key in NOT_RUN if key[0] == page and block.text.startswith(key[1])), None)


class Pages(unittest.TestCase):
    def work_through(self, path):
        name = str(path.relative_to(ROOT))
        used = set()
        self.assertEqual(unmarked(path), [], "code in no language")
        with tempfile.TemporaryDirectory() as folder:
            page = Page(path, pathlib.Path(folder))
            try:
                for block in blocks(path) if name not in TESTED_BY else ():
                    key = reason_not_to_run(name, block)
                    if key:
                        used.add(key)
                        continue
                    with self.subTest(f"{name}:{block.line}"):
                        run = getattr(page, block.language, None)
                        self.assertIsNotNone(run, f"nothing is known of the language {block.language!r}")
                        run(block.text)
            finally:
                page.stop()
        self.assertEqual({key for key in NOT_RUN if key[0] == name} - used, set(), "there are no such blocks")


def add_test(path):
    name = re.sub(r"\W+", "_", str(path.relative_to(ROOT)).removesuffix(".md"))
    setattr(Pages, f"test_{name}", lambda self: self.work_through(path))


for path_ in PAGES:
    add_test(path_)

if __name__ == "__main__":
    unittest.main()
