#include "transcript/record_text.h"

#include <fmt/format.h>

#include <cstddef>
#include <string_view>
#include <type_traits>

namespace hundredweight::transcript {
namespace {

struct Field {
    std::string_view name;
    std::size_t offset;
    std::size_t size;
    bool is_pointer;

    bool IsHandle() const { return name.ends_with("Handle"); }
    bool IsDirectory() const { return name == "UserDir" || name == "DataDir"; }
};

constexpr Field kFields[] = {
#define RECORD_FIELD(name)                                                                 \
    {#name, offsetof(RateContext, name), sizeof(static_cast<RateContext*>(nullptr)->name), \
     std::is_pointer_v<decltype(RateContext::name)>},
#include "record_fields.inc"
};

std::string FieldText(const RateContext& context, const Field& field) {
    std::string_view bytes(reinterpret_cast<const char*>(&context) + field.offset, field.size);
    bytes = bytes.substr(0, bytes.find_last_not_of('\0') + 1);
    if (field.is_pointer) return bytes.empty() ? "" : "there";
    if (field.IsHandle()) return bytes.empty() || bytes == "\xFF\xFF\xFF\xFF" ? "" : "open";
    std::string text;
    for (const char byte : bytes) text += fmt::format("{:02x}", static_cast<unsigned char>(byte));
    return text;
}

}  // namespace

std::string RecordText(const RateContext& context) {
    std::string text;
    for (const Field& field : kFields) {
        if (field.IsDirectory()) continue;
        const std::string content = FieldText(context, field);
        if (!content.empty()) text += fmt::format("{} {}\n", field.name, content);
    }
    return text;
}

}  // namespace hundredweight::transcript
