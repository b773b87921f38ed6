"""Reads the manual pages as a terminal shows them. Arguments: cwt, record.json, the sources."""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

# What Markdown leaves behind when it is not understood.
LEFTOVERS = re.compile(r"`|\]\(|\*\*\w|<!--|^ *\|[-: |]+$|^ *#+ ", re.MULTILINE)
PREPROCESSOR = re.compile(r"^ *#(include|define|pragma) ", re.MULTILINE)


def shown(page):
    """A page in 80 columns, and what the formatter complains about."""
    run = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", page], text=True, check=False,
                         capture_output=True, env={"MANWIDTH": "80", "PATH": "/usr/bin:/bin",
                                                   "LC_ALL": "C.UTF-8", "MANROFFOPT": "-c"})
    return re.sub(".\b", "", run.stdout), run.stderr.strip()


def faults_of_page(page):
    text, complaint = shown(page)
    if complaint or not text:
        yield f"{page.name}: {complaint or 'nothing is shown'}"
    if not re.match(r"(\S+) +Hundredweight +\1\n", text):
        yield f"{page.name}: the title is too wide"
    for line in text.splitlines():
        if len(line) > 80:
            yield f"{page.name}: too wide: {line}"
    for leftover in LEFTOVERS.finditer(PREPROCESSOR.sub("", text)):
        yield f"{page.name}: left from Markdown: {leftover[0]}"


def faults_of_document(document, page):
    """Every name that a page of the documentation sets apart is told."""
    text = re.sub("^```.*?^```", "", document.read_text(encoding="utf-8"), flags=re.DOTALL | re.M)
    told = " ".join(shown(page)[0].split())
    names = sorted(set(re.findall("`([^`\n]+)`", text)))
    if not names:
        yield f"{document}: sets no name apart"
    for name in names:
        if " ".join(name.split()) not in told:
            yield f"{page.name}: no {name}"


def commands_of(cwt):
    """What a shell offers behind the program's name: its commands, and itself without one."""
    offered = subprocess.run([cwt, "complete", ""], text=True, check=True, capture_output=True)
    return [[], *([line.split("\t")[0]] for line in offered.stdout.splitlines())]


def faults_of_command(cwt, command, folder):
    """There is a page that ends with the exit codes, and every option that --help tells has a
    paragraph of it."""
    page = folder / f"man1/{'-'.join(['cwt', *command])}.1"
    if not page.exists():
        yield f"{page.name}: is not there"
        return
    told = subprocess.run([cwt, *command, "--help"], text=True, check=True, capture_output=True)
    text, _ = shown(page)
    options = re.findall(r"^  (-.*?)(?:  |$)", told.stdout, re.MULTILINE)
    if not options or "\nEXIT STATUS\n" not in text:
        yield f"{page.name}: tells of {len(options)} options, or of no exit status"
    for option in options:
        if not re.search(rf"^       {re.escape(option)}( |$)", text, re.MULTILINE):
            yield f"{page.name}: no {option}"


def faults_of_names(names, folder):
    """Every name leads to a page that has a heading of it."""
    found = subprocess.run(["man", "-M", folder, "-w", *names], text=True, check=False,
                           capture_output=True)
    if found.stderr:
        yield found.stderr
    texts = {}
    for name in names:
        page = folder / (folder / f"man3/{name}.3hwt").read_text(encoding="utf-8").split()[1]
        texts.setdefault(page, shown(page)[0])
        if not re.search(rf"^(   )?{name}$", texts[page], re.MULTILINE):
            yield f"{page.name}: no heading {name}"


def main(cwt, record, source):
    source = Path(source)
    names = (source / "src/frame/exported_names.txt").read_text(encoding="utf-8").split()
    platform = (source / "include/hundredweight/platform.h").read_text(encoding="utf-8")
    names += re.findall(r"^HWT_API .*?(\w+)\(", platform, re.MULTILINE)
    with tempfile.TemporaryDirectory() as temporary:
        folder = Path(temporary)
        subprocess.run([source / "scripts/write_manual_pages.sh", cwt, record, folder], check=True)
        pages = [page for section in ("man1", "man3", "man5")
                 for page in sorted((folder / section).iterdir()) if page.suffix != ".3hwt"]
        faults = [fault for page in pages for fault in faults_of_page(page)]
        commands = commands_of(cwt)
        if len(commands) != len(list((folder / "man1").iterdir())):
            faults.append(f"cwt has {len(commands) - 1} commands, which are not the pages of man1")
        faults += [fault for each in commands for fault in faults_of_command(cwt, each, folder)]
        for document, page in (("tariff-set", "man5/hundredweight-tariff.5"),
                               ("shipment", "man5/hundredweight-shipment.5"),
                               ("rows", "man5/hundredweight-rows.5"),
                               ("hosting", "man3/hundredweight.3")):
            faults += faults_of_document(source / f"docs/{document}.md", folder / page)
        faults += faults_of_names([*names, "RateContext"], folder)
    print("\n".join(faults) or f"{len(pages)} pages, {len(names)} functions")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
