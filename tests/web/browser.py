"""The service on the sample data, a browser on its screen, and what both say."""
import contextlib
import json
import os
import pathlib
import re
import socket
import subprocess
import time
import urllib.request

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By

CWT, SAMPLE, AXE, OUT = (pathlib.Path(os.environ[name]).resolve()
                         for name in ("CWT", "SAMPLE", "AXE", "OUT"))
PATIENCE = 20  # Seconds.


def cwt(*arguments, text=None):
    return subprocess.run([CWT, *arguments], input=text, capture_output=True, text=True).stdout


def rated(shipment, *arguments):
    return json.loads(cwt("rate", "-", "--json", "--data", SAMPLE, *arguments, text=json.dumps(shipment)))


@contextlib.contextmanager
def service(*options):
    """A service of its own on a free port, ended in the end."""
    with socket.socket() as free:
        free.bind(("127.0.0.1", 0))
        port = free.getsockname()[1]
    with open(OUT / f"service-{port}.log", "w") as log:
        process = subprocess.Popen([CWT, "serve", "--data", SAMPLE, "--listen", f"127.0.0.1:{port}",
                                    *options], stderr=log)
    base = f"http://127.0.0.1:{port}"
    try:
        wait(lambda: answers(base), "the service does not start")
        yield base
    finally:
        process.terminate()
        process.wait(PATIENCE)


def answers(base):
    try:
        return urllib.request.urlopen(base + "/readyz").status == 200
    except OSError:
        return False


def wait(holds, otherwise):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        found = holds()
        if found:
            return found
        time.sleep(0.05)
    raise AssertionError(otherwise)


class Screen:
    def __init__(self):
        options = webdriver.ChromeOptions()
        for argument in ("--headless=new", "--no-sandbox", "--hide-scrollbars", "--disable-dev-shm-usage"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        self.driver = webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))
        self.command("Browser.setDownloadBehavior", behavior="allow", downloadPath=str(OUT))
        self.command("Browser.grantPermissions", permissions=["clipboardReadWrite", "clipboardSanitizedWrite"])

    def command(self, name, **arguments):
        return self.driver.execute_cdp_cmd(name, arguments)

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def open(self, address, width=1500, height=1000, scheme="light"):
        self.command("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1,
                     mobile=False)
        self.command("Emulation.setEmulatedMedia", features=[
            {"name": "prefers-color-scheme", "value": scheme}, {"name": "prefers-reduced-motion", "value": "reduce"}])
        self.driver.get("about:blank")
        self.driver.get(address)
        return self

    def one(self, selector):
        return wait(lambda: next(iter(self.driver.find_elements(By.CSS_SELECTOR, selector)), None), f"no {selector}")

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def texts(self, selector):
        return self.run("return [...document.querySelectorAll(arguments[0])].map((e) => e.innerText.trim())", selector)

    def answer(self, *states):
        """Waits until the entries are answered; the answer's state, `rated` say."""
        return wait(lambda: (state := self.run("return document.body.dataset.answer")) in (states or ("rated", "refused", "failed"))
                    and state, f"no answer {states}")

    def enter(self, shipment):
        """Types a shipment as a person does, and asks for its bill."""
        for end in ("origin", "destination"):
            self.type(f"#{end}-zip", shipment[end]["zip"])
            time.sleep(0.6)  # What the code tells is there before the next field is typed.
            for part in ("city", "state"):  # Typed over what is there, which is not sent unless it is typed.
                field = self.one(f"#{end}-{part}")
                field.clear()
                field.send_keys(shipment[end].get(part, ""))
        for number, line in enumerate(shipment["lines"]):
            if number > 0:
                self.one("#add-line").click()
            for part in ("class", "weight"):
                self.type(f".line:nth-child({number + 1}) [data-part={part}]", line[part])
        discount, surcharge = shipment.get("discount", {}), shipment.get("surcharge", {})
        self.run("document.getElementById('more').open = true")
        for name, text in {"tariff": shipment.get("tariff", ""), "profile": shipment.get("profile", ""),
                           "factor": shipment.get("factor", ""), "discount": discount.get("percent", ""),
                           "flat": discount.get("flat_percent", ""), "floor": discount.get("floor", ""),
                           "low": surcharge.get("low_percent", ""), "high": surcharge.get("high_percent", ""),
                           "description": shipment.get("description", "")}.items():
            self.type(f"#{name}", text)
        if surcharge:
            self.one(f"#break option[value='{surcharge['break_index']}']").click()
        if shipment.get("service_guide"):
            self.one("#guide").click()
        self.one("#shipment button[type=submit]").click()

    def type(self, selector, text):
        field = self.one(selector)
        if field.get_property("value") != str(text):
            field.clear()
            field.send_keys(str(text))

    def press(self, *keys):
        for key in keys:
            ActionChains(self.driver).send_keys(key).perform()

    def drop(self, name, text):
        """Drops a file on the page."""
        self.run("""const data = new DataTransfer();
            data.items.add(new File([arguments[1]], arguments[0]));
            dispatchEvent(new DragEvent("drop", {dataTransfer: data, bubbles: true, cancelable: true}));""", name, text)

    def faults(self, name):
        """What axe finds wrong, what does not fit the width, and what the browser has complained about; a
        picture is kept."""
        self.driver.save_screenshot(str(OUT / f"{name}.png"))
        self.run(AXE.read_text())
        found = self.driver.execute_async_script(
            "axe.run(document, {resultTypes: ['violations']}).then(arguments[arguments.length - 1])")["violations"]
        said = [f"{fault['id']}: {node['html']} {node['failureSummary']}" for fault in found for node in fault["nodes"]]
        if self.run("return document.documentElement.scrollWidth > innerWidth"):
            said.append("the page is wider than the window")
        # Refusals and blocked requests are logged too; scripts and the content policy must be silent.
        said += [entry["message"] for entry in self.driver.get_log("browser")
                 if entry["level"] == "SEVERE" and entry["source"] in ("javascript", "security")]
        return said

    def bill(self):
        """The figures on the screen, as texts, in the order of the bill."""
        return self.run(r"""
            const text = (e) => e.innerText.replace(/\s+/g, " ").trim();
            const all = (selector) => [...document.querySelectorAll(".bill " + selector)];
            const cells = (row) => [...row.children].map(text);
            return {tariff: text(all(".under")[0]), ends: all(".ends dd").map(text), transit: all(".transit").map(text),
                    rows: all(".freight tbody tr").map(cells), amounts: all(".amount").map(cells),
                    breaks: all(".breaks tbody tr").map(cells), notes: all(".notes li").map(text),
                    reference: all(".reference").map(text)};""")


