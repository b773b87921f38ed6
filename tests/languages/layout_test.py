"""Holds the layout that each language gives the records against record.json: its DIRECTORY, SCHEMA,
the directory of the LIBRARIES and, for 32-bit Windows, that of the compiler of Pascal.

What record.json says is held against the C header when record_layout.c is compiled.
"""
import ctypes
import json
import pathlib
import re
import struct
import sys
import tempfile

import jsonschema

from compilers import CSharp, Pascal, PascalForWindows, run, write

directory, languages = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[1]) / "languages"
description = json.loads((directory / "record.json").read_text())
jsonschema.validate(description, json.loads(pathlib.Path(sys.argv[2]).read_text()),
                    jsonschema.Draft202012Validator)
records = description["records"]
libraries = sys.argv[3]
# On 32-bit Windows a function's name tells the bytes of its arguments, each of which takes four.
tests = pathlib.Path(__file__).resolve().parents[1]
decorated = (tests / "platform/win32/decorated_names.txt").read_text().split()
assert sorted(decorated) == sorted(
    f"{function['name']}@{4 * len(function['arguments'])}"
    for function in description["functions"] if function["library"] == "hundredweight")
native = str(struct.calcsize("P") * 8)


def stated(width, pointer_sizes=True):
    """By the name of a record or of its field: where it lies, and its size."""
    places = {}
    for record in records:
        places[record["name"]] = (0, record["size"][width])
        for field in record["fields"]:
            size = field["count"] * field["width"][width]
            if field["type"].endswith("*") and not pointer_sizes:
                size = None
            places[f"{record['name']}.{field['name']}"] = (field["offset"][width], size)
    return places


def as_printed(text):
    """Lines of a name, an offset and a size."""
    return {name: (int(offset), None if size == "-" else int(size))
            for name, offset, size in map(str.split, text.splitlines())}


def python_layout():
    sys.path.insert(0, str(languages))
    import hundredweight_ctypes
    places = {}
    for record in records:
        of = getattr(hundredweight_ctypes, record["name"])
        places[record["name"]] = (0, ctypes.sizeof(of))
        for field in record["fields"]:
            member = getattr(of, field["name"])
            places[f"{record['name']}.{field['name']}"] = (member.offset, member.size)
    return places


def csharp_layout(scratch, width):
    options = ["-define:HWT_32BIT"] if width == "32" else []
    compiler = CSharp(languages, *options)
    if not compiler.found:
        return None
    lines = ["using System; using System.Runtime.InteropServices; using Hundredweight;",
             "static unsafe class Layout { static void Main() {",
             "byte* start = (byte*)Marshal.AllocHGlobal(100000);"]
    for record in records:
        name = record["name"]
        lines += [f'{{ {name}* r = ({name}*)start;',
                  f'Console.WriteLine("{name} 0 " + sizeof({name}));']
        for field in record["fields"]:
            single = not field["dimensions"]
            # A pointer here has the width of this process.
            foreign = field["type"].endswith("*") and width != native
            size = '"-"' if foreign else \
                f'Marshal.SizeOf(typeof({name}).GetField("{field["name"]}").FieldType)'
            place = f'((byte*){"&" if single else ""}r->{field["name"]} - start)'
            lines.append(f'Console.WriteLine("{name}.{field["name"]} " + {place} + " " + {size});')
        lines.append("}")
    source = write(scratch, f"layout{width}.cs", lines + ["} }"])
    return as_printed(run(*compiler.program(source, scratch, libraries)))


def pascal_layout(scratch, compiler):
    if not compiler.found:
        return None
    lines = ["program layout;", "uses hundredweight;", "var start: Pointer;", "begin",
             "GetMem(start, 100000);"]
    for record in records:
        name = record["name"]
        lines.append(f"writeln('{name} 0 ', SizeOf({name}));")
        overlaid = {field.get("overlays") for field in record["fields"]}
        for field in record["fields"]:
            path = field["name"]
            if path in overlaid:
                path += ".Bytes"
            if "overlays" in field:
                path = f"{field['overlays']}.{path}"
            member = f"P{name}(start)^.{path}"
            lines.append(f"writeln('{name}.{field['name']} ', "
                         f"PtrUInt(@{member}) - PtrUInt(start), ' ', SizeOf({member}));")
    source = write(scratch, "layout.pas", lines + ["end."])
    return as_printed(run(*compiler.program(source, scratch, libraries)))


def basic_layout():
    """Positions on 32-bit machines, as constants."""
    text = (languages / "Hundredweight.bas").read_text()
    places = {}
    for record, field, number in re.findall(r"^Public Const (\w+?)_(\w+) As Long = (\d+)$", text,
                                            re.MULTILINE):
        size = field == "Size"
        places[record if size else f"{record}.{field}"] = (0, int(number)) if size else \
            (int(number), None)
    return places


def basic_stated():
    """Of a text's width too, which is named as a field of its own."""
    places = {name: (offset, size if "." not in name else None)
              for name, (offset, size) in stated("32").items()}
    for record in records:
        for field in record["fields"]:
            if field["type"] == "char" and field["dimensions"]:
                places[f"{record['name']}.{field['name']}_Width"] = (field["dimensions"][-1], None)
    return places


def layouts_on_windows(scratch):
    compiler = PascalForWindows(languages, sys.argv[4])
    return {"Pascal on 32-bit Windows": (pascal_layout(scratch, compiler), stated("32"))}


def layouts_here(scratch):
    return {
        "Python": (python_layout(), stated(native)),
        "C#": (csharp_layout(scratch, native), stated(native)),
        "C# for 32 bits": (csharp_layout(scratch, "32"), stated("32", native == "32")),
        "Pascal": (pascal_layout(scratch, Pascal(languages)), stated(native)),
        "Basic": (basic_layout(), basic_stated()),
    }


with tempfile.TemporaryDirectory() as scratch:
    layouts = layouts_on_windows if len(sys.argv) > 4 else layouts_here
    found = layouts(pathlib.Path(scratch))
for language, (layout, expected) in found.items():
    if layout is None:
        print(f"{language}: not checked, its compiler is not installed")
        continue
    differ = [f"{name}: {layout.get(name)}, not {expected.get(name)}"
              for name in expected.keys() | layout.keys() if layout.get(name) != expected.get(name)]
    assert not differ, f"{language}\n" + "\n".join(differ)
    print(f"{language}: {len(records)} sizes and {len(expected) - len(records)} offsets agree")
