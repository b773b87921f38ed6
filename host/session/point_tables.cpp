#include "session/point_tables.h"

#include "text/field_text.h"

namespace cwt {
namespace {

template <class Record>
int CountOf(std::string_view table) {
    return static_cast<int>(table.size() / sizeof(Record));
}

template <class Record>
Record RecordAt(std::string_view table, int index) {
    Record record;
    std::memcpy(&record, table.data() + static_cast<std::size_t>(index) * sizeof record,
                sizeof record);
    return record;
}

/// `place` tells where the key lies: below the record (negative), in it (0) or above it.
template <class Record, class Place>
std::optional<Found<Record>> Search(std::string_view table, Place place) {
    int low = 0;
    int high = CountOf<Record>(table) - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        const auto record = RecordAt<Record>(table, middle);
        const int where = place(record);
        if (where == 0) return Found<Record>{middle + 1, record};
        if (where < 0) high = middle - 1;
        if (where > 0) low = middle + 1;
    }
    return std::nullopt;
}

int Compare(const char (&a)[6], const char (&b)[6]) {
    return std::memcmp(a, b, sizeof a);
}

}  // namespace

std::optional<Found<PointRecord>> FindPoint(std::string_view points, std::string_view zip) {
    return Search<PointRecord>(points, [&](const PointRecord& record) {
        if (std::memcmp(zip.data(), record.LowZip, zip.size()) < 0) return -1;
        return std::memcmp(zip.data(), record.HighZip, zip.size()) > 0 ? 1 : 0;
    });
}

std::optional<Found<TariffRecord>> FindTariff(std::string_view tariffs, const PointRecord& origin,
                                              const PointRecord& destination) {
    return Search<TariffRecord>(tariffs, [&](const TariffRecord& record) {
        const int first = Compare(origin.PointCode, record.Origin);
        return first != 0 ? first : Compare(destination.PointCode, record.Destination);
    });
}

std::vector<Lane> LanesAt(std::string_view zip, std::string_view points, std::string_view tariffs,
                          std::size_t most) {
    std::vector<Lane> lanes;
    const auto point = FindPoint(points, zip);
    for (int i = 0; point && i < CountOf<PointRecord>(points) && lanes.size() < most; ++i) {
        const auto other = RecordAt<PointRecord>(points, i);
        for (const bool is_from : {true, false}) {
            const auto tariff = is_from ? FindTariff(tariffs, point->record, other)
                                        : FindTariff(tariffs, other, point->record);
            if (!tariff) continue;
            lanes.push_back({TextOf(other.LowZip), is_from, TextOf(tariff->record.TariffName)});
        }
    }
    return lanes;
}

}  // namespace cwt
