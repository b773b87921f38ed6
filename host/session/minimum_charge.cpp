#include "session/minimum_charge.h"

#include <fmt/core.h>

#include <cstring>
#include <fstream>
#include <utility>

#include "text/field_text.h"

namespace cwt {
namespace {

constexpr std::size_t kZip = 5;
constexpr std::size_t kRateCode = 6;

#pragma pack(push, 1)
struct MinimumCharge {
    char Direction;  ///< 'F': from the first range to the second; else either way.
    char FirstLow[kZip];
    char FirstHigh[kZip];
    char SecondLow[kZip];
    char SecondHigh[kZip];
    char RateCodeLow[kRateCode];
    char RateCodeHigh[kRateCode];
    float MinimumAmount;
    float FloorAmount;
};
#pragma pack(pop)
static_assert(sizeof(MinimumCharge) == sizeof(RateContext::ZmcRecord));

/// Rate codes that begin with a letter are filed as they stand, the others with their sixth
/// character first.
std::string RateCodeKey(const RateContext& context) {
    const std::string code(context.RateCode, kRateCode);
    const bool letter = (code[0] >= 'A' && code[0] <= 'Z') || (code[0] >= 'a' && code[0] <= 'z');
    return letter ? code : code.back() + code.substr(0, kRateCode - 1);
}

template <std::size_t Size>
bool IsWithin(const std::string& key, const char (&low)[Size], const char (&high)[Size]) {
    return std::memcmp(key.data(), low, Size) >= 0 && std::memcmp(key.data(), high, Size) <= 0;
}

bool Fits(const MinimumCharge& record, const RateContext& context) {
    std::string first(context.OrigZip, kZip);
    std::string second(context.DestZip, kZip);
    if (record.Direction != 'F' && std::memcmp(first.data(), second.data(), kZip) > 0) {
        std::swap(first, second);
    }
    return IsWithin(first, record.FirstLow, record.FirstHigh) &&
           IsWithin(second, record.SecondLow, record.SecondHigh) &&
           IsWithin(RateCodeKey(context), record.RateCodeLow, record.RateCodeHigh);
}

/// The number of the first record of these bytes, which is the one that was taken.
int NumberOf(const char (&record)[sizeof(MinimumCharge)], const std::filesystem::path& file) {
    constexpr int kRecordsPerRead = 200;
    std::ifstream stream(file, std::ios::binary);
    char records[kRecordsPerRead][sizeof(MinimumCharge)];
    for (int before = 0; stream; before += kRecordsPerRead) {
        stream.read(records[0], sizeof records);
        const int arrived = static_cast<int>(stream.gcount() / std::streamsize{sizeof record});
        for (int i = 0; i < arrived; ++i) {
            if (std::memcmp(records[i], record, sizeof record) == 0) return before + i + 1;
        }
    }
    return 0;
}

}  // namespace

std::optional<MinimumChargeMatch> FindMinimumCharge(const RateContext& context,
                                                    const DataFiles& files) {
    // The library leaves the record here that it has compared last.
    MinimumCharge record;
    std::memcpy(&record, context.ZmcRecord, sizeof record);
    if (context.ZmcCount <= 0 || !Fits(record, context)) return std::nullopt;
    const int number = NumberOf(context.ZmcRecord, files.Path("ZMC"));
    const bool one_way = record.Direction == 'F';
    return MinimumChargeMatch{
        .record = number,
        .source = number == 0 ? Source{.field = "ZmcRecord"} : files.Record("ZMC", number),
        .words = fmt::format(
            "{} postal codes {}-{} {} {}-{}{}, rate codes {}-{}", one_way ? "from" : "between",
            TextOf(record.FirstLow), TextOf(record.FirstHigh), one_way ? "to" : "and",
            TextOf(record.SecondLow), TextOf(record.SecondHigh), one_way ? "" : ", either way",
            TextOf(record.RateCodeLow), TextOf(record.RateCodeHigh)),
        .minimum = record.MinimumAmount,
        .floor = record.FloorAmount};
}

}  // namespace cwt
