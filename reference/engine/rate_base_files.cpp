// The text files of the rate base.
#include <algorithm>
#include <iterator>
#include <sstream>

#include "reference/engine/rate_base.h"
#include "reference/text/columns.h"
#include "reference/text/text_rows.h"

namespace hundredweight::reference {
namespace {

constexpr std::size_t kMostTableEntries = 20;  // Classes or weight breaks of a tariff.

std::vector<std::string> Words(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string ReadState(const std::string& text) {
    Require(text.size() == 2, "'" + text + "' is no state");
    return text;
}

Cents ReadAmount(const std::string& text) {
    return Required(AmountValue(text), "'" + text + "' is no amount");
}

Tariff ReadTariff(const Fields& fields) {
    Tariff tariff;
    tariff.name = fields[0];
    Require(tariff.name.size() == 8, "a tariff name has eight characters");
    tariff.effective_date =
        Required(DateValue(fields[1]), "'" + fields[1] + "' is no date MM-DD-YYYY");
    tariff.classes = Words(fields[2]);
    for (const auto& class_code : tariff.classes) {
        Require(class_code.size() <= 3, "class '" + class_code + "' is too long");
    }
    for (const auto& word : Words(fields[3])) {
        const auto weight = Required(DigitsValue(word), "'" + word + "' is no weight");
        Require(weight > (tariff.breaks.empty() ? 0 : tariff.breaks.back()),
                "weight breaks must ascend");
        tariff.breaks.push_back(weight);
    }
    Require(!tariff.classes.empty() && tariff.classes.size() <= kMostTableEntries,
            "a tariff has 1 to 20 classes");
    Require(!tariff.breaks.empty() && tariff.breaks.size() <= kMostTableEntries &&
                tariff.breaks.front() == 1 && tariff.breaks.back() <= 99'999,
            "a tariff has 1 to 20 weight breaks, from 1 to at most 99999 pounds");
    return tariff;
}

Tariff& KnownTariff(RateBase& base, const std::string& name) {
    const auto found = std::ranges::find(base.tariffs, name, &Tariff::name);
    Require(found != base.tariffs.end(), "tariff '" + name + "' is not on file");
    return *found;
}

void AddRates(RateBase& base, const Fields& fields) {
    Tariff& tariff = KnownTariff(base, fields[0]);
    Require(!fields[1].empty() && fields[1].size() <= 6, "a scale has 1 to 6 characters");
    const auto class_index = tariff.ClassIndex(fields[2]);
    Require(class_index != Tariff::npos, "class '" + fields[2] + "' is not in the tariff");
    auto& scale = tariff.scales[fields[1]];
    scale.resize(tariff.classes.size());
    Require(scale[class_index].empty(), "the class has its rates already");
    for (const auto& word : Words(fields[3])) scale[class_index].push_back(ReadAmount(word));
    Require(scale[class_index].size() == tariff.breaks.size(), "one rate per weight break");
}

Lane ReadLane(RateBase& base, const Fields& fields) {
    const Tariff& tariff = KnownTariff(base, fields[0]);
    const auto scale = tariff.scales.find(fields[3]);
    Require(scale != tariff.scales.end(), "scale '" + fields[3] + "' has no rates");
    Require(std::ranges::none_of(scale->second, &BreakRates::empty),
            "scale '" + fields[3] + "' lacks a class");
    return {tariff.name,  ReadPrefixes(fields[1]), ReadPrefixes(fields[2]),
            scale->first, ReadAmount(fields[4]),   ReadAmount(fields[5])};
}

Point ReadPoint(const Fields& fields) {
    Require(!fields[1].empty() && fields[1].size() <= 17, "a city has 1 to 17 characters");
    Require(fields[3].size() == 1, "a service code is one character");
    return {fields[0], fields[1], ReadState(fields[2]), fields[3].front()};
}

}  // namespace

RateBase ReadRateBase(const std::string& directory) {
    RateBase base;
    ForEachRow(directory, "tolvex-tariffs.txt", 4, [&](const Fields& fields) {
        Require(!base.FindTariff(fields[0]), "the tariff is on file already");
        base.tariffs.push_back(ReadTariff(fields));
    });
    ForEachRow(directory, "tolvex-rates.txt", 4,
               [&](const Fields& fields) { AddRates(base, fields); });
    ForEachRow(directory, "tolvex-lanes.txt", 6,
               [&](const Fields& fields) { base.lanes.push_back(ReadLane(base, fields)); });
    ForEachRow(directory, "tolvex-points.txt", 4,
               [&](const Fields& fields) { base.points.push_back(ReadPoint(fields)); });
    ForEachRow(directory, "tolvex-states.txt", 2, [&](const Fields& fields) {
        base.states.push_back({ReadPrefixes(fields[0]), ReadState(fields[1])});
    });
    return base;
}

}  // namespace hundredweight::reference
