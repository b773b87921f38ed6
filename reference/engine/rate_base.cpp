#include "reference/engine/rate_base.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace hundredweight::reference {
namespace {

constexpr std::size_t kStateLength = 2;

Numbering::Key KeyOfName(std::string_view tariff_name) {
    Numbering::Key key = 0;
    std::memcpy(&key, tariff_name.data(), sizeof key);
    return key;
}

}  // namespace

std::size_t Tariff::ClassIndex(std::string_view class_code) const {
    if (classes.size() == 1 && classes.front().View() == "FAK") return 0;
    if (class_code.size() > ShortText::kMost) return npos;
    const auto found = std::ranges::find(classes, ShortText(class_code));
    return found == classes.end() ? npos : static_cast<std::size_t>(found - classes.begin());
}

std::size_t Tariff::BreakIndex(std::int32_t weight) const {
    const auto above = std::ranges::upper_bound(breaks, weight);
    return static_cast<std::size_t>(above - breaks.begin()) - 1;
}

ShortText Tariff::ScaleCode(std::uint32_t scale) const {
    return std::bit_cast<ShortText>(scales.KeyOf(scale));
}

std::span<const std::int32_t> Tariff::RatesOf(std::uint32_t scale, std::size_t class_index) const {
    const std::size_t row = scale * classes.size() + class_index;
    return std::span(rates).subspan(row * breaks.size(), breaks.size());
}

void StateTable::Add(PrefixRange range, std::string_view state) {
    if (kStateLength * ranges_.Add(range) == states_.size()) states_ += state;
}

std::string_view StateTable::Find(Prefix prefix) const {
    std::size_t first = states_.size();
    ranges_.ForEachContaining(
        prefix, [&](RangeIndex::Number number) { first = std::min(first, kStateLength * number); });
    return std::string_view(states_).substr(first, kStateLength);
}

std::optional<Numbering::Number> RateBase::NumberOf(std::string_view tariff_name) const {
    if (tariff_name.size() != sizeof(Numbering::Key)) return std::nullopt;
    return names_.Find(KeyOfName(tariff_name));
}

const Tariff* RateBase::FindTariff(std::string_view name) const {
    const auto number = NumberOf(name);
    return number ? &tariffs_[*number] : nullptr;
}

Tariff* RateBase::FindTariff(std::string_view name) {
    const auto number = NumberOf(name);
    return number ? &tariffs_[*number] : nullptr;
}

void RateBase::Add(Tariff tariff) {
    names_.Add(KeyOfName(tariff.name));
    tariffs_.push_back(std::move(tariff));
}

void RateBase::Build() {
    for (Tariff& tariff : tariffs_) tariff.lanes.Build();
    points.Build();
    states.Build();
}

}  // namespace hundredweight::reference
