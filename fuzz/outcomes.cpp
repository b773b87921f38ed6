// Runs a target on inputs of its own making and prints what came of them. Two builds of the
// libraries that print the same have done the same, to the byte.
//
//     outcomes_TARGET SEEDS FIRST COUNT STEP     prints a line for every STEP inputs
#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size);
extern "C" std::size_t LLVMFuzzerCustomMutator(uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed);

using namespace hundredweight::fuzz;

namespace {

std::minstd_rand random_source;

std::size_t Below(std::size_t bound) {
    return random_source() % bound;
}

/// Characters that fields and files hold, and any other byte now and then.
uint8_t AnyByte() {
    constexpr std::string_view kUsual = "0123456789 0123456789.-+*YN1AZM\r\n|";
    return static_cast<uint8_t>(Below(8) == 0 ? Below(256)
                                              : static_cast<uint8_t>(kUsual[Below(kUsual.size())]));
}

std::vector<std::string> ReadFiles(const std::filesystem::path& directory) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    std::vector<std::string> contents;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        contents.emplace_back(std::istreambuf_iterator<char>(file),
                              std::istreambuf_iterator<char>());
    }
    return contents;
}

std::string MakeInput(const std::vector<std::string>& seeds, unsigned number) {
    constexpr std::size_t kLongest = 40000, kMostChanges = 12;
    random_source.seed(number);
    std::string input = seeds[Below(seeds.size())];
    for (std::size_t changes = 1 + Below(kMostChanges); changes > 0; --changes) {
        const std::size_t size = input.size();
        input.resize(kLongest);
        input.resize(LLVMFuzzerCustomMutator(reinterpret_cast<uint8_t*>(input.data()), size,
                                             kLongest, static_cast<unsigned>(random_source())));
    }
    return input;
}

}  // namespace

/// Changes some bytes of a content, as the fuzzer would.
extern "C" std::size_t LLVMFuzzerMutate(uint8_t* data, std::size_t size, std::size_t max_size) {
    constexpr std::size_t kMostBytes = 16;
    const std::size_t at = Below(size + 1);
    const std::size_t room = Below(2) == 0 ? size - at : max_size - at;
    const std::size_t count = std::min(1 + Below(Below(4) == 0 ? max_size : kMostBytes), room);
    const bool zeros = Below(4) == 0;
    std::generate_n(data + at, count, [&] { return zeros ? uint8_t{0} : AnyByte(); });
    return Below(8) == 0 ? at + count : std::max(size, at + count);
}

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    const std::vector<std::string> seeds = ReadFiles(argv[1]);
    const auto number = [&](int argument) {
        return static_cast<unsigned>(std::strtoul(argv[argument], nullptr, 10));
    };
    const unsigned first = number(2), end = first + number(3), step = number(4);
    for (unsigned input = first; input < end; ++input) {
        const std::string bytes = MakeInput(seeds, input);
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
        if ((input + 1 - first) % step != 0) continue;
        std::printf("%u %016" PRIx64 "\n", input + 1 - step, TakeOutcome());
    }
    return 0;
}
