"""The page of the command, from what --help of each of its commands tells."""
import re
import subprocess

from marked import heading, indented, plain

# --help has an option's name in the first columns, and what it does behind them or below.
NAMES = 30


def told(cwt, *arguments):
    return subprocess.run([cwt, *arguments, "--help"], check=True, capture_output=True, text=True).stdout


def entries(text, title):
    """The names of a section of --help, each with what is said of it."""
    found = []
    section = re.search(rf"^{title}:\n(.*?)(?:\n\n|\Z)", text, re.DOTALL | re.MULTILINE)
    for line in section[1].splitlines() if section else []:
        name = line.strip() if len(line) <= NAMES or line[NAMES - 1] != " " else line[:NAMES].strip()
        words = line.strip()[len(name):].strip()
        if line.startswith(" " * NAMES):
            found[-1][1] += f" {line.strip()}"
        else:
            found.append([name, words])
    return [(name, words.strip()) for name, words in found]


def command(cwt, name):
    text = told(cwt, name)
    purpose, usage = text.splitlines()[:2]
    lines = [*heading(f"cwt {name}", "-"), plain(purpose), "", f"``{usage.removeprefix('Usage: ')}``", "",
             f".. program:: cwt {name}", ""]
    for place, words in entries(text, "Positionals"):
        # Upper case is the place's name, what follows tells its kind.
        lines += [f"``{place.split()[0]}``", *indented([plain(words)]), ""]
    for option, words in entries(text, "Options"):
        lines += [f".. option:: {option.replace(',--', ', --')}", "", *indented([plain(words)]), ""]
    return lines


def page(cwt):
    text = told(cwt)
    names = [name for name, _ in entries(text, "Subcommands")]
    lines = [*heading("Every command and option", "="),
             "What ``cwt --help`` and ``--help`` of each command tell. ``cwt COMMAND --help`` tells it on a",
             "terminal.", ""]
    lines += [plain(line) + "\n" for line in text.split("\n\n")[-1].splitlines()]
    for name in names:
        lines += command(cwt, name)
    return "\n".join(lines) + "\n"
