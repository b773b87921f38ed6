"""Text as reStructuredText has it."""
import re


def plain(text):
    """A text in which nothing is markup."""
    return re.sub(r"([\\*`_|])", r"\\\1", text)


def heading(text, line):
    return [text, line * len(text), ""]


def indented(lines, by=3):
    return [" " * by + line if line else "" for line in lines]
