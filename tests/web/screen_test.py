"""What the rating screen shows of a shipment, in a browser. What is rated is held against cwt rate."""
import json
import time
import unittest
import urllib.parse
import urllib.request

from selenium.webdriver.common.keys import Keys

from browser import bill_of, money, rated, screen_on_service, wait
from samples import DEFICIT, LINK, SAMPLES


def setUpModule():
    global base, screen
    base, screen = unittest.enterModuleContext(screen_on_service())


def asked(path, body):
    request = urllib.request.Request(base + path, json.dumps(body).encode(), {"Content-Type": "application/json"})
    return json.loads(urllib.request.urlopen(request).read())


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
        screen.press(Keys.ENTER)
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
        screen.press(Keys.ENTER)
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
        screen.drop(f"{markup}.csv", f"id,origin_zip,destination_zip,class_1,weight_1,{markup}\r\n"
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


if __name__ == "__main__":
    unittest.main(verbosity=2)
