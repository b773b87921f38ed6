"""Runs the hosts in other languages on the sample data: a BUILD, the hosts' DIRECTORY;
for 32-bit Windows its LIBRARIES and the compiler of Pascal.

Each is to print the figures of the bill that cwt prints of the same shipment.
"""
import json
import os
import pathlib
import sys
import tempfile

from compilers import CSharp, Pascal, PascalForWindows, run

build, hosts = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
languages = build / "share/hundredweight/languages"
os.environ["LD_LIBRARY_PATH"] = str(build / "lib")
os.environ["PYTHONPATH"] = str(languages)
sys.path.insert(0, str(languages))
import hundredweight_ctypes  # noqa: E402


def expected_figures(sample):
    shipment = sample / "shipments/01-deficit-and-discount.json"
    bill = json.loads(run(build / "bin/cwt", "rate", shipment, "--json"))
    lines = [f"line {line['class']} {line['weight']} {line['rate']} {line['charge']}"
             for line in bill["lines"]]
    deficit, discount = bill["deficit"], bill["discount"]
    return lines + [f"deficit {deficit['weight']} {deficit['rate']} {deficit['charge']}",
                    f"gross {bill['gross_charge']}",
                    f"discount {discount['percent']} {discount['amount']}",
                    f"net {bill['net_charge']}"]


def check_texts():
    """The two functions that take no record; every other is found by its name."""
    hundredweight_ctypes.load(str(build / "lib/libhundredweight.so"))
    platform = hundredweight_ctypes.load(str(build / "lib/libhundredweight-platform.so"),
                                         hundredweight_ctypes.PLATFORM_FUNCTIONS)
    version = platform.HundredweightVersion().decode()
    assert version == hundredweight_ctypes.HEADERS_VERSION, version
    assert platform.ErrorCodeText(101) == b"Invalid Origin ZIP Code."
    assert platform.ErrorCodeText(1) == b"Error occurred."


def programs_on_windows(scratch, sample):
    libraries, cross = sys.argv[3:]
    compiler = PascalForWindows(languages, cross)
    command = compiler.program(hosts / "host.pas", scratch, libraries)
    return {"Pascal on 32-bit Windows": command + ["Z:" + f"{sample}/".replace("/", "\\")]}


def programs_here(scratch, sample):
    programs = {"Python": [sys.executable, "-B", hosts / "host.py", sample, build / "lib"]}
    for language, compiler, source in (("C#", CSharp(languages), "host.cs"),
                                       ("Pascal", Pascal(languages), "host.pas")):
        assert compiler.found, f"no compiler of {language} is installed"
        programs[language] = compiler.program(hosts / source, scratch, build / "lib") + \
            [f"{sample}/"]
    return programs


check_texts()
with tempfile.TemporaryDirectory() as scratch:
    scratch = pathlib.Path(scratch)
    sample = scratch / "sample"
    run(build / "bin/cwt", "sample", sample)
    figures = expected_figures(sample)
    programs = programs_on_windows if len(sys.argv) > 3 else programs_here
    for language, program in programs(scratch, sample).items():
        printed = run(*program).splitlines()
        assert printed == figures, f"{language} printed\n{printed}\nnot\n{figures}"
        print(f"{language}: {printed[-1]}, as cwt")
