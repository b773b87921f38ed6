#!/usr/bin/python3
"""Fails when a link of the built site leads nowhere, or when a page would load something from
elsewhere.

    links.py build/docs/html
"""
import html.parser
import pathlib
import re
import sys
import urllib.parse

# What a browser fetches on its own, by element and attribute.
LOADED = {("script", "src"), ("img", "src"), ("link", "href"), ("iframe", "src"), ("source", "src")}
ELSEWHERE = re.compile(r"https?:|/")


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors, self.links, self.loaded = {""}, set(), set()
        self.feed(path.read_text("utf-8"))

    def handle_starttag(self, tag, attrs):
        for name, value in attrs:
            if name in ("id", "name"):
                self.anchors.add(value)
            elif (tag, name) in LOADED:
                self.loaded.add(value)
            elif (tag, name) == ("a", "href"):
                self.links.add(value)


def faults(folder):
    pages = {path: Page(path) for path in sorted(folder.rglob("*.html"))}
    if not pages:
        yield f"{folder}: has no pages"
    for path, page in pages.items():
        name = path.relative_to(folder)
        for link in sorted(page.loaded):
            if ELSEWHERE.match(link):
                yield f"{name}: loads {link}"
        for link in sorted(page.links | page.loaded):
            if re.match(r"\w+:|//", link):
                continue
            there, _, anchor = urllib.parse.unquote(link).partition("#")
            target = (path.parent / there.partition("?")[0]).resolve() if there else path
            if not target.exists():
                yield f"{name}: {link} is not there"
            elif target in pages and anchor not in pages[target].anchors:
                yield f"{name}: {link} has no such place"
    for sheet in sorted(folder.rglob("*.css")):
        for link in re.findall(r"url\(['\"]?([^'\")]*)|@import ['\"]([^'\"]*)", sheet.read_text("utf-8")):
            if ELSEWHERE.match("".join(link)):
                yield f"{sheet.relative_to(folder)}: loads {''.join(link)}"


if __name__ == "__main__":
    sys.exit("\n".join(faults(pathlib.Path(sys.argv[1]).resolve())) or None)
