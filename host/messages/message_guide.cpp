#include "messages/message_guide.h"

#include <fmt/core.h>
#include <hundredweight/platform.h>

#include <string_view>

#include "messages/message_entry.h"
#include "session/messages.h"
#include "tariffs/families/family.h"
#include "text/wrapped.h"

namespace cwt {
namespace {

struct MessageGroup {
    const char* heading;
    const char* words;
    const std::span<const MessageEntry>& entries;
};

const MessageGroup kGroups[] = {
    {"The shipment",
     "A message of this group refuses a shipment; the place in front of it tells what of the "
     "shipment is refused.",
     kShipmentMessages},
    {"Profiles",
     "An unknown profile refuses the shipment; what is wrong with `PROFILE.FIL` ends the command.",
     kProfileMessages},
    {"Files of a tariff set",
     "A load reads these files with an engine and without. NAME is the base name of the set.",
     kSetMessages},
    {"Files that are read without an engine alone",
     "`cwt` rates by an engine and reads none of these files; `cwt inspect --without-engine` loads "
     "them.",
     kOwnTableMessages},
    {"Files that a host writes", "`cwt` writes none of these files.", kWrittenFileMessages},
    {"The base-rate engine",
     "The engine's own words and 134 refuse a shipment; 140 and 141 stop nothing. The other codes "
     "of this group end the command: no shipment is rated.",
     kEngineMessages},
    {"The service guide",
     "Only shipments with `service_guide` ask the service guide. 533 refuses the shipment; when a "
     "function is missing, the command ends.",
     kServiceGuideMessages},
};

constexpr const char* kFileCure =
    "Let `cwt inspect` tell which files the set needs, and which are missing or end too early. "
    "Copy the file from where the set came from";

constexpr const char* kNeverGiven =
    "Neither the library nor `cwt` gives this code; a host may show its message.";

constexpr int32_t kHighestCode = 999;

bool HasMessage(int32_t code) {
    constexpr int32_t kNoCode = 0;
    return code > 0 && code <= kHighestCode && MessageOf(code) != MessageOf(kNoCode);
}

std::string CauseOf(const MessageEntry& entry) {
    if (entry.file == nullptr) return entry.cause;
    const Family& family = *FamilyOf(entry.file);
    return fmt::format("The file `NAME.{}` ({}) ", entry.file, family.words) +
           fmt::format(fmt::runtime(entry.cause), family.record_size);
}

std::string CureOf(const MessageEntry& entry) {
    if (entry.cure != nullptr) return entry.cure;
    const Family* const family = entry.file == nullptr ? nullptr : FamilyOf(entry.file);
    if (family == nullptr || family->shape == Shape::kCarried) return std::string(kFileCure) + '.';
    return fmt::format("{}, or build the set from its folder of text, where it is `{}`.", kFileCure,
                       TextFileOf(*family));
}

const MessageEntry* FindEntry(int32_t code, const MessageGroup*& group) {
    for (const MessageGroup& each : kGroups) {
        for (const MessageEntry& entry : each.entries) {
            if (entry.code != code) continue;
            group = &each;
            return &entry;
        }
    }
    return nullptr;
}

std::string TitleOf(int32_t code) {
    return code == kEnginesWords ? "Words of the engine" : MessageOf(code);
}

std::string Paragraph(const std::string& text) {
    constexpr std::size_t kLineWidth = 80;
    return Wrapped(text, kLineWidth);
}

/// For some codes a host's message box has not the words that cwt has.
std::string HeadOf(int32_t code) {
    if (code == kEnginesWords) return fmt::format("### {}\n\n", TitleOf(code));
    const std::string shown = ErrorCodeText(code);
    return fmt::format("### Code {}\n\n**{}**{}\n\n", code, TitleOf(code),
                       shown == TitleOf(code) ? "" : " A host's message box says: " + shown);
}

std::string SectionOf(const MessageEntry& entry) {
    return fmt::format("{}{}\n\n{}\n\n", HeadOf(entry.code), CauseOf(entry), CureOf(entry));
}

/// The codes that nothing of ours gives.
std::string OtherMessages() {
    std::string rows;
    const MessageGroup* group = nullptr;
    for (int32_t code = 1; code <= kHighestCode; ++code) {
        if (!HasMessage(code) || FindEntry(code, group) != nullptr) continue;
        rows += fmt::format("| {} | {} |\n", code, MessageOf(code));
    }
    return rows;
}

}  // namespace

std::optional<std::string> ExplainMessage(int32_t code) {
    const MessageGroup* group = nullptr;
    if (const MessageEntry* const entry = FindEntry(code, group)) {
        const std::string number =
            code == kEnginesWords ? std::string() : fmt::format("{}: ", code);
        return number + TitleOf(code) + "\n\n" + Paragraph(CauseOf(*entry)) + '\n' +
               Paragraph(CureOf(*entry)) + '\n' +
               Paragraph(fmt::format("{}. {}", group->heading, group->words));
    }
    if (!HasMessage(code)) return std::nullopt;
    return fmt::format("{}: {}\n\n", code, MessageOf(code)) + Paragraph(kNeverGiven);
}

std::map<int32_t, std::string> ExplainedCodes() {
    std::map<int32_t, std::string> codes;
    for (const MessageGroup& group : kGroups) {
        for (const MessageEntry& entry : group.entries) {
            if (entry.code != kEnginesWords) codes[entry.code] = TitleOf(entry.code);
        }
    }
    return codes;
}

std::string MessageGuide() {
    std::string text;
    for (const MessageGroup& group : kGroups) {
        text += fmt::format("## {}\n\n{}\n\n", group.heading, group.words);
        for (const MessageEntry& entry : group.entries) text += SectionOf(entry);
    }
    return text +
           "## Codes that are never given\n\nThe library has a message for them and gives "
           "none; a host of the field may show it with `warning()`.\n\n"
           "| Code | Message |\n|---|---|\n" +
           OtherMessages();
}

}  // namespace cwt
