"""Writes the manual pages of the library and of the file formats as Markdown.

Arguments: the headers' folder, record.json, the documentation's folder, where to write. The pages
say what the headers' comments and the documentation say. A line of links.txt names a function or a
record, and the page that it is on.
"""
import json
import re
import sys
from pathlib import Path

from header_pages import BLOCK, families_of, function_page, paragraphs, records_page, references

# A page, what it is made of, and what is to be read besides.
FORMATS = [
    ("hundredweight-shipment", "shipment.md",
     "cwt-rate(1), cwt-check(1), cwt-batch(1), hundredweight-rows(5)"),
    ("hundredweight-rows", "rows.md",
     "cwt-batch(1), cwt-compare(1), hundredweight-shipment(5)"),
    ("hundredweight-tariff", "tariff-set.md",
     "cwt-build(1), cwt-export(1), cwt-diff(1), cwt-inspect(1)"),
]

DOCUMENTATION = "all pages in /usr/share/doc/hundredweight, of the package hundredweight-doc"


def doc_sections(page):
    """A page of the documentation: its title, what it begins with, and its sections as ours."""
    text = page.read_text(encoding="utf-8").replace("beside this page",
                                                    "in /usr/share/doc/hundredweight")
    title, text = text.split("\n", 1)
    parts = re.split(r"^(?=##? )", text, maxsplit=1, flags=re.MULTILINE)
    sections = re.sub(r"^#(#+ )", r"\1", parts[1], flags=re.MULTILINE) if parts[1:] else ""
    return title.removeprefix("# "), parts[0].strip(), sections


def overview(docs, rules, families):
    _, beginning, sections = doc_sections(docs / "hosting.md")
    rows = "\n".join(f"| `{family.page}`(3) | {', '.join(family.functions())} |"
                     for family in families)
    said = "\n\n".join(rules[1:])
    return f"""# NAME

hundredweight - freight rating for less-than-truckload shipments

# SYNOPSIS

    #include <hundredweight/exports.h>
    #include <hundredweight/platform.h>

    cc host.c $(pkg-config --cflags --libs hundredweight)

# DESCRIPTION

{beginning}

# Functions

| Page | Functions |
|---|---|
{rows}
| `hundredweight-records`(3) | the records, field by field |

# Rules of every call

{said}

{sections}
# SEE ALSO

`cwt`(1), `hundredweight-records`(3); {DOCUMENTATION}
"""


def format_page(name, page, see):
    title, beginning, sections = doc_sections(page)
    return (f"# NAME\n\n{name} - {title[0].lower()}{title[1:]}\n\n# DESCRIPTION\n\n{beginning}\n\n"
            f"{sections}\n# SEE ALSO\n\n{references(see)}; {DOCUMENTATION}\n")


def main(headers, record, docs, to):
    headers, docs, to = Path(headers), Path(docs), Path(to)
    exports = headers / "exports.h"
    families = families_of(exports)
    for header, subject in (("platform.h", "platform"), ("engine_interface.h", "engine calls"),
                            ("service_guide_interface.h", "guide calls")):
        families += families_of(headers / header, subject)
    rules = paragraphs(BLOCK.search(exports.read_text(encoding="utf-8"))[2]).split("\n\n")
    rule = next(text for text in rules if text.startswith("Unless"))
    records = json.loads(Path(record).read_text(encoding="utf-8"))["records"]
    pages = {f"{family.page}.3": function_page(family, rule, families) for family in families}
    pages["hundredweight.3"] = overview(docs, rules, families)
    pages["hundredweight-records.3"] = records_page(records)
    for name, page, see in FORMATS:
        pages[f"{name}.5"] = format_page(name, docs / page, see)
    for name, text in pages.items():
        (to / f"{name}.md").write_text(text, encoding="utf-8")
    links = [(entry["name"], family.page) for family in families for entry in family.entries]
    links += [(each["name"], "hundredweight-records") for each in records]
    (to / "links.txt").write_text("".join(f"{name} {page}\n" for name, page in links),
                                  encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
