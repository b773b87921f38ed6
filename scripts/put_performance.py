#!/usr/bin/python3
"""Puts the tables and the plots of a whole run of the benchmark into the documentation.

    put_performance.py build/bench docs

A table stands in performance.md between two comments that name it.
"""
import pathlib
import re
import shutil
import sys


def put_tables(measured, page):
    """The page with each of its tables as it was measured."""
    blocks = re.findall(r"<!-- [\w ]+ -->\n\n.*?<!-- end of [\w ]+ -->", measured, re.DOTALL)
    if len(blocks) != page.count("<!-- end of "):
        sys.exit(f"{len(blocks)} tables were measured, performance.md has {page.count('<!-- end of ')}")
    for block in blocks:
        first, last = block.splitlines()[0], block.splitlines()[-1]
        pattern = re.escape(first) + ".*?" + re.escape(last)
        page, count = re.subn(pattern, lambda match: block, page, flags=re.DOTALL)
        if count != 1:
            sys.exit(f"performance.md has no place for {first}")
    return page


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    bench, docs = map(pathlib.Path, sys.argv[1:])
    page = docs / "performance.md"
    measured = (bench / page.name).read_text("utf-8")
    page.write_text(put_tables(measured, page.read_text("utf-8")), "utf-8")
    shutil.copy(bench / "performance.svg", docs)
