#include "support/failing_system.h"
#include "support/table.h"
#include "tariff/base_rates.h"
#include "tariff/classes_and_weights_files.h"
#include "tariff/indexed_file.h"
#include "tariff/item_files.h"
#include "tariff/minimum_charges.h"
#include "tariff/text_files.h"
#include "tariff/zmc_file.h"

namespace hundredweight {

template <class... Numbers>
std::string Bytes(Numbers... numbers) {
    return (std::string(reinterpret_cast<const char*>(&numbers), sizeof numbers) + ...);
}

std::string Repeated(std::string_view text, std::size_t count) {
    std::string all;
    while (all.size() < count * text.size()) all += text;
    return all;
}

struct SetTablesTest : TariffTest {
    /// The code that a reader ends with, 0 when it succeeds.
    int32_t Read(int32_t (*read)(RateContext&), const std::string& extension,
                 const std::string& content) {
        WriteFile("ABC." + extension, content);
        context_.ErrorCode = 0;
        const int32_t result = read(context_);
        EXPECT_EQ(result, context_.ErrorCode == 0);
        return context_.ErrorCode;
    }
    /// Expects what a field begins with.
    void ExpectHead(Span field, const std::string& head) const {
        EXPECT_EQ(BytesOf(context_, {field.offset, head.size()}), head);
    }
};

TEST_F(SetTablesTest, AnIndexedFileHasTheEntriesThatItCountsUpToItsCapacity) {
    const std::tuple<std::string, int32_t (*)(RateContext&), unsigned, unsigned, int32_t, Span>
        files[] = {{"ZF1", ReadZf1File, 2800, 9, 394, HWT_FIELD(Zf1Handle)},
                   {"ZFM", ReadZfmFile, 2800, 9, 457, HWT_FIELD(ZfmHandle)},
                   {"ZF2", ReadZf2File, 2100, 12, 414, HWT_FIELD(Zf2Handle)}};
    WriteFile("ABC.RTC", "");
    for (const auto& [extension, read, capacity, entry_size, code, handle] : files)
        for (const unsigned count : {0U, 1U, capacity, capacity + 1, 0x8000U, 0xFFFFU}) {
            const unsigned least = 2 + entry_size * count;
            for (const unsigned size : {0U, 1U, least - 1, least, least + 5}) {
                const bool good = size >= least && count <= capacity;
                EXPECT_EQ(Read(read, extension, Padded(Bytes(count).substr(0, 2), size, 'e')),
                          good ? 0 : code);
                EXPECT_EQ(BytesOf(context_, handle) == Bytes(-1), !good) << extension << count;
            }
        }
}

TEST_F(SetTablesTest, TheBaseRateBodyLiesWhereTheHeaderSays) {
    // Version, size of the file, position and length of the body, and whether it is read.
    for (const auto& [version, file, position, body, good] : Table<5>(R"(
        22 1480 1144 336 1  22 1480 1144 337 0  22 1480 1145 336 0  22 1480 0 50 1  22 1143 0 50 0
        22 1144 1144 0 1    22 1480 -1 50 0     22 1480 0 -1 0      22 1480 1073741824 1 0
        22 1480 0 1073741824 0                  21 1044 1000 44 1   21 1043 0 50 0)")) {
        const int32_t from = std::stoi(position), size = std::stoi(body);
        std::string content(std::stoul(file), '\0');
        for (std::size_t i = 0; char& byte : content) byte = static_cast<char>(i++ % 127);
        Put(content, 32, Bytes(from, size));
        context_.SetVersion = std::stoi(version);
        EXPECT_EQ(Read(ReadBseFile, "BSE", content), good == "1" ? 0 : 224) << from << ' ' << size;
        EXPECT_EQ(context_.BseHandle > 0, good == "1");
        if (good == "0") continue;
        const Span header = version == "21" ? HWT_FIELD(BseHeaderOld) : HWT_FIELD(BseHeader);
        ExpectHead(header, content.substr(0, header.size));
        ExpectHead(HWT_FIELD(BseBody),
                   content.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(size)));
    }
}

