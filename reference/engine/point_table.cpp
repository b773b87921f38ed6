#include "reference/engine/point_table.h"

#include <algorithm>

#include "reference/engine/short_text.h"

namespace hundredweight::reference {

Point::Point(std::string_view city, std::string_view state, char service)
    : service_(service), city_length_(static_cast<std::uint8_t>(city.size())) {
    std::ranges::copy(city, city_);
    std::ranges::copy(state, state_);
}

void PointTable::Add(std::string_view postal_code, const Point& point) {
    // A request's column has no room for a longer one.
    if (postal_code.size() > ShortText::kMost) return;
    codes_.push_back(postal_codes_.Add(ShortText(postal_code).Key()));
    points_.push_back(point);
}

void PointTable::Build() {
    starts_.assign(postal_codes_.Size() + 1, 0);
    for (const auto code : codes_) ++starts_[code + 1];
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    std::vector<Point> sorted = points_;
    std::vector<std::uint32_t> places = starts_;
    for (std::size_t i = 0; i < points_.size(); ++i) sorted[places[codes_[i]]++] = points_[i];
    points_ = std::move(sorted);
    codes_ = {};
}

std::span<const Point> PointTable::At(std::string_view postal_code) const {
    if (postal_code.size() > ShortText::kMost) return {};
    const auto code = postal_codes_.Find(ShortText(postal_code).Key());
    if (!code) return {};
    return std::span(points_).subspan(starts_[*code], starts_[*code + 1] - starts_[*code]);
}

}  // namespace hundredweight::reference
