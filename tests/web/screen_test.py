"""The rating screen as a clerk uses it, in a browser. What is rated is held against cwt rate."""
import base64
import json
import re
import subprocess
import time
import unittest
import urllib.parse
import urllib.request

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

from browser import CWT, OUT, SAMPLE, Screen, bill_of, cwt, money, rated, service, wait

SAMPLES = {path.stem: json.loads(path.read_text()) for path in sorted((SAMPLE / "shipments").glob("*.json"))}
DEFICIT = SAMPLES["01-deficit-and-discount"]
LINK = ("origin_zip=30303&origin_city=Atlanta&origin_state=GA&destination_zip=60601&destination_city=Chicago"
        "&destination_state=IL&class_1=70&weight_1={}&tariff=SMPLNATL")
CSV = ("id,origin_zip,destination_zip,class_1,weight_1,tariff,cost_center\r\n"
       'A1,30303,60601,70,960,SMPLNATL,"77, north"\r\nA2,30303,60601,71,960,SMPLNATL,78\r\n'
       'A3,60601,30303,100,12000,SMPLNATL,"a ""quoted""\r\nname"\r\n')

running = service()
token = OUT / "token"


def setUpModule():
    global base, screen
    base = running.__enter__()
    screen = Screen()


def tearDownModule():
    screen.driver.quit()
    running.__exit__(None, None, None)


def asked(path, body):
    request = urllib.request.Request(base + path, json.dumps(body).encode(), {"Content-Type": "application/json"})
    return json.loads(urllib.request.urlopen(request).read())


def drop(name, text):
    screen.run("""const data = new DataTransfer();
        data.items.add(new File([arguments[1]], arguments[0]));
        dispatchEvent(new DragEvent("drop", {dataTransfer: data, bubbles: true, cancelable: true}));""", name, text)


def press(*keys):
    for key in keys:
        ActionChains(screen.driver).send_keys(key).perform()


class Rates(unittest.TestCase):
    def test_the_samples_give_the_bills_of_the_command_line(self):
        bills = 0
        for name, shipment in SAMPLES.items():
            with self.subTest(name):
                expected = rated(shipment, "--explain")
                screen.open(f"{base}/").enter(shipment)
                if "bill" not in expected:
                    self.assertEqual(screen.answer("refused"), "refused")
                    shown = " ".join(screen.texts(".panel.bad li"))
                    for refusal in expected["refusals"]:
                        self.assertIn(refusal["text"], shown)
                    continue
                bills += 1
                screen.answer("rated")
                self.assertEqual(screen.bill(), bill_of(expected["bill"]))
                self.assertEqual(screen.texts("#statements li > .words:not(.off)"),
                                 [said["words"] for said in expected["statements"]])
        self.assertGreaterEqual(bills, 12)

    def test_every_figure_leads_to_its_reason_and_back(self):
        screen.open(f"{base}/#{LINK.format(1900)}&service_guide=true").answer("rated")
        loose = screen.run("""return [...document.querySelectorAll(".bill .figure")].filter((figure) => {
            const words = document.getElementById(figure.getAttribute("aria-describedby"));
            return !words || words.closest("li").dataset.why !== figure.dataset.why; }).length""")
        self.assertEqual((loose, len(screen.all(".bill td:last-child > .figure")) > 0), (0, True))
        figure = screen.one(".bill .figure[data-why=gross]")
        figure.send_keys(Keys.ENTER)
        self.assertEqual(screen.run("return document.activeElement.innerText"), "Gross charge")
        self.assertTrue(screen.one("#statements li[data-why=gross].lit").is_displayed())
        press(Keys.ENTER)
        self.assertEqual(screen.driver.switch_to.active_element, figure)

    def test_an_answer_to_earlier_entries_is_never_shown(self):
        screen.open(f"{base}/#{LINK.format(1900)}").answer("rated")
        # The first answer from here on comes last, and cannot be called off.
        screen.run("""const ask = window.fetch; let first = true;
            window.fetch = async (path, options) => {
              if (!path.startsWith("/v1/rate")) return ask(path, options);
              const late = first; first = false;
              const answer = await ask(path, {...options, signal: undefined});
              if (late) await new Promise((done) => setTimeout(done, 1500));
              return answer; };""")
        weight = screen.one("[data-part=weight]")
        weight.send_keys(Keys.END, Keys.BACKSPACE)
        self.assertEqual(screen.answer("stale", "rated"), "stale")
        self.assertTrue(screen.run("return document.getElementById('sheet').inert"))
        self.assertIn("blur", screen.run("return getComputedStyle(document.querySelector('.amounts')).filter"))
        time.sleep(0.6)
        screen.type("[data-part=weight]", 5000)
        press(Keys.ENTER)
        screen.answer("rated")
        time.sleep(1.5)
        self.assertEqual(screen.bill()["rows"][0][1], "5,000")

    def test_no_bill_is_left_when_the_service_is_gone(self):
        screen.open(f"{base}/#{LINK.format(1900)}").answer("rated")
        screen.command("Network.enable")
        screen.command("Network.setBlockedURLs", urls=["*/v1/rate*"])
        screen.type("[data-part=weight]", 1800)
        self.assertEqual(screen.answer("failed", "rated"), "failed")
        self.assertEqual(screen.all(".bill, #curve:not([hidden]), #why:not([hidden])"), [])
        self.assertEqual(screen.faults("no-answer"), [])
        screen.command("Network.setBlockedURLs", urls=[])
        screen.answer("rated")  # It asks again by itself.


