"""What commands of the pages end with where that is not 0, by their page and first words."""

REFUSED = 1  # A shipment, or some of the rows that cwt sample --shipments has made.
DIFFERENT = 1
BROKEN = 2
TOO_LATE = 124

EXIT_CODES = {
    ("README.md", "build/release/bin/cwt batch shipments.ndjson"): REFUSED,
    ("docs/batch.md", "cwt batch shipments.ndjson"): REFUSED,
    ("docs/batch.md", "for i in 1 2 3 4; do cwt batch"): REFUSED,
    ("docs/compare.md", "cwt batch shipments.ndjson"): REFUSED,
    ("docs/rows.md", "cwt sample --shipments 1000 | cwt batch"): REFUSED,
    ("docs/shipment.md", "cwt check sample/shipments/15-unknown-class.json"): REFUSED,
    ("docs/tariff-set.md", "cwt diff data tariff"): DIFFERENT,
    ("docs/tour-operations.md", "timeout 0.1 cwt batch night.ndjson"): TOO_LATE,
    ("docs/tour-operations.md", "cwt batch night.ndjson -o again.ndjson"): REFUSED,
    ("docs/tour-pricing.md", "cwt diff sample raised"): DIFFERENT,
    ("docs/tour-pricing.md", "cwt batch year.ndjson"): REFUSED,
    ("docs/tour-tariff.md", "cwt build tariff data --force"): BROKEN,
    ("docs/tour-tariff.md", "cwt check sample/shipments/17-many-faults.json"): REFUSED,
}
