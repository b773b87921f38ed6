#include "shipment/refusal.h"

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <nlohmann/json.hpp>

#include "text/code_page.h"

namespace cwt {

nlohmann::ordered_json RefusalsJson(const Refusals& refusals, const std::string& id) {
    using Json = nlohmann::ordered_json;
    Json list = Json::array();
    for (const Refusal& refusal : refusals) {
        list.push_back({{"place", refusal.place},
                        {"code", refusal.code > 0 ? Json(refusal.code) : Json(nullptr)},
                        {"text", refusal.text},
                        {"written", refusal.written},
                        {"alternatives", refusal.alternatives}});
    }
    return {{"schema", "hundredweight/refusals/1"},
            {"id", id.empty() ? Json(nullptr) : Json(id)},
            {"refusals", list}};
}

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
