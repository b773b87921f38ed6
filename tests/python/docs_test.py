"""What the documentation shows is what happens."""
import os
import re
import subprocess
import sys
import tempfile
import unittest

import nbformat
from nbclient import NotebookClient

from samples import DOCS, ROOT

# The notebook's interpreter is frozen in part, which its debugger would remark on.
os.environ["PYDEVD_DISABLE_FILE_VALIDATION"] = "1"


def texts(notebook):
    """What the cells print, but for the plots."""
    outputs = (output for cell in notebook.cells for output in cell.get("outputs", []))
    return [output.get("text") or output.data["text/plain"] for output in outputs]


def executed(notebook):
    with tempfile.TemporaryDirectory() as folder:
        NotebookClient(notebook, timeout=300, resources={"metadata": {"path": folder}}).execute()
    for cell in notebook.cells:
        cell.metadata.pop("execution", None)
    return notebook


class Docs(unittest.TestCase):
    def test_the_page_on_python_prints_what_it_shows(self):
        page = (DOCS / "python.md").read_text()
        examples = re.findall(r"^```python\n(.*?)^```\n\n```text\n(.*?)^```", page, re.DOTALL | re.MULTILINE)
        self.assertEqual(len(examples), page.count("```python"))
        self.assertTrue(examples)
        code = "\n".join(code for code, _ in examples)
        printed = subprocess.run([sys.executable, "-c", code], cwd=ROOT, capture_output=True, text=True)
        self.assertEqual((printed.returncode, printed.stderr), (0, ""))
        self.assertEqual(printed.stdout, "".join(text for _, text in examples))

    def test_the_notebook_prints_what_it_shows(self):
        shown = nbformat.read(DOCS / "re-rating.ipynb", as_version=4)
        expected = texts(shown)
        self.assertGreater(len(expected), 6)
        self.assertEqual(texts(executed(shown)), expected)


if __name__ == "__main__":
    if sys.argv[1:] == ["--execute"]:
        nbformat.write(executed(nbformat.read(DOCS / "re-rating.ipynb", as_version=4)),
                       DOCS / "re-rating.ipynb")
    else:
        unittest.main()
