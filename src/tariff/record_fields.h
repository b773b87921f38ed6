// Fields of the record that tables of facts name by their position, since a member that may lie
// unaligned has no usable address.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstddef>
#include <cstdint>

#include "frame/block.h"
#include "frame/bytes.h"
#include "frame/failure.h"
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

/// Fails with a code from a table of facts, where 0 stands for no code.
inline int32_t FailWith(RateContext& context, int32_t code) {
    return code == 0 ? 0 : Fail(context, code);
}

}  // namespace hundredweight
