#include "harness.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <hundredweight/platform.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <type_traits>
#include <utility>

// A run is short, so freed blocks need not be kept apart for long.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=8:malloc_context_size=10";
}

// Nothing here has to outlive a crash of the machine.
extern "C" int fsync(int) {
    return 0;
}

namespace hundredweight::fuzz {
namespace {

constexpr char kGuard = 0x5A;

/// Standard error as the program found it: the fuzzer may silence the other.
const int standard_error = dup(2);

int FirstFreeDescriptor() {
    const int descriptor = dup(standard_error);
    close(descriptor);
    return descriptor;
}

int32_t ReadBox(void*, const char* text, const char* caption, uint32_t) {
    constexpr std::size_t kLongestText = 179;
    Require(std::strlen(text) <= kLongestText, "a box shows 179 characters at most");
    NoteOutcome(text);
    return caption == nullptr ? 0 : static_cast<int32_t>(std::strlen(caption) % 8);
}

uint64_t outcome = 0;

struct Field {
    std::string_view name;
    std::size_t offset;
    std::size_t size;
    bool is_pointer;

    bool IsHandle() const { return name.ends_with("Handle"); }
    bool IsPath() const { return name.ends_with("Dir") || name == "FileBase"; }
    /// The host's own, which the library leaves alone.
    bool IsHostArea() const { return name.starts_with("HostArea"); }
    bool IsHostWritable() const {
        return !is_pointer && !IsHandle() && !IsHostArea() && name != "SccCount" &&
               name != "EfcCount";
    }
};

const std::vector<Field> kFields = {
#define RECORD_FIELD(name)                                          \
    {#name, offsetof(RateContext, name), sizeof(RateContext::name), \
     std::is_pointer_v<decltype(RateContext::name)>},
#include "record_fields.inc"
#undef RECORD_FIELD
};

template <std::size_t Size>
void CheckText(const char (&field)[Size]) {
    Require(std::memchr(field, '\0', Size) != nullptr, "a text ends in its field");
}
template <std::size_t Count, std::size_t Size>
void CheckText(const char (&fields)[Count][Size]) {
    for (const auto& field : fields) CheckText(field);
}
template <class... Fields>
void CheckTexts(const Fields&... fields) {
    (CheckText(fields), ...);
}

}  // namespace

void Require(bool holds, const char* fact) {
    if (holds) return;
    dprintf(standard_error, "Does not hold: %s\n", fact);
    std::abort();
}

/// Word by word, since records are noted after every call.
void NoteOutcome(std::string_view bytes) {
    constexpr uint64_t kFactor = 0x9E3779B97F4A7C15;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), sizeof outcome))) {
        uint64_t word = bytes.size();
        std::memcpy(&word, bytes.data(), std::min(bytes.size(), sizeof word));
        outcome = (outcome ^ word) * kFactor;
        outcome ^= outcome >> 29;
    }
}

void NoteOutcome(int32_t result) {
    NoteOutcome({reinterpret_cast<const char*>(&result), sizeof result});
}

uint64_t TakeOutcome() {
    return std::exchange(outcome, 0);
}

Parts HostFieldParts() {
    Parts parts;
    for (const Field& field : kFields) {
        if (!field.IsHostWritable()) continue;
        parts.push_back({std::string(field.name), std::string(field.size, '\0')});
    }
    return parts;
}

Record::Record(const DataDirectory& directory)
    : first_free_descriptor_(FirstFreeDescriptor()),
      block_(new char[kBlockSize]()),
      context_(reinterpret_cast<RateContext*>(block_.get() + 1)) {
    static void* const program = dlopen(nullptr, RTLD_NOW);
    block_[0] = kGuard;
    for (const Field& field : kFields) {
        if (field.IsHostArea()) std::memset(block_.get() + 1 + field.offset, kGuard, field.size);
    }
    SetMessageBoxHandler(ReadBox);
    SetQuitHandler([](int32_t) {});
    directory.Path().copy(context_->DataDir, sizeof context_->DataDir - 1);
    directory.UserPath().copy(context_->UserDir, sizeof context_->UserDir - 1);
    std::strcpy(context_->FileBase, samples::kBaseName);
    context_->EngineModule = program;
    context_->ServiceGuideModule = program;
    GetTolvexAddresses(context_, 0);
    GetSGAddresses(context_, 0);
    GetTolvexBse(context_);
    context_->ErrorCode = 0;
}

