"""Writes the manual pages of the library and of the file formats as Markdown.

Arguments: the headers' folder, record.json, the documentation's folder, where to write. The pages
say what the headers' comments and the documentation say. A line of links.txt names a function or a
record, and the page that it is on.
"""
import json
import re
import sys
import textwrap
from pathlib import Path

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

PARAGRAPH = "\n\n"
FUNCTION = re.compile(r"HWT_API (.+?) ?(?:HWT_CALL )?(\w+)\((.*)\);", re.DOTALL)
HANDLER = re.compile(r"typedef ([\w ]+?) ?\(\*(\w+)\)\((.*)\);", re.DOTALL)
BLOCK = re.compile(r"/\*(\*?)(.*?)\*/|((?:HWT_API|typedef)[^;]*;)", re.DOTALL)


def comment_lines(comment):
    return [re.sub(r"^ ?\* ? ?", "", line).rstrip() for line in comment.strip().splitlines()]


def plain(text):
    """A text that means nothing but itself in Markdown."""
    return re.sub(r"([\\`*_\[\]<>#|~&])", r"\\\1", text)


def paragraphs(comment, names=()):
    """A comment as Markdown: lines that stand further in are a table, and codes have a paragraph."""
    blocks, kinds = [[]], [None]
    for line in comment_lines(comment):
        kind = "table" if line.startswith("  ") else "text"
        if not line or kind != kinds[-1] or re.match("Codes?[ :]", line):
            blocks.append([])
            kinds.append(kind)
        if line:
            blocks[-1].append(line)
    texts = []
    for block, kind in zip(blocks, kinds, strict=True):
        if kind == "table":
            texts.append(textwrap.indent(textwrap.dedent("\n".join(block)), "    "))
        elif block:
            texts.append(re.sub(r"\b(\w+)\b", lambda word: f"`{word[0]}`" if word[0] in names
                                else word[0], plain(" ".join(block))))
    return "\n\n".join(texts)


def prototype(begin, arguments):
    """A declaration in lines that fit, broken between arguments."""
    lines = [begin]
    for argument in re.findall(r"\S[^,]*,?", " ".join(arguments.split()) + ");"):
        if len(lines[-1]) + len(argument) > 68:
            lines.append(" " * len(begin))
        lines[-1] += argument + (" " if argument.endswith(",") else "")
    return "\n".join(line.rstrip() for line in lines)


def references(text):
    """Names of pages as they are written in a page."""
    return re.sub(r"([\w-]+)(\(\d\))", r"`\1`\2", text)


class Family:
    """Functions that belong together, with what a header says of them all."""

    def __init__(self, subject, comment, header):
        self.subject, self.comment, self.header = subject, comment, header
        self.entries = []
        self.page = "hundredweight-" + subject.split(" of ")[0].replace(" ", "-")

    def functions(self):
        return [entry["name"] for entry in self.entries if not entry["is_handler"]]


def families_of(header, subject=None):
    """The families of a header, whose comments each name the subject, or the one that it is."""
    text = header.read_text(encoding="utf-8")
    families, before = [], ""
    if subject:
        families.append(Family(subject, BLOCK.search(text)[2], header.name))
    for block in BLOCK.finditer(text):
        is_doc, comment, code = block.groups()
        if comment is not None and is_doc:
            before = comment
        elif comment is not None:
            subject = re.match(r"[^.,:]*", comment.strip())[0].lower()
            families.append(Family(subject, comment, header.name))
        else:
            is_handler = code.startswith("typedef")
            result, name, arguments = (HANDLER if is_handler else FUNCTION).match(code).groups()
            begin = f"typedef {result} (*{name})(" if is_handler else f"{result} {name}("
            families[-1].entries.append({"name": name, "comment": before, "is_handler": is_handler,
                                         "declaration": prototype(begin, arguments)})
    return families


