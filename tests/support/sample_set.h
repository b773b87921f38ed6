// The sample tariff set in a directory of its own, as a test wants it.
#pragma once

#include <unistd.h>

#include <fstream>

#include "reference/samples/sample_data.h"
#include "support/table.h"
#include "support/tariff_fixture.h"

namespace hundredweight {

inline constexpr int32_t kLoads = -1;  ///< In the place of a failed load's code.

/// How a set differs from one that is rated by its own tables and needs all of its files. Second
/// choices are MC, MCA, RTL and RCL instead of LMC, LCA, RTE and RTC.
inline constexpr unsigned kEngine = 1, kSecondChoices = 2, kNoMexico = 4, kNoAcc = 8, kNoZp7 = 16,
                          kNoLab = 32, kNoMca = 64, kNoBse = 128, kNoBase = 256, kSkipZips = 512;

class SampleSetTest : public TariffTest {
 protected:
    SampleSetTest() { PutText(context_.FileBase, samples::kBaseName); }

    std::filesystem::path File(const std::string& extension) const {
        return directory_ / (std::string(samples::kBaseName) + "." + extension);
    }
    std::string Content(const std::string& extension) const { return FileContent(File(extension)); }
    void PutByte(const std::string& extension, std::streamoff position, char byte) const {
        std::fstream file(File(extension), std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(position).put(byte);
    }

    void WriteSet(unsigned variation, const std::set<std::string>& omitted = {}) {
        for (const auto& file : std::filesystem::directory_iterator(directory_)) remove(file);
        samples::SetOptions options;
        options.omitted = omitted;
        options.engine = false;
        options.fallbacks = (variation & kSecondChoices) != 0;
        options.long_forms = !options.fallbacks;
        options.mexico = (variation & kNoMexico) == 0;
        samples::WriteTariffSet(directory_, options);
        if ((variation & kSkipZips) != 0) remove(File("SCC"));
        const std::pair<int, bool> flags[] = {
            {168, !(variation & kNoLab)}, {174, !(variation & kNoZp7)},
            {197, !(variation & kNoAcc)}, {199, variation & kNoBase},
            {203, !(variation & kNoMca)}, {207, variation & kSkipZips},
            {209, variation & kNoBse}};
        for (const auto& [byte, on] : flags) PutByte("SET", byte, on ? 'Y' : 'N');
        context_.UseEngine = variation & kEngine;
    }

    int32_t Load() {
        context_.ErrorCode = 0;
        return OpenAllFiles(&context_, &found_) == 1 ? kLoads : +context_.ErrorCode;
    }

    /// Releases the record after other files have taken the numbers of its closed ones.
    void Release() {
        int bystanders[64];
        for (int& each : bystanders) each = dup(2);
        CloseAllFiles(&context_);
        for (const int each : bystanders) EXPECT_EQ(close(each), 0) << "was closed by the release";
    }

    int32_t found_ = 0;
};

}  // namespace hundredweight
