// Look-ups of a shipment's point codes and tariff name, and the engine's look-up of a state.
#include <hundredweight/exports.h>

#include <algorithm>
#include <cstring>

#include "engine/engine.h"
#include "frame/search.h"
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
