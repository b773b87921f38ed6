#include <stdexcept>

#include "files/packing.h"

namespace cwt {
namespace {

[[noreturn]] void Refuse() {
    throw std::runtime_error("this build has neither gzip nor Zstandard");
}

}  // namespace

std::string Pack(Packing packing, std::string_view text) {
    if (packing != Packing::kNone) Refuse();
    return std::string(text);
}

std::unique_ptr<Unpacker> MakeUnpacker(Packing /*packing*/) {
    Refuse();
}

}  // namespace cwt
