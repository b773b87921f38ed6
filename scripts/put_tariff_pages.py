#!/usr/bin/python3
"""Puts into the documentation what cwt says of a tariff set as text, the field tables, the schema
of settings.json, and what the commands of the first tariff's walk print; and of its messages.

    put_tariff_pages.py build/release/bin/cwt docs [--check]

With --check nothing is written: it ends with 1, and the differences, when page and program differ.
"""
import difflib
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def put(cwt, page, name, *command):
    """The page with what a command prints between its marks."""
    printed = subprocess.run([cwt, *command], check=True, capture_output=True, text=True).stdout
    first, last = f"<!-- {name} -->", f"<!-- end of {name} -->"
    pattern = re.escape(first) + ".*?" + re.escape(last)
    block = f"{first}\n\n{printed}\n{last}"
    page, count = re.subn(pattern, lambda match: block, page, flags=re.DOTALL)
    assert count == 1, f"the page has no place for the {name}"
    return page


def walk(cwt, page):
    """The page with what its commands print, one after the other in one folder. Blocks of the
    language console have them behind a $. One that shows a difference ends with 1, all others with 0."""
    person = {"GIT_CONFIG_GLOBAL": os.devnull, "GIT_CONFIG_SYSTEM": os.devnull}
    for role in ("AUTHOR", "COMMITTER"):
        person |= {f"GIT_{role}_NAME": "Clerk", f"GIT_{role}_EMAIL": "clerk@carrier.example"}
    path = f"{pathlib.Path(cwt).resolve().parent}:{os.environ['PATH']}"
    with tempfile.TemporaryDirectory() as folder:
        def printed(command):
            run = subprocess.run(["bash", "-uo", "pipefail", "-c", command], cwd=folder,
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                 env=os.environ | person | {"PATH": path, "LC_ALL": "C.UTF-8"})
            wanted = 1 if command.startswith("cwt diff ") else 0
            assert run.returncode == wanted, \
                f"$ {command}\nends with {run.returncode}, not {wanted}\n{run.stdout}"
            return re.sub(r" +$", "", run.stdout, flags=re.MULTILINE)

        def block(match):
            commands = re.findall(r"^\$ (.*)$", match[1], re.MULTILINE)
            return "```console\n" + "".join(
                f"$ {command}\n{printed(command)}" for command in commands) + "```"

        page, count = re.subn(r"```console\n(.*?)```", block, page, flags=re.DOTALL)
    assert count, "the page has no commands"
    return page


def pages(cwt, docs):
    """What each page is, by its file."""
    fields, first = docs / "tariff-set.md", docs / "your-first-tariff.md"
    messages = docs / "messages.md"
    schema = subprocess.run([cwt, "build", "--schema"], check=True, capture_output=True, text=True)
    return {fields: put(cwt, fields.read_text("utf-8"), "fields", "build", "--fields"),
            messages: put(cwt, messages.read_text("utf-8"), "messages", "message"),
            first: walk(cwt, first.read_text("utf-8")),
            docs / "schema/tariff-set.json": schema.stdout}


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4) or sys.argv[3:] not in ([], ["--check"]):
        sys.exit(__doc__)
    differences = []
    for path, text in pages(sys.argv[1], pathlib.Path(sys.argv[2])).items():
        if "--check" not in sys.argv:
            path.write_text(text, "utf-8")
            continue
        shown = path.read_text("utf-8").splitlines()
        differences += difflib.unified_diff(shown, text.splitlines(), f"{path}", "cwt", lineterm="")
    sys.exit("\n".join(differences) or None)
