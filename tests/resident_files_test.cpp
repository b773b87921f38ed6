// No look-up shows what a file held yesterday.
#include "support/resident_files.h"

#include "platform/file_state.h"

namespace hundredweight {
namespace fs = std::filesystem;

/// A file that is looked into again and again.
struct LookedInto {
    const char* name;
    std::string content, other;  ///< Of one size, with different answers.
    std::string (*answer)(RateContext&);
    std::string (*truth)(const std::string& content);
    std::size_t read_again;  ///< Bytes that a look-up reads when it knows the file.
};

std::string ProfileNumber(RateContext& context) {
    CopyText(context.Profile.ProfileName, Padded("TWO", 31));
    const std::string told = Told(context, GetProfileRecord(&context));
    return told == "1:0" ? std::to_string(+context.ProfileIndex) : told;
}

const LookedInto kLookedInto[] = {
    {"ABC.ZMC", ChargeBytes(1) + ChargeBytes(5), ChargeBytes(2) + ChargeBytes(5), MinimumFound,
     [](const std::string& content) {
         return content.empty() ? "none" : Joined(LoadLittleEndian<float>(&content[33]));
     },
     0},
    {"PROFILE.FIL", Padded("ONE", 17897) + Padded("TWO", 17897) + Padded("TWO", 17897),
     Padded("TWO", 17897) + Padded("TWO", 17897) + Padded("ONE", 17897), ProfileNumber,
     [](const std::string& content) {
         for (std::size_t at = 0; at < content.size(); at += 17897)
             if (content.substr(at, 31) == Padded("TWO", 31)) return std::to_string(at / 17897);
         return std::string(content == "missing" ? "0:125" : "0:127");
     },
     17897}};

void Rewrite(const fs::path& path, const std::string& content) {
    std::fstream(path, std::ios::binary | std::ios::in | std::ios::out) << content;
}

struct Change {
    const char* name;
    void (*make)(const fs::path& path, const std::string& content);
};
const Change kChanges[] = {
    {"rewritten in place", Rewrite},
    {"rewritten, its time set back",
     [](const fs::path& path, const std::string& content) {
         const auto time = fs::last_write_time(path);
         Rewrite(path, content);
         fs::last_write_time(path, time);
     }},
    {"replaced",
     [](const fs::path& path, const std::string& content) {
         std::ofstream(path.string() + "~", std::ios::binary) << content;
         fs::rename(path.string() + "~", path);
     }},
    {"cut", [](const fs::path& path, const std::string&) { fs::resize_file(path, 0); }},
    {"cut to its head",
     [](const fs::path& path, const std::string& content) {
         fs::resize_file(path, content.size() > 82 ? 17897 : 41);
     }},
    {"removed", [](const fs::path& path, const std::string&) { fs::remove(path); }},
    {"touched",
     [](const fs::path& path, const std::string&) {
         fs::last_write_time(path, fs::file_time_type::clock::now());
     }},
};

struct ResidentFilesTest : TariffTest {
    ResidentFilesTest() { CopyText(context_.UserDir, context_.DataDir); }