Record::~Record() {
    context_->UseEngine = 1;
    context_->UseServiceGuide = 1;
    EndTolvexdll(context_);
    EndSGdll(context_);
    CheckGuard();
    CallTwice("everything is closed once", CloseAllFiles);
    for (const Field& field : kFields) {
        void* pointer = nullptr;
        if (!field.is_pointer || field.name.ends_with("Module")) continue;
        std::memcpy(&pointer, block_.get() + 1 + field.offset, sizeof pointer);
        Require(pointer == nullptr, "nothing hangs on a closed record");
    }
    Require(FirstFreeDescriptor() == first_free_descriptor_, "every descriptor is closed");
}

void Record::PutFields(const Parts& parts) {
    for (const Part& part : parts) {
        const auto field = std::ranges::find(kFields, part.name, &Field::name);
        if (field == kFields.end() || !field->IsHostWritable()) continue;
        std::string content = part.content;
        // Paths stay below the directory in which the process works.
        if (field->IsPath()) std::ranges::replace(content, '/', '\\');
        content.copy(block_.get() + 1 + field->offset, field->size);
    }
}

void Record::CheckGuard() const {
    static const std::vector<Field> areas = [] {
        std::vector<Field> found;
        std::ranges::copy_if(kFields, std::back_inserter(found), &Field::IsHostArea);
        return found;
    }();
    Require(block_[0] == kGuard, "nothing before the record is written");
    for (const Field& area : areas) {
        const std::string_view bytes(block_.get() + 1 + area.offset, area.size);
        Require(bytes.find_first_not_of(kGuard) == bytes.npos, area.name.data());
    }
}

void Record::NoteFields() const {
    for (const Field& field : kFields) {
        if (field.is_pointer || field.IsHandle() || field.IsPath()) continue;
        NoteOutcome({block_.get() + 1 + field.offset, field.size});
    }
}

void Record::CheckSetTexts() const {
    const RateContext& context = *context_;
    CheckTexts(context.TariffLabel1, context.TariffLabel2, context.TariffLabel3,
               context.TariffLabel4, context.TableNames, context.ClassTable,
               context.WeightBreakName, context.LabLine, context.LamLine);
}

void Record::CheckRatedTexts() const {
    const RateContext& context = *context_;
    CheckTexts(context.LineRateText, context.LineChargeText, context.ExtraWeightText,
               context.ExtraRateText, context.ExtraChargeText, context.TotalWeightText,
               context.BilledWeightText, context.BilledWeightCopy, context.GrossChargeText,
               context.DiscountPctText, context.SurchargeText, context.MinChargeText,
               context.ClassTable, context.WeightBreakName);
    for (const BreakList& list : {context.BreakLists[0], context.BreakLists[1]}) {
        Require(list.Count >= 0 && list.Count <= 15, "a list of weight breaks has 15 at most");
        CheckTexts(list.Labels);
    }
    Require(context.EngineListCount >= 0 && context.EngineListCount <= 25,
            "25 alternatives at most");
    Require(context.ClassCount >= 0 && context.ClassCount <= 20 && context.WeightBreakCount >= 0 &&
                context.WeightBreakCount <= 20,
            "20 classes and weight breaks at most");
}

int32_t RateAnew(RateContext* context) {
    context->ErrorCode = 0;
    context->ZmcMinimum = 0;
    return RateShipment(context, 0, 0);
}

void Record::RequireSame(const std::string& before, const char* fact) const {
    CheckGuard();
    if (std::memcmp(before.data(), block_.get(), kBlockSize) == 0) return;
    for (const Field& field : kFields) {
        const std::size_t at = 1 + field.offset;
        if (field.is_pointer || field.IsHandle()) continue;
        if (std::memcmp(before.data() + at, block_.get() + at, field.size) == 0) continue;
        dprintf(standard_error, "%s differs\n", field.name.data());
        Require(false, fact);
    }
}

}  // namespace hundredweight::fuzz
