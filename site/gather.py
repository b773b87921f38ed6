#!/usr/bin/python3
"""Gathers the pages of the site in a folder: those of the repository, with their links as the site
has them, the notebook, and the pages that are made of what the build writes.

    gather.py build/release build/docs/source
"""
import base64
import json
import pathlib
import posixpath
import re
import shutil
import sys

import command_page
import house
import record_pages
from marked import heading

ROOT = pathlib.Path(__file__).resolve().parents[1]
# Pages outside of docs/, by their names in the site.
ELSEWHERE = {"README.md": "readme.md", "CHANGELOG.md": "changelog.md",
             "CONTRIBUTING.md": "contributing.md", "fuzz/README.md": "fuzzing.md"}
# These have their place in the navigation once they are there.
OPTIONAL = ("messages", "contributing")
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


def notebook_page(notebook, pictures):
    """The notebook as a page; its plots become files in the folder of pictures."""
    blocks = []
    for cell in notebook["cells"]:
        source = "".join(cell["source"])
        blocks.append(source if cell["cell_type"] == "markdown" else f"```python\n{source}\n```")
        for output in cell.get("outputs", []):
            data = output.get("data", {})
            if "image/svg+xml" in data or "image/png" in data:
                blocks.append(picture(data, pictures, len(blocks)))
            else:
                text = "".join(output.get("text") or data["text/plain"])
                blocks.append(f"```text\n{text.rstrip()}\n```")
    return "\n\n".join(blocks) + "\n"


def picture(data, folder, number):
    folder.mkdir(exist_ok=True)
    if "image/svg+xml" in data:
        name = f"plot-{number}.svg"
        (folder / name).write_text("".join(data["image/svg+xml"]))
    else:
        name = f"plot-{number}.png"
        (folder / name).write_bytes(base64.b64decode("".join(data["image/png"])))
    return f"![A plot of the cell above]({folder.name}/{name})"


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
    index = (ROOT / "site/index.md").read_text("utf-8")
    for name in OPTIONAL:
        if not any(in_site(path) == f"{name}.md" for path in (f"docs/{name}.md", "CONTRIBUTING.md")):
            index = index.replace(f"\n{name}\n", "\n")
    (to / "index.md").write_text(index, "utf-8")
    for path, name in ELSEWHERE.items():
        if (ROOT / path).exists():
            shutil.copy(ROOT / path, to / name)
    for name in ["*.md", *ELSEWHERE]:
        for page in (ROOT / "docs").glob(name) if "*" in name else [ROOT / name]:
            if page.exists():
                path = str(page.relative_to(ROOT))
                (to / in_site(path)).write_text(linked(page.read_text("utf-8"), path), "utf-8")
    for page in sorted(to.glob("*.ipynb")):
        cells = json.loads(page.read_text("utf-8"))
        page.with_suffix(".md").write_text(notebook_page(cells, to / page.stem), "utf-8")
    record_pages.write(json.loads((build / "share/hundredweight/record.json").read_text("utf-8")), to)
    header_pages(to)
    (to / "hosts.md").write_text(hosts_page(), "utf-8")
    (to / "command.rst").write_text(command_page.page(build / "bin/cwt"), "utf-8")
    place = to / "house.md"
    place.write_text(house.with_drawings(place.read_text("utf-8"), ROOT), "utf-8")


if __name__ == "__main__":
    gather(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