class Refuses(unittest.TestCase):
    def wrong(self, selector):
        field = screen.one(selector)
        self.assertEqual(field.get_attribute("aria-invalid"), "true", selector)
        return screen.run("return document.getElementById(arguments[0].getAttribute('aria-describedby')).innerText", field)

    def test_each_refusal_stands_at_its_field_in_the_librarys_words(self):
        wrong = {**SAMPLES["17-many-faults"], "profile": "Nowhere", "factor": "1,05", "discount": {"percent": "40.123"}}
        screen.open(f"{base}/").enter(wrong)
        screen.answer("refused")
        typed = {**wrong, "discount": {"percent": 40.123}}
        fields = {"origin.zip": "#origin-zip", "destination.zip": "#destination-zip", "profile": "#profile",
                  "factor": "#factor", "discount.percent": "#discount",
                  **{f"lines[{i}].class": f".line:nth-child({i + 1}) [data-part=class]" for i in range(3)}}
        # Faults of the form come first, then those of the data: both are mended on the way.
        for mend in ({"factor": 1.05, "discount": {"percent": 40}}, {"profile": "Default"}, None):
            refusals = rated(typed)["refusals"]
            for refusal in refusals:
                self.assertIn(refusal["text"][1:], self.wrong(fields[refusal["place"]]))
            self.assertEqual(len(screen.all("[aria-invalid]")), len(refusals))
            if mend is None:
                break
            typed.update(mend)
            for name, value in mend.items():
                screen.type(fields.get(name, "#discount"), value["percent"] if isinstance(value, dict) else value)
            time.sleep(0.5)
            screen.answer("refused")
        self.assertEqual(screen.faults("refused"), [])
        for number in (1, 3):
            screen.run("[...document.querySelectorAll(arguments[0])].find((chip) => chip.innerText === '70').click()",
                       f".line:nth-child({number}) .chip")
            time.sleep(0.5)
        screen.type("#destination-zip", "60601")
        screen.answer("rated")
        self.assertEqual(screen.all("[aria-invalid], .wrong"), [])

    def test_a_city_that_is_not_there_is_offered_where_it_is_wrong(self):
        screen.open(f"{base}/").enter(SAMPLES["13-destination-city-unknown"])
        screen.answer("refused")
        self.assertIn("The city does not lie at its postal code", self.wrong("#destination-city"))
        next(chip for chip in screen.all(".point .wrong .chip") if chip.text == "Oak Brook IL").click()
        screen.answer("rated")
        self.assertEqual(screen.bill()["ends"][1], "60521 Oak Brook, IL")
        # Where the city was found and the state is wrong, both are marked and both are put right.
        screen.open(f"{base}/").enter({**DEFICIT, "origin": {"zip": "30303", "city": "Atlanta", "state": "XX"}})
        screen.answer("refused")
        self.assertEqual(self.wrong("#origin-state"), self.wrong("#origin-city"))
        screen.one(".point .wrong .chip").click()
        screen.answer("rated")
        self.assertEqual(screen.bill()["ends"][0], "30303 Atlanta, GA")

    def test_what_has_no_field_stands_above_the_bill(self):
        screen.open(f"{base}/").enter(SAMPLES["14-unknown-lane"])
        screen.answer("refused")
        self.assertEqual(screen.texts(".panel.bad li"), ["0113 The tariff has no lane between these points"])
        self.assertEqual(screen.all("[aria-invalid]"), [])
        screen.open(f"{base}/#{LINK.format('1,205').replace('SMPLNATL', 'NOWHERE')}").answer("refused")
        self.assertIn("Leave the comma out.", self.wrong("[data-part=weight]"))
        screen.type("[data-part=weight]", 960)
        wait(lambda: screen.answer("refused") and screen.all("#tariff[aria-invalid]"), "the tariff is not marked")
        self.assertIn("0101 Tariff not on file", self.wrong("#tariff"))

    def test_a_link_with_what_the_form_lacks_is_not_rated(self):
        screen.open(f"{base}/#{LINK.format(960)}&discount_procent=40")
        self.assertIn("discount_procent", screen.one("[role=alert]").text)
        time.sleep(1)
        self.assertEqual(screen.all(".bill"), [])
        self.assertIn("press Rate", screen.one("#sheet").text)

    def test_only_what_was_typed_is_sent_and_clear_leaves_nothing(self):
        screen.open(f"{base}/")
        for place, text in (("#origin-zip", "30303"), ("#destination-zip", "60601"), ("[data-part=class]", "70"),
                            ("[data-part=weight]", "960"), ("#tariff", "SMPLNATL")):
            screen.type(place, text)
        wait(lambda: screen.one("#origin-state").get_property("value") == "GA", "the state is not shown")
        wait(lambda: "tariff" in screen.run("return location.hash") and screen.answer("rated"), "no address")
        self.assertNotRegex(screen.run("return location.hash"), "state|city")
        self.assertNotIn("origin.state", " ".join(screen.texts(".sources")))
        screen.one("#clear").click()
        self.assertEqual(screen.driver.current_url, f"{base}/")

    def test_what_looks_like_markup_is_text(self):
        markup = "<img src=x onerror=alert(1)>"
        marked = urllib.parse.urlencode({"id": markup, "description": markup})
        screen.open(f"{base}/#{LINK.format(960)}&{marked}").answer("rated")
        self.assertEqual(screen.texts(".reference"), [f"Id {markup}", markup])
        screen.type("#origin-city", markup)
        screen.answer("refused")
        drop(f"{markup}.csv", f"id,origin_zip,destination_zip,class_1,weight_1,{markup}\r\n"
             f"{markup},{markup},60601,{markup},960,{markup}\r\n")
        self.assertEqual(screen.one("a[download]").text, f"Save {markup}.rated.csv")
        self.assertEqual(screen.all("img:not(.brand img), [onerror]"), [])


