#include "comparison/comparison.h"

#include <fmt/format.h>

#include <cstdlib>

#include "session/messages.h"
#include "text/code_page.h"

namespace cwt {
namespace {

std::string WithData(const std::string& file, const std::string& data) {
    return data.empty() ? file : file + ", rated under " + data;
}

/// The first three characters of a postal code. Mexican codes, which are five digits and an M, keep
/// their M: other points have the same digits.
std::string Area(const std::string& postal_code) {
    constexpr std::size_t kArea = 3;
    const bool mexican = postal_code.size() > kArea && postal_code.ends_with('M');
    return postal_code.substr(0, kArea) + (mexican ? "M" : "");
}

/// What tells that two rows are not of the same shipment; empty when nothing does.
std::string Difference(const BatchRow& old_row, const BatchRow& new_row) {
    std::string difference;
    const auto compare = [&](const std::string& what, const auto& in_old, const auto& in_new) {
        if (!difference.empty() || in_old == in_new) return;
        difference = fmt::format("{} \"{}\" and \"{}\"", what, in_old, in_new);
    };
    compare("row", old_row.number, new_row.number);
    compare("id", old_row.id, new_row.id);
    if (old_row.status != RowStatus::kRated || new_row.status != RowStatus::kRated) {
        return difference;
    }
    compare("origin", old_row.origin, new_row.origin);
    compare("destination", old_row.destination, new_row.destination);
    compare("lines", old_row.lines.size(), new_row.lines.size());
    for (std::size_t i = 0; difference.empty() && i < old_row.lines.size(); ++i) {
        compare(fmt::format("lines[{}].class", i), old_row.lines[i].class_code,
                new_row.lines[i].class_code);
        compare(fmt::format("lines[{}].weight", i), old_row.lines[i].weight,
                new_row.lines[i].weight);
    }
    return difference;
}

/// Tenths of a per cent, the nearest.
int64_t TenthsOfPercent(int64_t change, int64_t base) {
    constexpr int64_t kTenths = 1000;
    const int64_t half = change < 0 ? -base / 2 : base / 2;
    return (change * kTenths + half) / base;
}

std::string PathOfBoth(const ComparedFiles& files) {
    return files.old_path + " and " + WithData(files.new_path, files.new_data);
}

void AddRated(Comparison& comparison, const BatchRow& old_row, const BatchRow& new_row) {
    comparison.total.Add(old_row.due, new_row.due);
    comparison.gross.Add(old_row.gross, new_row.gross);
    comparison.deficit.Add(old_row.deficit_charge, new_row.deficit_charge);
    comparison.discount.Add(old_row.discount, new_row.discount);
    comparison.net.Add(old_row.net, new_row.net);
    comparison.surcharge.Add(old_row.surcharge, new_row.surcharge);
    comparison.deficit_taken.Add(old_row.deficit_weight != 0, new_row.deficit_weight != 0);
    comparison.minimum_held.Add(MinimumHeld(old_row), MinimumHeld(new_row));
    comparison.other_discount_percent +=
        old_row.discount_percent != new_row.discount_percent ? 1 : 0;
    comparison.other_break += old_row.weight_break != new_row.weight_break ? 1 : 0;
    const int64_t change = new_row.due - old_row.due;
    comparison.cents.Add(change);
    if (old_row.due > 0) {
        comparison.percent.Add(TenthsOfPercent(change, old_row.due));
    } else {
        ++comparison.without_base;
    }
    comparison.lanes[Area(old_row.origin) + " to " + Area(old_row.destination)].Add(old_row.due,
                                                                                    new_row.due);
    comparison.breaks[old_row.weight_break].Add(old_row.due, new_row.due);
    for (std::size_t i = 0; i < old_row.lines.size(); ++i) {
        const BatchLine &old_line = old_row.lines[i], &new_line = new_row.lines[i];
        comparison.classes[old_line.rated_as].Add(old_line.charge, new_line.charge);
        comparison.other_class += old_line.rated_as != new_line.rated_as ? 1 : 0;
    }
}

}  // namespace

void Comparison::Add(const BatchRow& old_row, const BatchRow& new_row) {
    ++rows;
    ++statuses[static_cast<std::size_t>(old_row.status)][static_cast<std::size_t>(new_row.status)];
    const bool old_rated = old_row.status == RowStatus::kRated;
    const bool new_rated = new_row.status == RowStatus::kRated;
    if (old_rated) ++of_old.tariffs[{old_row.tariff, old_row.tariff_date}];
    if (new_rated) ++of_new.tariffs[{new_row.tariff, new_row.tariff_date}];
    if (old_rated && new_rated) {
        AddRated(*this, old_row, new_row);
    } else if (old_rated) {
        ++of_old.rated_alone;
        of_old.rated_alone_due += old_row.due;
    } else if (new_rated) {
        ++of_new.rated_alone;
        of_new.rated_alone_due += new_row.due;
    } else if (old_row.status == new_row.status && old_row.reason != new_row.reason) {
        ++other_reason;
    }
}

bool Changed(const BatchRow& old_row, const BatchRow& new_row) {
    if (old_row.status != new_row.status) return true;
    if (old_row.status != RowStatus::kRated) return old_row.reason != new_row.reason;
    for (const auto figure : {&BatchRow::deficit_weight, &BatchRow::deficit_charge,
                              &BatchRow::billed_weight, &BatchRow::weight_break, &BatchRow::gross,
                              &BatchRow::discount_percent, &BatchRow::discount, &BatchRow::net,
                              &BatchRow::minimum, &BatchRow::surcharge, &BatchRow::due}) {
        if (old_row.*figure != new_row.*figure) return true;
    }
    for (std::size_t i = 0; i < old_row.lines.size(); ++i) {
        const BatchLine &old_line = old_row.lines[i], &new_line = new_row.lines[i];
        if (old_line.rated_as != new_line.rated_as || old_line.charge != new_line.charge) {
            return true;
        }
    }
    return false;
}

Comparison CompareRows(const ComparedFiles& files, const ForEachPair& show) {
    const auto old_reader = MakeRowReader(files.old_path, files.form);
    const auto new_reader = MakeRowReader(files.new_path, files.form);
    Comparison comparison;
    comparison.of_old.file = WithData(files.old_path, files.old_data);
    comparison.of_new.file = WithData(files.new_path, files.new_data);
    BatchRow old_row, new_row;
    int64_t last = 0;
    for (;;) {
        const bool old_there = old_reader->Next(old_row), new_there = new_reader->Next(new_row);
        if (old_there != new_there) {
            throw Broken(fmt::format("{} ends after row {}, where {} goes on",
                                     old_there ? files.new_path : files.old_path, last,
                                     old_there ? files.old_path : files.new_path));
        }
        if (!old_there) break;
        if (const std::string difference = Difference(old_row, new_row); !difference.empty()) {
            throw Broken(fmt::format("row {}: {} and {} are not of the same shipments: {}",
                                     old_row.number, files.old_path, files.new_path,
                                     Printable(difference)));
        }
        if (old_row.number <= last) {
            throw Broken(fmt::format("{}: row {} comes after row {}", PathOfBoth(files),
                                     old_row.number, last));
        }
        last = old_row.number;
        comparison.Add(old_row, new_row);
        if (show) show(old_row, new_row);
    }
    if (last == 0) throw Broken(PathOfBoth(files) + " have no rows");
    return comparison;
}

}  // namespace cwt
