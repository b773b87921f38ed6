#include "tariffs/checks/box_index.h"

#include <algorithm>

namespace cwt {

bool BoxIndex::Entry::IsAround(const Box& other, std::size_t before) const {
    if (row >= before) return false;
    for (std::size_t i = 0; i < box.size(); ++i) {
        if (box[i] > other[i]) return false;
    }
    return true;
}

void BoxIndex::Build() {
    nodes_.clear();
    if (!entries_.empty()) Part(0, entries_.size(), 0);
}

void BoxIndex::Part(std::size_t begin, std::size_t end, std::size_t dimension) {
    constexpr std::size_t kLeaf = 8;
    Entry least = entries_[begin];
    Box most = least.box;
    for (std::size_t i = begin + 1; i < end; ++i) {
        least.row = std::min(least.row, entries_[i].row);
        for (std::size_t k = 0; k < most.size(); ++k) {
            least.box[k] = std::min(least.box[k], entries_[i].box[k]);
            most[k] = std::max(most[k], entries_[i].box[k]);
        }
    }
    const std::size_t node = nodes_.size();
    nodes_.push_back({least, begin, end});
    // Where all numbers are the same, halves would be no closer together.
    for (std::size_t i = 0; i < most.size() && least.box[dimension] == most[dimension]; ++i) {
        dimension = (dimension + 1) % most.size();
    }
    if (end - begin <= kLeaf) return;
    const std::size_t middle = begin + (end - begin) / 2;
    const auto at = [&](std::size_t i) {
        return entries_.begin() + static_cast<std::ptrdiff_t>(i);
    };
    std::nth_element(at(begin), at(middle), at(end), [&](const Entry& a, const Entry& b) {
        return a.box[dimension] < b.box[dimension];
    });
    const std::size_t next = (dimension + 1) % most.size();
    Part(begin, middle, next);
    nodes_[node].right = nodes_.size();
    Part(middle, end, next);
}

std::optional<std::size_t> BoxIndex::Around(const Box& box, std::size_t row) {
    if (nodes_.empty()) return std::nullopt;
    std::vector<std::size_t> waiting = {0};
    while (!waiting.empty() && !is_spent()) {
        const Node& node = nodes_[waiting.back()];
        const std::size_t index = waiting.back();
        waiting.pop_back();
        ++visits_;
        if (!node.least.IsAround(box, row)) continue;
        if (node.right != 0) {
            waiting.push_back(node.right);
            waiting.push_back(index + 1);
            continue;
        }
        for (std::size_t i = node.begin; i < node.end; ++i) {
            if (entries_[i].IsAround(box, row)) return entries_[i].row;
        }
    }
    return std::nullopt;
}

}  // namespace cwt
