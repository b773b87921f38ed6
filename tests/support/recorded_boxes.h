// Message boxes and quit messages, recorded instead of shown.
#pragma once

#include <hundredweight/platform.h>

#include "support/table.h"

namespace hundredweight {

struct RecordedBoxes {
    inline static std::string told;  ///< "style:caption:text;" a box, "quit:code;" a quit message.
    inline static int32_t answer;    ///< Of every box; one with an owner is to be owned by &answer.

    RecordedBoxes() {
        told.clear();
        answer = 1;
        SetMessageBoxHandler(
            [](void* owner, const char* text, const char* caption, uint32_t style) {
                told += Joined(style, caption, text) + (owner == &answer ? " owned;" : ";");
                return owner == nullptr || owner == &answer ? answer : -1;
            });
        SetQuitHandler([](int32_t code) { told += Joined("quit", code) + ';'; });
    }
    ~RecordedBoxes() { SetMessageBoxHandler(nullptr), SetQuitHandler(nullptr); }
};

}  // namespace hundredweight
