#!/usr/bin/python3
"""Looks for common slips in the shipped code, by clang-tidy.

Several sources go through it as one, since their headers take longest to read: the units in which a
CMake tree compiles them, each with its sources in it instead of their names. What is found is told at
its place in the source. Those of Windows are left out, for their compiler's warnings are errors.

The library works on memory that others lend it: there, paths are followed through all calls. In the
host, whose values own their memory, they are followed through small functions alone, in a third of
the time.

Usage: find_slips.py TREE
"""
import bisect
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("host", "languages", "reference", "src")
# Reserved names are left to the compiler, which finds them in a fraction of the time.
CLANG_TIDY = ("clang-tidy", "--quiet", f"--config-file={ROOT}/.clang-tidy",
              "--extra-arg=-Wno-unknown-warning-option", "--extra-arg=-Wreserved-identifier")
# What it says beside what it finds; anything else is its own failure.
COUNTS = re.compile(r"^\d+ (warnings?|errors?)( and \d+ errors?)? generated\.\n", re.M)

SHALLOW = tuple(f"--extra-arg={word}" for word in
                ("-Xclang", "-analyzer-config", "-Xclang", "mode=shallow"))


def sources_of(unit):
    """The sources that a unit of the build names, or the source that it is."""
    if "Unity" not in unit.parts:
        return [unit]
    return [pathlib.Path(name) for name in re.findall(r'^#include "(.*)"', unit.read_text(), re.M)]


def is_ours(source):
    """Whether a source is one of this project's, for this system."""
    inside = source.relative_to(ROOT).parts if source.is_relative_to(ROOT) else ()
    return bool(inside) and inside[0] in FOLDERS and source.suffix == ".cpp" and "win32" not in inside


def join(unit, sources):
    """Puts the sources into the unit. Result: the line behind which each begins."""
    begins, text = [], ""
    for source in sources:
        begins.append(text.count("\n"))
        text += source.read_text()
    unit.write_text(text)
    return begins


def look(tree, unit, sources):
    """Looks through a unit. Result: what is found or went wrong, and whether there is anything."""
    begins = join(unit, sources) if unit not in sources else [0]
    depth = () if any(source.is_relative_to(ROOT / "src") for source in sources) else SHALLOW
    done = subprocess.run([*CLANG_TIDY, *depth, "-p", tree, unit], capture_output=True, text=True)
    failure = COUNTS.sub("", done.stderr)

    def at_source(match):
        line = int(match[1])
        number = bisect.bisect_left(begins, line) - 1
        return f"{sources[number].relative_to(ROOT)}:{line - begins[number]}:"

    found = re.sub(rf"{re.escape(str(unit))}:(\d+):", at_source, done.stdout)
    if done.returncode != 0 and not found + failure:
        failure = f"{unit}: clang-tidy ended with {done.returncode}\n"
    return found + failure, done.returncode != 0 or failure != ""


def main(tree):
    commands = json.loads((pathlib.Path(tree) / "compile_commands.json").read_text())
    named = {unit: sources_of(unit) for unit in (pathlib.Path(entry["file"]) for entry in commands)}
    units = {unit: ours for unit, sources in named.items() if (ours := list(filter(is_ours, sources)))}
    # Sources of other systems' builds have no command; clang-tidy takes a neighbour's.
    known = {source for sources in units.values() for source in sources}
    others = (source for folder in FOLDERS for source in (ROOT / folder).rglob("*.cpp"))
    units.update({source: [source] for source in others if is_ours(source) and source not in known})
    if not known:
        sys.exit(f"{tree} compiles no source of this project")
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        # The longest first, so that no processor waits for one of them at the end.
        order = sorted(units, key=lambda unit: -sum(path.stat().st_size for path in units[unit]))
        for told, has_failed in pool.map(lambda unit: look(tree, unit, units[unit]), order):
            failed = failed or has_failed
            print(told, end="", flush=True)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
