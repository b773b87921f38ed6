// The text files of the rate base.
#include <algorithm>

#include "reference/engine/rate_base.h"
#include "reference/text/columns.h"
#include "reference/text/text_rows.h"

namespace hundredweight::reference {
namespace {

constexpr std::int32_t kNoRate = -1;

/// Visits the words between blanks of any kind.
template <typename Visit>
void ForEachWord(std::string_view text, Visit visit) {
    const auto is_space = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    for (auto end = text.begin();;) {
        const auto start = std::find_if_not(end, text.end(), is_space);
        if (start == text.end()) return;
        end = std::find_if(start, text.end(), is_space);
        visit(std::string_view(start, end));
    }
}

std::string_view ReadState(std::string_view text) {
    Require(text.size() == 2, "'", text, "' is no state");
    return text;
}

std::int32_t ReadAmount(std::string_view text) {
    return static_cast<std::int32_t>(Required(AmountValue(text), "'", text, "' is no amount"));
}

void ReadClasses(std::string_view text, Tariff& tariff) {
    ForEachWord(text, [&](std::string_view word) {
        Require(word.size() <= 3, "class '", word, "' is too long");
        tariff.classes.emplace_back(word);
    });
}

void ReadBreaks(std::string_view text, Tariff& tariff) {
    ForEachWord(text, [&](std::string_view word) {
        const auto weight = Required(DigitsValue(word), "'", word, "' is no weight");
        Require(weight > (tariff.breaks.empty() ? 0 : tariff.breaks.back()),
                "weight breaks must ascend");
        tariff.breaks.push_back(weight);
    });
}

Tariff ReadTariff(Fields fields) {
    Tariff tariff;
    tariff.name = fields[0];
    Require(tariff.name.size() == 8, "a tariff name has eight characters");
    tariff.effective_date =
        Required(DateValue(fields[1]), "'", fields[1], "' is no date MM-DD-YYYY");
    ReadClasses(fields[2], tariff);
    ReadBreaks(fields[3], tariff);
    Require(!tariff.classes.empty() && tariff.classes.size() <= kMostTableEntries,
            "a tariff has 1 to 20 classes");
    Require(!tariff.breaks.empty() && tariff.breaks.size() <= kMostTableEntries &&
                tariff.breaks.front() == 1 && tariff.breaks.back() <= 99'999,
            "a tariff has 1 to 20 weight breaks, from 1 to at most 99999 pounds");
    return tariff;
}

Tariff& KnownTariff(RateBase& base, std::string_view name) {
    Tariff* const tariff = base.FindTariff(name);
    Require(tariff != nullptr, "tariff '", name, "' is not on file");
    return *tariff;
}

/// The scale's number, a new one without rates unless it has one.
std::uint32_t AddScale(Tariff& tariff, std::string_view code) {
    const std::uint32_t scale = tariff.scales.Add(ShortText(code).Key());
    const std::size_t rates_each = tariff.classes.size() * tariff.breaks.size();
    if (tariff.classes_rated.size() < tariff.scales.Size()) {
        tariff.classes_rated.push_back(0);
        tariff.rates.insert(tariff.rates.end(), rates_each, kNoRate);
    }
    return scale;
}

void AddRates(RateBase& base, Fields fields) {
    Tariff& tariff = KnownTariff(base, fields[0]);
    Require(!fields[1].empty() && fields[1].size() <= 6, "a scale has 1 to 6 characters");
    const auto class_index = tariff.ClassIndex(fields[2]);
    Require(class_index != Tariff::npos, "class '", fields[2], "' is not in the tariff");
    const std::uint32_t scale = AddScale(tariff, fields[1]);
    const std::size_t row = scale * tariff.classes.size() + class_index;
    std::int32_t* const rates = tariff.rates.data() + row * tariff.breaks.size();
    Require(rates[0] == kNoRate, "the class has its rates already");
    std::size_t count = 0;
    ForEachWord(fields[3], [&](std::string_view word) {
        const std::int32_t rate = ReadAmount(word);
        if (count < tariff.breaks.size()) rates[count] = rate;
        ++count;
    });
    Require(count == tariff.breaks.size(), "one rate per weight break");
    ++tariff.classes_rated[scale];
}

std::uint32_t KnownScale(const Tariff& tariff, std::string_view code) {
    const auto scale =
        code.size() <= ShortText::kMost ? tariff.scales.Find(ShortText(code).Key()) : std::nullopt;
    Require(scale.has_value(), "scale '", code, "' has no rates");
    Require(tariff.classes_rated[*scale] == tariff.classes.size(), "scale '", code,
            "' lacks a class");
    return *scale;
}

void AddLane(RateBase& base, Fields fields) {
    Tariff& tariff = KnownTariff(base, fields[0]);
    Lane lane;
    lane.scale = KnownScale(tariff, fields[3]);
    const PrefixRange origin = ReadPrefixes(fields[1]);
    const PrefixRange destination = ReadPrefixes(fields[2]);
    lane.minimum = ReadAmount(fields[4]);
    lane.arbitrary = ReadAmount(fields[5]);
    tariff.lanes.Add(origin, destination, lane);
}

void AddPoint(RateBase& base, Fields fields) {
    Require(!fields[1].empty() && fields[1].size() <= 17, "a city has 1 to 17 characters");
    Require(fields[3].size() == 1, "a service code is one character");
    base.points.Add(fields[0], {fields[1], ReadState(fields[2]), fields[3].front()});
}

}  // namespace

RateBase ReadRateBase(const std::string& directory) {
    RateBase base;
    ForEachRow(directory, "tolvex-tariffs.txt", 4, [&](Fields fields) {
        Require(!base.FindTariff(fields[0]), "the tariff is on file already");
        base.Add(ReadTariff(fields));
    });
    ForEachRow(directory, "tolvex-rates.txt", 4, [&](Fields fields) { AddRates(base, fields); });
    ForEachRow(directory, "tolvex-lanes.txt", 6, [&](Fields fields) { AddLane(base, fields); });
    ForEachRow(directory, "tolvex-points.txt", 4, [&](Fields fields) { AddPoint(base, fields); });
    ForEachRow(directory, "tolvex-states.txt", 2, [&](Fields fields) {
        const PrefixRange range = ReadPrefixes(fields[0]);
        base.states.Add(range, ReadState(fields[1]));
    });
    base.Build();
    return base;
}

}  // namespace hundredweight::reference
