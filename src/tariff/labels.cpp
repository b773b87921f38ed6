#include "tariff/labels.h"

#include <cstring>
#include <iterator>
#include <string_view>

#include "frame/text.h"
#include "tariff/record_fields.h"

namespace hundredweight {
namespace {

constexpr int32_t kCannotReadBsv = 225;
constexpr int32_t kCannotReadZps = 444;
constexpr int32_t kCannotOpenTbl = 450;

constexpr std::size_t kBsvLabelLength = 14;
constexpr std::size_t kBsvLabelAt[] = {1, 16, 31, 46};
constexpr std::size_t kZpsSwitchAt = 68;  // In the BSV record.

constexpr std::size_t kZpsLabelLength = 9;
constexpr std::size_t kZpsLabelAt[] = {1, 11};

struct TblRecord {
    char Name[15];
    char HostBytes[3];
};

constexpr std::size_t kTableNames =
    sizeof(RateContext::TableNames) / sizeof(RateContext::TableNames[0]);

using Label = char[15];

void ClearLabels(RateContext& context) {
    FillField(context.TariffLabel1, '\0');
    FillField(context.TariffLabel2, '\0');
    FillField(context.TariffLabel3, '\0');
    FillField(context.TariffLabel4, '\0');
}

void SpellOutPartner(Label& label) {
    if (!WholeField(label).starts_with("PARTNER")) return;
    FillField(label, '\0');
    CopyText(label, "PARTNERSHIP");
}

}  // namespace

int32_t ReadBsvFile(RateContext& context) {
    char(&record)[75] = context.BsvRecord;
    if (platform::ReadBytes(context.BsvHandle, record, sizeof record) < sizeof record) {
        return Fail(context, kCannotReadBsv);
    }
    if (record[kZpsSwitchAt] != ' ') context.ZpsSuppressed = 1;
    ClearLabels(context);
    for (const std::size_t at : kBsvLabelAt) {
        char& last = record[at + kBsvLabelLength - 1];
        if (last == '*') last = ' ';
    }
    const auto label = [&](std::size_t i) {
        return WholeField(record).substr(kBsvLabelAt[i], kBsvLabelLength);
    };
    CopyText(context.TariffLabel1, label(0));
    CopyText(context.TariffLabel2, label(1));
    CopyText(context.TariffLabel3, label(2));
    CopyText(context.TariffLabel4, label(3));
    return 1;
}

int32_t ReadZpsFile(RateContext& context) {
    char* const record = reinterpret_cast<char*>(context.ZpsRecord);
    if (record == nullptr ||
        platform::ReadBytes(context.ZpsHandle, record, kZpsRecordSize) < kZpsRecordSize) {
        return Fail(context, kCannotReadZps);
    }
    ClearLabels(context);
    CopyText(context.TariffLabel1, {record + kZpsLabelAt[0], kZpsLabelLength});
    CopyText(context.TariffLabel2, {record + kZpsLabelAt[1], kZpsLabelLength});
    SpellOutPartner(context.TariffLabel1);
    SpellOutPartner(context.TariffLabel2);
    return 1;
}

int32_t ReadTblFile(RateContext& context) {
    const OpenFile file = OpenDataFile(context, ".TBL");
    if (!file) return Fail(context, kCannotOpenTbl);
    TblRecord records[kTableNames];
    const std::size_t count = file.ReadHead(records, sizeof records) / sizeof(TblRecord);
    for (std::size_t i = 0; i < count; ++i) {
        FillField(context.TableNames[i], '\0');
        CopyText(context.TableNames[i], TerminatedText(records[i].Name));
    }
    return 1;
}

}  // namespace hundredweight
