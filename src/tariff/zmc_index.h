// An index of many minimum charges.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "frame/block.h"
#include "tariff/zmc_record.h"

namespace hundredweight {

/// Some of a file's records, so ordered that one look at a node tells that none below it matches.
class ZmcTree {
 public:
    /// Those of one direction. Nothing when memory is short.
    static std::optional<ZmcTree> Make(const ZmcFileRecord* records, uint32_t count, bool one_way);

    /// The lowest number of a record that contains the values, if it is below a bound; else the
    /// bound.
    uint32_t FirstBelow(uint32_t bound, const ZmcFileRecord* records,
                        const ZmcValues& values) const;

 private:
    struct Node {
        ZmcRanges ranges;  ///< Around all of the records below.
        uint32_t lowest;   ///< Number among them.
    };
    /// A node and the records below it, by their places in numbers_.
    struct Branch {
        std::size_t node;
        std::size_t begin, end;

        bool IsLeaf() const;
        Branch Child(std::size_t side) const;
    };
    struct Search;

    void Span(const Branch& branch, const ZmcFileRecord* records);

    std::size_t size_ = 0;
    Block<uint32_t> numbers_;
    Block<Node> nodes_;  ///< Children of node i are 2i and 2i + 1, from 1 on.
};

}  // namespace hundredweight