    /// Looks twice, so that a copy that was made the first time would be used.
    void ExpectTruth(const LookedInto& file) const {
        const fs::path path = directory_ / file.name;
        std::string content = FileContent(path);
        if (!fs::exists(path) && file.name[0] == 'P') content = "missing";
        for (int look = 0; look < 2; ++look) EXPECT_EQ(file.answer(context_), file.truth(content));
    }
    std::size_t BytesOfLook(const LookedInto& file) const {
        const FailingDisk disk;
        file.answer(context_);
        return disk.bytes_read;
    }
};

TEST_F(ResidentFilesTest, AChangeIsSeenAtOnce) {
    for (const LookedInto& file : kLookedInto) {
        for (const auto& [name, make] : kChanges) {
            SCOPED_TRACE(std::string(file.name) + ' ' + name);
            WriteFile(file.name, file.content);
            const ClockAhead settled(3);
            for (int look = 0; look < 2; ++look) ExpectTruth(file);
            // On Windows nothing proves a file unchanged.
            if (platform::HasSettled({.written = 1, .changed = 1})) {
                EXPECT_EQ(BytesOfLook(file), file.read_again);
            }
            LetTheClockTick();
            make(directory_ / file.name, file.other);
            ExpectTruth(file);
            LetTheClockTick();
        }
    }
}

TEST_F(ResidentFilesTest, SoAreChangesOfOneMoment) {
    for (const LookedInto& file : kLookedInto) {
        WriteFile(file.name, file.content);
        // Also while the system's clock stands before the file's time, or just two seconds behind.
        for (const int64_t ahead : {0, 1, -10}) {
            const ClockAhead clock(ahead);
            for (int change = 0; change < 20; ++change) {
                Rewrite(directory_ / file.name, change % 2 == 0 ? file.other : file.content);
                ExpectTruth(file);
                EXPECT_GT(BytesOfLook(file), file.read_again);
            }
        }
    }
}

TEST_F(ResidentFilesTest, WhatCannotBeKeptIsRead) {
    for (const LookedInto& file : kLookedInto) {
        WriteFile(file.name, file.content);
        const ClockAhead settled(3);
        ExpectTruth(file);
        CloseAllFiles(&context_);
        for (int nth = 1; nth < 12; ++nth) {
            LetTheClockTick();
            WriteFile(file.name, nth % 2 == 0 ? file.other : file.content);
            for (int look = 0; look < 3; ++look) {
                const FailingMemory memory(look == 1 ? nth : 0);
                ExpectTruth(file);
            }
        }
    }
}

/// The first match in a file's order, by the bytes; the last record looked at comes out.
struct Found {
    bool matches = false;
    std::string record = std::string(41, '#');
};
Found Find(const std::string& file, std::size_t count, const std::string& origin,
           const std::string& destination, const std::string& code) {
    Found found;
    for (std::size_t i = 0; i < count && 41 * (i + 1) <= file.size() && !found.matches; ++i) {
        found.record = file.substr(41 * i, 41);
        const bool swapped = found.record[0] != 'F' && origin > destination;
        const auto covers = [&](std::size_t at, const std::string& text) {
            return found.record.substr(at, text.size()) <= text &&
                   text <= found.record.substr(at + text.size(), text.size());
        };
        found.matches = covers(1, swapped ? destination : origin) &&
                        covers(11, swapped ? origin : destination) && covers(21, code);
    }
    return found;
}

TEST_F(ResidentFilesTest, TheFirstMatchOfManyOverlappingChargesIsFound) {
    std::minstd_rand chance(1);
    const ClockAhead settled(3);
    const auto text = [&](std::size_t size, std::size_t told) {
        std::string bytes(size, '0');
        for (std::size_t i = 0; i < told; ++i)
            bytes[i] =
                "\x01"
                "09Az\x7F\x80\xFF"[chance() % 8];
        return bytes;
    };
    int matches = 0;
    for (int file = 0; file < 60; ++file) {
        const std::size_t size = file < 6 ? static_cast<std::size_t>(file) : chance() % 400;
        const std::size_t told = 1 + chance() % 2;
        std::string content;
        for (std::size_t i = 0; i < size; ++i) {
            std::string ranges(1, "F \0f"[chance() % 4]);
            for (int end = 0; end < 4; ++end) ranges += text(5, told);
            const bool all = chance() % 2 == 0;
            ranges += all ? "\x01"
                            "00000\xFF"
                            "zzzzz"
                          : text(6, told) + text(6, told);
            content += ChargeBytes(static_cast<float>(i + 1), ranges);
        }
        content += std::string(chance() % 41, 'x');
        PutText(context_.FileBase, "R" + std::to_string(file));
        WriteFile("R" + std::to_string(file) + ".ZMC", content);
        for (int look = 0; look < 40; ++look) {
            const std::string origin = text(5, told), destination = text(5, told),
                              code = 'A' + text(5, told);
            context_.ZmcCount = static_cast<int32_t>(chance() % 3 == 0 ? chance() % 400 : size);
            CopyText(context_.OrigZip, origin);
            CopyText(context_.DestZip, destination);
            CopyText(context_.RateCode, code);
            FillField(context_.ZmcRecord, '#');
            context_.ZmcMinimum = 0;
            LookupZmc(context_);
            const Found found = Find(content, static_cast<std::size_t>(context_.ZmcCount), origin,
                                     destination, code);
            EXPECT_EQ(std::string(WholeField(context_.ZmcRecord)), found.record);
            EXPECT_EQ(context_.ZmcMinimum > 0, found.matches);
            matches += found.matches ? 1 : 0;
        }
    }
    EXPECT_GT(matches, 500);
}

}  // namespace hundredweight
