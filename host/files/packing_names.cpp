#include "files/packing.h"

namespace cwt {

Packing PackingOf(std::string_view beginning) {
    if (beginning.starts_with("\x1F\x8B")) return Packing::kGzip;
    if (beginning.starts_with("\x28\xB5\x2F\xFD")) return Packing::kZstandard;
    // A frame to be skipped may come first; its first byte's low half is free.
    if (beginning.find("\x2A\x4D\x18") == 1 && (beginning[0] & 0xF0) == 0x50) {
        return Packing::kZstandard;
    }
    return Packing::kNone;
}

Packing PackingOfName(std::string_view name) {
    if (name.ends_with(".gz")) return Packing::kGzip;
    if (name.ends_with(".zst")) return Packing::kZstandard;
    return Packing::kNone;
}

}  // namespace cwt
