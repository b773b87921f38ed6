// The freight class of a shipment line.
#include <hundredweight/exports.h>

#include <iterator>
#include <string_view>

#include "frame/bounds.h"
#include "frame/failure.h"
#include "frame/text.h"

using namespace hundredweight;

namespace {

constexpr int32_t kInvalidClass = 105;
constexpr std::string_view kAllKinds = "FAK";
constexpr int32_t kNotFound = -1;

int32_t Refuse(RateContext& context) {
    return Fail(context, kInvalidClass);
}

std::string_view ClassAt(const RateContext& context, int32_t index) {
    return TerminatedText(context.ClassTable[index]);
}

/// Index of a class in the tariff's table.
int32_t FindClass(const RateContext& context, std::string_view wanted) {
    const int32_t count = BoundedCount(context.ClassCount, std::size(context.ClassTable));
    for (int32_t i = 0; i < count; ++i) {
        if (ClassAt(context, i) == wanted) return i;
    }
    return kNotFound;
}

int32_t RecordMappedClass(RateContext& context, std::string_view entered, int32_t index,
                          int32_t line) {
    const std::string_view mapped = TerminatedText(context.Profile.ClassMap[index]);
    if (mapped == entered) {
        context.LineClassIndex[line] = index;
        return 1;
    }
    const int32_t mapped_index = FindClass(context, mapped);
    if (mapped_index == kNotFound) return Refuse(context);
    context.LineClassIndex[line] = mapped_index;
    context.LineClassMark[line][0] = '*';
    return 1;
}

}  // namespace

int32_t HWT_CALL VerClass(RateContext* context, const char* class_text, int32_t line,
                          int32_t fak_allowed) {
    if (!HasEntry(context->LineClass, line)) return Refuse(*context);
    FillField(context->LineClassMark[line], '\0');
    const std::string_view entered = class_text;
    const int32_t index = FindClass(*context, entered);
    // Freight of all kinds passes by the first entry that is another class.
    const bool any_class = context->ClassCount > 0;
    if (fak_allowed != 0 && entered == kAllKinds && index != 0 && any_class) return 1;
    if (index == kNotFound) return Refuse(*context);
    // Classes beyond the profile's map are rated as themselves.
    if (context->Profile.ClassMapOn != 0 && HasEntry(context->Profile.ClassMap, index)) {
        return RecordMappedClass(*context, entered, index, line);
    }
    context->LineClassIndex[line] = index;
    CopyText(context->LineClass[line], WholeField(context->ClassTable[index]));
    return 1;
}
