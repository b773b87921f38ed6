#include "files/packing.h"

namespace cwt {

Packing PackingOf(std::string_view beginning) {
    if (beginning.starts_with("\x1F\x8B")) return Packing::kGzip;
    if (beginning.starts_with("\x28\xB5\x2F\xFD")) return Packing::kZstandard;
    return Packing::kNone;
}

Packing PackingOfName(std::string_view name) {
    if (name.ends_with(".gz")) return Packing::kGzip;
    if (name.ends_with(".zst")) return Packing::kZstandard;
    return Packing::kNone;
}

}  // namespace cwt
