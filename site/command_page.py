"""The page of the command, from what --help of each of its commands tells."""
import re
import subprocess
import sys

from marked import heading, indented, plain

# An option stands two blanks from the edge, what it does behind it or below, further in.
ENTRY = re.compile(r"^ {2}(\S.*?)(?: {2,}(.*))?$")


def told(cwt, *arguments):
    """The paragraphs of --help."""
    run = subprocess.run([cwt, *arguments, "--help"], check=True, capture_output=True, text=True)
    return run.stdout.strip().split("\n\n")


def entries(paragraphs, title):
    """The names of a section of --help, each with what is said of it."""
    found = []
    for paragraph in paragraphs:
        first, *lines = paragraph.splitlines()
        for line in lines if first == f"{title}:" else []:
            entry = ENTRY.match(line)
            if entry:
                found.append([entry[1], entry[2] or ""])
            else:
                found[-1][1] = f"{found[-1][1]} {line.strip()}".strip()
    return found


def command(cwt, name):
    paragraphs = told(cwt, name)
    purpose, _, usage = paragraphs[0].partition("\nUsage: ")
    lines = [*heading(f"cwt {name}", "-"), plain(" ".join(purpose.split())), "",
             f"``{' '.join(usage.split())}``", "", f".. program:: cwt {name}", ""]
    for place, words in entries(paragraphs, "Arguments"):
        lines += [f"``{place}``", *indented([plain(words)]), ""]
    options = entries(paragraphs, "Options")
    if not options:
        raise SystemExit(f"cwt {name} --help tells of no options")
    for option, words in options:
        lines += [f".. option:: {option}", "", *indented([plain(words)]), ""]
    return lines


def page(cwt):
    paragraphs = told(cwt)
    lines = [*heading("Every command and option", "="),
             "What ``cwt --help`` and ``--help`` of each command tell. ``cwt COMMAND --help`` tells it on a",
             "terminal.", "", plain(" ".join(paragraphs[-1].split())), ""]
    commands = [name for name, _ in entries(paragraphs, "Subcommands")]
    if not commands:
        sys.exit("cwt --help tells of no command")
    for name in commands:
        lines += command(cwt, name)
    return "\n".join(lines) + "\n"
