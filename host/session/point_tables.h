// The set's tables that lead from two postal codes to a tariff, as they lie in their files.
#pragma once

#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cwt {

/// The point code of a range of postal codes; ranges ascend.
struct PointRecord {
    char LowZip[6];
    char HighZip[6];
    char PointCode[6];
};

/// The tariff of a pair of point codes; pairs ascend.
struct TariffRecord {
    char Origin[6];
    char Destination[6];
    char TariffName[8];
};

template <class Record>
struct Found {
    int number;  ///< From 1.
    Record record;
};

/// Search as the library does.
std::optional<Found<PointRecord>> FindPoint(std::string_view points, std::string_view zip);
std::optional<Found<TariffRecord>> FindTariff(std::string_view tariffs, const PointRecord& origin,
                                              const PointRecord& destination);

/// A lane at a postal code, and its tariff.
struct Lane {
    std::string other;     ///< A postal code at its other end.
    bool is_from = false;  ///< It begins at the postal code.
    std::string tariff;
};

/// Lanes at a postal code, at most so many; none where no table knows it.
std::vector<Lane> LanesAt(std::string_view zip, std::string_view points, std::string_view tariffs,
                          std::size_t most);

}  // namespace cwt
