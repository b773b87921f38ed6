// Files that carry one record, copied whole into the record of the run.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstddef>
#include <cstdint>

#include "tariff/data_file.h"
#include "tariff/record_fields.h"

namespace hundredweight {

/// What is peculiar to the record of one extension. A code of 0 is not stored.
struct SingleRecord {
    const char* extension;
    FieldOffset field;
    std::size_t size;
    int32_t open_code;
    int32_t read_code;
    FieldOffset handle = kNoField;  ///< Keeps the file open after a good read.
};

/// Reads a record of the set into its field; what arrives of a short one stays there. Result: 1, or
/// 0 with the record's code.
int32_t ReadRecord(RateContext& context, const SingleRecord& facts);
/// The same from a file that has been looked for already.
int32_t ReadRecordFrom(RateContext& context, const SingleRecord& facts, OpenFile file);

/// SET: the settings, and the version in them.
int32_t ReadSetFile(RateContext& context);
/// MEF, then MET. Result: 1 when both were read; no code.
int32_t ReadMexicoFiles(RateContext& context);
/// SC: states by ZIP prefix.
int32_t ReadScFile(RateContext& context);
/// BSC, whose handle stays open.
int32_t ReadBscFile(RateContext& context);
/// FAC unless NoBaseTablesFlag, FCC unless SkipZipTablesFlag; their handles stay open.
int32_t ReadFacFile(RateContext& context);

}  // namespace hundredweight
