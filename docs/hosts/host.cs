// A host in C#: rates a shipment of the sample data, whose directory is its argument. With Mono:
//     mcs -unsafe -platform:x64 host.cs PREFIX/share/hundredweight/languages/Hundredweight.cs
//     LD_LIBRARY_PATH=PREFIX/lib mono host.exe DIRECTORY
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

    static void Load(string directory) {
        Field.Put(context->DataDir, 260, directory);
        Field.Put(context->UserDir, 260, directory);
        Field.Put(context->FileBase, 13, "SAMPLE");
        context->UseEngine = 1;
        context->EngineModule = Environment.OSVersion.Platform == PlatformID.Win32NT
            ? LoadLibraryA("tolvex") : Library.LoadPartnerLibrary(Field.Bytes("tolvex"));
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
        Field.Put(context->OrigZip, 7, "30303");
        Field.Put(context->OrigCity, 31, "Atlanta");
        Field.Put(context->OrigState, 3, "GA");
        Field.Put(context->DestZip, 7, "60601");
        Field.Put(context->DestCity, 31, "Chicago");
        Field.Put(context->DestState, 3, "IL");
        context->OrigTerritory = context->DestTerritory = (byte)'B';
        Demand(Library.VerOrigZip(context) == 1 && Library.VerDestZip(context) == 1, "postal codes");
        Demand(Library.VerTerritory(context) == 1, "territory");
        Demand(Library.GetTolvexBse(context) == 1 && Library.GetTolvexTariffName(context) == 1,
               "tariff");
        Library.SetClassesAndWeights(context, 1, 0);
        EnterLine(0, "70", "1205");
        EnterLine(1, "100", "695");
        context->DiscountOn = 1;
        context->Profile.DiscModeP = 1; // the values entered here are the discount
        Field.Put(context->EntryDiscountPercent, 6, "45.5");
    }

    static string Text(byte* field, int width) {
        return Field.Get(field, width).Trim();
    }

    static void PrintBill() {
        for (int line = 0; line < 2; ++line) {
            Console.WriteLine("line {0} {1} {2} {3}", Text(context->LineClass + line * 5, 5),
                              Text(context->LineWeight + line * 7, 7),
                              Text(context->LineRateText + line * 10, 10),
                              Text(context->LineChargeText + line * 15, 15));
        }
        Console.WriteLine("deficit {0} {1} {2}", Text(context->ExtraWeightText, 7),
                          Text(context->ExtraRateText, 8), Text(context->ExtraChargeText, 10));
        Console.WriteLine("gross {0}", Text(context->GrossChargeText, 15));
        Console.WriteLine("discount {0} {1}", Text(context->DiscountPctText, 6),
                          Text(context->DiscountAmountText, 9));
        Console.WriteLine("net {0}", Text(context->NetChargeText, 9));
    }

    static int Main(string[] arguments) {
        if (!Field.FitsProcess) throw new Exception("compiled for another width of pointers");
        context = NewRecord();
        Load(Path.Combine(arguments[0], "x").TrimEnd('x'));
        EnterShipment();
        Library.LoadDiscounts(context, null, 0);
        Demand(Library.RateShipment(context, 0, 0) == 0, "rating");
        PrintBill();
        Library.EndTolvexdll(context);
        Library.CloseAllFiles(context);
        Marshal.FreeHGlobal((IntPtr)context);
        return 0;
    }
}
