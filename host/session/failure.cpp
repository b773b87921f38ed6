#include "session/failure.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>
#include <hundredweight/platform.h>

#include <algorithm>
#include <utility>

namespace cwt {
namespace {

std::vector<std::string> shown_texts;

int32_t TakeBox(void* /*owner*/, const char* text, const char* /*caption*/, uint32_t /*style*/) {
    constexpr int32_t kOk = 1;
    shown_texts.emplace_back(text);
    return kOk;
}

}  // namespace

void CollectMessageBoxes() {
    SetMessageBoxHandler(TakeBox);
}

std::vector<std::string> TakeMessageBoxes() {
    return std::exchange(shown_texts, {});
}

std::string Describe(int32_t code) {
    const std::vector<std::string> earlier = TakeMessageBoxes();
    warning("", "cwt", code, nullptr);
    std::string text = shown_texts.back();
    shown_texts = earlier;
    std::replace(text.begin(), text.end(), '\n', ' ');
    return fmt::format("{} (code {})", text, code);
}

}  // namespace cwt
