#include "tariffs/partners/partner_checks.h"

#include <fmt/core.h>

#include <algorithm>

#include "tariffs/partners/partner_cells.h"
#include "text/code_page.h"

namespace cwt {
namespace {

constexpr std::size_t kMostOfAKind = 5;
constexpr std::string_view kAllKinds = "FAK";

bool IsForAllKinds(const std::vector<std::string>& classes) {
    return classes.size() == 1 && classes[0] == kAllKinds;
}

}  // namespace

void PartnerChecks::Begin(const PartnerTable& table, std::string file, bool is_as_it_is,
                          Locate locate) {
    table_ = &table;
    file_ = std::move(file);
    is_as_it_is_ = is_as_it_is;
    locate_ = std::move(locate);
    State().is_there = true;
}

bool PartnerChecks::Check(const std::vector<std::string>& fields, std::size_t line) {
    line_ = line;
    is_taken_ = true;
    if (fields.size() != table_->columns.size()) {
        RefuseLine(line, fmt::format("has not the {} fields of a row", table_->columns.size()));
        return false;
    }
    for (std::size_t i = 0; i < fields.size(); ++i) CheckForm(i, fields[i]);
    if (!is_taken_) return false;
    switch (table_->id) {
        case PartnerTable::kTariffs:
            AddTariff(fields);
            break;
        case PartnerTable::kRates:
            AddRates(fields);
            break;
        case PartnerTable::kLanes:
            AddLane(fields);
            break;
        case PartnerTable::kStates:
            state_rows_.Add(*ReadPrefixSpan(fields[0]), {}, line_);
            break;
        case PartnerTable::kPoints:
            AddPoint(fields);
            break;
        case PartnerTable::kTerminals:
            if (!terminals_.insert(fields[1]).second) Refuse(1, 0, "is the code of another row");
            break;
        case PartnerTable::kServedAreas:
            CheckTerminal(1, fields[1]);
            area_rows_.Add(*ReadPrefixSpan(fields[0]), {}, line_);
            break;
        case PartnerTable::kTransit:
            AddTransit(fields);
            break;
    }
    return is_taken_;
}

void PartnerChecks::Refuse(std::size_t field, std::size_t cell, const std::string& reason) {
    is_taken_ = false;
    State().is_broken = true;
    Spot spot = locate_(field, cell);
    Tell(Finding::kError, std::move(spot.place), spot.words, reason);
}

void PartnerChecks::RefuseLine(std::size_t line, const std::string& reason) {
    is_taken_ = false;
    State().is_broken = true;
    Tell(Finding::kError, {file_, line, 0}, "the row", reason);
}

void PartnerChecks::Warn(std::size_t field, const std::string& reason) {
    Spot spot = locate_(field, 0);
    Tell(Finding::kWarning, std::move(spot.place), spot.words, reason);
}

void PartnerChecks::Tell(Finding::Level level, Place place, const std::string& words,
                         const std::string& kind, const std::string& detail) {
    if (++told_[{level, kind}] > kMostOfAKind) return;
    const std::string text = words + " " + kind + detail;
    if (level == Finding::kWarning) {
        findings_.Warn(std::move(place), text);
    } else if (is_as_it_is_) {
        findings_.Warn(std::move(place), text + "; no partner takes a file with it");
    } else {
        findings_.Refuse(std::move(place), text);
    }
}

void PartnerChecks::TellMore() {
    for (const auto& [kind, count] : told_) {
        if (count <= kMostOfAKind) continue;
        const std::string text = fmt::format("{} more: {}", count - kMostOfAKind, kind.second);
        if (kind.first == Finding::kWarning || is_as_it_is_) {
            findings_.Warn({file_}, text);
        } else {
            findings_.Refuse({file_}, text);
        }
    }
    told_.clear();
}

PartnerChecks::Tariff* PartnerChecks::FindTariff(const std::string& name) {
    const auto found = tariffs_.find(name);
    if (found != tariffs_.end()) return &found->second;
    if (IsWhole(PartnerTable::kTariffs)) Refuse(0, 0, "is no tariff of the engine");
    return nullptr;
}

void PartnerChecks::AddTariff(const Fields& fields) {
    Tariff tariff;
    for (const std::string_view word : WordsOf(fields[2])) tariff.classes.emplace_back(word);
    tariff.breaks = WordsOf(fields[3]).size();
    const std::string& date = fields[1];  // MM-DD-YYYY.
    if (!day_.empty() && day_ < date.substr(6) + date.substr(0, 2) + date.substr(3, 2)) {
        Warn(1, "is later than the day of level.csv: every shipment of the tariff is refused");
    }
    if (!tariffs_.try_emplace(fields[0], std::move(tariff)).second) {
        Refuse(0, 0, "is the name of another row");
    }
}

void PartnerChecks::AddRates(const Fields& fields) {
    Tariff* const tariff = FindTariff(fields[0]);
    if (tariff == nullptr) return;
    const std::string& class_code = IsForAllKinds(tariff->classes) ? tariff->classes[0] : fields[2];
    if (std::ranges::find(tariff->classes, class_code) == tariff->classes.end()) {
        return Refuse(2, 0, "is no class of the tariff");
    }
    if (!tariff->scales[fields[1]].insert(class_code).second) {
        return Refuse(2, 0, "has its rates in another row");
    }
    CheckRateCode(fields[1]);
    const std::size_t rates = WordsOf(fields[3]).size();
    if (rates == tariff->breaks) return;
    Refuse(3, std::min(rates, tariff->breaks),
           fmt::format("is at odds with the {} weight breaks of {}: a rate for each",
                       tariff->breaks, fields[0]));
}

void PartnerChecks::CheckRateCode(const std::string& scale) {
    constexpr std::size_t kWhole = 6;
    if (scale.size() >= kWhole || scale.find_first_not_of("0123456789") == scale.npos) return;
    Warn(1, "counts as a number on bills, whose rate code is the digits that it begins with, or 0");
}

void PartnerChecks::AddLane(const Fields& fields) {
    const Tariff* const tariff = FindTariff(fields[0]);
    if (tariff != nullptr && IsWhole(PartnerTable::kRates)) {
        const auto scale = tariff->scales.find(fields[3]);
        if (scale == tariff->scales.end()) {
            Refuse(3, 0, "is no scale with rates in the tariff");
        } else if (scale->second.size() != tariff->classes.size()) {
            Refuse(3, 0, "has no rates for a class of the tariff");
        }
    }
    lanes_[fields[0]].Add(*ReadPrefixSpan(fields[1]), *ReadPrefixSpan(fields[2]), line_);
}

void PartnerChecks::AddPoint(const Fields& fields) {
    const std::uint32_t prefix = PrefixNumber(fields[0]);
    if (IsWhole(PartnerTable::kLanes) && !Covers(served_, prefix)) {
        Warn(0, "is outside all lanes");
    }
    if (IsWhole(PartnerTable::kStates) && !Covers(known_, prefix)) {
        Warn(0, "is outside the ranges of all states, and unknown to the engine");
    }
}

void PartnerChecks::CheckTerminal(std::size_t field, const std::string& code) {
    if (IsWhole(PartnerTable::kTerminals) && !terminals_.contains(code)) {
        Refuse(field, 0, "is no terminal's code");
    }
}

void PartnerChecks::AddTransit(const Fields& fields) {
    CheckTerminal(0, fields[0]);
    CheckTerminal(1, fields[1]);
    const auto [row, is_new] = transit_lines_.try_emplace(std::minmax(fields[0], fields[1]), line_);
    if (is_new) return;
    Tell(Finding::kWarning, {file_, line_, 0}, "the row",
         "never holds: another before it has the same terminals",
         fmt::format(", line {}", row->second));
}

void PartnerChecks::TellHidden(const RangeRows& rows) {
    for (const RangeRows::Hidden& row : rows.FindHidden()) {
        Tell(Finding::kWarning, {file_, row.line, 0}, "the row",
             "never holds: another before it fits wherever it does",
             fmt::format(", line {}", row.by));
    }
}

void PartnerChecks::End() {
    if (table_->id == PartnerTable::kLanes) {
        std::vector<PrefixSpan> spans;
        for (const auto& [tariff, rows] : lanes_) {
            TellHidden(rows);
            std::ranges::copy(rows.Covered(), std::back_inserter(spans));
        }
        served_ = Merged(std::move(spans));
    } else if (table_->id == PartnerTable::kStates) {
        TellHidden(state_rows_);
        known_ = state_rows_.Covered();
    } else if (table_->id == PartnerTable::kServedAreas) {
        TellHidden(area_rows_);
    }
    TellMore();
}

void PartnerChecks::Finish() {
    for (const PartnerTable& table : PartnerTables()) {
        const auto is_there = [&](const PartnerTable& other) {
            return states_[other.id].is_there &&
                   std::string_view(other.folder) == std::string_view(table.folder);
        };
        if (states_[table.id].is_there || std::ranges::none_of(PartnerTables(), is_there)) continue;
        findings_.Warn(
            {table.SheetName()},
            fmt::format("is missing: without {} the partner does not start", table.file));
    }
}

void PartnerChecks::CheckTariffNames(std::string_view file, const std::string& sheet) {
    constexpr std::size_t kRecord = 20, kNameAt = 12;
    if (!IsWhole(PartnerTable::kTariffs)) return;
    file_ = sheet;
    std::set<std::string, std::less<>> seen;
    for (std::size_t at = 0; at + kRecord <= file.size(); at += kRecord) {
        std::string_view name = file.substr(at + kNameAt, kRecord - kNameAt);
        name = name.substr(0, name.find('\0'));
        if (tariffs_.contains(name) || seen.contains(name) || WordsOf(name).empty()) continue;
        seen.emplace(name);
        Tell(Finding::kWarning, {sheet, at / kRecord + 2, 0},
             fmt::format("tariff \"{}\"", FromCodePage(name)), "is no tariff of the engine");
    }
    TellMore();
}

}  // namespace cwt
