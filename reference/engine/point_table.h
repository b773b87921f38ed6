// The points that the engine knows, by their postal codes.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "reference/engine/numbering.h"

namespace hundredweight::reference {

class Point {
 public:
    /// A city of at most 17 characters and a state of two.
    Point(std::string_view city, std::string_view state, char service);

    std::string_view City() const { return {city_, city_length_}; }
    std::string_view State() const { return {state_, sizeof state_}; }
    /// 'D' served directly, 'I' through another carrier.
    char Service() const { return service_; }

 private:
    char city_[17] = {};
    char state_[2] = {};
    char service_;
    std::uint8_t city_length_;
};

class PointTable {
 public:
    void Add(std::string_view postal_code, const Point& point);
    /// To be called when all are there.
    void Build();

    /// In the order of their adding.
    std::span<const Point> At(std::string_view postal_code) const;

 private:
    Numbering postal_codes_;
    std::vector<Numbering::Number> codes_;  ///< Of each point until they are sorted by them.
    std::vector<Point> points_;             ///< Those of one postal code stand together.
    std::vector<std::uint32_t> starts_;     ///< Of the points of each code, and their end.
};

}  // namespace hundredweight::reference
