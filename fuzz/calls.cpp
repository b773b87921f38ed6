#include "calls.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <type_traits>

namespace hundredweight::fuzz {
namespace {

/// A heap block that begins with a text and is as long as said, or as the text with its terminator.
class Buffer {
 public:
    explicit Buffer(std::size_t size) : bytes_(new char[size]()) {}
    explicit Buffer(const std::string& text, std::size_t room = 0)
        : Buffer(text.size() + 1 + room) {
        // Texts end at their first zero byte.
        std::strcpy(bytes_.get(), text.c_str());
    }
    /// Without a terminator.
    static Buffer Filled(const std::string& bytes) {
        Buffer buffer(bytes.size());
        bytes.copy(buffer, bytes.size());
        return buffer;
    }

    operator char*() const { return bytes_.get(); }

 private:
    std::unique_ptr<char[]> bytes_;
};

/// A file name of the user's directory.
std::string FileName(Values& values) {
    std::string name = values.Text().c_str();
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
}

/// Binds the engine anew; one that runs would be forgotten, so it is ended first.
void BindEngine(RateContext& context) {
    const int32_t use = context.UseEngine;
    context.UseEngine = 1;
    EndTolvexdll(&context);
    context.UseEngine = use;
    GetTolvexAddresses(&context, 0);
}

void LoadHostDiscounts(RateContext& context, Values& values) {
    const auto table = std::make_unique<HostDiscountTable>();
    table->TableType = values.Byte();
    LoadDiscounts(&context, table.get(), values.Byte() % 3);
}

template <class Result>
void NoteResult(Result (*function)(RateContext*), RateContext& context) {
    if constexpr (std::is_void_v<Result>) {
        function(&context);
    } else {
        NoteOutcome(static_cast<int32_t>(function(&context)));
    }
}

struct Function {
    const char* name;
    void (*call)(RateContext&, Values&);
};

#define RECORD_CALL(name)                                                        \
    {                                                                            \
#name, [](RateContext & context, Values&) { NoteResult(name, context); } \
    }

constexpr Function kFunctions[] = {
    RECORD_CALL(ClearDiscList),
    RECORD_CALL(CloseAllFiles),
    RECORD_CALL(EndSGdll),
    RECORD_CALL(EndTolvexdll),
    {"ForceFileNameExtension",
     [](RateContext&, Values& values) {
         constexpr std::size_t kExtension = 4;
         const Buffer name(values.Text(), kExtension);
         ForceFileNameExtension(name, Buffer(values.Text()));
     }},
    {"GetCurrentEfcRec",
     [](RateContext& context, Values& values) {
         GetCurrentEfcRec(&context, Buffer::Filled(values.Bytes(19)));
     }},
    {"GetProfileKey",
     [](RateContext& context, Values& values) {
         NoteOutcome(
             GetProfileKey(&context, values.Number(), Buffer(sizeof context.Profile.ProfileName)));
     }},
    RECORD_CALL(GetProfileRecord),
    RECORD_CALL(GetProfileSize),
    {"GetSGAddresses", [](RateContext& context, Values&) { GetSGAddresses(&context, 0); }},
    RECORD_CALL(GetService),
    {"GetStateCode",
     [](RateContext& context, Values& values) {
         NoteOutcome(
             GetStateCode(&context, Buffer(values.Text()), Buffer(2), Buffer(1), Buffer(1)));
     }},
    RECORD_CALL(GetTerminals),
    {"GetTolvexAddresses", [](RateContext& context, Values&) { BindEngine(context); }},
    RECORD_CALL(GetTolvexBse),
    RECORD_CALL(GetTolvexTariffName),
    {"GetZipcIndex",
     [](RateContext& context, Values& values) {
         NoteOutcome(GetZipcIndex(&context, Buffer(values.Text())));
     }},
    RECORD_CALL(InitializeSGdll),
    RECORD_CALL(InitializeTolvexdll),
    {"LoadDiscounts", LoadHostDiscounts},
    RECORD_CALL(LoadProfileSettings),
    RECORD_CALL(LoadProfileZP6),
    {"OpenAllFiles",
     [](RateContext& context, Values&) {
         int32_t found = 0;
         NoteOutcome(OpenAllFiles(&context, &found));
     }},
    {"OpenLevelFile",
     [](RateContext& context, Values& values) {
         NoteOutcome(OpenLevelFile(&context, Buffer(values.Text())));
     }},
    {"RateShipment",
     [](RateContext& context, Values& values) {
         NoteOutcome(RateShipment(&context, values.Number(), 0));
     }},
    RECORD_CALL(ReadCOZFile),
    RECORD_CALL(ReadDefFile),
    RECORD_CALL(ReadDiscFile),
    {"ReadFendroOpt",
     [](RateContext&, Values& values) {
         const Buffer path(FileName(values));
         NoteOutcome(ReadFendroOpt(path, Buffer(sizeof(OptionRecord)), Buffer(values.Text())));
     }},
    RECORD_CALL(ReadProfileFile),
    RECORD_CALL(ReadWgtFile),
    {"SetClassesAndWeights",
     [](RateContext& context, Values& values) {
         SetClassesAndWeights(&context, values.Byte() % 4, 0);
     }},
    {"SplitPath", [](RateContext&, Values& values) { SplitPath(Buffer(values.Text())); }},
    {"TolvexGetStateCode",
     [](RateContext&, Values& values) {
         NoteOutcome(TolvexGetStateCode(Buffer(values.Text()), Buffer(2)));
     }},
    {"ValidWeight", [](RateContext& context,
                       Values& values) { NoteOutcome(ValidWeight(&context, values.Number())); }},
    {"VerClass",
     [](RateContext& context, Values& values) {
         const Buffer text(values.Text());
         const int32_t line = values.Number();
         NoteOutcome(VerClass(&context, text, line, values.Byte() % 2));
     }},
    RECORD_CALL(VerDestZip),
    RECORD_CALL(VerOrigZip),
    RECORD_CALL(VerTerritory),
    {"VerWeight",
     [](RateContext& context, Values& values) {
         const Buffer text = Buffer::Filled(values.Bytes(sizeof context.LineWeight[0]));
         NoteOutcome(VerWeight(&context, text, values.Number()));
     }},
    RECORD_CALL(WriteAccFile),
    RECORD_CALL(WriteDefFile),
    RECORD_CALL(WriteMexicoDefFile),
    {"fatal", [](RateContext& context,
                 Values& values) { fatal(Buffer(values.Text()), nullptr, context.ErrorCode); }},
    {"question",
     [](RateContext&, Values& values) {
         const Buffer text(values.Text());
         question(text, Buffer(values.Text()), values.Number(), nullptr);
     }},
    {"rndoff",
     [](RateContext& context, Values& values) { rndoff(context.RateFactor, values.Number()); }},
    {"strltrim", [](RateContext&, Values& values) { strltrim(Buffer(values.Text())); }},
    {"strtrim", [](RateContext&, Values& values) { strtrim(Buffer(values.Text())); }},
    {"warning",
     [](RateContext&, Values& values) { warning(nullptr, nullptr, values.Number(), nullptr); }},
};
static_assert(std::size(kFunctions) == 49);

}  // namespace

void MakeCalls(Record& record, std::string_view content) {
    constexpr int kMostCalls = 24;
    Values values(content);
    for (int made = 0; made < kMostCalls && !values.empty(); ++made) {
        kFunctions[values.Byte() % std::size(kFunctions)].call(*record, values);
        record.CheckGuard();
        record.NoteFields();
    }
}

std::string CallBytes(std::string_view function, std::string_view arguments) {
    const auto* const found =
        std::find_if(std::begin(kFunctions), std::end(kFunctions),
                     [&](const Function& each) { return each.name == function; });
    Require(found != std::end(kFunctions), "a seed calls an exported function");
    return static_cast<char>(found - std::begin(kFunctions)) + std::string(arguments);
}

}  // namespace hundredweight::fuzz
