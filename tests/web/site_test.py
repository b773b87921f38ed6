"""The documentation's site as a reader opens it, from a folder: SITE. Its script and search work
without a server, and its pages fit a telephone by day and by night."""
import os
import pathlib
import re
import unittest

from browser import OUT, Screen, wait

# What scrolls sideways and shows no shadow where it is cut.
CUT = """return [...document.querySelectorAll("article *")].filter((e) => e.scrollWidth > e.clientWidth
    && /auto|scroll/.test(getComputedStyle(e).overflowX)
    && !getComputedStyle(e).backgroundImage.includes("gradient")).map((e) => e.outerHTML.slice(0, 200))"""
SITE = pathlib.Path(os.environ["SITE"]).resolve()
# Pages of which pictures are kept.
KEPT = ("index.html", "house.html", "service.html", "record.html")


class Site(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.screen = Screen()

    @classmethod
    def tearDownClass(cls):
        cls.screen.driver.quit()

    def open(self, page, *how):
        return self.screen.open(f"file://{SITE}/{page}", *how)

    def found(self, words):
        self.open(f"search.html?q={words}")
        wait(lambda: self.screen.all("ul.search li") and "finished" in self.screen.one("#search-results").text,
             f"{words} is not found")
        return self.screen.run("return [...document.querySelectorAll('ul.search li a')].map((a) => a.href)")

    def test_the_search_finds_fields_functions_options_and_codes(self):
        for words, place in (("OrigZip", "RateContext.html#c.RateContext.OrigZip"),
                             ("RateShipment", "exports.html#c.RateShipment"),
                             ("resume", "command.html#cmdoption-cwt-batch-resume"), ("105", "messages.html#code-105"),
                             ("526", "messages.html#code-526")):
            self.assertTrue(any(link.endswith(place) for link in self.found(words)[:8]), words)
        there = next(link for link in self.found("LineRateText") if "#" in link)
        self.screen.open(there)
        said = self.screen.run("return document.getElementById(location.hash.slice(1)).parentElement.innerText")
        self.assertRegex(said, r"Offset \d+.*Size \d+ bytes.*Unit dollars per hundredweight.*Written by library")

    def test_pages_fit_and_are_dark_when_asked(self):
        telephone, desk = (390, "dark"), (1400, "light")
        pages = [page.name for page in sorted(SITE.glob("*.html"))]
        self.assertLess(set(KEPT), set(pages))
        pages += ["records/RateContext.html", "headers/exports.html"]
        for page in pages:
            for width, scheme in (telephone, desk) if page in KEPT else (telephone,):
                self.open(page, width, 844, scheme)
                with self.subTest(f"{page} {width}"):
                    self.assertFalse(self.screen.run("return document.documentElement.scrollWidth > innerWidth"), "too wide")
                    self.assertEqual(self.screen.run(CUT), [], "cut without a sign")
                    ground = self.screen.run("return getComputedStyle(document.body).backgroundColor")
                    self.assertEqual(min(map(int, re.findall(r"\d+", ground)[:3])) < 64, scheme == "dark", ground)
                    self.assertEqual([entry["message"] for entry in self.screen.driver.get_log("browser")
                                      if entry["level"] == "SEVERE"], [])
                if page in KEPT:
                    self.screen.driver.save_screenshot(str(OUT / f"site-{page[:-5]}-{width}.png"))


if __name__ == "__main__":
    unittest.main()