TEST_F(SetTablesTest, ShortMinimumChargesAreWidenedUnlessThereAreLongOnes) {
    const std::string first = "ABCDEFGH\xFF\xFF", second = "abcdefgh\x01\x80";
    const std::string wide = Padded(first, 12) + Padded(second, 12), many = Repeated(wide, 3000);
    const std::array<std::string, 3> rows[] = {{first + second + "12345", "-", wide},
                                               {"123456789", "-", ""},
                                               {second, wide + "1", wide},
                                               {first, "", ""},
                                               {first, many, many}};
    for (const auto& [short_form, long_form, table] : rows) {
        for (const std::string name : {"ABC.LMC", "ABC.LCA"}) {
            std::filesystem::remove(directory_ / name);
            if (long_form != "-") WriteFile(name, long_form);
        }
        ASSERT_EQ(Read(ReadMcFile, "MC", short_form) + Read(ReadMcaFile, "MCA", short_form), 0);
        ASSERT_EQ(Joined(context_.McCount, context_.McaCount),
                  Joined(table.size() / 12, table.size() / 12));
        for (const unsigned char* const read : {context_.McTable, context_.McaTable})
            EXPECT_EQ(memcmp(read, table.data(), table.size()), 0);
    }
}

TEST_F(SetTablesTest, WsmBeginsWithANumber) {
    for (const auto& [content, told] : Table<2>("0000120 120:0:1  000 -1:0:0  . -1:0:0  abcdefg "
                                                "0:0:1  0000120abcdefg 120:1:1  12x4567abcdefgh "
                                                "12:2:1")) {
        WriteFile("ABC.WSM", content);
        ReadWsmFile(context_);
        EXPECT_EQ(Joined(context_.WsmValue, context_.WsmCount, context_.WsmTable != nullptr), told);
    }
}

TEST_F(SetTablesTest, ClassesLoseTheirBlanks) {
    const std::tuple<std::string, std::string, int32_t> rows[] = {
        {"100  92.5 ab", Padded("100", 6) + Padded("92.5", 6) + "ab", 2},
        {" 1 2 ", {"\0001\0002\0\0", 6}, 1},
        {Repeated("77777", 21), Repeated({"77777\0", 6}, 20), 20},
        {"1000", "1000", 0}};
    for (const auto& [content, table, count] : rows) {
        Fill(context_, HWT_FIELD(ClassTable), count > 0 ? '#' : '\0');
        EXPECT_EQ(Read(ReadClsFile, "CLS", content), count > 0 ? 0 : 235);
        EXPECT_EQ(+context_.ClassCount, count);
        ExpectHead(HWT_FIELD(ClassTable), table);
    }
}

TEST_F(SetTablesTest, UpToNineWeightBreaksAreCutAsTheDefaultsSay) {
    // Records of the file, DefBreakIndex and DefBreakCount, weight breaks that are left.
    for (const auto& [records, index, count, left] : Table<4>(R"(
        9 . . 9   10 6 . 9  3 6 . 3  9 6 2 8   9 6 3 9   9 9 0 9        9 12 -9 9  9 0 0 9   9 0 1 1
        9 -1 3 2  9 6 0 6   9 7 1 8   9 7 2 9   9 8 0 8   9 9 -2 9  9 -1 1 9   9 -1 2 1   9 8 -7 1
        9 x 3 3   9 x 2 2  3 2 0 2   3 3 -1 3  9 0006 0002 8  0 0 1 0    9 8_ 0___ 8)")) {
        memcpy(context_.DefBreakIndex, Padded(index, 4).data(), 4);
        memcpy(context_.DefBreakCount, Padded(count, 4).data(), 4);
        context_.ProfileIndex = 0x3131;  // Digits behind the two that are not theirs.
        context_.ProfileFileCurrent = '1';
        Fill(context_, HWT_FIELD(WeightBreakName), '#');
        WriteFile("ABC.WGT", Repeated("M5C      +999   -5x9 ", std::stoul(records)) + "L5C");
        const std::size_t total = std::min<std::size_t>(std::stoul(records), 9);
        EXPECT_EQ(Told(context_, ReadWgtFile(&context_)), total == 9  ? "1:0"
                                                          : total > 0 ? "1:384"
                                                                      : "0:385");
        EXPECT_EQ(Joined(context_.WeightBreakTotal, context_.WeightBreakCount),
                  Joined(total, left));
        const std::size_t breaks = std::stoul(left);
        const bool cut = breaks < total;
        std::string names = Padded(Repeated("M5C  ######", total), 220, '#');
        if (cut) Put(names, 11 * breaks, Padded("XXX", 11));
        ExpectHead(HWT_FIELD(WeightBreakName), names);
        for (std::size_t i = 0; i < total; ++i)
            EXPECT_EQ(Joined(context_.WeightBreakMin[i], context_.WeightBreakMax[i]),
                      cut && i + 1 == breaks ? "-5:9999999" : "-5:999");
    }
}

