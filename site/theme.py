"""Puts right what keeps Debian's packaging of the theme and of its search from working in a folder
that no server serves."""
import pathlib
import re

NORMALIZE = pathlib.Path("/usr/share/javascript/normalize.css/normalize.css")


def change(path, pattern, to):
    text, count = re.subn(pattern, lambda match: to(match) if callable(to) else to, path.read_text("utf-8"),
                          flags=re.DOTALL | re.MULTILINE)
    if count != 1:
        raise SystemExit(f"{path.name}: {pattern} is there {count} times; look whether it still needs putting right")
    path.write_text(text, "utf-8")


def dark_by_system(block):
    """The colours of the dark, when they are chosen and when the system asks for them."""
    return f'{block[0]}\n@media (prefers-color-scheme: dark) {{ body:not([data-theme="light"]) {{{block[1]}}} }}'


def put_right(static):
    sheet, script = static / "styles/furo.css", static / "scripts/furo.js"
    change(sheet, r"^@import url\(/javascript/normalize\.css/normalize\.css\);", NORMALIZE.read_text("utf-8").strip())
    change(sheet, r'body\[data-theme="dark"\] \{(.*?)\}', dark_by_system)
    # A page from a folder may not import a module.
    change(script, r'^import [^\n]*gumshoe[^\n]*', (static / "scripts/gumshoe-patched.js").read_text("utf-8"))
    # Codes of messages are numbers, which the search would pass over.
    change(static / "searchtools.js", r"\|\|\s+queryTerm\.match\(/\^\\d\+\$/\)", "")
