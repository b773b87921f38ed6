#include "platform/file.h"
#include "support/sample_set.h"

namespace hundredweight {

/// A field and the file that it comes from: from this byte on, or counted in records of so many.
struct Copy {
    std::string extension;
    Span field;
    std::size_t bytes = 0;
};
const Copy kFields[] = {{"SET", HWT_FIELD(SetRecord)},     {"MET", HWT_FIELD(MetRecord)},
                        {"MEF", HWT_FIELD(MefRecord)},     {"SC", HWT_FIELD(ScTable)},
                        {"WGT", HWT_FIELD(WgtRecords)},    {"BSC", HWT_FIELD(BscBlock1)},
                        {"BSC", HWT_FIELD(BscBlock2), 16}, {"BSC", HWT_FIELD(BscBlock3), 46},
                        {"FAC", HWT_FIELD(FacRecord)},     {"FCC", HWT_FIELD(FccRecord)},
                        {"BSE", HWT_FIELD(BseHeader)},     {"ADJ", HWT_FIELD(AdjRecord), 347},
                        {"BSV", HWT_FIELD(BsvRecord)}};
const Copy kBlocks[] = {
    {"SCC", HWT_FIELD(SccTable)}, {"ZP6", HWT_FIELD(Zp6Table)},    {"ZP7", HWT_FIELD(Zp7Table)},
    {"SZP", HWT_FIELD(SzpTable)}, {"LA", HWT_FIELD(LaTable)},      {"RBA", HWT_FIELD(RbaTable)},
    {"LMC", HWT_FIELD(McTable)},  {"LCA", HWT_FIELD(McaTable)},    {"DCH", HWT_FIELD(DchTable)},
    {"MCH", HWT_FIELD(MchTable)}, {"WSM", HWT_FIELD(WsmTable), 7}, {"ZPS", HWT_FIELD(ZpsRecord)}};
const Copy kCounts[] = {{"SCC", HWT_FIELD(SccCount), 8},   {"ZP6", HWT_FIELD(Zp6Count), 12},
                        {"ZP7", HWT_FIELD(Zp7Count), 43},  {"SZP", HWT_FIELD(SzpCount), 5},
                        {"LA", HWT_FIELD(LaCount), 8},     {"RBA", HWT_FIELD(RbaCount), 16},
                        {"LMC", HWT_FIELD(McCount), 12},   {"LCA", HWT_FIELD(McaCount), 12},
                        {"DCH", HWT_FIELD(DchCount), 25},  {"ACC", HWT_FIELD(AccCount), 123},
                        {"ADJ", HWT_FIELD(AdjCount), 347}, {"ZMC", HWT_FIELD(ZmcCount), 41},
                        {"ZF1", HWT_FIELD(Zf1Length), 1},  {"ZFM", HWT_FIELD(ZfmLength), 1},
                        {"ZF2", HWT_FIELD(Zf2Length), 1}};
const Copy kHandles[] = {{"ZF1", HWT_FIELD(Zf1Handle)}, {"ZF2", HWT_FIELD(Zf2Handle)},
                         {"ZFM", HWT_FIELD(ZfmHandle)}, {"ADJ", HWT_FIELD(AdjHandle)},
                         {"FAC", HWT_FIELD(FacHandle)}, {"FCC", HWT_FIELD(FccHandle)},
                         {"ZPS", HWT_FIELD(ZpsHandle)}, {"BSE", HWT_FIELD(BseHandle)},
                         {"BSC", HWT_FIELD(BscHandle)}, {"BSV", HWT_FIELD(BsvHandle)}};

struct SetFieldsTest : SampleSetTest {
    template <class Value>
    Value ValueOf(Span field) const {
        Value value;
        memcpy(&value, BytesOf(context_, field).data(), sizeof value);
        return value;
    }
    void ExpectOpen(int handle, const std::string& extension) const {
        std::string content(Content(extension).size(), ' ');
        EXPECT_TRUE(platform::SeekTo(handle, 0));
        platform::ReadBytes(handle, content.data(), content.size());
        EXPECT_EQ(content, Content(extension)) << extension;
    }
};

TEST_F(SetFieldsTest, ALoadFillsItsFieldsFromTheFilesAndAReleaseLetsGo) {
    WriteSet(0);
    for (const int flag : {201, 205, 211, 213}) PutByte("SET", flag, 'N');
    for (const char* extension : {"LCA", "ZFM"}) PutByte(extension, 2, 'x');  // Unlike LMC, ZF1.
    ASSERT_EQ(Load(), kLoads);
    for (const auto& [extension, field, position] : kFields)
        EXPECT_EQ(BytesOf(context_, field), Content(extension).substr(position, field.size));
    for (const auto& [extension, field, position] : kBlocks) {
        const std::string content = Content(extension).substr(position);
        EXPECT_EQ(std::string(ValueOf<const char*>(field), content.size()), content) << extension;
    }
    const RateContext& c = context_;
    const std::tuple<const void*, std::string, std::size_t, std::size_t> parts[] = {
        {c.BseBody, "BSE", 1200, 128},
        {c.AccRecords, "ACC", 0, 3 * 123},
        {c.Zf1Keys, "ZF1", 2, 2 * 3},
        {c.ZfmKeys, "ZFM", 2, 2 * 3},
        {c.Zf2Keys, "ZF2", 2, 2 * 3},
        {c.Zf1Entries, "ZF1", 2 + 6 * 3, 3 * 3},
        {c.ZfmEntries, "ZFM", 2 + 6 * 3, 3 * 3},
        {+c.Zf2Entries, "ZF2", 2 + 6 * 3, 6 * 3}};
    for (const auto& [part, extension, position, size] : parts)
        EXPECT_EQ(memcmp(part, Content(extension).data() + position, size), 0) << extension;
    EXPECT_EQ(Joined(c.Zf1Count, c.ZfmCount, c.Zf2Count, c.Zf1DataOffset, c.ZfmDataOffset,
                     c.Zf2DataOffset),
              "3:3:3:29:29:38");
    EXPECT_EQ(memcmp(context_.MchTable + Content("MCH").size(), "\0\0", 2), 0);
    for (const Copy& file : kHandles) ExpectOpen(ValueOf<int32_t>(file.field), file.extension);
    ExpectOpen(fileno(context_.LabStream), "LAB");

    Release();
    for (const auto& [extension, field, record_size] : kCounts)
        EXPECT_EQ(ValueOf<int32_t>(field), Content(extension).size() / record_size) << extension;
    for (const Copy& block : kBlocks) EXPECT_EQ(ValueOf<void*>(block.field), nullptr);
    for (const Copy& file : kHandles) EXPECT_EQ(ValueOf<int32_t>(file.field), -1);
    EXPECT_FALSE(context_.LabStream || context_.LamStream || context_.Zf2Entries);
    EXPECT_TRUE(context_.RtcHandle <= 0 && context_.RteHandle <= 0);
}

TEST_F(SetFieldsTest, AFailedLoadKeepsWhatItHasRead) {
    WriteSet(0, {"RTC"});
    EXPECT_EQ(Load(), 350);
    EXPECT_TRUE(context_.Zp6Table && context_.Zf2Entries && context_.Zf2Handle > 0);
    EXPECT_TRUE(context_.ClassCount == 18 && context_.LaTable == nullptr);
}

}  // namespace hundredweight
