// Message boxes and quit messages, recorded instead of shown.
#pragma once

#include <hundredweight/platform.h>

#include <string>
#include <tuple>
#include <vector>

namespace hundredweight {

struct RecordedBoxes {
    using Box = std::tuple<void*, std::string, std::string, uint32_t>;  ///< Owner to style.
    inline static std::vector<Box> boxes;
    inline static std::vector<int32_t> quit_codes;
    inline static int32_t answer;

    RecordedBoxes() {
        boxes.clear();
        quit_codes.clear();
        answer = 1;
        SetMessageBoxHandler(
            [](void* owner, const char* text, const char* caption, uint32_t style) {
                boxes.emplace_back(owner, text, caption, style);
                return answer;
            });
        SetQuitHandler([](int32_t code) { quit_codes.push_back(code); });
    }
    ~RecordedBoxes() { SetMessageBoxHandler(nullptr), SetQuitHandler(nullptr); }
};

}  // namespace hundredweight
