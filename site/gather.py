#!/usr/bin/python3
"""Gathers the pages of the site in a folder: those of the repository, with their links as the site
has them, the notebook, and the pages that are made of what the build writes.

    gather.py build/release build/docs/source
"""
import json
import pathlib
import posixpath
import re
import shutil
import sys

import command_page
import house
import notebook_page
import record_pages
from marked import heading

ROOT = pathlib.Path(__file__).resolve().parents[1]
# Pages outside of docs/, by their names in the site.
ELSEWHERE = {"README.md": "readme.md", "CHANGELOG.md": "changelog.md",
             "CONTRIBUTING.md": "contributing.md", "fuzz/README.md": "fuzzing.md"}
HEADERS = {"exports": "The library's functions", "platform": "The platform library's functions",
           "engine_interface": "The engine's entry points",
           "service_guide_interface": "The service guide's entry points",
           "abi": "Calling convention", "version": "Version"}
HOSTS = (("C#", "hosts/host.cs", "csharp"), ("Pascal", "hosts/host.pas", "pascal"),
         ("Python", "hosts/host.py", "python"), ("C, on Windows", "windows_host.c", "c"))
LINK = re.compile(r"(!?)\[([^\]]*)\]\(([^)\s:#]+)(#[^)]*)?\)")
CODE = re.compile(r"(^```.*?^```$)", re.DOTALL | re.MULTILINE)


def in_site(path):
    """The site's path of a file of the repository, or None where the site does not have it."""
    if not (ROOT / path).is_file():
        return None
    if path in ELSEWHERE:
        return ELSEWHERE[path]
    if path.startswith("docs/"):
        return path.removeprefix("docs/").replace(".ipynb", ".md")
    return None


def linked(text, path):
    """The text of a page with the site's links; a link to a page has that page's title."""
    def link(match):
        target = posixpath.normpath(posixpath.join(posixpath.dirname(path), match[3]))
        there = in_site(target)
        if there is None:
            return match[2]
        words = "" if re.fullmatch(r"`[\w./-]+\.(md|ipynb)`", match[2]) else match[2]
        return f"{match[1]}[{words}]({there}{match[4] or ''})"

    parts = CODE.split(text)
    return "".join(part if part.startswith("```") else LINK.sub(link, part) for part in parts)


def header_pages(to):
    """A page for each public header but those of records alone, which have pages of their own."""
    (to / "headers").mkdir()
    for header in sorted((ROOT / "include/hundredweight").glob("*.h")):
        if re.search(r"\);$|^#define HWT_", header.read_text(), re.MULTILINE):
            lines = [*heading(HEADERS[header.stem], "="), f"``<hundredweight/{header.name}>``", "",
                     f".. doxygenfile:: {header.name}"]
            (to / "headers" / f"{header.stem}.rst").write_text("\n".join(lines) + "\n")


def hosts_page():
    """The complete hosts, as they stand in their files."""
    blocks = ["# Complete hosts", "Each rates a shipment of the sample, or calls every function; tests compile and run them."]
    for title, path, language in HOSTS:
        text = (ROOT / "docs" / path).read_text("utf-8").rstrip()
        blocks += [f"## {title}", f"`{path}`", f"```{language}\n{text}\n```"]
    return "\n\n".join(blocks) + "\n"


def gather(build, to):
    shutil.rmtree(to, ignore_errors=True)
    shutil.copytree(ROOT / "docs", to)

    def write(name, text):
        (to / name).write_text(text, "utf-8")

    shutil.copy(ROOT / "site/index.md", to)
    for page in [*(ROOT / "docs").glob("*.md"), *(ROOT / path for path in ELSEWHERE)]:
        path = str(page.relative_to(ROOT))
        if in_site(path):
            write(in_site(path), linked(page.read_text("utf-8"), path))
    for page in to.glob("*.ipynb"):
        write(f"{page.stem}.md", notebook_page.page(json.loads(page.read_text("utf-8")), to / page.stem))
    record_pages.write(json.loads((build / "share/hundredweight/record.json").read_text("utf-8")), to)
    header_pages(to)
    write("hosts.md", hosts_page())
    write("command.rst", command_page.page(build / "bin/cwt"))
    write("house.md", house.with_drawings((to / "house.md").read_text("utf-8"), ROOT))


if __name__ == "__main__":
    gather(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