def function_page(family, rule, others):
    names = [entry["name"] for entry in family.entries]
    include = f"#include <hundredweight/{family.header}>"
    declarations = "\n".join([include, ""] + [entry["declaration"] for entry in family.entries])
    parts = [
        f"# NAME\n\n{family.page}, {', '.join(names)} - {family.subject}, functions of Hundredweight",
        "# SYNOPSIS\n\n" + textwrap.indent(declarations, "    "),
        "# DESCRIPTION\n\n" + paragraphs(family.comment, names)]
    parts += [f"## `{entry['name']}`\n\n" + paragraphs(entry["comment"], names)
              for entry in family.entries]
    if any(re.search("Codes?[ :,]", entry["comment"]) for entry in family.entries):
        parts.append("# RETURN VALUE\n\n" + rule)
    see = ["hundredweight(3)", "hundredweight-records(3)"]
    see += [f"{other.page}(3)" for other in others if other is not family]
    parts.append("# SEE ALSO\n\n" + references(", ".join(see)))
    return "\n\n".join(parts) + "\n"


def doc_sections(page):
    """A page of the documentation: its title, what it begins with, and its sections as ours."""
    text = page.read_text(encoding="utf-8").replace("beside this page",
                                                    "in /usr/share/doc/hundredweight")
    title, text = text.split("\n", 1)
    parts = re.split(r"^(?=##? )", text, maxsplit=1, flags=re.MULTILINE)
    sections = re.sub(r"^#(#+ )", r"\1", parts[1], flags=re.MULTILINE) if parts[1:] else ""
    return title.removeprefix("# "), parts[0].strip(), sections


def overview(docs, exports, families):
    _, beginning, sections = doc_sections(docs / "hosting.md")
    rows = "\n".join(f"| `{family.page}`(3) | {', '.join(family.functions())} |"
                     for family in families)
    rules = BLOCK.search(exports.read_text(encoding="utf-8"))[2]
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

{paragraphs(rules).split(PARAGRAPH, 1)[1]}

{sections}
# SEE ALSO

`cwt`(1), `hundredweight-records`(3); {DOCUMENTATION}
"""


def field_row(field):
    dimensions = "".join(f"[{count}]" for count in field["dimensions"])
    facts = [f"byte {field['offset']['64']}"]
    if field["offset"]["32"] != field["offset"]["64"]:
        facts[0] += f", with 32-bit pointers {field['offset']['32']}"
    facts += [field["unit"]] if field["unit"] else []
    term = f"`{field['type']} {field['name']}{dimensions}`"
    return f"| {term} | {'; '.join(facts)} | {plain(field['meaning'])} |"


def records_page(records):
    parts = ["# NAME\n\nhundredweight-records, " +
             ", ".join(record["name"] for record in records) + " - records of Hundredweight",
             "# SYNOPSIS\n\n" + "".join(
                 f"    #include <{header}>\n"
                 for header in dict.fromkeys(record["header"] for record in records)),
             "# DESCRIPTION\n\nThe records are packed: fields follow one another without gaps. Read "
             "their members by value. A field is told with the byte that it begins at."]
    for record in records:
        parts.append(f"# `{record['name']}`\n\n{plain(record['meaning'])}")
        section = None
        for field in record["fields"]:
            if field.get("section") != section or parts[-1].startswith("# "):
                section = field.get("section")
                parts += [plain(section)] if section else []
                parts.append("| Field | Where | Meaning |\n|---|---|---|")
            parts[-1] += "\n" + field_row(field)
    parts.append("# SEE ALSO\n\n`hundredweight`(3)")
    return "\n\n".join(parts) + "\n"


def format_page(name, page, see):
    title, beginning, sections = doc_sections(page)
    return (f"# NAME\n\n{name} - {title[0].lower()}{title[1:]}\n\n# DESCRIPTION\n\n{beginning}\n\n"
            f"{sections}\n# SEE ALSO\n\n{references(see)}; {DOCUMENTATION}\n")


def main(headers, record, docs, to):
    headers, docs, to = Path(headers), Path(docs), Path(to)
    exports = headers / "exports.h"
    families = families_of(exports) + families_of(headers / "platform.h", "platform")
    families = [family for family in families if family.entries]
    rules = BLOCK.search(exports.read_text(encoding="utf-8"))[2]
    rule = next(text for text in paragraphs(rules).split("\n\n") if text.startswith("Unless"))
    records = json.loads(Path(record).read_text(encoding="utf-8"))["records"]
    pages = {f"{family.page}.3": function_page(family, rule, families) for family in families}
    pages["hundredweight.3"] = overview(docs, exports, families)
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
