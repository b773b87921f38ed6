// Look-ups of a shipment's point codes and tariff name, and the engine's look-up of a state.
#include <hundredweight/exports.h>

#include <cstddef>
#include <cstring>
#include <string_view>

#include "engine/engine.h"
#include "frame/bytes.h"
#include "frame/search.h"
#include "frame/search_tree.h"
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

/// Bytes of a postal code or a point code.
constexpr std::size_t kCodeSize = sizeof(CbsRecord::LowZip);

/// Searches in the tree, or in the table where there is none.
template <class Record, class Place>
const Record* Find(const SearchTree<Record>& tree, const Block<Record>& table, int32_t count,
                   Place place) {
    return tree.empty() ? Search(table.get(), count, place) : tree.Find(place);
}

/// The 6 bytes of a code as a number, which orders as they do. Of two parts, since so it waits for
/// no byte that was stored on its own a moment ago.
uint64_t CodeNumber(const char (&code)[7]) {
    return uint64_t{LoadBigEndian<uint32_t>(code)} << 16 | LoadBigEndian<uint16_t>(code + 4);
}

/// Where a postal code lies, held against the characters of a range that it has itself.
class PlaceOfZip {
 public:
    PlaceOfZip(const char (&zip)[7], std::size_t length)
        : compared_(~uint64_t{0} << 8 * (kCodeSize - length)),
          key_(static_cast<int64_t>(CodeNumber(zip) & compared_)) {}

    int operator()(const CbsRecord& record) const {
        const char* const bytes = record.LowZip;
        const int64_t over_low = key_ - Compared(bytes);
        const int64_t under_high = Compared(bytes + offsetof(CbsRecord, HighZip)) - key_;
        // One branch, which is foreseen: either difference is below 0 until the record is found.
        if ((over_low | under_high) >= 0) return 0;
        return over_low < 0 ? -1 : 1;
    }

 private:
    /// A bound of a range, read with the 2 bytes behind it.
    int64_t Compared(const char* bytes) const {
        static_assert(kCodeSize + 2 == sizeof(uint64_t));
        return static_cast<int64_t>(LoadBigEndian<uint64_t>(bytes) >> 16 & compared_);
    }

    uint64_t compared_;
    int64_t key_;
};

/// Where the point codes found last lie in the order of pairs.
class PlaceOfPair {
 public:
    PlaceOfPair() {
        const uint64_t destination = CodeNumber(point_codes.DestPointCode);
        head_ = CodeNumber(point_codes.OrigPointCode) << 16 | destination >> 32;
        tail_ = static_cast<uint32_t>(destination);
    }

    int operator()(const CmtRecord& record) const {
        const char* const bytes = record.OrigPointCode;
        const auto head = LoadBigEndian<uint64_t>(bytes);
        if (head_ != head) return head_ < head ? -1 : 1;
        const auto tail = LoadBigEndian<uint32_t>(bytes + sizeof head_);
        return (tail_ > tail ? 1 : 0) - (tail_ < tail ? 1 : 0);
    }

 private:
    uint64_t head_;  ///< Of the pair's 12 bytes the first 8.
    uint32_t tail_;
};

bool FindPointCode(const char (&zip)[7], char (&point_code)[7]) {
    const std::size_t length = TerminatedText(zip, kCodeSize).size();
    if (length == 0) return false;
    const CbsRecord* const found = Find(name_tables.CbsTree, name_tables.CbsTable,
                                        name_tables.CbsCount, PlaceOfZip(zip, length));
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
        Find(name_tables.CmtTree, name_tables.CmtTable, name_tables.CmtCount, PlaceOfPair());
    if (found == nullptr) return 0;
    CopyText(context->TariffName, WholeField(found->TariffName));
    return 1;
}

int32_t HWT_CALL TolvexGetStateCode(const char* postal_code, char* state) {
    const auto get_state = engine.entry_points.Tolvex_GetStateEx;
    if (get_state == nullptr) return 0;
    return get_state(engine.EngineHandle, state, postal_code) != 0 ? 1 : 0;
}
