"""Makes the codes of messages objects of the site's search, each where its page tells of it: a section
of its own, or a row of a table."""
import re

from docutils import nodes

PAGE = "messages"


def places(doctree):
    """Each code and what tells of it."""
    for section in doctree.findall(nodes.section):
        heading = re.fullmatch(r"Code (\d+)", section[0].astext())
        if heading:
            yield heading[1], section
    for row in doctree.findall(nodes.row):
        code = row[0].astext()
        if re.fullmatch(r"\d{3}", code):
            row["ids"].append(f"code-{code}")
            yield code, row


def note(app, doctree):
    if app.env.docname == PAGE:
        for code, place in places(doctree):
            app.env.get_domain("std").note_object("message", code, place["ids"][0])


def setup(app):
    app.add_object_type("message", "message", objname="code of a message")
    app.connect("doctree-read", note)
