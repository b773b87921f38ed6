#include "shipment/refusal.h"

#include <fmt/core.h>
#include <fmt/ranges.h>

#include "text/code_page.h"

namespace cwt {

std::string RefusalText(const Refusal& refusal) {
    std::string text = refusal.place;
    if (!refusal.written.empty()) {
        text += fmt::format("{}\"{}\"", text.empty() ? "" : " ", Printable(refusal.written));
    }
    text += (text.empty() ? "" : ": ") + refusal.text;
    if (refusal.code > 0) text += fmt::format(" (code {})", refusal.code);
    if (!refusal.alternatives.empty()) {
        text += fmt::format("; possible: {}", fmt::join(refusal.alternatives, ", "));
    }
    return text;
}

}  // namespace cwt
