// How an input is changed: a part at a time, and by parts of another input.
#include <algorithm>
#include <cstring>
#include <random>

#include "parts.h"

extern "C" std::size_t LLVMFuzzerMutate(uint8_t* data, std::size_t size, std::size_t max_size);

namespace hundredweight::fuzz {
namespace {

class Mutator {
 public:
    Mutator(Parts& parts, unsigned seed) : parts_(parts), random_(seed) {}

    void Mutate() {
        const std::size_t choice = Below(16);
        if (parts_.empty() || choice == 0) {
            Add();
        } else if (choice == 1) {
            parts_.erase(Any());
        } else if (choice == 2) {
            std::swap(*Any(), *Any());
        } else if (choice == 3) {
            Repeat(*Any());
        } else {
            MutateContent(*Any());
        }
    }

    /// Takes some of the parts of another input.
    void TakeFrom(const Parts& others) {
        for (const Part& part : others) {
            if (Below(2) != 0) continue;
            std::erase_if(parts_, [&](const Part& each) { return each.name == part.name; });
            parts_.push_back(part);
        }
    }

 private:
    std::size_t Below(std::size_t bound) { return random_() % bound; }
    Parts::iterator Any() {
        return parts_.begin() + static_cast<std::ptrdiff_t>(Below(parts_.size()));
    }

    void Add() {
        Part part = SampleParts()[Below(SampleParts().size())];
        if (Below(4) != 0) MutateContent(part);
        parts_.insert(parts_.begin() + static_cast<std::ptrdiff_t>(Below(parts_.size() + 1)), part);
    }

    /// Readers of records go wrong by their number as well as by their bytes.
    void Repeat(Part& part) {
        constexpr std::size_t kLongest = 16000;
        const std::string once = part.content;
        for (std::size_t more = Below(128); more > 0; --more) {
            if (part.content.size() + once.size() > kLongest) return;
            part.content += once;
        }
    }

    static void MutateContent(Part& part) {
        const std::size_t size = part.content.size();
        part.content.resize(std::min(2 * size + 64, kLongestContent));
        part.content.resize(LLVMFuzzerMutate(reinterpret_cast<uint8_t*>(part.content.data()), size,
                                             part.content.size()));
    }

    Parts& parts_;
    std::minstd_rand random_;
};

std::size_t Put(const Parts& parts, uint8_t* data, std::size_t max_size) {
    const std::string bytes = PartBytes(parts);
    const std::size_t size = std::min(bytes.size(), max_size);
    std::memcpy(data, bytes.data(), size);
    return size;
}

}  // namespace
}  // namespace hundredweight::fuzz

using namespace hundredweight::fuzz;

extern "C" std::size_t LLVMFuzzerCustomMutator(uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed) {
    Parts parts = ReadParts(data, size);
    Mutator(parts, seed).Mutate();
    return Put(parts, data, max_size);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const uint8_t* data1, std::size_t size1,
                                                 const uint8_t* data2, std::size_t size2,
                                                 uint8_t* out, std::size_t max_size,
                                                 unsigned seed) {
    Parts parts = ReadParts(data1, size1);
    Mutator(parts, seed).TakeFrom(ReadParts(data2, size2));
    return Put(parts, out, max_size);
}
