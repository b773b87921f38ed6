"""The scripts and commands of docs/scale.md, so that what is tested is what it says."""
import pathlib
import re
import stat

_PAGE = (pathlib.Path(__file__).parents[2] / "docs/scale.md").read_text()
_BLOCK = re.compile(r"(?:^`([\w.]+)`[^\n]*:\n\n)?^```\w+\n(.*?)^```", re.DOTALL | re.MULTILINE)


def write_scripts(folder):
    """Writes every script that the page names."""
    for name, text in _BLOCK.findall(_PAGE):
        if name:
            (folder / name).write_text(text)
            (folder / name).chmod(0o755)


def commands(heading):
    """The blocks under a heading that have no name, in their order."""
    section = _PAGE.split(f"\n## {heading}\n")[1].split("\n## ")[0]
    return [text for name, text in _BLOCK.findall(section) if not name]
