#include <nlohmann/json.hpp>

#include "frame/error_text.h"
#include "support/sample_set.h"

namespace hundredweight {
namespace {

class InspectTest : public SampleSetTest {
 protected:
    void WriteAll() {
        WriteSet(0);
        samples::WriteEngineData(directory_);
        samples::WriteServiceGuideData(directory_);
    }

    /// What the command says of the set.
    nlohmann::json Inspection(const std::string& option, int exit_code) const {
        const std::string command = HWT_CWT " inspect --json " + option + directory_.string() +
                                    " 2>" + (directory_ / "complaints").string();
        FILE* const pipe = popen(command.c_str(), "r");
        std::string output;
        for (int byte; (byte = fgetc(pipe)) != EOF;) output += static_cast<char>(byte);
        EXPECT_EQ(pclose(pipe), exit_code * HWT_EXIT_CODE_UNIT) << command;
        return nlohmann::json::parse(output, nullptr, false);
    }
};

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
        WriteAll();
        if (code != 0) size > 0 ? resize_file(File(file), size) : void(remove(File(file)));
        const nlohmann::json inspection = Inspection(option, code == 0 ? 0 : 2);
        ASSERT_TRUE(inspection.is_object()) << option << file;
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

TEST_F(InspectTest, ASetIsToldInTheWordsOfItsFolder) {
    WriteAll();
    PutByte("SET", 20, 'h');    // The host's.
    PutByte("DEF", 263, '\0');  // Ends the text of the surcharge's break.
    PutByte("SET", 207, 'N');   // What an SCC file makes of it.
    const std::filesystem::path folder = directory_ / "text";
    const std::string command = HWT_CWT " export " + directory_.string() + " " + folder.string() +
                                " >" + (directory_ / "complaints").string() + " 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    const nlohmann::json settings =
        nlohmann::json::parse(FileContent(folder / "settings.json"), nullptr, false);
    const nlohmann::json inspection = Inspection("", 0);
    EXPECT_EQ(inspection["sections"].size(), 5U);
    for (const auto& [name, fields] : inspection["sections"].items()) {
        for (const auto& [key, field] : fields.items()) {
            // A flag that the file leaves blank is no.
            const nlohmann::json nothing =
                field["value"].is_boolean() ? nlohmann::json(false) : nlohmann::json("");
            const nlohmann::json written = settings[name].value(key, nothing);
            EXPECT_EQ(field["value"], key == "surcharge_break" ? "6" : written)
                << name << '.' << key;
            EXPECT_NE(field["meaning"], "");
        }
    }
    const nlohmann::json& fields = inspection["sections"]["settings"];
    EXPECT_EQ(fields["host_bytes_9"]["value"], settings["settings"]["host_bytes_9"]);
    EXPECT_FALSE(fields.contains("host_bytes_169"));
    for (const nlohmann::json& file : inspection["files"]) {
        const auto sheet = file["sheet"].get<std::string>();
        EXPECT_TRUE(exists(folder / sheet) || file["present"] == false) << file;
    }
    EXPECT_EQ(inspection["accessorials"][0], nlohmann::json({{"host_bytes_0", "01"},
                                                             {"item_code", "232"},
                                                             {"description", "Inside delivery"}}));
    EXPECT_EQ(inspection["weight_breaks"][1],
              nlohmann::json({{"label", "M5C"}, {"lowest_pounds", 500}, {"highest_pounds", 999}}));
}

}  // namespace
}  // namespace hundredweight
