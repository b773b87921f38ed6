"""How the documentation becomes a site. Its pages are gathered by gather.py; nothing that they show
is loaded from elsewhere, and two builds of the same sources are the same to the byte."""
import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import theme  # noqa: E402

project = "Hundredweight"
html_title = f"Hundredweight {os.environ['HWT_VERSION']}"
language = "en"
extensions = ["myst_parser", "breathe", "message_codes"]
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


def put_theme_right(app, failure):
    if not failure:
        theme.put_right(pathlib.Path(app.outdir) / "_static")


def setup(app):
    app.connect("build-finished", put_theme_right)
