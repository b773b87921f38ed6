"""Holds what docs/messages.md tells against what can happen: CWT EXPORTS_H PAGE.

That the texts of codes stand there as they are printed is held where the page is made."""
import json
import pathlib
import re
import subprocess
import sys
import tempfile

cwt, header, page = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
page = page.read_text("utf-8")

# The header lists the codes of each function. These two are of entries that cwt alone checks.
OWN_CODES = {119, 513}
listed = {int(code) for code in
          re.findall(r"\b[1-5]\d\d\b(?! (?:bytes|characters))", header.read_text("utf-8"))}
explained = [int(code) for code in re.findall(r"^### Code (\d+)$", page, re.MULTILINE)]
assert sorted(listed | OWN_CODES) == sorted(explained), (listed | OWN_CODES) ^ set(explained)

SHIPMENT = {"origin": {"zip": "30303"}, "destination": {"zip": "60601"},
            "lines": [{"class": "70", "weight": 1205}], "tariff": "SMPLNATL"}


def changed(**keys):
    return json.dumps(SHIPMENT | keys)


NDJSON = [changed(key=1), changed()[:-1] + ', "lines": []}', changed(lines=0), '{"lines": []}',
          changed(tariff="A NAME TOO LONG"), "{", "\0", "[" * 40, changed(id=list(range(3000))),
          changed(id=1).replace('"id": 1', '"id": 1e999'), " " * (1 << 21),
          changed(origin={"zip": "30303", "territory": "?"}), changed(origin={"zip": "00000"}),
          changed(destination={"zip": "60601", "city": "Nowhere"}),
          changed(discount={"percent": 1}),
          changed(surcharge={"break_index": 0, "low_percent": 999.9999, "high_percent": 999.9999},
                  lines=[{"class": "500", "weight": 999999}])]
CSV = [b"origin_zip,destination_zip,class_1,weight_1", b"\xff,60601,70,1", b"1", b'"1', b'"1"2,3']

with tempfile.TemporaryDirectory() as folder:
    data = pathlib.Path(folder, "data")

    def run(*arguments, rows=b""):
        return subprocess.run([cwt, *arguments, "--data", data], input=rows, capture_output=True)

    def texts(refusals):
        return {refusal["text"] for refusal in refusals if refusal["code"] is None}

    def printed_by(*arguments, rows=b""):
        told = run(*arguments, rows=rows)
        assert told.returncode == 1, told.stderr
        lines = told.stdout.splitlines() if "batch" in arguments else [told.stdout]
        documents = map(json.loads, lines)
        return set().union(*(texts(document.get("refusals", [])) for document in documents))

    subprocess.run([cwt, "sample", data], check=True, capture_output=True)
    # Discounts without a weight column, and no tables of tariff names.
    (data / "SAMPLE.DIS").write_bytes(b" " * 605)
    (data / "SAMPLE.CBS").unlink()
    no_tariff = json.dumps({key: SHIPMENT[key] for key in SHIPMENT if key != "tariff"})
    batch = ("batch", "-", "--to", "ndjson", "--jobs", "1", "--from")
    printed = (printed_by(*batch, "ndjson", rows="\n".join([*NDJSON, no_tariff]).encode())
               | printed_by(*batch, "csv", rows=b"\n".join(CSV))
               | printed_by("check", "-", "--json", rows=b" " * (9 << 20))
               | printed_by("states", "?", "--json"))

table = page.partition("## Refusals without a code")[2].partition("<!-- messages -->")[0]
named = re.findall(r"^\| (?!Message|---)(.*?) \| ", table, re.MULTILINE)
patterns = {name: re.compile(re.escape(name).replace("…", ".+")) for name in named}
unnamed = [text for text in printed if not any(p.fullmatch(text) for p in patterns.values())]
unheard = [name for name, p in patterns.items() if not any(map(p.fullmatch, printed))]
assert not unnamed and not unheard, (unnamed, unheard)
