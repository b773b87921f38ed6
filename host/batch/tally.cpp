#include "batch/tally.h"

#include <fmt/core.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "text/code_page.h"

namespace cwt {

void Tally::Count(const Row& row) {
    if (const auto* bill = std::get_if<Bill>(&row.outcome)) {
        ++rated_;
        if (!bill->notes.empty()) ++noted_;
    } else if (const auto* refusals = std::get_if<Refusals>(&row.outcome)) {
        ++refused_;
        CountRefusal({refusals->front().code, refusals->front().text}, {1, row.number});
    } else {
        ++failed_;
    }
}

/// An engine may put anything in its words, so kinds of refusal are no longer told apart when there
/// are too many.
void Tally::CountRefusal(const Reason& reason, Refused refused) {
    constexpr std::size_t kMostKinds = 200;
    const bool has_room = refused_by_.size() < kMostKinds || refused_by_.contains(reason);
    const auto [kind, is_new] =
        refused_by_.try_emplace(has_room ? reason : Reason{0, "other reasons"}, refused);
    if (is_new) return;
    kind->second.rows += refused.rows;
    kind->second.first_row = std::min(kind->second.first_row, refused.first_row);
}

void Tally::Add(const Tally& other) {
    rated_ += other.rated_;
    refused_ += other.refused_;
    failed_ += other.failed_;
    noted_ += other.noted_;
    for (const auto& [reason, refused] : other.refused_by_) CountRefusal(reason, refused);
}

nlohmann::ordered_json Tally::Json() const {
    nlohmann::ordered_json kinds = nlohmann::ordered_json::array();
    for (const auto& [reason, refused] : refused_by_) {
        kinds.push_back({{"code", reason.first},
                         {"text", reason.second},
                         {"rows", refused.rows},
                         {"first_row", refused.first_row}});
    }
    return {{"rated", rated_},
            {"refused", refused_},
            {"failed", failed_},
            {"noted", noted_},
            {"refused_by", kinds}};
}

Tally Tally::FromJson(const nlohmann::ordered_json& json) {
    Tally tally;
    json.at("rated").get_to(tally.rated_);
    json.at("refused").get_to(tally.refused_);
    json.at("failed").get_to(tally.failed_);
    json.at("noted").get_to(tally.noted_);
    for (const auto& kind : json.at("refused_by")) {
        tally.CountRefusal(
            {kind.at("code").get<std::int32_t>(), kind.at("text").get<std::string>()},
            {kind.at("rows").get<std::uint64_t>(), kind.at("first_row").get<std::uint64_t>()});
    }
    return tally;
}

std::string Tally::Text() const {
    std::string text =
        fmt::format("{} rows: {} rated, {} refused, {} failed", rows(), rated_, refused_, failed_);
    if (noted_ > 0) text += fmt::format("; {} of the bills have notes", noted_);
    for (const auto& [reason, refused] : refused_by_) {
        text += fmt::format("\n  {:>10} refused: {}", refused.rows, Printable(reason.second));
        if (reason.first > 0) text += fmt::format(" (code {})", reason.first);
        text += fmt::format("; {}row {}", refused.rows == 1 ? "" : "first ", refused.first_row);
    }
    return text;
}

}  // namespace cwt
