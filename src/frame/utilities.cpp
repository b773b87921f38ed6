// The five small functions on texts, paths and values.
#include <hundredweight/exports.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "frame/text.h"
#include "platform/path.h"

namespace hundredweight {
namespace {

constexpr std::size_t kPathSize = 260;
constexpr std::size_t kExtensionLength = 4;

constexpr int32_t kLargestExactPower = 22;  // Higher powers of ten are rounded.

/// Ten to the power of some places, by multiplication where that is exact: the last digit of what a
/// run-time library's pow gives depends on the precision mode of the processor.
double PowerOfTen(int32_t places) {
    if (places < -kLargestExactPower || places > kLargestExactPower) return std::pow(10.0, places);
    double power = 1;
    for (int32_t i = std::abs(places); i > 0; --i) power *= 10;
    return places < 0 ? 1 / power : power;
}

bool FitsPath(std::string_view text) {
    return text.size() < kPathSize;
}

}  // namespace
}  // namespace hundredweight

using namespace hundredweight;

char* HWT_CALL strtrim(char* text) {
    const std::string_view whole = text;
    // npos + 1 is 0: a text of white space alone becomes empty.
    text[whole.find_last_not_of(kWhiteSpace) + 1] = '\0';
    return text;
}

char* HWT_CALL strltrim(char* text) {
    const std::string_view whole = text;
    const std::size_t start = std::min(whole.find_first_not_of(kWhiteSpace), whole.size());
    std::memmove(text, text + start, whole.size() - start + 1);
    return text;
}

float HWT_CALL rndoff(float value, int32_t places) {
    const double scale = PowerOfTen(places);
    return static_cast<float>(std::floor(static_cast<double>(value) * scale + 0.51) / scale);
}

char* HWT_CALL SplitPath(const char* path) {
    static char result[kPathSize];
    FillField(result, '\0');
    const std::string_view whole = path;
    if (!FitsPath(whole)) return result;
    const platform::PathParts parts = platform::SplitPathParts(whole);
    const bool has_file_name = !parts.base_name.empty() && !parts.extension.empty();
    PutText(result,
            has_file_name ? whole.substr(parts.drive.size() + parts.directory.size()) : whole);
    return result;
}

char* HWT_CALL ForceFileNameExtension(char* name, const char* extension) {
    const std::string_view whole = name;
    if (!FitsPath(whole)) return name;
    // Nothing before the first dot: the name is empty or all extension, and is kept.
    const std::size_t dot = whole.find('.');
    const std::size_t kept = dot == 0 || dot == std::string_view::npos ? whole.size() : dot;
    const std::string_view added = std::string_view(extension).substr(0, kExtensionLength);
    // The extension may be a part of the name.
    std::memmove(name + kept, added.data(), added.size());
    name[kept + added.size()] = '\0';
    return name;
}
