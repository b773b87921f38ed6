"""Holds what cwt reads and prints against the schemas: DOCS/schema, and a transcript's directory."""
import json
import pathlib
import sys

import jsonschema

schemas = {}
for path in pathlib.Path(sys.argv[1]).glob("*.json"):
    schema = json.loads(path.read_text())
    jsonschema.Draft202012Validator.check_schema(schema)
    schemas[schema["properties"]["schema"]["const"]] = jsonschema.Draft202012Validator(schema)


def faults(path, schema):
    document = json.loads(path.read_text())
    assert document.get("schema", schema) == schema, path
    return [f"{path}: {error.message}" for error in schemas[schema].iter_errors(document)]


complaints, bills, refusals = [], 0, 0
for shipment in sorted(pathlib.Path(sys.argv[2]).glob("*/*.json")):
    if ".bill" in shipment.name or ".refusal" in shipment.name:
        continue
    bill = shipment.with_suffix(".bill.json")
    if bill.exists():
        # What the schema of a shipment does not allow is not rated.
        complaints += faults(shipment, "hundredweight/shipment/1")
        complaints += faults(bill, "hundredweight/bill/1")
        bills += 1
    else:
        complaints += faults(shipment.with_suffix(".refusal.json"), "hundredweight/refusals/1")
        refusals += 1
print(*complaints[:20], f"{bills} bills, {refusals} refusals", sep="\n")
sys.exit(1 if complaints or bills < 200 or refusals < 50 else 0)
