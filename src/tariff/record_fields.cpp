#include "tariff/record_fields.h"

#include <cstring>
#include <utility>

namespace hundredweight {

void StoreBlock(RateContext& context, FieldOffset field, Block<> block) {
    char* const at = FieldAt(context, field);
    unsigned char* replaced = nullptr;
    std::memcpy(&replaced, at, sizeof replaced);
    std::free(replaced);
    unsigned char* const stored = block.release();
    std::memcpy(at, &stored, sizeof stored);
}

void FreeBlockField(RateContext& context, FieldOffset field) {
    StoreBlock(context, field, nullptr);
}

void CloseHandleField(RateContext& context, FieldOffset field) {
    char* const at = FieldAt(context, field);
    const auto handle = LoadLittleEndian<int32_t>(at);
    if (handle <= 0) return;
    platform::CloseFile(handle);
    StoreLittleEndian<int32_t>(at, -1);
}

void ResetHandleField(RateContext& context, FieldOffset field) {
    CloseHandleField(context, field);
    StoreNumber(context, field, -1);
}

void StoreHandle(RateContext& context, FieldOffset field, OpenFile file) {
    StoreNumber(context, field, file.Release());
}

}  // namespace hundredweight