@contextlib.contextmanager
def screen_on_service():
    """A service and a browser for its screen."""
    with service() as base:
        screen = Screen()
        try:
            yield base, screen
        finally:
            screen.driver.quit()


def money(text):
    """Pounds and amounts as the screen parts them: 1234.56 as 1,234.56."""
    return re.sub(r"\d+", lambda whole: f"{int(whole[0]):,}", str(text), count=1)


def bill_of(bill):
    """The same of a bill in JSON."""
    def end(point):
        place = ", ".join(part for part in (point["city"], point["state"]) if part)
        served = f" terminal {point['terminal']}, service {point['service']}" if point["terminal"] else ""
        return f"{point['zip']} {place}{served}"

    def shown(line):
        return line["class"] if line["class"] == line["rated_as"] else f"{line['class']}, rated as {line['rated_as']}*"

    rows = [[shown(line), money(line["weight"]), money(line["rate"]), money(line["charge"])] for line in bill["lines"]]
    deficit, days, tariff = bill["deficit"], bill["transit_days"], bill["tariff"]
    if deficit:
        rows.append(["Deficit", money(deficit["weight"]), money(deficit["rate"]), money(deficit["charge"])])
    rows.append(["Total", money(bill["total_weight"]), "", ""])
    if bill["billed_weight"] != bill["total_weight"]:
        rows.append(["Billed as", money(bill["billed_weight"]), "", ""])
    charges = bill["charges_by_break"]["minimum"] + bill["charges_by_break"]["single_shipment"]
    return {
        "tariff": f"Tariff {tariff['name']} of {tariff['date']}, rate code {tariff['rate_code']}",
        "ends": [end(bill["origin"]), end(bill["destination"])],
        "transit": [f"Standard transit {days['standard']} business days, guaranteed {days['guaranteed']} business day"] if days else [],
        "rows": rows,
        "amounts": [[name, money(text)] for name, text in (
            ("Gross charge", bill["gross_charge"]), (f"Discount {bill['discount']['percent']}%", bill["discount"]["amount"]),
            ("Net charge", bill["net_charge"]), ("Minimum charge", bill["minimum_charge"]),
            ("Surcharge", bill["surcharge"]), ("Total due", f"USD {bill['total_due']}"))],
        "breaks": [[re.sub(r"\s+", " ", charge["label"]), f"{money(charge['amount'])}{'*' if charge['raised_to_floor'] else ''}"]
                   for charge in charges],
        "notes": bill["notes"],
        "reference": [bill["description"]] if bill["description"] else [],
    }
