// Fields of the record that tables of facts name by their position, since a member that may lie
// unaligned has no usable address.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstddef>
#include <cstdint>

#include "frame/block.h"
#include "frame/bytes.h"
#include "tariff/data_file.h"

namespace hundredweight {

/// Position of a field in the record, or kNoField.
using FieldOffset = std::size_t;
inline constexpr FieldOffset kNoField = sizeof(RateContext);

#define HWT_FIELD(field) offsetof(RateContext, field)

inline char* FieldAt(RateContext& context, FieldOffset field) {
    return reinterpret_cast<char*>(&context) + field;
}

inline void StoreNumber(RateContext& context, FieldOffset field, int32_t value) {
    if (field != kNoField) StoreLittleEndian(FieldAt(context, field), value);
}

/// Puts a block into a pointer field, freeing the one that it replaces.
void StoreBlock(RateContext& context, FieldOffset field, Block<> block);

/// Frees the block of a pointer field and sets the field to null.
void FreeBlockField(RateContext& context, FieldOffset field);

/// Closes the handle of a field, if it holds one, and sets the field to -1.
void CloseHandleField(RateContext& context, FieldOffset field);

/// The same, and -1 also in a field that has held no handle yet.
void ResetHandleField(RateContext& context, FieldOffset field);

/// Puts an open file's handle into a field.
void StoreHandle(RateContext& context, FieldOffset field, OpenFile file);

/// Stores a code, unless it is 0, and gives the result of a failure.
inline int32_t Fail(RateContext& context, int32_t code) {
    if (code != 0) context.ErrorCode = code;
    return 0;
}

}  // namespace hundredweight
