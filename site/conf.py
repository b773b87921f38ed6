"""How the documentation becomes a site. Its pages are gathered by gather.py; nothing that they show
is loaded from elsewhere, and two builds of the same sources are the same to the byte."""
import os
import pathlib
import re

project = "Hundredweight"
html_title = f"Hundredweight {os.environ['HWT_VERSION']}"
language = "en"
extensions = ["myst_parser", "breathe"]
myst_heading_anchors = 4
breathe_projects = {project: os.environ["HWT_HEADERS"]}
breathe_default_project = project
breathe_domain_by_extension = {"h": "c"}
c_id_attributes = ["HWT_API", "HWT_CALL"]

html_theme = "furo"
html_static_path = ["static"]
html_css_files = ["site.css"]
html_copy_source = False
html_show_sphinx = False
html_show_search_summary = False  # It would be fetched, which a browser refuses for files.
smartquotes = False
pygments_style, pygments_dark_style = "default", "monokai"
# A block of shown output may have any letters, and one of a fragment may be none of its language.
highlight_language = "none"
html_show_copyright = False


def follow_the_system(app, failure):
    """The theme's style sheet as Debian has it is dark only when it is told to be."""
    path = pathlib.Path(app.outdir) / "_static/styles/furo.css"
    text = "" if failure else path.read_text("utf-8")
    dark = re.search(r'body\[data-theme="dark"\] \{(.*?)\}', text, re.DOTALL)
    if dark and "prefers-color-scheme" not in text:
        system = f'@media (prefers-color-scheme: dark) {{ body:not([data-theme="light"]) {{{dark[1]}}} }}'
        path.write_text(text.replace(dark[0], f"{dark[0]}\n{system}", 1), "utf-8")


def setup(app):
    app.connect("build-finished", follow_the_system)
