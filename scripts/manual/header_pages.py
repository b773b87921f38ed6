"""The manual pages that the library's headers make, as Markdown."""
import re
import textwrap

FUNCTION = re.compile(r"HWT_API (.+?) ?(?:HWT_CALL )?(\w+)\((.*)\);", re.DOTALL)
POINTER = re.compile(r"typedef (.+?) ?\((?:HWT_CALL)?\* ?(\w+)\)\((.*)\);", re.DOTALL)
BLOCK = re.compile(r"/\*(\*?)(.*?)\*/|(HWT_API[^;]*;|typedef [^;{]*\([^;]*;)", re.DOTALL)


def comment_lines(comment):
    return [re.sub(r"^ ?\* ? ?", "", line).rstrip() for line in comment.strip().splitlines()]


def plain(text):
    """A text that means nothing but itself in Markdown. A value that begins with a blank stays whole."""
    return re.sub(r"([\\`*_\[\]<>#|~&])", r"\\\1", re.sub(r'" (\w+")', '"\u00a0\\1', text))


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
    lines, indent = [begin], len(begin) if len(begin) < 45 else 4
    for argument in re.findall(r"\S[^,]*,?", " ".join(arguments.split()) + ");"):
        if len(lines[-1]) + len(argument) > 68:
            lines.append(" " * indent)
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
        name = subject.split(" of ")[0].removeprefix("base-rate ")
        self.page = "hundredweight-" + name.replace(" ", "-")

    def add(self, code, comment):
        """A function, or the type of one that the host or a partner has."""
        is_pointer = code.startswith("typedef")
        result, name, arguments = (POINTER if is_pointer else FUNCTION).match(code).groups()
        # A partner's functions are called as their types say.
        is_handler = is_pointer and not name.endswith("Function")
        name = name.removesuffix("Function")
        begin = f"typedef {result} (*{name})(" if is_handler else f"{result} {name}("
        self.entries.append({"name": name, "comment": comment, "is_ours": not is_pointer,
                             "declaration": prototype(begin, arguments)})

    def functions(self):
        ours = [entry["name"] for entry in self.entries if entry["is_ours"]]
        return ours or [entry["name"] for entry in self.entries]

    def purpose(self):
        is_ours = any(entry["is_ours"] for entry in self.entries)
        return f"{self.subject}, functions of {'' if is_ours else 'a partner of '}Hundredweight"


def families_of(header, subject=None):
    """The families of a header, whose comments each name the subject, or the one that it is."""
    text = header.read_text(encoding="utf-8")
    families, before = [], ""
    if subject:
        families.append(Family(subject, BLOCK.search(text)[2], header.name))
    for block in BLOCK.finditer(text):
        is_doc, comment, code = block.groups()
        if code is not None:
            families[-1].add(code, before)
        elif is_doc:
            before = comment
        elif subject and "clang-format" not in comment:
            families[-1].comment += "\n *\n * " + comment.strip()
        elif not subject:
            found = re.match(r"[^.,:]*", comment.strip())[0].lower()
            families.append(Family(found, comment, header.name))
    return families


def function_page(family, rule, others):
    names = [entry["name"] for entry in family.entries]
    include = f"#include <hundredweight/{family.header}>"
    declarations = "\n".join([include, ""] + [entry["declaration"] for entry in family.entries])
    parts = [
        f"# NAME\n\n{family.page}, {', '.join(names)} - {family.purpose()}",
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
