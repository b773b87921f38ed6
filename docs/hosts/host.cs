// A host in C#: rates a shipment of the sample data, whose directory is its argument. With Mono:
//     mcs -unsafe -platform:x64 host.cs PREFIX/share/hundredweight/languages/Hundredweight.cs
//     LD_LIBRARY_PATH=PREFIX/lib mono host.exe DIRECTORY
// Its exit code is 1 when the shipment is refused, 2 when there is nothing to rate it by.
// For 32-bit machines, those of Windows too: -platform:x86 -define:HWT_32BIT.
using System;
using System.IO;
using System.Runtime.InteropServices;
using Hundredweight;

static unsafe class Host {
    [DllImport("kernel32", CharSet = CharSet.Ansi)] static extern IntPtr LoadLibraryA(string name);

    static RateContext* context;

    // The result of a call tells whether it failed, the code why.
    static void Demand(bool done, string step) {
        if (done) return;
        Library.warning(null, Field.Bytes("host"), context->ErrorCode, IntPtr.Zero);
        throw new Exception(step + ": code " + context->ErrorCode);
    }

    static RateContext* NewRecord() {
        byte* record = (byte*)Marshal.AllocHGlobal(sizeof(RateContext));
        for (int i = 0; i < sizeof(RateContext); ++i) record[i] = 0;
        return (RateContext*)record;
    }

    static IntPtr LoadEngine() {
        if (Environment.OSVersion.Platform == PlatformID.Win32NT) return LoadLibraryA("tolvex");
        IntPtr engine = Library.LoadPartnerLibrary(Field.Bytes("tolvex"));
        if (engine == IntPtr.Zero) throw new Exception(Field.Get(Library.PartnerLibraryError()));
        return engine;
    }

    static void Load(string directory) {
        Field.PutPath(context->DataDir, RateContext.DataDirWidth, directory);
        Field.PutPath(context->UserDir, RateContext.UserDirWidth, directory);
        Field.Put(context->FileBase, RateContext.FileBaseWidth, "SAMPLE");
        context->UseEngine = 1;
        context->EngineModule = LoadEngine();
        int found = 0;
        Demand(Library.ReadDefFile(context) == 1, "defaults");
        Demand(Library.OpenAllFiles(context, &found) == 1, "tariff set");
        Demand(Library.ReadDiscFile(context) == 1, "discounts");
        Demand(Library.OpenLevelFile(context, Field.Bytes("SAMPLE.LVL")) == 1, "level file");
        Demand(Library.GetTolvexAddresses(context, 0) == 1, "engine");
        Demand(Library.InitializeTolvexdll(context) == 1, "engine");
        context->ErrorCode = 0;
    }

    static void EnterLine(int line, string freightClass, string pounds) {
        Demand(Library.VerClass(context, Field.Bytes(freightClass), line, 0) == 1, "class");
        // VerWeight reads 7 bytes of the text.
        Demand(Library.VerWeight(context, Field.Bytes(pounds, 7), line) == 1, "weight");
    }

    static void EnterShipment() {
        Field.Put(context->OrigZip, RateContext.OrigZipWidth, "30303");
        Field.Put(context->OrigCity, RateContext.OrigCityWidth, "Atlanta");
        Field.Put(context->OrigState, RateContext.OrigStateWidth, "GA");
        Field.Put(context->DestZip, RateContext.DestZipWidth, "60601");
        Field.Put(context->DestCity, RateContext.DestCityWidth, "Chicago");
        Field.Put(context->DestState, RateContext.DestStateWidth, "IL");
        context->OrigTerritory = context->DestTerritory = (byte)'B';
        Demand(Library.VerOrigZip(context) == 1 && Library.VerDestZip(context) == 1,
               "postal codes");
        Demand(Library.VerTerritory(context) == 1, "territory");
        Demand(Library.GetTolvexBse(context) == 1 && Library.GetTolvexTariffName(context) == 1,
               "tariff");
        Library.SetClassesAndWeights(context, 1, 0);
        EnterLine(0, "70", "1205");
        EnterLine(1, "100", "695");
        context->DiscountOn = 1;
        context->Profile.DiscModeP = 1; // the values entered here are the discount
        Field.Put(context->EntryDiscountPercent, RateContext.EntryDiscountPercentWidth, "45.5");
    }

    // An entry of a field's texts, or its only one.
    static string Text(byte* field, int width, int entry = 0) {
        return Field.Get(field + entry * width, width).Trim();
    }

    static void PrintBill() {
        for (int line = 0; line < 2; ++line) {
            Console.WriteLine(
                "line {0} {1} {2} {3}",
                Text(context->LineClass, RateContext.LineClassWidth, line),
                Text(context->LineWeight, RateContext.LineWeightWidth, line),
                Text(context->LineRateText, RateContext.LineRateTextWidth, line),
                Text(context->LineChargeText, RateContext.LineChargeTextWidth, line));
        }
        Console.WriteLine("deficit {0} {1} {2}",
                          Text(context->ExtraWeightText, RateContext.ExtraWeightTextWidth),
                          Text(context->ExtraRateText, RateContext.ExtraRateTextWidth),
                          Text(context->ExtraChargeText, RateContext.ExtraChargeTextWidth));
        Console.WriteLine("gross {0}",
                          Text(context->GrossChargeText, RateContext.GrossChargeTextWidth));
        Console.WriteLine("discount {0} {1}",
                          Text(context->DiscountPctText, RateContext.DiscountPctTextWidth),
                          Text(context->DiscountAmountText, RateContext.DiscountAmountTextWidth));
        Console.WriteLine("net {0}", Text(context->NetChargeText, RateContext.NetChargeTextWidth));
    }

    static void Rate() {
        EnterShipment();
        Library.LoadDiscounts(context, null, 0);
        Demand(Library.RateShipment(context, 0, 0) == 0, "rating");
        PrintBill();
    }

    static int Main(string[] arguments) {
        int status = 2;
        try {
            if (arguments.Length != 1) throw new Exception("usage: host DIRECTORY");
            if (!Field.FitsProcess) throw new Exception("compiled for another width of pointers");
            context = NewRecord();
            Load(Path.Combine(arguments[0], "x").TrimEnd('x'));
            status = 1;
            Rate();
            status = 0;
        } catch (DllNotFoundException failure) {
            Console.Error.WriteLine("cannot be loaded: {0}", failure.Message);
            return 2;
        } catch (Exception failure) {
            Console.Error.WriteLine(failure.Message);
        }
        if (context != null) {
            Library.EndTolvexdll(context);
            Library.CloseAllFiles(context);
            Marshal.FreeHGlobal((IntPtr)context);
        }
        return status;
    }
}