class Draws(unittest.TestCase):
    def test_the_curve_shows_what_the_service_says(self):
        screen.open(f"{base}/#{LINK.format(960)}").answer("rated")
        pad = screen.one("#curve .pad svg").find_element("xpath", "..")
        curve = asked("/v1/curve?from=1&to=20000", {**DEFICIT, "discount": {}, "lines": [{"class": "70", "weight": 960}]})
        rows = screen.run("return [...document.querySelectorAll('#curve tbody tr')].map((row) => [...row.cells].map((cell) => cell.textContent))")
        self.assertEqual([[row[0], row[3]] for row in rows], [[f"{point['weight']:,}", money(point["net_charge"])] for point in curve["points"]])
        steps = sum(1 < step["weight"] <= 20000 for step in curve["breaks"])
        self.assertEqual([len(screen.all(f"#curve {part}")) for part in (
            ".band.plateau", ".band.minimum", ".weight-breaks line", ".weight-breaks text", ".mark.cheaper")],
            [len(curve["plateaus"]), int(curve["minimum"] is not None), steps, steps, int(curve["cheaper"] is not None)])
        self.assertTrue(any(plateau["from"] <= 960 <= plateau["to"] for plateau in curve["plateaus"]))
        self.assertIn("1,000 pounds cost the same", screen.one("#curve .remark").text)
        pad.send_keys(Keys.ARROW_RIGHT)
        after = [point for point in curve["points"] if point["weight"] >= 960][1]
        self.assertIn(f"{after['weight']:,} pounds: net charge {money(after['net_charge'])}", screen.one("#curve .reading").text)
        self.assertEqual(pad.get_attribute("aria-valuetext"), screen.one("#curve .reading").text)
        screen.one(".choice button:last-child").click()
        self.assertLess(len(screen.all("#curve tbody tr")), len(rows))


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
        drop("quotes.csv", CSV)
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
            drop("stray.csv", text)
            screen.one(f"a[download$=rated\\.{form}]")
            self.assertEqual(sorted(screen.texts(".reasons li")), reasons)
            self.assertTrue(screen.texts(".reasons li")[0].startswith("2 refused: Invalid Class."))
            for words in ("Row 3 is of several lines", "1 bill has notes", "Umlaut ä, b", "stray quote"):
                self.assertIn(words, screen.one("#batch-run").text)
        self.assertEqual(screen.faults("stray"), [])

    def test_wrong_columns_are_told_and_a_run_can_be_cancelled(self):
        screen.open(f"{base}/#batch")
        drop("slip.csv", CSV.replace("weight_1", "wieght_1"))
        self.assertRegex(screen.one("#batch-run .banner.bad").text, "wieght_1|weight_1")
        row = "30303,60601,70,960,SMPLNATL\r\n"
        drop("year.csv", "origin_zip,destination_zip,class_1,weight_1,tariff\r\n" + row * 200000)
        wait(lambda: re.search("[1-9].* of 200,000", screen.one("#batch-run").text), "no progress")
        screen.one("#batch-run button").click()
        self.assertIn("Cancelled after", screen.one("#batch-run .banner.plain").text)
        self.assertEqual(screen.all("a[download]"), [])


class IsForEveryone(unittest.TestCase):
    def test_it_rates_with_the_keyboard_alone(self):
        screen.open(f"{base}/", width=390, height=800)
        press(Keys.TAB)
        self.assertEqual(screen.driver.switch_to.active_element.text, "Skip to the entries")
        press(Keys.ENTER, Keys.TAB, Keys.TAB)
        self.assertEqual(screen.driver.switch_to.active_element.get_attribute("id"), "origin-zip")
        press("30303", Keys.TAB, Keys.TAB, Keys.TAB, "60601", Keys.TAB, Keys.TAB, Keys.TAB, "70", Keys.TAB, "960")
        press(Keys.TAB, Keys.ENTER, "100", Keys.TAB, "40")  # Add a line: the only remove button is off.
        for _ in range(4):
            press(Keys.TAB)
        press("SMPLNATL", Keys.ENTER)
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
                press(Keys.ENTER)
                time.sleep(0.5)
            screen.answer("rated")
            screen.driver.refresh()
            screen.answer("rated")
            self.assertEqual(screen.all("dialog[open]"), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
