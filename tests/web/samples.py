"""Shipments for the screen."""
import json

from browser import SAMPLE

SAMPLES = {path.stem: json.loads(path.read_text()) for path in sorted((SAMPLE / "shipments").glob("*.json"))}
DEFICIT = SAMPLES["01-deficit-and-discount"]
LINK = ("origin_zip=30303&origin_city=Atlanta&origin_state=GA&destination_zip=60601&destination_city=Chicago"
        "&destination_state=IL&class_1=70&weight_1={}&tariff=SMPLNATL")
