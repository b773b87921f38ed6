#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "reference/samples/bytes.h"
#include "reference/samples/file_contents.h"
#include "reference/samples/network.h"
#include "reference/samples/postal_map.h"

namespace hundredweight::samples {
namespace {

using Builder = std::function<std::string(const SetOptions&)>;

/// Numbered records whose content only a host would read.
Builder HostRecords(std::size_t width, int count) {
    return [=](const SetOptions&) {
        std::string records;
        for (int i = 1; i <= count; ++i) {
            records += Padded(std::to_string(1000 + i).substr(1) + " SAMPLE", width);
        }
        return records;
    };
}

Builder Text(const std::string& content) {
    return [content](const SetOptions&) { return content; };
}

/// State code by ZIP prefix 001 to 999, then two attributes.
std::string StateTable(const SetOptions&) {
    std::string table;
    for (int prefix = 1; prefix <= 999; ++prefix) {
        const auto key = std::to_string(1000 + prefix).substr(1);
        const auto map = PostalMap();
        const auto range = std::ranges::find_if(
            map, [&](const PostalRange& each) { return each.low <= key && key <= each.high; });
        table += range == map.end() ? "XX" : std::string(range->state);
        table += "  ";
    }
    return table;
}

std::string ProvinceTable(const SetOptions&) {
    std::string table;
    for (const PostalRange& range : PostalMap()) {
        if (range.low.front() < 'A') continue;
        table.append(range.state).append(range.low).append(range.high);
    }
    return table;
}

bool HasLetters(const Area& area) {
    return area.low.front() >= 'A';
}

/// The first and the last postal code of an area, five digits or six characters, padded.
std::string LowZip(const Area& area, std::size_t width) {
    return Padded(std::string(area.low) + (HasLetters(area) ? "0A0" : "00"), width);
}
std::string HighZip(const Area& area, std::size_t width) {
    return Padded(std::string(area.high) + (HasLetters(area) ? "9Z9" : "99"), width);
}

std::string ZipTable(const SetOptions&) {
    std::string table;
    for (const Area& area : kAreas) {
        table += LowZip(area, 5) + HighZip(area, 5) + std::string(area.point_code.substr(2, 2));
    }
    return table;
}

std::string PointCodes(const SetOptions&) {
    std::string table;
    for (const Area& area : kAreas) {
        table += LowZip(area, 6) + HighZip(area, 6) + std::string(area.point_code);
    }
    return table;
}

std::string TariffNames(const SetOptions&) {
    std::vector<std::string> records;
    for (const NetworkLane& lane : kLanes) {
        records.push_back(std::string(kAreas[lane.origin].point_code) +
                          std::string(kAreas[lane.destination].point_code) +
                          std::string(lane.tariff));
    }
    std::ranges::sort(records);
    std::string table;
    for (const auto& record : records) table += record;
    return table;
}

/// No minimum amount: the engine reports its own. Floors in cents, for any rate code.
std::string MinimumCharges(const SetOptions&) {
    struct Floor {
        char direction;
        AreaIndex first;
        AreaIndex second;
        float floor;
    };
    constexpr Floor kFloors[] = {{'F', kGeorgia, kIllinois, 9800.0F},
                                 {' ', kNewYork, kCalifornia, 16050.0F}};
    std::string table;
    for (const Floor& each : kFloors) {
        table += each.direction;
        for (const Area& area : {kAreas[each.first], kAreas[each.second]}) {
            table += LowZip(area, 5) + HighZip(area, 5);
        }
        table += "000000999999" + Bytes(0.0F) + Bytes(each.floor);
    }
    return table;
}

/// An indexed file: a count, three arrays of which the last has entries of the width given, data.
Builder IndexedFile(std::size_t entry_width) {
    return [=](const SetOptions&) {
        constexpr std::uint16_t kCount = 3;
        std::string keys;
        std::string positions;
        std::string entries;
        std::string data;
        for (std::uint16_t i = 0; i < kCount; ++i) {
            keys += Bytes(static_cast<std::uint16_t>(i + 1));
            positions += Bytes(static_cast<std::int32_t>(16 * i));
            entries += Padded("E" + std::to_string(i), entry_width);
            data += Padded("DATA" + std::to_string(i), 16);
        }
        return Bytes(kCount) + keys + positions + entries + data;
    };
}

/// Three numbers a record, the last of them short in the short form.
template <typename Last>
std::string MinimumTable(const SetOptions&) {
    std::string table;
    for (const std::int32_t base : {100, 200, 300}) {
        table += Bytes(base) + Bytes(base + 99) + Bytes(static_cast<Last>(base * 25));
    }
    return table;
}

std::string WeightSums(const SetOptions&) {
    return "0000120" + Bytes(std::int32_t{40}) + Bytes(std::int32_t{80});
}

std::string ClassCodes(const SetOptions&) {
    std::string codes;
    for (const ClassRelation& relation : kClasses) codes += Padded(relation.class_code, 5);
    return codes;
}

std::string WeightBreaks(const SetOptions&) {
    constexpr const char* kLabels[] = {"L5C",  "M5C",  "M1M",  "M2M", "M5M",
                                       "M10M", "M20M", "M30M", "M40M"};
    constexpr int kHighestWeight = 9999999;
    constexpr std::size_t kCount = std::size(kWeightBreaks);
    std::string records;
    for (std::size_t i = 0; i < kCount; ++i) {
        const int high = i + 1 < kCount ? kWeightBreaks[i + 1] - 1 : kHighestWeight;
        records += Padded(kLabels[i], 5) + RightAligned(std::to_string(high), 8) +
                   RightAligned(std::to_string(kWeightBreaks[i]), 8);
    }
    return records;
}

std::string Accessorials(const SetOptions&) {
    return Padded("01232Inside delivery", 123) + Padded("02218Liftgate", 123) +
           Padded("03301Notify before delivery", 123);
}

/// Lines of a number and a postal code; every twentieth ends a block.
std::string LabelText(const SetOptions&) {
    std::string text;
    for (int i = 1; i <= 45; ++i) {
        text += std::to_string(10'000 + i) + std::to_string(30'000 + i) + " SAMPLE LABEL\r\n";
    }
    return text;
}

std::string TariffLabels(const SetOptions&) {
    std::string record = " ";
    for (const char* label : {"SAMPLE", "NATIONAL", "CLASS RATES", "2025"}) {
        record += Padded(label, 15);
    }
    return Padded(record, 75);
}

std::string LevelFile(const SetOptions&) {
    const std::string date(kEffectiveDate);  // MM-DD-YYYY
    return Padded("SAMPLE  " + date.substr(6) + date.substr(0, 2) + date.substr(3, 2), 18);
}

bool Always(const SetOptions&) {
    return true;
}
bool Mexico(const SetOptions& options) {
    return options.mexico;
}
bool LongForm(const SetOptions& options) {
    return options.long_forms;
}
bool ShortForm(const SetOptions& options) {
    return !options.long_forms;
}
bool Preferred(const SetOptions& options) {
    return !options.fallbacks;
}
bool Fallback(const SetOptions& options) {
    return options.fallbacks;
}

struct TariffFile {
    std::string extension;
    bool (*belongs)(const SetOptions&);
    Builder build;
};

const std::vector<TariffFile>& TariffFiles() {
    static const std::vector<TariffFile> files = {
        {"SET", Always, SettingsRecord},
        {"DEF", Always, DefaultsRecord},
        {"MEF", Mexico, HostRecords(350, 1)},
        {"MET", Mexico, HostRecords(283, 1)},
        {"BSV", Always, TariffLabels},
        {"ZPS", Always, Text(Padded(" SAMPLE    NATIONAL", 628))},
        {"TBL", Always, HostRecords(18, 3)},
        {"SC", Always, StateTable},
        {"SCC", Always, ProvinceTable},
        {"ZP6", Always, ZipTable},
        {"ZP7", Mexico, HostRecords(43, 2)},
        {"SZP", Always, Text("303036060175201")},
        {"ZF1", Always, IndexedFile(3)},
        {"ZF2", Always, IndexedFile(6)},
        {"ZFM", Mexico, IndexedFile(3)},
        {"RTC", Preferred, HostRecords(32, 1)},
        {"RCL", Fallback, HostRecords(32, 1)},
        {"CBS", Always, PointCodes},
        {"CMT", Always, TariffNames},
        {"BSE", Always, BaseRateRecord},
        {"BSC", Always, HostRecords(96, 1)},
        {"FAC", Always, HostRecords(802, 1)},
        {"FCC", Always, HostRecords(1352, 1)},
        {"MCH", Always, HostRecords(24, 2)},
        {"LA", Always, HostRecords(8, 3)},
        {"RBA", Always, HostRecords(16, 3)},
        {"LMC", LongForm, MinimumTable<std::uint32_t>},
        {"MC", ShortForm, MinimumTable<std::uint16_t>},
        {"LCA", LongForm, MinimumTable<std::uint32_t>},
        {"MCA", ShortForm, MinimumTable<std::uint16_t>},
        {"DCH", Always, HostRecords(25, 2)},
        {"WSM", Always, WeightSums},
        {"ZMC", Always, MinimumCharges},
        {"CLS", Always, ClassCodes},
        {"WGT", Always, WeightBreaks},
        {"ACC", Always, Accessorials},
        {"ADJ", Always, HostRecords(347, 2)},
        {"LAB", Always, LabelText},
        {"LAM", Always, Text("ATLANTD01\r\nCHICAGD02\r\nTORONTI03\r\n")},
        {"RTE", Preferred, HostRecords(32, 1)},
        {"RTL", Fallback, HostRecords(32, 1)},
        {"TRM", Always, HostRecords(32, 1)},
        {"SRV", Always, HostRecords(32, 1)},
        {"DIS", Always, DiscountRecord},
        {"COZ", Always, HostRecords(6, 3)},
        {"LVL", Always, LevelFile},
    };
    return files;
}

}  // namespace

FileContents TariffSetFiles(const SetOptions& options) {
    FileContents files;
    for (const TariffFile& file : TariffFiles()) {
        if (!file.belongs(options) || options.omitted.contains(file.extension)) continue;
        std::string content = file.build(options);
        const auto length = options.lengths.find(file.extension);
        if (length != options.lengths.end()) content.resize(length->second, '\0');
        files[std::string(kBaseName) + "." + file.extension] = content;
    }
    return files;
}

}  // namespace hundredweight::samples
