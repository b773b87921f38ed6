/* A host for 32-bit Windows. It knows the public headers alone, loads the libraries and resolves
 * the exported functions by name. It calls every one of them on the sample data, whose directory is
 * its argument, with a trailing separator, and checks what a host relies on: the results, the
 * positions in the record, the message boxes, and that the stack stands after each call where it
 * stood before. It writes to that directory: give it a copy. With MinGW, from the directory of the
 * package, and without optimisation, so that the calls alone move the stack pointer:
 *     i686-w64-mingw32-gcc -O0 -Iinclude docs/windows_host.c -o bin/windows_host.exe */
#include <float.h>
#include <hundredweight/exports.h>
#include <hundredweight/host_records.h>
#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

/* clang-format off */
#define FUNCTIONS(X) \
    X(fatal) X(warning) X(question) X(strtrim) X(strltrim) X(rndoff) X(SplitPath) \
    X(ForceFileNameExtension) X(OpenLevelFile) X(ReadCOZFile) X(OpenAllFiles) X(CloseAllFiles) \
    X(ReadDefFile) X(WriteDefFile) X(WriteMexicoDefFile) X(ReadWgtFile) X(WriteAccFile) \
    X(GetTolvexAddresses) X(InitializeTolvexdll) X(EndTolvexdll) X(GetCurrentEfcRec) \
    X(GetTolvexBse) X(GetTolvexTariffName) X(TolvexGetStateCode) X(RateShipment) \
    X(SetClassesAndWeights) X(ReadDiscFile) X(ClearDiscList) X(LoadDiscounts) X(VerOrigZip) \
    X(VerDestZip) X(VerTerritory) X(GetStateCode) X(GetZipcIndex) X(VerClass) X(VerWeight) \
    X(ValidWeight) X(ReadProfileFile) X(GetProfileRecord) X(GetProfileKey) X(GetProfileSize) \
    X(LoadProfileSettings) X(LoadProfileZP6) X(ReadFendroOpt) X(GetSGAddresses) \
    X(InitializeSGdll) X(GetService) X(GetTerminals) X(EndSGdll)
/* clang-format on */

/* The functions, and which of them have been called. */
#define POINTER(name) __typeof__(&name) name;
#define MARK(name) char name;
static struct { FUNCTIONS(POINTER) } library;
static struct { FUNCTIONS(MARK) } called;

static void Fail(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    vfprintf(stderr, format, arguments);
    va_end(arguments);
    fputc('\n', stderr);
    exit(1);
}

static void Expect(int holds, const char* what) {
    if (!holds) Fail("not so: %s", what);
}
#define EXPECT(condition) Expect((condition) != 0, #condition)

