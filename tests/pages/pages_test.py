"""Runs every command and every piece of code of the pages, and holds what they print against what
stands there. Each page begins in a folder of its own with the sample data in sample/.

    BUILD=build/release tests/pages/pages_test.py [Pages.test_...]

Of a block the language tells what is done with it: sh is run, console is run and compared, text is
what the block before it has printed, c and cpp are compiled, sql is asked of the page's database,
json is read, held against the schema that it names, and checked if it is a shipment. Commands end
with 0 but for those of exit_codes.py.
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

from blocks import blocks, commands, lines, same, unmarked
from exit_codes import EXIT_CODES
from not_run import NOT_RUN, TESTED_BY

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["BUILD"]).resolve()
# What is there before a page begins, besides the sample data.
BEFORE = {"reference/samples/template/README.md": "cwt build --new tariff"}
PAGES = sorted(path for path in [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md"), ROOT / "fuzz/README.md",
                *(ROOT / name for name in BEFORE)])


def free_port():
    with socket.socket() as free:
        free.bind(("127.0.0.1", 0))
        return free.getsockname()[1]


class Page:
    """A page as a person works through it: a folder, a service, and what was printed last."""

    def __init__(self, path, folder):
        self.name, self.folder = str(path.relative_to(ROOT)), folder
        self.codes_seen = set()
        self.printed, self.service, self.port = None, None, free_port()
        self.places = {"8080": str(self.port), "rates.example": "localhost",
                       "/srv/freight": f"{folder}/srv", "/etc/hundredweight": f"{folder}/etc",
                       "build/release/bin/cwt": "cwt", "build/release": str(BUILD),
                       "docs/hosts": f"{ROOT}/docs/hosts"}
        (folder / "srv").mkdir()
        library = next((BUILD / "lib").glob("python3.*/dist-packages"), BUILD)
        self.environment = os.environ | {"PATH": f"{BUILD}/bin:{os.environ['PATH']}", "LC_ALL": "C.UTF-8",
                                         "PYTHONPATH": str(library), "TMPDIR": str(folder)}
        self.must_run("cwt sample sample")
        self.must_run(BEFORE.get(self.name, ""))

    def here(self, text):
        """The text with the ports and folders of this test in the place of the page's."""
        for place, own in self.places.items():
            text = text.replace(place, own)
        return text

    def run(self, *shell, **options):
        done = subprocess.run(["bash", *shell], cwd=self.folder, text=True, stdout=subprocess.PIPE,
                              stdin=subprocess.DEVNULL, timeout=120, env=self.environment, **options)
        self.printed = done.stdout
        return done

    def must_run(self, script, what="sh"):
        done = self.run("-euo", "pipefail", "-c", script, stderr=subprocess.PIPE)
        assert done.returncode == 0, f"{what} ended with {done.returncode}\n{script}\n{done.stderr}"

    def command(self, command, stderr):
        """Runs a command of the page, which ends with the code that is expected of it."""
        key = key_of(EXIT_CODES, self.name, command)
        self.codes_seen.add(key)
        done = self.run("-uo", "pipefail", "-c", self.here(command), stderr=stderr)
        wanted = EXIT_CODES.get(key, 0)
        assert done.returncode == wanted, \
            f"$ {command}\nends with {done.returncode}, not {wanted}\n{done.stderr or done.stdout}"

    def sh(self, text):
        printed = ""
        for line in lines(text):
            if self.here(line).startswith("cwt serve "):
                self.serve(self.here(line))
            else:
                self.command(line, subprocess.PIPE)
                printed += self.printed
        self.printed = printed

    def console(self, text):
        for command, shown in commands(text):
            self.command(command, subprocess.STDOUT)
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


def key_of(table, page, text):
    """The key of a table, by page and first words, that is this text's; None where it has none."""
    return next((key for key in table if key[0] == page and text.startswith(key[1])), None)


def keys_of(table, page):
    return {key for key in table if key[0] == page}


class Pages(unittest.TestCase):
    def work_through(self, path):
        name = str(path.relative_to(ROOT))
        used = set()
        self.assertEqual(unmarked(path), [], "code in no language")
        with tempfile.TemporaryDirectory() as folder:
            page = Page(path, pathlib.Path(folder))
            try:
                for block in blocks(path) if name not in TESTED_BY else ():
                    key = key_of(NOT_RUN, name, block.text)
                    if key:
                        used.add(key)
                        continue
                    with self.subTest(f"{name}:{block.line}"):
                        run = getattr(page, block.language, None)
                        self.assertIsNotNone(run, f"nothing is known of the language {block.language!r}")
                        run(block.text)
            finally:
                page.stop()
        self.assertEqual(keys_of(NOT_RUN, name) - used, set(), "there are no such blocks")
        self.assertEqual(keys_of(EXIT_CODES, name) - page.codes_seen, set(), "there are no such commands")

    def test_the_tables_are_of_pages(self):
        named = {*TESTED_BY, *BEFORE, *(page for page, _ in [*NOT_RUN, *EXIT_CODES])}
        self.assertEqual(named - {str(path.relative_to(ROOT)) for path in PAGES}, set(), "there are no such pages")


def add_test(path):
    name = re.sub(r"\W+", "_", str(path.relative_to(ROOT)).removesuffix(".md"))
    setattr(Pages, f"test_{name}", lambda self: self.work_through(path))


for path_ in PAGES:
    add_test(path_)

if __name__ == "__main__":
    unittest.main()
