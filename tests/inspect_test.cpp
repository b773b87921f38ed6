#include <nlohmann/json.hpp>

#include "frame/error_text.h"
#include "support/sample_set.h"

namespace hundredweight {
namespace {

using InspectTest = SampleSetTest;

TEST_F(InspectTest, TheFileThatFailsALoadIsNamedWithItsCodeAndMessage) {
    const std::string engine, own = "--without-engine ";
    const struct {
        std::string option, file;
        std::uintmax_t size;  // 0: no file.
        int32_t code;
    } rows[] = {{engine, "", 0, 0},      {engine, "SET", 282, 374}, {engine, "DCH", 0, 269},
                {engine, "ACC", 0, 490}, {engine, "SCC", 0, 460},   {engine, "BSV", 74, 225},
                {own, "", 0, 0},         {own, "ZP6", 0, 436},      {own, "FAC", 0, 260},
                {own, "FCC", 0, 260},    {own, "RTC", 0, 350},      {own, "RTE", 0, 350},
                {own, "LMC", 0, 181},    {own, "LAM", 0, 290},      {own, "CLS", 4, 235},
                {own, "FAC", 801, 264},  {own, "FCC", 1351, 264}};
    for (const auto& [option, file, size, code] : rows) {
        WriteSet(0);
        samples::WriteEngineData(directory_);
        samples::WriteServiceGuideData(directory_);
        if (code != 0) size > 0 ? resize_file(File(file), size) : void(remove(File(file)));
        const std::string command = HWT_CWT " inspect --json " + option + directory_.string() +
                                    " 2>" + (directory_ / "complaints").string();
        FILE* const pipe = popen(command.c_str(), "r");
        std::string output;
        for (int byte; (byte = fgetc(pipe)) != EOF;) output += static_cast<char>(byte);
        EXPECT_EQ(pclose(pipe), (code == 0 ? 0 : 2) * HWT_EXIT_CODE_UNIT)
            << "exit code, " << option << file;
        const auto inspection = nlohmann::json::parse(output, nullptr, false);
        ASSERT_TRUE(inspection.is_object()) << output;
        EXPECT_EQ(inspection["loads"], code == 0);
        if (code != 0) {
            char message[kMessageSize] = {};
            GetErrorText(code, message);
            EXPECT_EQ(inspection["failure"]["file"], file);
            EXPECT_EQ(inspection["failure"]["code"], code);
            const auto told = inspection["failure"]["message"].get<std::string>();
            // A code without a message of the library's has one of the command's.
            const bool own_words = std::string(message) == "Error occurred.";
            EXPECT_EQ(told.starts_with(message), !own_words) << told;
            EXPECT_NE(told.find(std::to_string(code)), std::string::npos) << told;
        }
        for (const auto& each : inspection["files"]) {
            EXPECT_EQ(each["present"], exists(File(each["extension"])));
            EXPECT_EQ(each.value("bytes", 0U), Content(each["extension"]).size());
        }
    }
}

}  // namespace
}  // namespace hundredweight
