"""Holds what cwt reads and prints against the schemas: DOCS/schema TRANSCRIPT CWT."""
import decimal
import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema


def join(base, reference):
    """An URN with a reference to a part of it, which the library's resolver does not know."""
    return base.partition("#")[0] + reference if reference.startswith("#") else reference


found = [json.loads(path.read_text()) for path in pathlib.Path(sys.argv[1]).glob("*.json")]
by_id = {schema["$id"]: schema for schema in found}
schemas = {}
for schema in found:
    jsonschema.Draft202012Validator.check_schema(schema)
    resolver = jsonschema.RefResolver.from_schema(schema, store=by_id, urljoin_cache=join)
    # What a document calls its schema; a problem has no name of its own there.
    name = schema["$id"].removeprefix("urn:").replace(":", "/")
    assert schema["properties"].get("schema", {"const": name})["const"] == name, name
    schemas[name] = jsonschema.Draft202012Validator(
        schema, resolver=resolver)


def faults(path, schema, text=None):
    document = json.loads(text or path.read_text())
    assert document.get("schema", schema) == schema, path
    return [f"{path}: {error.message}" for error in schemas[schema].iter_errors(document)]


complaints, bills, refusals = [], 0, 0
for shipment in sorted(pathlib.Path(sys.argv[2]).glob("*/*.json")):
    if any(made in shipment.name for made in (".bill", ".explained", ".refusal")):
        continue
    bill = shipment.with_suffix(".bill.json")
    if bill.exists():
        # What the schema of a shipment does not allow is not rated.
        complaints += faults(shipment, "hundredweight/shipment/1")
        complaints += faults(bill, "hundredweight/bill/1")
        explained = shipment.with_suffix(".explained.json")
        complaints += faults(explained, "hundredweight/explanation/1")
        bills += 1
    else:
        complaints += faults(shipment.with_suffix(".refusal.json"), "hundredweight/refusals/1")
        refusals += 1
transcript = pathlib.Path(sys.argv[2])
rows = transcript / "rows.ndjson"
lines = rows.read_text().splitlines()
for line in lines:
    complaints += faults(rows, "hundredweight/row/1", line)

# Settings of tariff sets as text; the schema knows what a slip is.
slips = 0
for settings in pathlib.Path(sys.argv[1]).parents[1].glob("reference/samples/*/settings.json"):
    complaints += faults(settings, "hundredweight/tariff-set/1")
    slip = settings.read_text().replace('"zip_digits": "', '"zip_digit": "')
    if slip != settings.read_text():
        assert faults(settings, "hundredweight/tariff-set/1", slip), settings
        slips += 1
assert slips, "there are no settings with a key to misspell"

# The rows as CSV, compared with rows whose bills are a dollar dearer: all rose, and no more.
dearer, rated = [json.loads(line) for line in lines], 0
for bill in (row["bill"] for row in dearer if "bill" in row):
    bill["total_due"] = str(decimal.Decimal(bill["total_due"]) + 1)
    rated += 1
cwt = sys.argv[3]
with tempfile.TemporaryDirectory() as directory:
    new = pathlib.Path(directory) / "dearer.ndjson"
    new.write_text("".join(json.dumps(row) + "\n" for row in dearer))
    run = subprocess.run([cwt, "compare", transcript / "rows.csv", new, "--json"], check=True,
                         capture_output=True, text=True)
    complaints += faults(new, "hundredweight/comparison/1", run.stdout)
    summary = pathlib.Path(directory) / "summary.json"
    shipments = str(transcript / "batch.in.ndjson")
    for arguments in ([shipments], [shipments, "--engine", "none"]):
        subprocess.run([cwt, "batch", *arguments, "--summary", summary], capture_output=True)
        complaints += faults(summary, "hundredweight/summary/1")
        summary.unlink()
    for arguments in (["check", transcript / "shipments/01-deficit-and-discount.json"],
                      ["states", "30303", "M5H 2N2", "00000"], ["profiles"],
                      ["profiles", "Northeast"], ["inspect"],
                      ["inspect", "--engine", "none"]):
        printed = subprocess.run([cwt, *arguments, "--json"], cwd=transcript, text=True,
                                 capture_output=True).stdout
        complaints += faults(" ".join(map(str, arguments)), json.loads(printed)["schema"], printed)
    # The tariff as text, and a minimum charge of it raised.
    folder = pathlib.Path(directory) / "tariff"
    subprocess.run([cwt, "export", transcript, folder], check=True, capture_output=True)
    minimums = folder / "minimums-by-zip.csv"
    minimums.write_text(minimums.read_text().replace(",98.00", ",102.90"))
    run_of_diff = subprocess.run([cwt, "diff", transcript, folder, "--json", "--all"], text=True,
                                 capture_output=True)
    assert run_of_diff.returncode == 1, run_of_diff
    complaints += faults(folder, "hundredweight/difference/1", run_of_diff.stdout)
    sheet, = json.loads(run_of_diff.stdout)["sheets"]
    assert sheet["columns"][0]["median"] == "5.00" and len(sheet["rows"]) == 1, sheet
# What a rating service answers.
answers = json.loads((transcript / "desk.json").read_text())
for answer in answers:
    complaints += faults("desk.json", answer.get("schema", "hundredweight/problem/1"),
                         json.dumps(answer))
assert len({answer.get("schema", answer.get("type")) for answer in answers}) >= 12
comparison = json.loads(run.stdout)
both = comparison["rated_in_both"]
assert both["rose"] == rated and both["total_due"]["change"] == f"{rated}.00", both
assert both["gross_charge"]["change"] == "0.00" and both["other_weight_break"] == 0, both
assert comparison["other_reason"] == 0 and comparison["old"]["rated_here_only"]["rows"] == 0
print(*complaints[:20], f"{bills} bills, {refusals} refusals, {len(lines)} rows", sep="\n")
sys.exit(1 if complaints or bills < 200 or refusals < 50 or len(lines) <= bills + refusals else 0)
