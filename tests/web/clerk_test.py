"""What a clerk does with the rating screen, in a browser: passes bills on, rates files, with whatever
hands, eyes and window."""
import base64
import json
import re
import subprocess
import time
import unittest
import urllib.parse

from selenium.webdriver.common.keys import Keys

from browser import CWT, OUT, SAMPLE, bill_of, cwt, screen_on_service, service, wait
from samples import LINK, SAMPLES

CSV = ("id,origin_zip,destination_zip,class_1,weight_1,tariff,cost_center\r\n"
       'A1,30303,60601,70,960,SMPLNATL,"77, north"\r\nA2,30303,60601,71,960,SMPLNATL,78\r\n'
       'A3,60601,30303,100,12000,SMPLNATL,"a ""quoted""\r\nname"\r\n')
token = OUT / "token"


def setUpModule():
    global base, screen
    base, screen = unittest.enterModuleContext(screen_on_service())


class PassesOn(unittest.TestCase):
    def copied(self, words):
        next(button for button in screen.all(".share button") if button.text == words).click()
        wait(lambda: f"{words}: copied." == screen.run("return document.getElementById('said').textContent"), words)
        return screen.driver.execute_async_script("navigator.clipboard.readText().then(arguments[0])")

    def test_link_json_and_command_give_the_same_bill(self):
        screen.open(f"{base}/").enter({**SAMPLES["16-whole-road"], "discount": {"percent": "45.50"}})
        screen.answer("rated")
        time.sleep(0.8)
        bill = screen.bill()
        self.assertEqual(json.loads(self.copied("Copy JSON")), {**SAMPLES["16-whole-road"], "discount": {"percent": 45.5}})
        command = self.copied("Copy command").replace("cwt rate -", f"{CWT} rate - --json", 1)
        printed = subprocess.run(["sh", "-c", command], capture_output=True, text=True).stdout
        self.assertEqual(bill, bill_of(json.loads(printed)))
        screen.open(self.copied("Copy link")).answer("rated")
        self.assertEqual(screen.bill(), bill)
        screen.run("location.hash = arguments[0]", LINK.format(960))
        wait(lambda: screen.answer("rated") and screen.bill()["rows"][0][1] == "960", "the address is not followed")

    def test_it_is_printed_on_one_page(self):
        screen.open(f"{base}/").enter(SAMPLES["03-eight-lines"])
        screen.answer("rated")
        screen.one("#curve .pad svg")
        for paper in ((8.27, 11.69), (8.5, 11)):
            printed = screen.command("Page.printToPDF", paperWidth=paper[0], paperHeight=paper[1])["data"]
            (OUT / "printed.pdf").write_bytes(base64.b64decode(printed))
            self.assertEqual(len(re.findall(rb"/Type\s*/Page\b", base64.b64decode(printed))), 1)


class TakesFiles(unittest.TestCase):
    def test_a_csv_file_comes_down_rated(self):
        saved = OUT / "quotes.rated.csv"
        saved.unlink(missing_ok=True)
        screen.open(f"{base}/")
        screen.drop("quotes.csv", CSV)
        screen.one("a[download]").click()
        self.assertEqual(screen.texts(".tally > div"), ["rated\n2", "refused\n1", "failed\n0"])
        wait(saved.exists, "no file")
        self.assertEqual(saved.read_bytes().decode(), subprocess.run(
            [CWT, "batch", "-", "--from", "csv", "--no-progress", "--data", SAMPLE], input=CSV.encode(), capture_output=True).stdout.decode())
        self.assertEqual(screen.texts(".reasons li"), ["1 refused: Invalid Class. (code 105); row 2"])
        self.assertEqual(screen.faults("batch"), [])

    def test_the_result_says_what_a_stray_quote_has_done(self):
        text = "origin_zip,destination_zip,class_1,weight_1,tariff,profile,Umlaut ä,b\r\n" + "".join(
            f"30303,60601,{rest},x,y\r\n" for rest in ('70,960,,Northeast', '71,960,,', '70,960,,"', '70,960,,"', '71,960,,'))
        screen.open(f"{base}/#batch")
        summary = subprocess.run([CWT, "batch", "-", "--from", "csv", "--no-progress", "--data", SAMPLE],
                                 input=text.encode(), capture_output=True).stderr.decode()
        reasons = sorted(re.findall(r"\d+ refused: .*", summary))
        for form in ("csv", "ndjson"):
            screen.one(f"#result-form option[value={form}]").click()
            screen.drop("stray.csv", text)
            screen.one(f"a[download$=rated\\.{form}]")
            self.assertEqual(sorted(screen.texts(".reasons li")), reasons)
            self.assertTrue(screen.texts(".reasons li")[0].startswith("2 refused: Invalid Class."))
            for words in ("Row 3 is of several lines", "1 bill has notes", "Umlaut ä, b", "stray quote"):
                self.assertIn(words, screen.one("#batch-run").text)
        self.assertEqual(screen.faults("stray"), [])

    def test_wrong_columns_are_told_and_a_run_can_be_cancelled(self):
        screen.open(f"{base}/#batch")
        screen.drop("slip.csv", CSV.replace("weight_1", "wieght_1"))
        self.assertRegex(screen.one("#batch-run .banner.bad").text, "wieght_1|weight_1")
        row = "30303,60601,70,960,SMPLNATL\r\n"
        screen.drop("year.csv", "origin_zip,destination_zip,class_1,weight_1,tariff\r\n" + row * 200000)
        wait(lambda: re.search("[1-9].* of 200,000", screen.one("#batch-run").text), "no progress")
        screen.one("#batch-run button").click()
        self.assertIn("Cancelled after", screen.one("#batch-run .banner.plain").text)
        self.assertEqual(screen.all("a[download]"), [])


