// Boxes of many ranges, and which of them lies wholly within an earlier one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace cwt {

/// Bounds so turned that a box lies around another when none of its numbers is larger: low ends
/// as they are, high ends inverted.
using Box = std::array<std::uint64_t, 6>;

/// Boxes by the number of their rows. Parts in which a box that is asked for cannot lie are passed
/// over, so that no pair is compared in vain as long as boxes are mostly apart or nested.
class BoxIndex {
 public:
    void Add(const Box& box, std::size_t row) { entries_.push_back({box, row}); }
    /// To be called when all boxes have been added.
    void Build();

    /// A row before this one whose box lies around this box.
    std::optional<std::size_t> Around(const Box& box, std::size_t row);
    /// Whether so much has been looked at that no more answers are given.
    bool is_spent() const { return visits_ > kMostVisits; }

 private:
    static constexpr std::size_t kMostVisits = 100'000'000;

    struct Entry {
        Box box;
        std::size_t row;

        bool IsAround(const Box& other, std::size_t before) const;
    };
    /// Entries that lie together, with the smallest of each of their numbers.
    struct Node {
        Entry least;
        std::size_t begin, end;
        std::size_t right = 0;  ///< The left half is the next node; 0: they are not parted.
    };
    void Part(std::size_t begin, std::size_t end, std::size_t dimension);

    std::vector<Entry> entries_;
    std::vector<Node> nodes_;
    std::size_t visits_ = 0;
};

}  // namespace cwt
