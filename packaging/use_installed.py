"""Holds what Python and the service say of a shipment against the bills that cwt rate printed.

    use_installed.py SHIPMENT BILL.TEXT BILL.JSON
"""
import json
import subprocess
import sys
import urllib.request
from pathlib import Path

import hundredweight as hw
import pandas as pd

shipment, text, document = (Path(name).read_bytes() for name in sys.argv[1:])

with hw.Session("sample") as session:
    bill = session.rate(json.loads(shipment))
    assert str(bill).encode().strip() == text.strip(), str(bill)

# Its worker processes are the installed command's.
frame = pd.DataFrame({"origin_zip": ["30303"], "destination_zip": ["60601"], "class_1": ["100"],
                      "weight_1": [900], "tariff": ["SMPLNATL"]})
bills = hw.rate_frame(frame, data="sample", jobs=1)
assert bills.total_due_cents.tolist() == [62000], bills

service = subprocess.Popen(["cwt", "serve", "--data", "sample", "--listen", "127.0.0.1:0"],
                           stderr=subprocess.PIPE, text=True)
try:
    # It listens and has its data, whichever comes first.
    told = {}
    while not {"listening", "serving"} <= told.keys():
        event = json.loads(service.stderr.readline())
        told[event["event"]] = event
    address = told["listening"]["address"]
    with urllib.request.urlopen(f"http://{address}/v1/rate", data=shipment) as answer:
        assert answer.read() == document
finally:
    service.terminate()
    service.communicate()
assert service.returncode == 0, service.returncode
