#include "tariff/zmc_index.h"

#include <algorithm>
#include <utility>

namespace hundredweight {
namespace {

constexpr std::size_t kLeafSize = 4;

/// What records are put in order by.
struct Place {
    ZmcValues middle;
    uint32_t number;
};

ZmcValues MiddleOf(const ZmcRanges& ranges) {
    ZmcValues middle;
    for (std::size_t i = 0; i < kZmcRanges; ++i) middle[i] = ranges.low[i] + ranges.high[i];
    return middle;
}

/// The next range in turn that tells some of the places from others.
std::size_t RangeToDivideBy(const Place* begin, const Place* end, std::size_t turn) {
    for (std::size_t i = 0; i < kZmcRanges; ++i) {
        const std::size_t range = (turn + i) % kZmcRanges;
        if (std::any_of(begin, end, [&](const Place& place) {
                return place.middle[range] != begin->middle[range];
            })) {
            return range;
        }
    }
    return 0;
}

/// Divides places into halves, quarters and so on, of which each lies close together.
void Divide(Place* begin, Place* end, std::size_t turn) {
    const auto size = static_cast<std::size_t>(end - begin);
    if (size <= kLeafSize) return;
    const std::size_t range = RangeToDivideBy(begin, end, turn);
    Place* const half = begin + size / 2;
    std::nth_element(begin, half, end, [range](const Place& a, const Place& b) {
        return std::pair(a.middle[range], a.number) < std::pair(b.middle[range], b.number);
    });
    Divide(begin, half, range + 1);
    Divide(half, end, range + 1);
}

void Widen(ZmcRanges& ranges, const ZmcRanges& other) {
    for (std::size_t i = 0; i < kZmcRanges; ++i) {
        ranges.low[i] = std::min(ranges.low[i], other.low[i]);
        ranges.high[i] = std::max(ranges.high[i], other.high[i]);
    }
}

}  // namespace

bool ZmcTree::Branch::IsLeaf() const {
    return end - begin <= kLeafSize;
}

ZmcTree::Branch ZmcTree::Branch::Child(std::size_t side) const {
    const std::size_t half = begin + (end - begin) / 2;
    return side == 0 ? Branch{2 * node, begin, half} : Branch{2 * node + 1, half, end};
}

std::optional<ZmcTree> ZmcTree::Make(const ZmcFileRecord* records, uint32_t count, bool one_way) {
    const Block<Place> places = AllocateBlock<Place>(count * sizeof(Place));
    if (!places) return std::nullopt;
    ZmcTree tree;
    for (uint32_t number = 0; number < count; ++number) {
        if ((records[number].Direction == 'F') != one_way) continue;
        places.get()[tree.size_++] = {MiddleOf(RangesOf(records[number])), number};
    }
    std::size_t nodes = 2;
    while (nodes * kLeafSize < 2 * tree.size_) nodes *= 2;
    tree.numbers_ = AllocateBlock<uint32_t>(tree.size_ * sizeof(uint32_t));
    tree.nodes_ = AllocateBlock<Node>(nodes * sizeof(Node));
    if (!tree.numbers_ || !tree.nodes_) return std::nullopt;
    Divide(places.get(), places.get() + tree.size_, 0);
    for (std::size_t i = 0; i < tree.size_; ++i) tree.numbers_.get()[i] = places.get()[i].number;
    if (tree.size_ > 0) tree.Span({1, 0, tree.size_}, records);
    return tree;
}

void ZmcTree::Span(const Branch& branch, const ZmcFileRecord* records) {
    Node& node = nodes_.get()[branch.node];
    if (branch.IsLeaf()) {
        const uint32_t* const numbers = numbers_.get();
        node = {RangesOf(records[numbers[branch.begin]]), numbers[branch.begin]};
        for (std::size_t i = branch.begin + 1; i < branch.end; ++i) {
            Widen(node.ranges, RangesOf(records[numbers[i]]));
            node.lowest = std::min(node.lowest, numbers[i]);
        }
        return;
    }
    for (const std::size_t side : {0U, 1U}) Span(branch.Child(side), records);
    const Node* const children = &nodes_.get()[2 * branch.node];
    node = children[0];
    Widen(node.ranges, children[1].ranges);
    node.lowest = std::min(node.lowest, children[1].lowest);
}

/// A search in a tree, from the node with the lowest number down.
struct ZmcTree::Search {
    const ZmcTree& tree;
    const ZmcFileRecord* records;
    const ZmcValues& values;
    uint32_t first;  ///< The lowest number found so far.

    void Look(const Branch& branch) {
        const Node& node = tree.nodes_.get()[branch.node];
        if (node.lowest >= first || !Contain(node.ranges, values)) return;
        if (branch.IsLeaf()) return LookAtRecords(branch);
        const Node* const children = &tree.nodes_.get()[2 * branch.node];
        const std::size_t lower = children[0].lowest < children[1].lowest ? 0 : 1;
        Look(branch.Child(lower));
        Look(branch.Child(1 - lower));
    }

    void LookAtRecords(const Branch& branch) {
        for (std::size_t i = branch.begin; i < branch.end; ++i) {
            const uint32_t number = tree.numbers_.get()[i];
            if (number < first && Contain(RangesOf(records[number]), values)) first = number;
        }
    }
};

uint32_t ZmcTree::FirstBelow(uint32_t bound, const ZmcFileRecord* records,
                             const ZmcValues& values) const {
    Search search = {*this, records, values, bound};
    if (size_ > 0) search.Look({1, 0, size_});
    return search.first;
}

}  // namespace hundredweight
