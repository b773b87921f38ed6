// Changes that tests make to texts.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace cwt {

/// Puts one text in the place of the first of another, which must be there.
inline void Replace(std::string& text, std::string_view what, std::string_view by) {
    const std::size_t at = text.find(what);
    ASSERT_NE(at, text.npos) << what << " in\n" << text;
    text.replace(at, what.size(), by);
}

}  // namespace cwt
