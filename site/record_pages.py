"""The pages of the records, from record.json: every record and field with where it lies, what it
holds and who writes it. The fields are objects of the site's search."""
from marked import heading, indented, plain


def both(bytes_, unit=""):
    """Bytes in 64-bit processes and, where they differ, in 32-bit ones."""
    text = f"{bytes_['64']}{unit}"
    return text if bytes_["32"] == bytes_["64"] else f"{text} ({bytes_['32']} with 32-bit pointers)"


def declaration(field):
    dimensions = "".join(f"[{number}]" for number in field["dimensions"])
    return f"{field['type']} {field['name']}{dimensions}"


def facts(field):
    size = {width: bytes_ * field["count"] for width, bytes_ in field["width"].items()}
    said = [("Offset", both(field["offset"])), ("Size", both(size, " bytes")),
            ("Unit", field["unit"]), ("Written by", ", ".join(field["writers"])),
            ("Names bytes of", field.get("overlays"))]
    return " · ".join(f"*{name}* {plain(value)}" for name, value in said if value)


def section_of(field):
    return field.get("section", "")


def fields(record):
    """The fields in their order; what is said of neighbours stands before the first of them."""
    lines, said = [], ""
    for field in record["fields"]:
        if section_of(field) != said and "overlays" not in field:
            said = section_of(field)
            lines += [plain(said), ""]
        body = [facts(field), "", plain(field["meaning"]), ""]
        lines += [f".. c:member:: {declaration(field)}", "", *indented(body)]
    return lines


def record_page(record):
    size = both(record["size"], " bytes")
    lines = [*heading(record["name"], "="), plain(record["meaning"]), "",
             f"*Size* {size} · *Header* ``<{record['header']}>``", "",
             f".. c:struct:: {record['name']}", "", *indented(fields(record))]
    return "\n".join(lines) + "\n"


def write(description, folder):
    """Writes a page for each record, and the page that lists them."""
    (folder / "records").mkdir()
    rows = []
    for record in reversed(description["records"]):
        (folder / "records" / f"{record['name']}.rst").write_text(record_page(record), "utf-8")
        first = record["meaning"].split(". ")[0].rstrip(".")
        rows += [f"* - :doc:`records/{record['name']}`", f"  - {both(record['size'])}", f"  - {plain(first)}"]
    lines = [*heading("The record, field by field", "="),
             "What the build writes of the public headers to ``record.json`` (:doc:`languages`), to be read by",
             "people. Search for a field's name to see its offset in bytes, its size, unit and meaning.", "",
             ".. list-table::", "   :header-rows: 1", "", *indented(["* - Record", "  - Bytes", "  - What it is", *rows]),
             "", ".. toctree::", "   :hidden:", "",
             *indented(f"records/{record['name']}" for record in reversed(description["records"]))]
    (folder / "record.rst").write_text("\n".join(lines) + "\n", "utf-8")
