// Look-ups of a shipment's point codes and tariff name, and the engine's look-up of a state.
#include <hundredweight/exports.h>

#include <algorithm>
#include <cstring>

#include "engine/engine.h"
#include "frame/text.h"
#include "tariff/name_tables.h"

using namespace hundredweight;

namespace {

/// The point codes found last, by the look-up of the base-rate points.
struct PointCodes {
    char OrigPointCode[7] = {};
    char DestPointCode[7] = {};
};
PointCodes point_codes;

/// Searches ascending records. `place` tells where the key lies: below the record (negative), in it
/// (0) or above it (positive).
template <class Record, class Place>
const Record* Search(const Record* table, int32_t count, Place place) {
    if (table == nullptr) return nullptr;
    int32_t low = 0;
    int32_t high = count - 1;
    while (low <= high) {
        const int32_t middle = low + (high - low) / 2;
        const int where = place(table[middle]);
        if (where == 0) return &table[middle];
        if (where < 0) {
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    }
    return nullptr;
}

template <std::size_t ZipSize>
bool FindPointCode(const char (&zip)[ZipSize], char (&point_code)[7]) {
    const std::string_view key = TerminatedText(zip).substr(0, sizeof(CbsRecord::LowZip));
    if (key.empty()) return false;
    const CbsRecord* const found =
        Search(name_tables.CbsTable.get(), name_tables.CbsCount, [&](const CbsRecord& record) {
            if (std::memcmp(key.data(), record.LowZip, key.size()) < 0) return -1;
            return std::memcmp(key.data(), record.HighZip, key.size()) > 0 ? 1 : 0;
        });
    if (found == nullptr) return false;
    CopyText(point_code, WholeField(found->PointCode));
    return true;
}

}  // namespace

int32_t HWT_CALL GetTolvexBse(RateContext* context) {
    point_codes = {};
    return FindPointCode(context->OrigZip, point_codes.OrigPointCode) &&
                   FindPointCode(context->DestZip, point_codes.DestPointCode)
               ? 1
               : 0;
}

int32_t HWT_CALL GetTolvexTariffName(RateContext* context) {
    const CmtRecord* const found =
        Search(name_tables.CmtTable.get(), name_tables.CmtCount, [](const CmtRecord& record) {
            const int origin = std::memcmp(point_codes.OrigPointCode, record.OrigPointCode,
                                           sizeof record.OrigPointCode);
            if (origin != 0) return origin;
            return std::memcmp(point_codes.DestPointCode, record.DestPointCode,
                               sizeof record.DestPointCode);
        });
    if (found == nullptr) return 0;
    CopyText(context->TariffName, WholeField(found->TariffName));
    return 1;
}

int32_t HWT_CALL TolvexGetStateCode(const char* postal_code, char* state) {
    const auto get_state = engine.entry_points.Tolvex_GetStateEx;
    if (get_state == nullptr) return 0;
    return get_state(engine.EngineHandle, state, postal_code) != 0 ? 1 : 0;
}
