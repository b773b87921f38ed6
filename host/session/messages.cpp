#include "session/messages.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>
#include <hundredweight/platform.h>

#include <algorithm>
#include <utility>

#include "text/code_page.h"

namespace cwt {
namespace {

std::vector<std::string> shown_texts;

int32_t TakeBox(void* /*owner*/, const char* text, const char* /*caption*/, uint32_t /*style*/) {
    constexpr int32_t kOk = 1;
    std::string line = text;
    std::replace(line.begin(), line.end(), '\n', ' ');
    shown_texts.push_back(FromCodePage(line));
    return kOk;
}

/// Codes that the library has no message for.
struct OwnWords {
    int32_t lowest, highest;
    const char* text;
};

constexpr OwnWords kOwnWords[] = {
    {113, 114, "There is no memory for the base-rate engine."},
    {133, 133, "The base-rate engine cannot rate."},
    {134, 134, "The base-rate engine offers no city at the postal code."},
    {150, 151, "Error reading COZ file."},
    {265, 265, "Alaska, Hawaii and Puerto Rico are not rated."},
    {266, 266, "Two points with letter postal codes are not rated together."},
    {267, 269, "Error reading DCH file."},
    {400, 409, "The library lacks a function of a base-rate engine."},
    {456, 457, "Error reading ZFM file."},
    {525, 529, "The library lacks a function of a service guide."},
    {582, 584, "Error reading ZP7 file."},
};

}  // namespace

void CollectMessageBoxes() {
    SetMessageBoxHandler(TakeBox);
}

std::vector<std::string> TakeMessageBoxes() {
    return std::exchange(shown_texts, {});
}

std::string MessageOf(int32_t code) {
    for (const OwnWords& words : kOwnWords) {
        if (code >= words.lowest && code <= words.highest) return words.text;
    }
    std::vector<std::string> earlier = TakeMessageBoxes();
    warning("", "cwt", code, nullptr);
    std::string text = shown_texts.back();
    shown_texts = std::move(earlier);
    return text;
}

std::string Describe(int32_t code) {
    return fmt::format("{} (code {})", MessageOf(code), code);
}

}  // namespace cwt