class IsForEveryone(unittest.TestCase):
    def test_it_rates_with_the_keyboard_alone(self):
        screen.open(f"{base}/", width=390, height=800)
        screen.press(Keys.TAB)
        self.assertEqual(screen.driver.switch_to.active_element.text, "Skip to the entries")
        screen.press(Keys.ENTER, Keys.TAB, Keys.TAB)
        self.assertEqual(screen.driver.switch_to.active_element.get_attribute("id"), "origin-zip")
        screen.press("30303", Keys.TAB, Keys.TAB, Keys.TAB, "60601", Keys.TAB, Keys.TAB, Keys.TAB, "70", Keys.TAB, "960")
        screen.press(Keys.TAB, Keys.ENTER, "100", Keys.TAB, "40")  # Add a line: the only remove button is off.
        for _ in range(4):
            screen.press(Keys.TAB)
        screen.press("SMPLNATL", Keys.ENTER)
        screen.answer("rated")
        self.assertEqual([row[:2] for row in screen.bill()["rows"]], [["70", "960"], ["100", "40"], ["Total", "1,000"]])
        self.assertIn("Total due USD", screen.run("return document.getElementById('said').textContent"))

    def test_nothing_is_wrong_in_any_state_width_or_scheme(self):
        whole = urllib.parse.urlencode({"profile": "Northeast", "service_guide": "true"})
        filled = LINK.format(960).replace("30303", "10001").replace("Atlanta", "New+York").replace("GA", "NY") \
            .replace("60601", "30303").replace("Chicago", "Atlanta").replace("IL", "GA")
        for name, fragment, width, scheme in (
                ("filled", f"{filled}&{whole}", 1500, "light"), ("dark", LINK.format(1900), 1500, "dark"),
                ("telephone", f"{filled}&{whole}", 390, "light"), ("narrow", LINK.format(1900), 320, "dark"),
                ("tablet", LINK.format(60), 1000, "light"), ("empty", "", 1280, "light")):
            with self.subTest(name):
                screen.open(f"{base}/#{fragment}", width, 844 if width < 500 else 1000, scheme)
                if fragment:
                    screen.answer("rated")
                    screen.one("#curve .pad svg")
                    screen.run("document.querySelectorAll('details').forEach((part) => { part.open = innerWidth < 500; })")
                self.assertEqual(screen.faults(name), [])
        for name, width, scheme in (("set", 1300, "light"), ("set-narrow", 320, "dark")):
            with self.subTest(name):
                screen.open(f"{base}/#set", width, 900, scheme).one("details.profile:last-of-type summary").click()
                screen.one("details.profile[open] .scrolling")
                self.assertEqual(screen.faults(name), [])

    def test_the_set_says_what_inspect_says(self):
        screen.open(f"{base}/#set").one(".states")
        told = json.loads(cwt("inspect", SAMPLE, "--json", "--states"))
        self.assertEqual(len(screen.all(".files tbody tr")), len(told["files"]))
        screen.run("document.querySelectorAll('.columns details').forEach((part) => { part.open = true; })")
        words = {"true": "yes", "false": "no", '""': "–"}
        said = zip(*(screen.texts(part) for part in (".pairs dt", ".pairs dt + dd", ".pairs .meaning")))
        self.assertEqual(sorted(said), sorted(
            (name, words.get(json.dumps(field["value"]), str(field["value"])), field["meaning"])
            for section in told["sections"].values() for name, field in section.items()))
        self.assertEqual(screen.texts(".files td:nth-child(2)"), [file["meaning"] for file in told["files"]])
        for entry in told["states"]:
            self.assertIn(entry["state"], " ".join(screen.texts(".in-state, .letters li")))

    def test_a_token_is_asked_for_and_kept(self):
        token.write_text("open-sesame-open-sesame-open-sesame\n")
        token.chmod(0o600)
        with service("--token-file", token) as guarded:
            screen.open(f"{guarded}/#{LINK.format(960)}")
            wait(lambda: screen.all("dialog[open]"), "no token is asked for")
            self.assertEqual(screen.faults("token"), [])
            for given in ("wrong", token.read_text().strip()):
                wait(lambda: screen.all("#token-dialog[open]"), "not asked again")
                screen.type("#token", given)
                screen.press(Keys.ENTER)
                time.sleep(0.5)
            screen.answer("rated")
            screen.driver.refresh()
            screen.answer("rated")
            self.assertEqual(screen.all("dialog[open]"), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
