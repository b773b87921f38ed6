"""Takes the pictures of the rating screen for its page of the documentation, in the folder that is
named. A picture that shows what the one there shows already is left as it is."""
import io
import json
import pathlib
import sys
import urllib.parse

from PIL import Image, ImageChops

from browser import SAMPLE, Screen, service, wait

# Letters are drawn a little differently from machine to machine.
SHADE, SHARE = 48, 0.002
POINTS = {"origin_zip": "30303", "origin_city": "Atlanta", "origin_state": "GA",
          "destination_zip": "60601", "destination_city": "Chicago", "destination_state": "IL"}
ROWS = [("30303", "60601", "70", 900 + 20 * number, "SMPLNATL", "Northeast" if number % 8 == 7 else "", "77")
        for number in range(33)] + [("30303", "60601", "71", 500, "SMPLNATL", "", "78")] * 5 \
    + [("3030A", "60601", "70", 500, "SMPLNATL", "", "79")]


def csv():
    rows = [",".join(map(str, row)) for row in ROWS]
    rows[16] = rows[16][:-2] + '"the north\r\nyard"'
    return "\r\n".join(["origin_zip,destination_zip,class_1,weight_1,tariff,profile,cost_center", *rows]) + "\r\n"


def same(old, new):
    """Whether nobody would see a difference."""
    if old.size != new.size:
        return False
    difference = ImageChops.difference(old.convert("RGB"), new.convert("RGB")).convert("L")
    seen = sum(difference.histogram()[SHADE:])
    return seen <= SHARE * old.width * old.height


def keep(png, path):
    new = Image.open(io.BytesIO(png)).convert("RGB").quantize(256, Image.Quantize.MAXCOVERAGE, dither=Image.Dither.NONE)
    if path.exists() and same(Image.open(path), new):
        print(f"{path.name}: as it was")
        return
    new.save(path, optimize=True)
    print(f"{path.name}: taken")


def link(shipment):
    """The address of a shipment: its entries under the names of the columns."""
    entries = {f"{end}_{part}": text for end in ("origin", "destination") for part, text in shipment[end].items()}
    for number, line in enumerate(shipment["lines"], 1):
        entries |= {f"class_{number}": line["class"], f"weight_{number}": line["weight"]}
    entries |= {name: shipment[name] for name in ("tariff", "profile", "description") if name in shipment}
    if shipment.get("service_guide"):
        entries["service_guide"] = "true"
    return urllib.parse.urlencode(entries)


def sample(name):
    return link(json.loads((SAMPLE / f"shipments/{name}.json").read_text()))


def take(screen, base, folder):
    def picture(name, element=None):
        screen.run("document.activeElement.blur()")  # A caret blinks.
        keep(element.screenshot_as_png if element else screen.driver.get_screenshot_as_png(), folder / f"{name}.png")

    def drawn():
        screen.answer("rated")
        screen.one("#curve .pad svg")

    whole = sample("16-whole-road")
    screen.open(f"{base}/#{whole}", 1440, 900)
    drawn()
    screen.one(".bill .figure[data-why=discount]").click()
    picture("filled")
    screen.open(f"{base}/#{sample('17-many-faults')}", 1440, 900).answer("refused")
    picture("refused")
    screen.open(f"{base}/#{whole}", 1440, 900, "dark")
    drawn()
    screen.run("document.getElementById('curve').scrollIntoView({block: 'end'})")
    picture("dark")
    one = urllib.parse.urlencode({**POINTS, "class_1": 70, "weight_1": 960, "tariff": "SMPLNATL"})
    screen.open(f"{base}/#{one}", 1440, 2200)
    drawn()
    picture("curve", screen.one("#curve"))
    screen.open(f"{base}/#{whole}", 390, 844)
    drawn()
    screen.run("document.querySelector('.bill').scrollIntoView(); scrollBy(0, -120)")
    picture("telephone")
    screen.open(f"{base}/#batch", 1100, 760)
    screen.drop("november.csv", csv())
    wait(lambda: screen.all("a[download]"), "the batch does not end")
    picture("batch")


if __name__ == "__main__":
    with service() as address:
        taken = Screen()
        try:
            take(taken, address, pathlib.Path(sys.argv[1]))
        finally:
            taken.driver.quit()
