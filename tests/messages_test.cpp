#include "frame/error_text.h"
#include "support/recorded_boxes.h"
#include "support/tariff_fixture.h"

namespace hundredweight {

TEST(Messages, BelongToTheirCodes) {
    uint32_t checksum = 2166136261;  // FNV-1a over every message and its terminator.
    for (int32_t code = -1; code <= 1000; ++code) {
        char text[kMessageSize] = "";
        GetErrorText(code, text);
        for (const char letter : Printed(text) + '\0')
            checksum = (checksum ^ static_cast<unsigned char>(letter)) * 16777619;
    }
    EXPECT_EQ(checksum, 1267765880U);
}

TEST(MessageBoxes, ShowTheTextOrElseTheMessageOfTheCode) {
    const std::string fits(179, 'x');
    const std::tuple<std::string, int32_t, std::string> rows[] = {
        {"", 101, "Invalid Origin ZIP Code."}, {"%s", 9, "%s"}, {fits + "yz", 1, fits}};
    int window = 0;
    for (const auto& [text, code, shown] : rows) {
        RecordedBoxes recorded;
        fatal(text.c_str(), "Fatal", code);
        for (const int32_t answer : {1, 7}) {
            recorded.answer = answer;
            EXPECT_EQ(warning(text.c_str(), "Warning", code, &window), answer);
            EXPECT_EQ(question(text.c_str(), "Question", code, &window), answer != 7);
        }
        const RecordedBoxes::Box warned{&window, shown, "Warning", 0x30},
            asked{&window, shown, "Question", 0x24};
        EXPECT_TRUE(recorded.boxes ==
                    (std::vector<RecordedBoxes::Box>{
                        {nullptr, shown, "Fatal", 0x10}, warned, asked, warned, asked}))
            << text << code;
        EXPECT_EQ(recorded.quit_codes, std::vector{code});
    }
}

}  // namespace hundredweight