TEST_F(SetTablesTest, AccessorialItemsOfTwoCodesAreIndexed) {
    const std::string first = Padded("01232", 123), second = Padded("02218", 123);
    const std::string content = first + second + Padded("23221", 123) + first + "01232";
    std::string all;
    for (int32_t i = 0; i < 100; ++i) all += Bytes(i);
    const std::tuple<std::string, int32_t, std::string, std::string> rows[] = {
        {content, 4, Bytes(0, 3, -1), Bytes(1) + Repeated(Bytes(-1), 99)},
        {Repeated(first, 101), 100, all, Repeated(Bytes(-1), 100)}};
    for (const auto& [items, count, index232, index218] : rows) {
        EXPECT_EQ(Read(ReadAccFile, "ACC", items), 0);
        EXPECT_EQ(+context_.AccCount, count);
        ExpectHead(HWT_FIELD(Acc232Index), index232);
        ExpectHead(HWT_FIELD(Acc218Index), index218);
    }
}

TEST_F(SetTablesTest, AdjustmentsAndMinimumChargesByZipAreCountedInWholeRecords) {
    std::string content, keys;
    for (int i = 100; i < 501; ++i) content += Padded(std::to_string(i), 347);
    for (int i = 100; i < 500; ++i) keys += std::to_string(i);
    for (const std::size_t size : {0U, 40U, 41U, 81U, 346U, 347U, 700U, 400U * 347, 401U * 347}) {
        EXPECT_EQ(Read(ReadAdjFile, "ADJ", content.substr(0, size)), 0);
        const std::size_t count = std::min<std::size_t>(size / 347, 400);
        EXPECT_EQ(+context_.AdjCount, count);
        ExpectHead(HWT_FIELD(AdjKeys), keys.substr(0, 3 * count));
        WriteFile("ABC.ZMC", std::string(size, 'z'));
        EXPECT_EQ(CountZmcRecords(context_), size / 41);
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
        const std::size_t block = 20 * (10 + line_end.size());
        std::string content, index;
        for (std::size_t i = 0; i < lines; ++i)
            content += std::to_string(1'000'000'000 + i * 7919) + line_end;
        content += tail;
        for (std::size_t i = 0; i < blocks; ++i) {
            const std::size_t key = (i + 1) * block - line_end.size() - 5;
            index += i + 1 == blocks ? "ZZZZZ" : content.substr(key, 5);
            index += Bytes(static_cast<int32_t>(20 * i > lines ? content.size() : i * block));
        }
        EXPECT_EQ(Read(ReadLabFile, "LAB", content), 0);
        EXPECT_EQ(+context_.LabBlockCount, blocks) << lines << tail;
        ExpectHead(HWT_FIELD(LabIndex), index);
    }
}

TEST_F(SetTablesTest, LamIsAListOfKeysAndValues) {
    const std::string line = "ABCDEF123";
    for (const auto& [content, count] : {std::pair(line + "\r\n" + line + "\r\n", 2U),
                                         {line + "\n" + line, 2U},
                                         {line + "\n\032" + line, 1U},
                                         {Repeated(line + "\n", 221), 220U}}) {
        EXPECT_EQ(Read(ReadLamFile, "LAM", content), 0);
        EXPECT_EQ(+context_.LamCount, count) << content;
        ExpectHead(HWT_FIELD(LamTable), Repeated(line, count));
    }
}

}  // namespace hundredweight
