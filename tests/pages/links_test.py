"""Every link between the pages of the repository leads to a file, and to a heading in it."""
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGES = sorted([*ROOT.glob("*.md"), *ROOT.glob("docs/*.md"), ROOT / "fuzz/README.md", ROOT / "site/index.md"])
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
# Pages of the site that the build makes.
MADE = {"command.md", "record.md"}


def headings(path):
    """The headings' names as a repository's browser makes them."""
    titles = re.findall(r"^#+ (.*)$", re.sub(r"^```.*?^```$", "", path.read_text("utf-8"), flags=re.DOTALL | re.MULTILINE),
                        re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", title.lower()).strip().replace(" ", "-") for title in titles}


class Links(unittest.TestCase):
    def test_links_lead_somewhere(self):
        count = 0
        for page in PAGES:
            in_site = page.parent == ROOT / "site"
            folder = ROOT / "docs" if in_site else page.parent
            text = re.sub(r"^```.*?^```$", "", page.read_text("utf-8"), flags=re.DOTALL | re.MULTILINE)
            for link in LINK.findall(text):
                count += 1
                there, _, anchor = link.partition("#")
                target = folder / there if there else page
                with self.subTest(f"{page.relative_to(ROOT)}: {link}"):
                    if re.match(r"\w+:", link) or in_site and there in MADE:
                        continue
                    self.assertTrue(target.exists(), "not there")
                    self.assertTrue(not anchor or anchor in headings(target), "no such heading")
        self.assertGreater(count, 50)


if __name__ == "__main__":
    unittest.main()
