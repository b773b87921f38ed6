"""Compares the bills of a transcript with themselves and with dearer ones, and holds what comes of
it against its schema: SCHEMA TRANSCRIPT CWT."""
import json
import pathlib
import subprocess
import sys

import jsonschema

schema, transcript, cwt = sys.argv[1:]
transcript = pathlib.Path(transcript)
validator = jsonschema.Draft202012Validator(json.loads(pathlib.Path(schema).read_text()))
bills = [json.loads(path.read_text()) for path in sorted(transcript.glob("generated/*.bill.json"))]
files = [transcript / "old.ndjson", transcript / "new.ndjson"]
for file, dearer in zip(files, (0, 1)):
    with file.open("w") as rows:
        for number, bill in enumerate(bills, 1):
            dollars, cents = bill["total_due"].split(".")
            row = {"schema": "hundredweight/row/1", "row": number, "id": None, "status": "rated",
                   "bill": bill | {"total_due": f"{int(dollars) + dearer}.{cents}"}}
            rows.write(json.dumps(row) + "\n")
run = subprocess.run([cwt, "compare", *files, "--json"], check=True, capture_output=True)
comparison = json.loads(run.stdout)
validator.validate(comparison)
both = comparison["rated_in_both"]
assert both["rose"] == len(bills) >= 200 and both["total_due"]["change"] == f"{len(bills)}.00", both
assert sum(lane["count"] for lane in both["lanes"]) == len(bills)
