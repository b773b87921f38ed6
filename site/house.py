"""Draws the house from its sources: a box for every room, an arrow where a file of one includes a
file of another. What a room is for stands in the README's table of folders, and nowhere else."""
import pathlib
import re
import subprocess
import textwrap

INCLUDE = re.compile(r'^#include [<"](\w+)/', re.MULTILINE)
HEADERS = "include/hundredweight"


def purposes(root):
    """What each folder is for, as the README says."""
    rows = re.findall(r"^\| `([\w/]+)/` \| (.*) \|$", (root / "README.md").read_text("utf-8"), re.MULTILINE)
    return {folder: words.replace("`", "") for folder, words in rows}


def sources(folder):
    return sorted(path for path in folder.rglob("*") if path.suffix in (".h", ".cpp"))


def rooms(root, top):
    return sorted(path.name for path in (root / top).iterdir() if path.is_dir() and sources(path))


def arrows(root, top):
    """Which room includes from which; the public headers are one more."""
    inside = {*rooms(root, top), "hundredweight"}
    found = set()
    for room in rooms(root, top):
        for path in sources(root / top / room):
            found |= {(room, to) for to in INCLUDE.findall(path.read_text("utf-8")) if to in inside}
    return {(room, to) for room, to in found if room != to}


def box(name, path, words):
    label = "<br/>".join(textwrap.wrap(words, 26))
    return f'"{name}" [label=<<b>{path}/</b><br/><font point-size="11">{label}</font>>]'


def without_detours(pairs):
    """The arrows but for those that others lead to as well."""
    def reaches(start, end, left):
        return any(to == end or reaches(to, end, left - {(start, to)}) for from_, to in left if from_ == start)

    kept = set(pairs)
    for pair in sorted(pairs):
        if reaches(*pair, kept - {pair}):
            kept.discard(pair)
    return kept


def drawing(root, top):
    said = purposes(root)
    missing = [f"{top}/{room}" for room in rooms(root, top) if f"{top}/{room}" not in said]
    if missing:
        raise SystemExit(f"README.md does not say what these folders are for: {', '.join(missing)}")
    pairs = arrows(root, top)
    mutual = {(a, b) for a, b in pairs if (b, a) in pairs}
    once = without_detours({(a, b) for a, b in pairs if (a, b) not in mutual or a < b})
    lines = [box(room, f"{top}/{room}", said[f"{top}/{room}"]) for room in rooms(root, top)]
    lines.append(box("hundredweight", HEADERS, said[HEADERS]))
    lines += [f'"{a}" -> "{b}"' + (" [dir=both]" if (a, b) in mutual else "") for a, b in sorted(once)]
    graph = "\n".join(["digraph {", 'bgcolor="transparent"; nodesep=0.25; ranksep=0.45;',
                       'node [shape=box style=rounded fontname="sans-serif" fontsize=13 margin="0.14,0.08"];',
                       "edge [arrowsize=0.7];", *lines, "}"])
    svg = subprocess.run(["dot", "-Tsvg"], input=graph, check=True, capture_output=True, text=True).stdout
    svg = svg[svg.index("<svg"):].strip()
    # Colours are the page's, by day and by night.
    svg = svg.replace('stroke="black"', 'stroke="currentColor"').replace('fill="black"', 'fill="currentColor"')
    svg = re.sub(r"<title>.*?</title>\n?|<!--.*?-->\n?", "", svg, flags=re.DOTALL)
    svg = re.sub(r"<text ", '<text fill="currentColor" ', svg)
    return f'<div class="house" role="img" aria-label="The rooms of {top}/ and which includes from which">\n{svg}\n</div>'


def with_drawings(page, root):
    """The page with a drawing at each of its marks, <!-- drawing: src --> say."""
    page, count = re.subn(r"<!-- drawing: (\w+) -->", lambda mark: f"```{{raw}} html\n{drawing(root, mark[1])}\n```", page)
    if not count:
        raise SystemExit("the page of the house has no place for a drawing")
    return page
