"""A host in Python: rates a shipment of the sample data, whose directory is its argument.

    PYTHONPATH=PREFIX/share/hundredweight/languages python3 host.py DIRECTORY [LIBRARIES]

LIBRARIES is the directory of the libraries, where the system does not find them by itself. The exit
code is 1 when the shipment is refused, 2 when there is nothing to rate it by.
"""
import ctypes
import os
import sys

import hundredweight_ctypes as hundredweight

failure = 2


def fail(words):
    print(words, file=sys.stderr)
    sys.exit(failure)


if len(sys.argv) not in (2, 3):
    fail("usage: host.py DIRECTORY [LIBRARIES]")
windows = os.name == "nt"
directory = os.path.join(sys.argv[1], "")
# As the system's own functions of 8-bit texts take a path.
directory = directory.encode("mbcs") if windows else os.fsencode(directory)
place = os.path.join(sys.argv[2], "") if len(sys.argv) > 2 else ""
name = "{}.dll" if windows else "lib{}.so"
try:
    library = hundredweight.load(place + name.format("hundredweight"))
    engine = (ctypes.WinDLL if windows else ctypes.CDLL)(place + name.format("tolvex"))
except OSError as error:
    fail(error)
context = hundredweight.RateContext()
if len(directory) >= hundredweight.RateContext.DataDir.size:
    fail("too long: " + sys.argv[1])


def demand(done, step):
    """The result of a call tells whether it failed, the code why."""
    if not done:
        library.warning(b"", b"host", context.ErrorCode, None)
        fail(f"{step}: code {context.ErrorCode}")


def enter(line, freight_class, pounds):
    demand(library.VerClass(context, freight_class, line, 0), "class")
    # VerWeight reads 7 bytes of the text.
    demand(library.VerWeight(context, pounds.ljust(7, b"\0"), line), "weight")


context.DataDir = context.UserDir = directory
context.FileBase = b"SAMPLE"
context.UseEngine = 1
context.EngineModule = engine._handle
demand(library.ReadDefFile(context), "defaults")
demand(library.OpenAllFiles(context, ctypes.c_int32(0)), "tariff set")
demand(library.ReadDiscFile(context), "discounts")
demand(library.OpenLevelFile(context, b"SAMPLE.LVL"), "level file")
demand(library.GetTolvexAddresses(context, 0), "engine")
demand(library.InitializeTolvexdll(context), "engine")
context.ErrorCode = 0
failure = 1

context.OrigZip, context.OrigCity, context.OrigState = b"30303", b"Atlanta", b"GA"
context.DestZip, context.DestCity, context.DestState = b"60601", b"Chicago", b"IL"
context.OrigTerritory = context.DestTerritory = b"B"
demand(library.VerOrigZip(context) and library.VerDestZip(context), "postal codes")
demand(library.VerTerritory(context), "territory")
demand(library.GetTolvexBse(context) and library.GetTolvexTariffName(context), "tariff")
library.SetClassesAndWeights(context, 1, 0)
enter(0, b"70", b"1205")
enter(1, b"100", b"695")
context.DiscountOn = 1
context.Profile.DiscModeP = 1  # the values entered here are the discount
context.EntryDiscountPercent = b"45.5"
library.LoadDiscounts(context, None, 0)
demand(library.RateShipment(context, 0, 0) == 0, "rating")


def text(field):
    return (field if isinstance(field, bytes) else field.value).decode("latin-1").strip()


for line in range(2):
    print("line", text(context.LineClass[line]), text(context.LineWeight[line]),
          text(context.LineRateText[line]), text(context.LineChargeText[line]))
print("deficit", text(context.ExtraWeightText), text(context.ExtraRateText),
      text(context.ExtraChargeText))
print("gross", text(context.GrossChargeText))
print("discount", text(context.DiscountPctText), text(context.DiscountAmountText))
print("net", text(context.NetChargeText))
library.EndTolvexdll(context)
library.CloseAllFiles(context)
