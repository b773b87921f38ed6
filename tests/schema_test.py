"""Holds what cwt reads and prints against the schemas: DOCS/schema, and a transcript's directory."""
import json
import pathlib
import sys

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
    schemas[schema["properties"]["schema"]["const"]] = jsonschema.Draft202012Validator(
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
rows = pathlib.Path(sys.argv[2]) / "rows.ndjson"
lines = rows.read_text().splitlines()
for line in lines:
    complaints += faults(rows, "hundredweight/row/1", line)
print(*complaints[:20], f"{bills} bills, {refusals} refusals, {len(lines)} rows", sep="\n")
sys.exit(1 if complaints or bills < 200 or refusals < 50 or len(lines) <= bills + refusals else 0)
