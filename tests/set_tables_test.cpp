#include "support/failing_system.h"
#include "support/tariff_fixture.h"
#include "tariff/base_rates.h"
#include "tariff/classes_and_weights_files.h"
#include "tariff/indexed_file.h"
#include "tariff/item_files.h"
#include "tariff/minimum_charges.h"
#include "tariff/name_tables.h"
#include "tariff/text_files.h"
#include "tariff/zmc_file.h"

namespace hundredweight {
namespace {

template <class Number>
std::string Bytes(Number value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

std::string Repeated(std::string_view text, std::size_t count) {
    std::string all;
    while (all.size() < count * text.size()) all += text;
    return all;
}

class SetTablesTest : public TariffTest {
 protected:
    Outcome Read(int32_t (*read)(RateContext&), const std::string& extension,
                 const std::string& content) {
        WriteFile("ABC." + extension, content);
        context_.ErrorCode = 0;
        return With(read(context_));
    }
    /// The outcome of a reader that fails with a code, or succeeds with none.
    static Outcome Code(int32_t code) { return {code == 0, code}; }
    /// What a field begins with.
    std::string Head(Span field, std::size_t size) const {
        return BytesOf(context_, {field.offset, size});
    }
};

TEST_F(SetTablesTest, AnIndexedFileHasTheEntriesThatItCountsUpToItsCapacity) {
    const std::tuple<std::string, int32_t (*)(RateContext&), unsigned, unsigned, int32_t, Span>
        files[] = {{"ZF1", ReadZf1File, 2800, 9, 394, HWT_FIELD(Zf1Handle)},
                   {"ZFM", ReadZfmFile, 2800, 9, 457, HWT_FIELD(ZfmHandle)},
                   {"ZF2", ReadZf2File, 2100, 12, 414, HWT_FIELD(Zf2Handle)}};
    WriteFile("ABC.RTC", "");
    for (const auto& [extension, read, capacity, entry_size, code, handle] : files) {
        for (const unsigned count : {0U, 1U, capacity, capacity + 1, 0x8000U, 0xFFFFU}) {
            const unsigned least = 2 + entry_size * count;
            for (const unsigned size : {0U, 1U, least - 1, least, least + 5}) {
                const bool good = size >= least && count <= capacity;
                EXPECT_EQ(Read(read, extension, Padded(Bytes(count).substr(0, 2), size, 'e')),
                          Code(good ? 0 : code));
                EXPECT_EQ(BytesOf(context_, handle) == Bytes(-1), !good) << extension << count;
            }
        }
    }
}

TEST_F(SetTablesTest, TheBaseRateBodyLiesWhereTheHeaderSays) {
    const std::tuple<int32_t, std::size_t, int32_t, int32_t, bool> rows[] = {
        {22, 1480, 1144, 336, true},   {22, 1480, 1144, 337, false}, {22, 1480, 1145, 336, false},
        {22, 1480, 0, 50, true},       {22, 1143, 0, 50, false},     {22, 1144, 1144, 0, true},
        {22, 1480, -1, 50, false},     {22, 1480, 0, -1, false},     {22, 1480, 1 << 30, 1, false},
        {22, 1480, 0, 1 << 30, false}, {21, 1044, 1000, 44, true},   {21, 1043, 0, 50, false}};
    for (const auto& [version, size, position, length, good] : rows) {
        std::string content;
        while (content.size() < size) content += static_cast<char>(content.size() % 127);
        Put(content, 32, Bytes(position) + Bytes(length));
        context_.SetVersion = version;
        EXPECT_EQ(Read(ReadBseFile, "BSE", content), Code(good ? 0 : 224))
            << position << " " << length;
        EXPECT_EQ(context_.BseHandle > 0, good);
        if (good) {
            const Span header = version < 22 ? HWT_FIELD(BseHeaderOld) : HWT_FIELD(BseHeader);
            const auto from = static_cast<std::size_t>(position),
                       bytes = static_cast<std::size_t>(length);
            EXPECT_EQ(BytesOf(context_, header), content.substr(0, header.size));
            EXPECT_EQ(Head(HWT_FIELD(BseBody), bytes), content.substr(from, bytes));
        }
    }
}

TEST_F(SetTablesTest, ShortMinimumChargesAreWidenedUnlessThereAreLongOnes) {
    const std::string first = "ABCDEFGH\xFF\xFF", second = "abcdefgh\x01\x80";
    const std::string wide = Padded(first, 12) + Padded(second, 12), many = Repeated(wide, 3000);
    for (const auto& [short_form, long_form, table] :
         {std::tuple(first + second + "12345", std::string("-"), wide),
          {"123456789", "-", ""},
          {second, wide + "1", wide},
          {first, "", ""},
          {first, many, many}}) {
        for (const std::string name : {"ABC.LMC", "ABC.LCA"}) {
            std::filesystem::remove(directory_ / name);
            if (long_form != "-") WriteFile(name, long_form);
        }
        ASSERT_EQ(Read(ReadMcFile, "MC", short_form), Code(0));
        ASSERT_EQ(Read(ReadMcaFile, "MCA", short_form), Code(0));
        EXPECT_EQ(+context_.McCount, table.size() / 12);
        EXPECT_EQ(+context_.McaCount, table.size() / 12);
        EXPECT_EQ(memcmp(context_.McTable, table.data(), table.size()), 0);
        EXPECT_EQ(memcmp(context_.McaTable, table.data(), table.size()), 0);
    }
}

TEST_F(SetTablesTest, WsmBeginsWithANumber) {
    using Row = std::tuple<std::string, int32_t, int32_t>;
    for (const auto& [content, value, count] :
         {Row("0000120", 120, 0), Row("000", -1, 0), Row("", -1, 0), Row("abcdefg", 0, 0),
          Row("0000120abcdefg", 120, 1), Row("12x4567abcdefgh", 12, 2)}) {
        WriteFile("ABC.WSM", content);
        ReadWsmFile(context_);
        EXPECT_EQ(std::pair(+context_.WsmValue, +context_.WsmCount), std::pair(value, count));
        EXPECT_EQ(context_.WsmTable != nullptr, content.size() >= 7) << content;
    }
}

TEST_F(SetTablesTest, NameTablesAndMinimumChargesByZipAreCountedInWholeRecords) {
    for (const std::size_t size : {0U, 17U, 18U, 40U, 41U, 81U, 82U}) {
        for (const char* name : {"ABC.ZMC", "ABC.CBS"}) WriteFile(name, std::string(size, 'z'));
        EXPECT_EQ(CountZmcRecords(context_), size / 41);
        EXPECT_EQ(With(ReadNameTables(context_)), Outcome(0, 0)) << "no CMT";
        EXPECT_EQ(name_tables.CbsCount, size / 18);
        EXPECT_EQ(name_tables.CmtTable, nullptr);
    }
}

TEST_F(SetTablesTest, ClassesLoseTheirBlanks) {
    const std::tuple<std::string, std::string, int32_t> content_table_count[] = {
        {"100  92.5 ab", Padded("100", 6) + Padded("92.5", 6) + "ab", 2},
        {" 1 2 ", {"\0001\0002\0\0", 6}, 1},
        {Repeated("77777", 21), Repeated({"77777\0", 6}, 20), 20},
        {"1000", "1000", 0}};
    for (const auto& [content, table, count] : content_table_count) {
        EXPECT_EQ(Read(ReadClsFile, "CLS", content), Code(count > 0 ? 0 : 235));
        EXPECT_EQ(+context_.ClassCount, count);
        EXPECT_EQ(Head(HWT_FIELD(ClassTable), table.size()), table);
    }
}

TEST_F(SetTablesTest, UpToNineWeightBreaksAreCutAsTheDefaultsSay) {
    const std::tuple<std::size_t, std::string, std::string, std::size_t> rows[] = {
        {9, "", "", 9},   {10, "6", "", 9},  {3, "6", "", 3},    {9, "6", "2", 8},
        {9, "6", "3", 9}, {9, "9", "0", 9},  {9, "12", "-9", 9}, {9, "0", "0", 9},
        {9, "0", "1", 1}, {9, "-1", "3", 2}, {9, "6", "0", 6},   {9, "8 ", "0   ", 8},
        {9, "x", "2", 2}, {3, "2", "0", 2},  {3, "3", "-1", 3},  {9, "0006", "0002", 8},
        {0, "0", "1", 0}};
    for (const auto& [records, index, count, breaks] : rows) {
        memcpy(context_.DefBreakIndex, Padded(index, 4).data(), 4);
        memcpy(context_.DefBreakCount, Padded(count, 4).data(), 4);
        context_.ProfileIndex = 0x3131;  // Digits behind the two that are not theirs.
        context_.ProfileFileCurrent = '1';
        Fill(context_, HWT_FIELD(WeightBreakName), '#');
        WriteFile("ABC.WGT", Repeated("M5C      +999   -5x9 ", records) + "L5C");
        context_.ErrorCode = 0;
        const std::size_t total = std::min<std::size_t>(records, 9);
        const int32_t code = total == 9 ? 0 : total > 0 ? 384 : 385;
        EXPECT_EQ(With(ReadWgtFile(&context_)), Outcome(total > 0, code));
        EXPECT_EQ(+context_.WeightBreakTotal, total);
        EXPECT_EQ(+context_.WeightBreakCount, breaks) << records << ": " << index << "+" << count;
        const bool cut = breaks < total;
        std::string names = Padded(Repeated("M5C  ######", total), 220, '#');
        if (cut) Put(names, 11 * breaks, Padded("XXX", 11));
        EXPECT_EQ(BytesOf(context_, HWT_FIELD(WeightBreakName)), names);
        for (std::size_t i = 0; i < total; ++i) {
            EXPECT_EQ(+context_.WeightBreakMax[i], cut && i + 1 == breaks ? 9999999 : 999);
            EXPECT_EQ(+context_.WeightBreakMin[i], -5);
        }
    }
}

TEST_F(SetTablesTest, AccessorialItemsOfTwoCodesAreIndexed) {
    const std::string first = Padded("01232", 123), second = Padded("02218", 123);
    const std::string content = first + second + Padded("23221", 123) + first + "01232";
    EXPECT_EQ(Read(ReadAccFile, "ACC", content), Code(0));
    EXPECT_EQ(+context_.AccCount, 4);
    EXPECT_EQ(Head(HWT_FIELD(Acc232Index), 12), Bytes(0) + Bytes(3) + Bytes(-1));
    EXPECT_EQ(BytesOf(context_, HWT_FIELD(Acc218Index)), Bytes(1) + Repeated(Bytes(-1), 99));
    EXPECT_EQ(Read(ReadAccFile, "ACC", Repeated(first, 101)), Code(0));
    EXPECT_EQ(+context_.AccCount, 100);
    for (int32_t i = 0; i < 100; ++i) EXPECT_EQ(+context_.Acc232Index[i], i);
    EXPECT_EQ(BytesOf(context_, HWT_FIELD(Acc218Index)), Repeated(Bytes(-1), 100));
}

TEST_F(SetTablesTest, AdjustmentsAreKnownByTheirKeys) {
    std::string content, keys;
    for (int i = 100; i < 501; ++i) content += Padded(std::to_string(i), 347);
    for (int i = 100; i < 500; ++i) keys += std::to_string(i);
    const std::vector<std::size_t> sizes = {0, 346, 347, 700, 400 * 347, content.size()};
    for (const std::size_t size : sizes) {
        EXPECT_EQ(Read(ReadAdjFile, "ADJ", content.substr(0, size)), Code(0));
        const std::size_t count = std::min<std::size_t>(size / 347, 400);
        EXPECT_EQ(+context_.AdjCount, count);
        EXPECT_EQ(Head(HWT_FIELD(AdjKeys), 3 * count), keys.substr(0, 3 * count));
    }
}

TEST_F(SetTablesTest, LabIsIndexedInBlocksOf20Lines) {
    const std::string too_long(71, 'x');  // Counts as two lines.
    const std::tuple<std::size_t, std::string, std::string, std::size_t> rows[] = {
        {45, "\n", "", 3},      {45, "\r\n", "", 3},    {40, "\n", "", 3},
        {39, "\n", "tail", 2},  {0, "", "", 1},         {0, "", "x", 1},
        {10480, "\n", "", 525}, {10500, "\n", "", 525}, {12000, "\n", "", 525},
        {19, "\n", too_long, 2}};
    for (const auto& [lines, line_end, tail, blocks] : rows) {
        std::string content, index;
        std::vector<std::size_t> starts = {0};
        for (std::size_t i = 0; i < lines; ++i) {
            content += std::to_string(1'000'000'000 + i * 7919) + line_end;
            starts.push_back(content.size());
        }
        content += tail;
        starts.push_back(content.size());
        for (std::size_t i = 0; i < blocks; ++i) {
            index += i + 1 == blocks ? "ZZZZZ" : content.substr(starts[20 * i + 19] + 5, 5);
            index += Bytes(static_cast<int32_t>(starts[20 * i]));
        }
        EXPECT_EQ(Read(ReadLabFile, "LAB", content), Code(0));
        EXPECT_EQ(+context_.LabBlockCount, blocks) << lines << tail;
        EXPECT_EQ(Head(HWT_FIELD(LabIndex), index.size()), index);
    }
}

TEST_F(SetTablesTest, LamIsAListOfKeysAndValues) {
    const std::string line = "ABCDEF123";
    for (const auto& [content, count] : {std::pair(line + "\r\n" + line + "\r\n", 2),
                                         {line + "\n" + line, 2},
                                         {line + "\n\032" + line, 1},
                                         {Repeated(line + "\n", 221), 220}}) {
        EXPECT_EQ(Read(ReadLamFile, "LAM", content), Code(0));
        EXPECT_EQ(+context_.LamCount, count) << content;
        const std::string table = Repeated(line, static_cast<std::size_t>(count));
        EXPECT_EQ(Head(HWT_FIELD(LamTable), table.size()), table);
    }
}

}  // namespace
}  // namespace hundredweight
