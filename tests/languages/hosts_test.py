"""Runs the hosts in other languages on the sample data: a BUILD, the hosts' DIRECTORY;
for 32-bit Windows its LIBRARIES and the compiler of Pascal.

Each is to print the figures of the bill that cwt prints of the same shipment, and to end with a
word and a code where there is nothing to rate by.
"""
import json
import os
import pathlib
import subprocess
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
    """Functions that take no record; every other is found by its name."""
    library = hundredweight_ctypes.load(str(build / "lib/libhundredweight.so"))
    platform = hundredweight_ctypes.load(str(build / "lib/libhundredweight-platform.so"),
                                         hundredweight_ctypes.PLATFORM_FUNCTIONS)
    version = platform.HundredweightVersion().decode()
    assert version == hundredweight_ctypes.HEADERS_VERSION, version
    assert platform.ErrorCodeText(101) == b"Invalid Origin ZIP Code."
    assert platform.ErrorCodeText(1) == b"Error occurred."
    shown = []
    handler = hundredweight_ctypes.MessageBoxHandler(lambda *box: shown.append(box) or 6)
    platform.SetMessageBoxHandler(handler)
    assert library.question(b"", b"caption", 101, None) == 1
    platform.SetMessageBoxHandler(None)
    assert shown == [(None, b"Invalid Origin ZIP Code.", b"caption", 0x24)], shown


def programs_on_windows(scratch, sample):
    libraries, cross = sys.argv[3:]
    compiler = PascalForWindows(languages, cross)
    command = compiler.program(hosts / "host.pas", scratch, libraries)
    return {"Pascal on 32-bit Windows": command}, "Z:" + f"{sample}".replace("/", "\\")


def programs_here(scratch, sample):
    programs = {"Python": [sys.executable, "-B", hosts / "host.py"]}
    for language, compiler, source in (("C#", CSharp(languages), "host.cs"),
                                       ("Pascal", Pascal(languages), "host.pas")):
        assert compiler.found, f"no compiler of {language} is installed"
        programs[language] = compiler.program(hosts / source, scratch, build / "lib")
    return programs, sample


def check_failure(program, arguments, words):
    done = subprocess.run([str(word) for word in (*program, *arguments)], capture_output=True,
                          text=True)
    last = done.stderr.splitlines()[-1]
    assert done.returncode == 2 and words in last, f"{program}\n{done.returncode}, {last}"


check_texts()
with tempfile.TemporaryDirectory() as scratch:
    scratch = pathlib.Path(scratch)
    # Paths have other characters than the freight's texts; Wine's are its locale's.
    sample = scratch / ("sample" if len(sys.argv) > 3 else "échantillon")
    run(build / "bin/cwt", "sample", sample)
    figures = expected_figures(sample)
    make = programs_on_windows if len(sys.argv) > 3 else programs_here
    programs, directory = make(scratch, sample)
    for language, program in programs.items():
        printed = run(*program, directory).splitlines()
        assert printed == figures, f"{language} printed\n{printed}\nnot\n{figures}"
        check_failure(program, [], "usage: host")
        check_failure(program, ["x" * 260], "too long: x")
        if make is programs_here:  # On Windows a box shows the code, and waits.
            check_failure(program, [f"{directory}x"], "code 240")
        print(f"{language}: {printed[-1]}, as cwt")
