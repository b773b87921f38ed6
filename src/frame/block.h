// Heap blocks that hang on the record: from the C heap, so that host and library can both free
// them.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace hundredweight {

struct FreeBlock {
    void operator()(void* block) const { std::free(block); }
};

/// A block that frees itself unless it is released.
template <class Element = unsigned char>
using Block = std::unique_ptr<Element, FreeBlock>;

/// Allocates `size` zero bytes; an empty block is a block all the same. Null when memory is short.
template <class Element = unsigned char>
Block<Element> AllocateBlock(std::size_t size) {
    return Block<Element>(static_cast<Element*>(std::calloc(size == 0 ? 1 : size, 1)));
}

}  // namespace hundredweight