#define READ_STACK_POINTER(to) __asm__ volatile("movl %%esp, %0" : "=r"(to))
#define CALL(name, ...)                                                                \
    do {                                                                               \
        const char *before, *after;                                                    \
        READ_STACK_POINTER(before);                                                    \
        library.name(__VA_ARGS__);                                                     \
        READ_STACK_POINTER(after);                                                     \
        if (before != after) Fail("%s leaves %d bytes", #name, (int)(before - after)); \
        called.name = 1;                                                               \
    } while (0)
/* The same for the result of a function. */
#define RESULT(name, ...)                                                              \
    __extension__({                                                                    \
        const char *before, *after;                                                    \
        READ_STACK_POINTER(before);                                                    \
        const __auto_type result = library.name(__VA_ARGS__);                          \
        READ_STACK_POINTER(after);                                                     \
        if (before != after) Fail("%s leaves %d bytes", #name, (int)(before - after)); \
        called.name = 1;                                                               \
        result;                                                                        \
    })

static void LoadFunctions(void) {
    const HMODULE module = LoadLibraryA("hundredweight.dll");
    EXPECT(module != NULL);
#define RESOLVE(name)                                                       \
    library.name = (__typeof__(&name))(void*)GetProcAddress(module, #name); \
    if (library.name == NULL) Fail("%s is not exported", #name);
    FUNCTIONS(RESOLVE)
}

/* Positions in the record as a host's own declaration has them, whatever the header says. */
enum {
    kRecordSize = 92473,
    kErrorCode = 250,
    kUserDir = 15629,
    kDataDir = 15889,
    kFileBase = 16149,
    kUseEngine = 16887,
    kEngineModule = 49131,
    kServiceGuideModule = 49139,
    kTariffName = 49431,
    kOrigZip = 55642,
    kDestZip = 55686,
    kGrossChargeText = 56189,
    kNetChargeText = 56261,
    kClassTable = 56354
};

/* A record that ends where the readable memory ends. */
static char* AllocateRecord(void) {
    enum { kPage = 4096, kRoom = (kRecordSize / kPage + 1) * kPage };
    DWORD old;
    char* const room = VirtualAlloc(NULL, kRoom + kPage, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    EXPECT(room != NULL && VirtualProtect(room + kRoom, kPage, PAGE_NOACCESS, &old));
    return room + kRoom - kRecordSize;
}

/* The message box that is to open: another thread reads and closes it. */
static struct {
    const char *caption, *text;
    int button;
    int seen;
    HANDLE thread;
} box;

static BOOL CALLBACK CompareText(HWND child, LPARAM unused) {
    char text[256] = "";
    (void)unused;
    GetWindowTextA(child, text, sizeof text);
    if (strcmp(text, box.text) == 0) box.seen = 1;
    return TRUE;
}

static int HasButton(HWND window, int button) {
    return GetDlgItem(window, button) != NULL;
}

static DWORD WINAPI CloseBox(LPVOID unused) {
    HWND window = NULL;
    int attempt;
    (void)unused;
    for (attempt = 0; attempt < 1000 && !box.seen; ++attempt) {
        Sleep(10);
        window = FindWindowA(NULL, box.caption);
        if (window != NULL && IsWindowVisible(window)) EnumChildWindows(window, CompareText, 0);
    }
    if (!box.seen) Fail("no box %s: %s", box.caption, box.text);
    if (box.button == IDNO) EXPECT(HasButton(window, IDYES) && HasButton(window, IDNO));
    if (box.button == IDOK) EXPECT(HasButton(window, IDOK) && !HasButton(window, IDNO));
    PostMessageA(window, WM_COMMAND, (WPARAM)box.button, 0);
    return 0;
}

static void ExpectBox(const char* caption, const char* text, int button) {
    box.caption = caption;
    box.text = text;
    box.button = button;
    box.seen = 0;
    box.thread = CreateThread(NULL, 0, CloseBox, NULL, 0, NULL);
}

static void AwaitBox(void) {
    EXPECT(WaitForSingleObject(box.thread, 20000) == WAIT_OBJECT_0);
    CloseHandle(box.thread);
}

static void ShowMessages(void) {
    MSG message;
    ExpectBox("Host", "Invalid Origin ZIP Code.", IDOK);
    EXPECT(RESULT(warning, "", "Host", 101, NULL) == IDOK);
    AwaitBox();
    ExpectBox("Host", "Shall it be rated?", IDNO);
    EXPECT(RESULT(question, "Shall it be rated?", "Host", 0, NULL) == 0);
    AwaitBox();
    ExpectBox("Host", "Invalid Class.", IDOK);
    CALL(fatal, NULL, "Host", 105);
    AwaitBox();
    EXPECT(PeekMessageA(&message, NULL, WM_QUIT, WM_QUIT, PM_REMOVE) && message.wParam == 105);
}

static void UseUtilities(void) {
    char text[32] = "  text  ", name[16] = "NAME.OLD";
    EXPECT(strcmp(RESULT(strtrim, text), "  text") == 0);
    EXPECT(strcmp(RESULT(strltrim, text), "text") == 0);
    EXPECT(RESULT(rndoff, 2.345F, 2) == 2.35F);
    EXPECT(RESULT(rndoff, -832051.0F, -2) == -832000.0F);
    EXPECT(strcmp(RESULT(SplitPath, "C:\\DATA\\RATES.FIL"), "RATES.FIL") == 0);
    EXPECT(strcmp(RESULT(ForceFileNameExtension, name, ".NEW"), "NAME.NEW") == 0);
}

static void LoadSet(RateContext* context, char* record, const char* directory) {
    int32_t found = 0;
    strcpy(record + kDataDir, directory);
    strcpy(record + kUserDir, directory);
    strcpy(record + kFileBase, "SAMPLE");
    record[kUseEngine] = 1;
    *(HMODULE*)(record + kEngineModule) = LoadLibraryA("tolvex");
    *(HMODULE*)(record + kServiceGuideModule) = LoadLibraryA("servgd");
    context->UseServiceGuide = 1;
    EXPECT(RESULT(ReadDefFile, context) == 1);
    EXPECT(RESULT(OpenAllFiles, context, &found) == 1 && found == 1);
    EXPECT(RESULT(ReadWgtFile, context) == 1);
    EXPECT(RESULT(OpenLevelFile, context, "SAMPLE.LVL") == 1);
    EXPECT(RESULT(ReadCOZFile, context) == 1);
    EXPECT(RESULT(ReadDiscFile, context) == 1);
    EXPECT(RESULT(GetTolvexAddresses, context, 0) == 1);
    EXPECT(RESULT(InitializeTolvexdll, context) == 1);
    EXPECT(RESULT(GetSGAddresses, context, 0) == 1);
    EXPECT(RESULT(InitializeSGdll, context) == 1);
}

static void ApplyProfile(RateContext* context) {
    char name[31];
    EXPECT(RESULT(ReadProfileFile, context));
    EXPECT(RESULT(GetProfileSize, context) > 0);
    EXPECT(RESULT(GetProfileKey, context, 0, name) == 1);
    memcpy(context->Profile.ProfileName, name, sizeof name);
    EXPECT(RESULT(GetProfileRecord, context) == 1);
    CALL(LoadProfileSettings, context);
    EXPECT(RESULT(LoadProfileZP6, context) == 1);
    memset(&context->Profile, 0, sizeof context->Profile);
}

static void CheckShipment(RateContext* context, char* record) {
    char state[3] = "", attributes[2];
    strcpy(record + kOrigZip, "30303");
    strcpy(record + kDestZip, "60601");
    strcpy(context->OrigCity, "Atlanta");
    strcpy(context->DestCity, "Chicago");
    context->OrigTerritory = context->DestTerritory = 'B';
    EXPECT(RESULT(VerOrigZip, context) == 1 && RESULT(VerDestZip, context) == 1);
    EXPECT(RESULT(TolvexGetStateCode, "30303", state) == 1 && strcmp(state, "GA") == 0);
    EXPECT(RESULT(GetStateCode, context, "30303", context->OrigState, attributes, attributes) == 1);
    EXPECT(RESULT(GetStateCode, context, "60601", context->DestState, attributes, attributes) == 1);
    EXPECT(RESULT(VerTerritory, context) == 1);
    EXPECT(RESULT(GetZipcIndex, context, "M5H") >= 0);
    EXPECT(RESULT(GetTolvexBse, context) == 1 && RESULT(GetTolvexTariffName, context) == 1);
    EXPECT(memcmp(record + kTariffName, "SMPLNATL", 8) == 0);
    EXPECT(RESULT(GetCurrentEfcRec, context, "SMPLNATL 2025-01-06") != NULL);
    CALL(SetClassesAndWeights, context, 1, 0);
    EXPECT(strcmp(record + kClassTable, "500") == 0);
    EXPECT(RESULT(VerClass, context, "70", 0, 0) == 1 && RESULT(VerClass, context, "100", 1, 0));
    EXPECT(RESULT(VerWeight, context, "1205\0\0", 0) == 1);
    EXPECT(RESULT(VerWeight, context, "695\0\0\0", 1) == 1);
    EXPECT(RESULT(ValidWeight, context, 0) == 1);
}

static void RateIt(RateContext* context, char* record) {
    EXPECT(RESULT(GetService, context) == 1 && RESULT(GetTerminals, context) == 1);
    context->DiscountOn = 1;
    context->Profile.DiscModeP = 1;
    strcpy(context->EntryDiscountPercent, "45.5");
    CALL(ClearDiscList, context);
    CALL(LoadDiscounts, context, NULL, 0);
    EXPECT(RESULT(RateShipment, context, 0, 0) == 0);
    EXPECT(strcmp(record + kGrossChargeText, "     861.92") == 0);
    EXPECT(memcmp(record + kNetChargeText, "   469.75", 9) == 0);

    /* A lane of which the tariff has no rates: the engine's refusal is shown. */
    strcpy(record + kOrigZip, "90012");
    strcpy(context->OrigCity, "Los Angeles");
    strcpy(context->OrigState, "CA");
    strcpy(record + kDestZip, "10001");
    strcpy(context->DestCity, "New York");
    strcpy(context->DestState, "NY");
    strcpy(record + kTariffName, "SMPLWIDE");
    context->NameTablesLoaded = 'N';
    ExpectBox("TOLVEX Warning", "0113 The tariff has no lane between these points", IDOK);
    EXPECT(RESULT(RateShipment, context, 0, 0) == 9999);
    AwaitBox();
    EXPECT(*(int32_t*)(record + kErrorCode) == -1);
}

static void WriteFiles(RateContext* context) {
    OptionRecord option;
    EXPECT(RESULT(WriteDefFile, context) == 1);
    EXPECT(RESULT(WriteMexicoDefFile, context) == 1);
    EXPECT(RESULT(WriteAccFile, context) == 1);
    EXPECT(RESULT(ReadFendroOpt, "SAMPLE.DEF", &option, "NOBODY") == 0);
}

int main(int argc, char** argv) {
    char* const record = AllocateRecord();
    RateContext* const context = (RateContext*)record;
    const char* name;
    EXPECT(argc == 2 && sizeof *context == kRecordSize);
    /* Programs of other compilers run with this precision. */
    _controlfp(_PC_53, _MCW_PC);
    LoadFunctions();
    SetCurrentDirectoryA(argv[1]);
    UseUtilities();
    ShowMessages();
    LoadSet(context, record, argv[1]);
    ApplyProfile(context);
    CheckShipment(context, record);
    RateIt(context, record);
    WriteFiles(context);
    EXPECT(RESULT(EndSGdll, context) == 1 && RESULT(EndTolvexdll, context) == 1);
    EXPECT(RESULT(CloseAllFiles, context) == 1);
    for (name = (char*)&called; name < (char*)(&called + 1); ++name) EXPECT(*name == 1);
    printf("%u functions called\n", (unsigned)sizeof called);
    return 0;
}
