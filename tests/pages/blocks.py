"""The blocks of code of a page, in their order."""
import dataclasses
import re

_FENCED = re.compile(r"^```(\S*)\n(.*?)^```$", re.DOTALL | re.MULTILINE)
_INDENTED = re.compile(r"^(?<=\n\n) {4}\S.*$", re.MULTILINE)


@dataclasses.dataclass
class Block:
    language: str
    text: str
    line: int


def blocks(page):
    text = page.read_text("utf-8")
    return [Block(match[1], match[2], text.count("\n", 0, match.start()) + 1)
            for match in _FENCED.finditer(text)]


def unmarked(page):
    """The first lines of code that blocks() does not see: in no language, by its indentation alone, or
    fenced in another way."""
    text = _FENCED.sub("", page.read_text("utf-8"))
    return _INDENTED.findall(text) + re.findall(r"^.*(?:```|~~~).*$", text, re.MULTILINE)


def lines(script):
    """The commands of a script: its lines, but those that go on are one."""
    return re.findall(r"^(?:.*\\\n)*.*\S.*$", script, re.MULTILINE)


def commands(console):
    """The commands of a console and what each prints: behind a $, and below it."""
    before, *parts = re.split(r"^\$ ((?:.*\\\n)*.*)\n", console, flags=re.MULTILINE)
    assert parts and not before, f"a console begins with a $:\n{console}"
    return list(zip(parts[::2], parts[1::2]))


def same(shown, printed):
    """Whether this was printed; ... on a line of its own stands for lines, and … for a part of one."""
    def bare(text):
        return re.sub(r" +$", "", text, flags=re.MULTILINE).strip("\n") + "\n"

    def pattern(line):
        return "(.*\n)*?" if line.strip() == "..." else ".*?".join(map(re.escape, line.split("…")))

    return re.fullmatch("".join(map(pattern, bare(shown).splitlines(keepends=True))), bare(printed)) is not None
